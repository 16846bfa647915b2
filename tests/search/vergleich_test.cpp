// The comparison of two records, row by row of its table.
#include "search/vergleich.h"

#include <gtest/gtest.h>

#include "base/fehler.h"
#include "fields/einstellungen.h"
#include "search/masse.h"

namespace {

class Vergleich : public ::testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
    void TearDown() override { EinstellungenAnwenden({}); }
};

float relevanz(const FeldZuordnungen& zuordnungen, const std::vector<Wert>& a, const std::vector<Wert>& b,
               bool differenzieren = false) {
    return *Vergleicher(zuordnungen, differenzieren).vergleichen(a.data(), b.data());
}

Teilregel W(int art, int parser = 0) {
    return {Mass::Woerter, parser, art};
}
Teilregel N(int art, int parser = 0) {
    return {Mass::Nummern, parser, art};
}

const Regelzeile kFirma{false, {W(21, 21), W(22, 22)}};
const Regelzeile kVZ{true, {W(42, 42), W(43, 43)}};
const Regelzeile kAZ{true, {W(41, 41), W(43, 43)}};
const Regelzeile kAVZ{true, {W(41, 41), W(42, 42), W(43, 43)}};

TEST_F(Vergleich, EveryRowOfTheTable) {
    const std::vector<std::pair<FeldZuordnung, std::vector<Regelzeile>>> faelle{
        {{0, 0}, {}},
        {{0, 1}, {}},
        {{1, 1}, {}},
        {{1, 11}, {{false, {}}}},
        {{2, 1}, {{false, {W(21)}}, kFirma}},
        {{2, 2}, {{false, {W(22)}}, kFirma}},
        {{2, 3}, {kFirma}},
        {{2, 4}, {kFirma, {false, {W(23)}}}},
        {{3, 1}, {{false, {W(31)}}}},
        {{3, 2}, {}},
        {{3, 32}, {{false, {N(32)}}}},
        {{3, 3}, {{false, {W(31, 31), N(32, 32)}}}},
        {{3, 4}, {{false, {N(33)}}}},
        {{3, 8}, {{false, {W(34)}}}},
        {{3, 12}, {{false, {N(33, 33), W(34, 34)}}}},
        {{3, 7}, {}},
        {{4, 1}, {{true, {W(41)}}, kVZ, kAZ, kAVZ}},
        {{4, 2}, {{true, {W(42)}}, kVZ, kAZ, kAVZ}},
        {{4, 4}, {{true, {W(43)}}, kVZ, kAZ, kAVZ}},
        {{4, 7}, {kVZ, kAZ, kAVZ}},
        {{4, 8}, {kVZ, kAZ, kAVZ, {false, {W(44)}}}},
        {{5, 1}, {{false, {N(51, 51)}}}},
        {{5, 2}, {{false, {N(52)}}}},
        {{5, 4}, {{false, {N(53)}}}},
        {{5, 3}, {{false, {N(51, 51), W(52, 52)}}}},
        {{5, 5}, {{false, {N(51, 51), W(53, 53)}}}},
        {{5, 7}, {}},
        {{6, 1}, {{false, {W(61)}}}},
        {{6, 2}, {{false, {W(62)}}}},
        {{6, 3}, {}},
    };
    for (const auto& [zuordnung, zeilen] : faelle) {
        SCOPED_TRACE(std::to_string(zuordnung.Gruppe) + "/" + std::to_string(zuordnung.Maske));
        EXPECT_EQ(zeilen, RegelzeilenFuer(zuordnung));
    }
}

TEST_F(Vergleich, TheWorkedExample) {
    const FeldZuordnungen felder{{2, 1}, {3, 3}, {3, 4}, {3, 8}};
    const float ist = relevanz(felder, {u"meyer", u"haupt 12", u"50667", u"köln"},
                               {u"meyer", u"haupt 12", u"50667", u"koeln"});
    EXPECT_EQ(200.0f / 285.0f, ist);
    EXPECT_GE(ist, 0.62f);
    EXPECT_LT(ist, 0.73f);
}

