// The settings file: its items, its keys and what they set.
#include "fields/einstellungen.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <vector>

#include "fields/feldarten.h"

namespace {

int relevanz(int feldart) {
    return gFeldArten[size_t(feldart)].RelevanzFaktor;
}
int signifikanz(int feldart) {
    return gFeldArten[size_t(feldart)].SignifikanzFaktor;
}

// What the text makes of the factor of row 21.
int relevanz21Nach(const QString& text) {
    EinstellungenAnwenden(text);
    return relevanz(21);
}

TEST(Einstellungen, OhneDateiGeltenDieEingebautenGewichte) {
    EinstellungenAnwenden(std::nullopt);
    EXPECT_EQ(relevanz(33), 100);
    EXPECT_EQ(signifikanz(33), 20);
    EXPECT_EQ(relevanz(22), 5);
    EXPECT_EQ(signifikanz(22), 10);
}

TEST(Einstellungen, LeereDateiNulltAlleGewichteUndLaesstDieSchwellen) {
    EinstellungenAnwenden(std::nullopt);
    gRelevanz = 0.1f;
    gSignifikanz = 0.1f;
    EinstellungenAnwenden(QString());
    for (int nummer = kErsteFeldart; nummer <= kLetzteFeldart; ++nummer) {
        EXPECT_EQ(relevanz(nummer), 0) << nummer;
        EXPECT_EQ(signifikanz(nummer), 0) << nummer;
    }
    EXPECT_EQ(gRelevanz, 0.8f);
    EXPECT_EQ(gSignifikanz, 0.6f);
    EXPECT_EQ(gFeldArten[34].Bezeichnung, u"Ort");
    EXPECT_EQ(gFeldArten[34].Code, 8);
    EXPECT_EQ(gFeldGruppen[6].Bezeichnung, u"Internet");
}

// The settings file that comes with the program, as it stands in the sources.
QString beiliegendeDatei() {
    QFile datei(QStringLiteral(LINDGARN_QUELLE "/resources/Einstellungen.CFG"));
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    return TextAusBytes(datei.readAll());
}

TEST(Einstellungen, DieBeiliegendeDateiNenntDieEingebautenGewichte) {
    EinstellungenAnwenden(std::nullopt);
    const auto eingebaut = gFeldArten;
    const float schwellen[] = {gRelevanz, gSignifikanz};
    EinstellungenAnwenden(beiliegendeDatei());
    for (int nummer = kErsteFeldart; nummer <= kLetzteFeldart; ++nummer) {
        EXPECT_EQ(relevanz(nummer), eingebaut[size_t(nummer)].RelevanzFaktor) << nummer;
        EXPECT_EQ(signifikanz(nummer), eingebaut[size_t(nummer)].SignifikanzFaktor) << nummer;
    }
    EXPECT_EQ(gRelevanz, schwellen[0]);
    EXPECT_EQ(gSignifikanz, schwellen[1]);
}

// A line that the reader would pass over in silence is a mistake in a sample that people copy from.
bool istWohlgeformt(const QString& zeile) {
    static const QRegularExpression form(
        QStringLiteral("^('[^,]*|\\d+|(RelevanzFaktor|SignifikanzFaktor|gRelevanz|gSignifikanz) = \\d+|)$"));
    return form.match(zeile).hasMatch();
}

TEST(Einstellungen, InDerBeiliegendenDateiWirdKeineZeileUebergangen) {
    for (const QString& zeile : beiliegendeDatei().split(u'\n'))
        EXPECT_TRUE(istWohlgeformt(zeile)) << zeile.toStdString();
}

TEST(Einstellungen, EineVolleDatei) {
    EinstellungenAnwenden(
        QStringLiteral("' Gewichte\r\n21\r\nRelevanzFaktor = 20\r\nSignifikanzFaktor = 100\r\n"
                       "gRelevanz = 75\r\n33\r\nRelevanzFaktor = 90\r\ngSignifikanz = 50\r\n"));
    EXPECT_EQ(relevanz(21), 20);
    EXPECT_EQ(signifikanz(21), 100);
    EXPECT_EQ(relevanz(33), 90);
    EXPECT_EQ(signifikanz(33), 0);
    EXPECT_EQ(relevanz(34), 0);
    EXPECT_EQ(gRelevanz, 0.75f);
    EXPECT_EQ(gSignifikanz, 0.5f);
}

TEST(Einstellungen, ZweitesLadenFaengtVonVornAn) {
    EinstellungenAnwenden(QStringLiteral("2\nRelevanzFaktor = 9\n21\nRelevanzFaktor = 9\ngRelevanz = 10"));
    EinstellungenAnwenden(QStringLiteral("21\nSignifikanzFaktor = 3"));
    EXPECT_EQ(relevanz(21), 0);
    EXPECT_EQ(relevanz(2), 0);
    EXPECT_EQ(signifikanz(21), 3);
    EXPECT_EQ(gRelevanz, 0.8f);
}

TEST(Einstellungen, PostenUndTrenner) {
    const std::vector<std::pair<QString, int>> faelle = {
        {"21\nRelevanzFaktor = 7", 7},
        {"21\r\nRelevanzFaktor = 7\r\n", 7},
        {"21\rRelevanzFaktor = 7\r", 7},
        {"21,RelevanzFaktor = 7", 7},
        {"21 , RelevanzFaktor = 7 ", 7},
        {"   21\n   RelevanzFaktor = 7", 7},
        {"\"21\",\"RelevanzFaktor = 7\"", 7},
        {"\"21\"RelevanzFaktor = 7", 7},
        {"\"21\" \n\"RelevanzFaktor = 7\"\n", 7},
        {"\"21\nRelevanzFaktor = 7", 0},              // the quote runs to the end
        {"\"' a, b\n\"\n21\nRelevanzFaktor = 7", 7},  // and over the line's end
        {"\t21\nRelevanzFaktor = 7", 0},              // only blanks are skipped
        {"+21\nRelevanzFaktor = 7", 7},
        {"21\nRelevanzFaktor = 7\n22\nRelevanzFaktor = 8", 7},
        {"21\nRelevanzFaktor = 7\n21\nRelevanzFaktor = 8", 8},
        {"21\nRelevanzFaktor = 7\nRelevanzFaktor = 8", 8},
        {"021\nRelevanzFaktor = 7", 7},
        {"20.6\nRelevanzFaktor = 7", 7},
        {"\"20,6\"\nRelevanzFaktor = 7", 7},
        {"20.5\nRelevanzFaktor = 7", 0},  // halves go to the even number
        {"21.5\nRelevanzFaktor = 7", 0},
        {"21\n' Bemerkung\nRelevanzFaktor = 7", 7},
        {"21\nunbekannt = 3\nRelevanzFaktor = 7", 7},
    };
    for (const auto& [text, wert] : faelle) EXPECT_EQ(relevanz21Nach(text), wert) << qPrintable(text);
}

TEST(Einstellungen, LeereZeileVerliertDenRestDesBlocks) {
    EinstellungenAnwenden(QStringLiteral("21\nRelevanzFaktor = 7\n\nSignifikanzFaktor = 8\n"));
    EXPECT_EQ(relevanz(21), 7);
    EXPECT_EQ(signifikanz(21), 0);
    EinstellungenAnwenden(QStringLiteral("21\nRelevanzFaktor = 7\n   \nSignifikanzFaktor = 8\n"));
    EXPECT_EQ(signifikanz(21), 0);
    EinstellungenAnwenden(QStringLiteral("21,\nRelevanzFaktor = 7\n"));
    EXPECT_EQ(relevanz(21), 0);
}

TEST(Einstellungen, KommentarMitKommaIstZweiPosten) {
    EinstellungenAnwenden(QStringLiteral("22\n' Firmenname, 21\nRelevanzFaktor = 7\n"));
    EXPECT_EQ(relevanz(21), 7);
    EXPECT_EQ(relevanz(22), 0);
}

TEST(Einstellungen, SchluesselSindGenauZuSchreiben) {
    for (const char* zeile : {"RelevanzFaktor=7", "RelevanzFaktor =7", "relevanzfaktor = 7",
                              "xRelevanzFaktor = 7", "Relevanz = 7", "RelevanzFaktor  = 7"})
        EXPECT_EQ(relevanz21Nach("21\n" + QString::fromUtf8(zeile)), 0) << zeile;
}

TEST(Einstellungen, DerRestTrittAnDieStelleDesPostens) {
    EinstellungenAnwenden(QStringLiteral("21\nRelevanzFaktor = SignifikanzFaktor = 30"));
    EXPECT_EQ(relevanz(21), 0);
    EXPECT_EQ(signifikanz(21), 30);
    EinstellungenAnwenden(QStringLiteral("21\nRelevanzFaktor = gSignifikanz = 30"));
    EXPECT_EQ(gSignifikanz, 0.3f);
    EinstellungenAnwenden(
        QStringLiteral("21\nRelevanzFaktor = SignifikanzFaktor = gRelevanz = gSignifikanz = 20"));
    EXPECT_EQ(gSignifikanz, 0.2f);
    EXPECT_EQ(gRelevanz, 0.8f);
}

TEST(Einstellungen, DieReihenfolgeDerSchluesselZaehlt) {
    EinstellungenAnwenden(QStringLiteral("21\nSignifikanzFaktor = RelevanzFaktor = 30"));
    EXPECT_EQ(relevanz(21), 0);
    EXPECT_EQ(signifikanz(21), 0);
}

TEST(Einstellungen, UnbrauchbareWerteLassenDenFaktorWieErWar) {
    for (const char* wert : {"abc", "", "32768", "-32769", "99999999999999999999", "1e2", "0x10", "7 7"})
        EXPECT_EQ(relevanz21Nach("21\nRelevanzFaktor = 5\nRelevanzFaktor = " + QString::fromUtf8(wert)), 5)
            << wert;
}

TEST(Einstellungen, GrenzenUndRundung) {
    const std::vector<std::pair<QString, int>> faelle = {
        {"32767", 32767}, {"-32768", -32768}, {"0", 0},       {"-3", -3},   {"+3", 3},
        {"2.5", 2},       {"3.5", 4},         {"2.6", 3},     {" 12 ", 12}, {".6", 1},
        {"6.", 6},        {"32767.4", 32767}, {"32767.6", 5},
    };
    for (const auto& [text, wert] : faelle)
        EXPECT_EQ(relevanz21Nach("21\nRelevanzFaktor = 5\nRelevanzFaktor = " + text), wert)
            << qPrintable(text);
}

TEST(Einstellungen, FaktorOhneGueltigeNummerFaelltWeg) {
    for (const char* nummer : {"", "0", "70", "-21", "99999"}) {
        EinstellungenAnwenden(QString("21\n%1\nRelevanzFaktor = 7").arg(nummer));
        for (int art = kErsteFeldart; art <= kLetzteFeldart; ++art) EXPECT_EQ(relevanz(art), 0) << nummer;
    }
    EinstellungenAnwenden(QStringLiteral("RelevanzFaktor = 7"));
    for (int art = kErsteFeldart; art <= kLetzteFeldart; ++art) EXPECT_EQ(relevanz(art), 0);
}

TEST(Einstellungen, UnbenutzteZeileNimmtDenFaktorUndBleibtUnbenutzt) {
    EinstellungenAnwenden(
        QStringLiteral("2\nRelevanzFaktor = 7\n69\nRelevanzFaktor = 8\n1\nRelevanzFaktor = 9"));
    EXPECT_EQ(relevanz(2), 7);
    EXPECT_EQ(gFeldArten[2].Code, -1);
    EXPECT_EQ(relevanz(69), 8);
    EXPECT_EQ(relevanz(1), 9);
}

TEST(Einstellungen, Schwellen) {
    const std::vector<std::pair<QString, float>> faelle = {
        {"gRelevanz = 75", 0.75f},
        {"gRelevanz = abc", 0.8f},
        {"gRelevanz = 82", float(82 / 100.0)},
        {"gRelevanz = 62.5", 0.625f},
        {"\"gRelevanz = 62,5\"", 0.625f},
        {"gRelevanz = 62,5", 0.62f},
        {"gRelevanz = 0", 0.f},
        {"gRelevanz = 120", 1.2f},
        {"gRelevanz=75", 0.8f},
        {"gRelevanz = 70\ngRelevanz = abc", 0.7f},
    };
    for (const auto& [text, wert] : faelle) {
        EinstellungenAnwenden(text);
        EXPECT_EQ(gRelevanz, wert) << qPrintable(text);
        EXPECT_EQ(gSignifikanz, 0.6f);
    }
}

TEST(TextAusBytes, Utf8MitUndOhneMarke) {
    EXPECT_EQ(TextAusBytes("Stra\xc3\x9f"
                           "e"),
              u"Straße");
    EXPECT_EQ(TextAusBytes("\xef\xbb\xbf"
                           "a"),
              u"a");
    EXPECT_EQ(TextAusBytes(""), u"");
}

TEST(TextAusBytes, SonstWindows1252) {
    EXPECT_EQ(TextAusBytes("Stra\xdf"
                           "e \x80 \x84x\x93 \x9f"),
              u"Straße € „x“ Ÿ");
    EXPECT_EQ(TextAusBytes("\xa0\xa1"), u"\u00a0\u00a1");
    EXPECT_EQ(TextAusBytes("gr\xf6\xdf"
                           "er"),
              u"größer");
    EXPECT_EQ(TextAusBytes("a\xc3"), u"aÃ");     // cut off in the middle of a character
    EXPECT_EQ(TextAusBytes("\xc0\xaf"), u"À¯");  // written longer than it needs
    EXPECT_EQ(TextAusBytes("\x81\xff"), u"\u0081ÿ");
}

}  // namespace
