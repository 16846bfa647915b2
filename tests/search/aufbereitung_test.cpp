// Preparing values, kind by kind.
#include "search/aufbereitung.h"

#include <gtest/gtest.h>

#include "fields/einstellungen.h"

namespace {

class Aufbereiten : public ::testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
};

TEST(TextNormalisieren, LettersAndDigitsWithSingleBlanksBetween) {
    const std::vector<std::pair<Wert, QString>> faelle{
        {Wert(u"Meyer & Söhne, Köln"), QStringLiteral("meyer söhne köln")},
        {Wert(u"  Straße 12a!"), QStringLiteral("strasse 12a")},
        {Wert(u"Café René"), QStringLiteral("caf ren")},
        {Wert(u"ÄÖÜ"), QStringLiteral("äöü")},
        {Wert(u"..."), QStringLiteral("")},
        {Wert(u""), QStringLiteral("")},
        {Wert(), QStringLiteral("")},
        {Wert::null(), QStringLiteral("")},
        {Wert(12.5), QStringLiteral("12 5")},
    };
    for (const auto& [wert, soll] : faelle) EXPECT_EQ(soll, TextNormalisieren(wert)) << soll.toStdString();
}

TEST(ZiffernFiltern, OnlyDigits) {
    EXPECT_EQ(QStringLiteral("0221123"), ZiffernFiltern(Wert(u"0221 / 12-3a")));
    EXPECT_EQ(QStringLiteral(""), ZiffernFiltern(Wert::null()));
    EXPECT_EQ(QStringLiteral(""), ZiffernFiltern(Wert()));
    EXPECT_EQ(QStringLiteral("50667"), ZiffernFiltern(Wert(50667)));
}

TEST(WortEntfernen, WhereverItStands) {
    EXPECT_EQ(Wert(u"haupt 12a"), WortEntfernen(Wert(u"hauptstrasse 12a"), QStringLiteral("strasse")));
    EXPECT_EQ(Wert(u"hburg"), WortEntfernen(Wert(u"hamburg"), QStringLiteral("am")));
    EXPECT_EQ(Wert(u"AM "), WortEntfernen(Wert(u"AM am"), QStringLiteral("am")));
    EXPECT_TRUE(WortEntfernen(Wert::null(), QStringLiteral("am")).istLeer());
    EXPECT_EQ(Wert(u""), WortEntfernen(Wert(), QStringLiteral("am")));
}

struct Fall {
    FeldZuordnung zuordnung;
    Wert wert;
    Wert soll;
    int groesse = 50;
};

void wieErwartet(const std::vector<Fall>& faelle) {
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.wert.alsText().toStdString() + " " + std::to_string(fall.zuordnung.Gruppe) + "/" +
                     std::to_string(fall.zuordnung.Maske));
        const Wert ist = AufbereiteterWert(fall.wert, fall.zuordnung, fall.groesse);
        EXPECT_EQ(fall.soll, ist) << ist.alsText().toStdString();
    }
}

TEST_F(Aufbereiten, EveryRowOfTheTable) {
    wieErwartet({
        {{2, 1}, u"Meyer GmbH & Co.", u"meyer gmbh co"},
        {{2, 2}, u"GmbH", u" "},
        {{2, 2}, u"Meyer GmbH", u"meyer GmbH"},
        {{2, 3}, u"Meyer GmbH", u"meyer GmbH"},
        {{2, 3}, u"Meyer", u"meyer "},
        {{2, 4}, u"Groß-Handel", u"gross handel"},
        {{3, 1}, u"Hauptstraße", u"haupt"},
        {{3, 1}, u"Ringstraße", u""},
        {{3, 1}, u"Berliner Platz", u"berler "},
        {{3, 2}, u"12 a-c", u"12"},
        {{3, 3}, u"Hauptstraße 12a", u"haupt 12"},
        {{3, 4}, u"D-50667", u"50667"},
        {{3, 8}, u"Köln (Mitte)", u"köln mitte"},
        {{3, 12}, u"50667 Köln", u"50667 köln"},
        {{4, 1}, u"Herrn", u"herrn"},
        {{4, 6}, u"Hans-Peter Meyer", u"hans peter meyer"},
        {{5, 1}, u"0221 / 123", u"0221"},
        {{5, 2}, u"0221 / 123456", u"123456"},
        {{5, 4}, u"0221 / 123456", u"123456"},
        {{5, 3}, u"0221 / 123456", u"0221 123456"},
        {{5, 5}, u"0221 / 123456", u"0221 123456"},
        {{6, 1}, u"info@meyer.example", u"info meyer example"},
        {{6, 2}, u"http://www.meyer.example/", u"www meyer example"},
        {{6, 3}, u"http://www.meyer.example/", u"http www meyer example"},
    });
}