TEST_F(Vergleich, EveryFirmFieldAlsoScoresNameAndLegalForm) {
    EXPECT_EQ(40.0f / 45.0f, relevanz({{2, 1}}, {u"meyer"}, {u"meyer"}));
    EXPECT_EQ(40.0f / 45.0f, relevanz({{2, 4}}, {u"handel"}, {u"handel"}));
}

TEST_F(Vergleich, EveryContactFieldScoresAllThreeCombinedRows) {
    // One word is a last name and no given name: own row, and the last name in each combined row.
    EXPECT_EQ(120.0f / 180.0f, relevanz({{4, 4}}, {u"meyer"}, {u"meyer"}));
    EXPECT_EQ((20.0f + 90) / 170.0f, relevanz({{4, 2}}, {u"hans"}, {u"hans"}));
}

TEST_F(Vergleich, IndexesScoreNothing) {
    EXPECT_EQ(0, relevanz({{1, 1}}, {17}, {17}));
    EXPECT_EQ(80.0f / 80.0f, relevanz({{1, 1}, {3, 8}}, {17, u"köln"}, {18, u"köln"}));
}

TEST_F(Vergleich, AHouseNumberAloneScoresNothing) {
    EXPECT_EQ(0, relevanz({{3, 2}}, {u"12"}, {u"12"}));
}

TEST_F(Vergleich, ParsersWorkOnPreparedValues) {
    // The blank firm parts into an empty name, which equals another one, and no legal form.
    EXPECT_EQ(20.0f / 25.0f, relevanz({{2, 3}}, {u" "}, {u" "}));
    EXPECT_EQ(80.0f / 160.0f, relevanz({{5, 3}}, {u"0221 123456"}, {u"0221 654321"}));
}

TEST_F(Vergleich, AFieldThatIsMissingOnOneSideCountsForNothing) {
    for (const Wert& nichts : {Wert(), Wert::null(), Wert(u"")}) {
        EXPECT_EQ(1, relevanz({{3, 4}, {3, 8}}, {u"50667", nichts}, {u"50667", u"köln"}));
        EXPECT_EQ(1, relevanz({{3, 4}, {3, 8}}, {u"50667", u"köln"}, {u"50667", nichts}));
    }
}

TEST_F(Vergleich, IgnoredFieldsHaveNoColumn) {
    EXPECT_EQ(1, relevanz({{0, 1}, {3, 8}}, {u"köln"}, {u"köln"}));
    EXPECT_EQ(0, relevanz({{0, 0}, {3, 8}}, {u"köln", u"a"}, {u"köln", u"b"}));
}

TEST_F(Vergleich, RecordsWithoutACommonFilledField) {
    EXPECT_EQ(0, relevanz({{3, 4}, {3, 8}}, {u"50667", u""}, {u"", u"köln"}));
}

TEST_F(Vergleich, OnlyIgnoredFieldsAndIndexes) {
    EXPECT_EQ(0, relevanz({{0, 1}, {1, 1}}, {5}, {5}));
}

TEST_F(Vergleich, OnlyContactFieldsWithPersonsKeptApart) {
    EXPECT_EQ(0, relevanz({{4, 4}}, {u"meyer"}, {u"meyer"}, true));
    // A department has a row in the main sums, but its person rows close the gate.
    EXPECT_EQ(0, relevanz({{4, 8}}, {u"einkauf"}, {u"verkauf"}, true));
    EXPECT_EQ(0, relevanz({{4, 8}}, {u"einkauf"}, {u"einkauf"}, true))
        << "60 * 3 names of 150 stay below the gate";
    EXPECT_EQ(1, relevanz({{4, 8}}, {u"herr hans meyer"}, {u"herr hans meyer"}, true))
        << "persons that agree open it, and the department's own row is left";
}

TEST_F(Vergleich, AnUnknownMaskFiresOnlyTheRowsThatHoldAlways) {
    EXPECT_EQ(20.0f / 25.0f, relevanz({{2, 8}}, {u"meyer"}, {u"meyer"}));
    EXPECT_EQ(90.0f / 150.0f, relevanz({{4, 3}}, {u"meyer"}, {u"meyer"}));
    EXPECT_EQ(0, relevanz({{3, 5}}, {u"meyer"}, {u"meyer"}));
}

TEST_F(Vergleich, ASingleBlankTakesPart) {
    EXPECT_EQ(1, relevanz({{3, 8}}, {u" "}, {u" "}));
    EXPECT_EQ(float(2.0 / 3), relevanz({{3, 8}}, {u" "}, {u"köln"}));
}

TEST_F(Vergleich, DifferentPersonsCloseTheGate) {
    const FeldZuordnungen felder{{3, 8}, {4, 4}};
    EXPECT_EQ(0, relevanz(felder, {u"köln", u"meyer"}, {u"köln", u"schulz"}, true));
    EXPECT_EQ(80.0f / 260.0f, relevanz(felder, {u"köln", u"meyer"}, {u"köln", u"schulz"}));
    EXPECT_EQ(1, relevanz(felder, {u"köln", u""}, {u"köln", u"schulz"}, true)) << "no person, no gate";
}

TEST_F(Vergleich, AtSevenTenthsTheGateIsOpen) {
    gFeldArten[41].RelevanzFaktor = 0;
    gFeldArten[42].RelevanzFaktor = 30;
    gFeldArten[43].RelevanzFaktor = 0;
    const FeldZuordnungen felder{{3, 8}, {4, 2}};
    // The own row measures a tenth of the words, the two rows with the given name measure 1: 63 of 90.
    EXPECT_EQ(1, relevanz(felder, {u"köln", u"hans b1 c1 d1 e1 f1 g1 h1 i1 j1"},
                          {u"köln", u"hans b2 c2 d2 e2 f2 g2 h2 i2 j2"}, true));
    EXPECT_EQ(0, relevanz(felder, {u"köln", u"hans b1 c1 d1 e1 f1 g1 h1 i1 j1 k1"},
                          {u"köln", u"hans b2 c2 d2 e2 f2 g2 h2 i2 j2 k2"}, true));
}

TEST_F(Vergleich, WeightsComeFromTheSettings) {
    EinstellungenAnwenden(QStringLiteral(""));
    EXPECT_EQ(0, relevanz({{3, 8}}, {u"köln"}, {u"köln"}));
}

QString vieleWoerter(int anzahl) {
    return QStringLiteral("x ").repeated(anzahl - 1) + u'x';
}

TEST_F(Vergleich, AFailureGoesToTheHandler) {
    const FeldZuordnungen felder{{0, 1}, {3, 8}, {3, 4}};
    const std::vector<Wert> a{Wert(vieleWoerter(200)), u"50667"};
    const Vergleicher vergleicher(felder, false);
    EXPECT_THROW(vergleicher.vergleichen(a.data(), a.data()), EngineFehler);
    int aufrufe = 0;
    const auto antwort = [&](NachFehler weiter) {
        return [&aufrufe, weiter](const Vergleichsfehler& fehler) {
            ++aufrufe;
            EXPECT_EQ(1, fehler.feld);
            EXPECT_EQ(399, fehler.a.alsText().size());
            return aufrufe < 3 ? NachFehler::Wiederholen : weiter;
        };
    };
    EXPECT_FALSE(vergleicher.vergleichen(a.data(), a.data(), antwort(NachFehler::Abbrechen)));
    EXPECT_EQ(3, aufrufe);
    aufrufe = 0;
    // The weight of the row was added before its measure failed.
    EXPECT_EQ(100.0f / 180.0f, *vergleicher.vergleichen(a.data(), a.data(), antwort(NachFehler::Ignorieren)));
}

}  // namespace