TEST_F(Aufbereiten, KindsWithoutARuleStayAsTheyAre) {
    const Wert wert(u" Ä. ");
    wieErwartet({{{0, 0}, wert, wert},
                 {{0, 1}, wert, wert},
                 {{1, 1}, wert, wert},
                 {{3, 7}, wert, wert},
                 {{3, 32}, wert, wert},
                 {{5, 6}, wert, wert},
                 {{5, 7}, wert, wert},
                 {{6, 4}, wert, wert}});
}

TEST_F(Aufbereiten, NothingBecomesTheEmptyText) {
    for (const Wert& nichts : {Wert::null(), Wert()})
        wieErwartet({{{2, 1}, nichts, u""},
                     {{3, 1}, nichts, u""},
                     {{3, 2}, nichts, u""},
                     {{4, 1}, nichts, u""},
                     {{6, 1}, nichts, u""},
                     {{6, 2}, nichts, u""}});
}

TEST_F(Aufbereiten, NothingInAFirmWithLegalFormBecomesASingleBlank) {
    wieErwartet({{{2, 3}, Wert::null(), u" "}, {{2, 2}, u"", u" "}, {{2, 3}, Wert(), u" "}});
}

TEST_F(Aufbereiten, NothingFoundInAPhoneFieldIsEmpty) {
    wieErwartet({{{5, 1}, u"keine", Wert()}, {{5, 2}, u"0221", Wert()}, {{5, 3}, Wert::null(), u" "}});
}

TEST_F(Aufbereiten, AnDerAllee5LeavesThreeBlanksAnd5) {
    wieErwartet({{{3, 1}, u"An der Allee 5", u"   5"}, {{3, 3}, u"An der Allee 5", u" 5"}});
}

TEST_F(Aufbereiten, TheOrderOfTheStreetWordsIsPartOfTheRule) {
    // "strasse" before "str"; the removal of one word can put the next one together.
    wieErwartet({{{3, 1}, u"Strasse", u""}, {{3, 1}, u"zum Ziel", u" ziel"}, {{3, 1}, u"iamm x", u" x"}});
}

TEST_F(Aufbereiten, AHouseNumberLosesItsLetterInTheCombinedRule) {
    wieErwartet({{{3, 3}, u"Hauptstr. 12a", u"haupt 12"}});
}

TEST_F(Aufbereiten, HttpInCapitalsSurvivesAsAWord) {
    wieErwartet({{{6, 2}, u"HTTP://www.meyer.example", u"http www meyer example"}});
}

TEST_F(Aufbereiten, AMailAddressLosesItsPunctuation) {
    wieErwartet({{{6, 1}, u"hans.meyer@firma.example", u"hans meyer firma example"}});
}

TEST_F(Aufbereiten, ATextLongerThanTheColumnIsCut) {
    wieErwartet({{{2, 1}, u"Groß", u"gros", 4}, {{2, 3}, u"Meyer GmbH", u"meyer G", 7}});
}

TEST_F(Aufbereiten, AColumnOfSize0GetsTheEmptyText) {
    wieErwartet({{{2, 1}, u"Meyer", u"", 0}, {{4, 4}, u"Meyer", u"", 0}});
}

TEST_F(Aufbereiten, DigitsAndPhoneNumbersAreNotCut) {
    wieErwartet({{{3, 4}, u"506671", u"506671", 3}, {{5, 2}, u"123456", u"123456", 3}});
}

TEST_F(Aufbereiten, CountersBooleansMoneyDatesAndTimesStay) {
    EXPECT_FALSE(WirdAufbereitet({10, 16, 50}));
    for (const int typ : {1, 5, 8, 22}) EXPECT_FALSE(WirdAufbereitet({typ, 0, 4})) << typ;
    for (const int typ : {2, 3, 4, 6, 7, 10, 12}) EXPECT_TRUE(WirdAufbereitet({typ, 1, 4})) << typ;
}

}  // namespace
