// Text helpers: trimming, replacing, case, words, the numeric test.
#include "base/text.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/fehler.h"

namespace {

TEST(Text, MinimumGibtDenKleineren) {
    EXPECT_EQ(Minimum(1, 2), 1);
    EXPECT_EQ(Minimum(2, 1), 1);
    EXPECT_EQ(Minimum(-1.5, -2.5), -2.5);
}

TEST(Text, MinimumGibtBeiGleichenDenZweiten) {
    struct Zahl {
        int wert;
        int herkunft;
        bool operator<(const Zahl& b) const { return wert < b.wert; }
    };
    EXPECT_EQ(Minimum(Zahl{1, 1}, Zahl{1, 2}).herkunft, 2);
}

TEST(Text, TrimSchneidetNurBlanken) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(Trim(u""), u"");
    EXPECT_EQ(Trim(u"\t a\n"), u"\t a\n");
    EXPECT_EQ(Trim(u"\u00a0a\u2003"), u"\u00a0a\u2003");
}

TEST(Text, ErsetzenGehtVonLinksUndSuchtImErsatzNicht) {
    struct Fall {
        QString text, suche, ersatz, ergebnis;
    };
    const std::vector<Fall> faelle = {
        {"abcabc", "b", "x", "axcaxc"}, {"aaa", "aa", "b", "ba"},  {"aa", "a", "aa", "aaaa"},
        {"abc", "c", "", "ab"},         {"abc", "A", "x", "abc"},  {"", "a", "b", ""},
        {"abc", "abc", "", ""},         {"abab", "ab", "b", "bb"},
    };
    for (const Fall& f : faelle)
        EXPECT_EQ(TextErsetzen(f.text, f.suche, f.ersatz), f.ergebnis) << qPrintable(f.text);
}

TEST(Text, EntfernenIstErsetzenDurchNichts) {
    EXPECT_EQ(TextEntfernen("a-b-c", "-"), u"abc");
    EXPECT_EQ(TextEntfernen("aabb", "ab"), u"ab");
}

TEST(Text, GrossUndKleinschriftTreffenSichBeimEszett) {
    EXPECT_EQ(Grossschrift(Wert(u"Straße äöü é")), u"STRASSE ÄÖÜ É");
    EXPECT_EQ(Kleinschrift(Wert(u"STRAßE ÄÖÜ É")), u"strasse äöü é");
    EXPECT_EQ(Grossschrift(Wert(u"ß")), Grossschrift(Wert(u"ss")));
}

TEST(Text, GrossschriftNimmtDenTextDesWerts) {
    EXPECT_EQ(Grossschrift(Wert(1.5)), u"1,5");
    EXPECT_EQ(Grossschrift(Wert()), u"");
    EXPECT_EQ(Kleinschrift(Wert(true)), u"wahr");
}

TEST(Text, GrossUndKleinschriftVonNullScheitern) {
    const auto scheitert = [](QString (*schrift)(const Wert&)) {
        try {
            schrift(Wert::null());
        } catch (const EngineFehler& fehler) {
            return fehler.nummer();
        }
        return 0;
    };
    EXPECT_EQ(scheitert(Grossschrift), 94);
    EXPECT_EQ(scheitert(Kleinschrift), 94);
}

TEST(Text, ZeichenweiseBleibtDieLaengeUndDasEszett) {
    EXPECT_EQ(GrossZeichenweise(u"Straße ö"), u"STRAßE Ö");
    EXPECT_EQ(KleinZeichenweise(u"STRAßE Ö"), u"straße ö");
    const QString sonder = QStringLiteral("\u0149\u01f0\ufb01\u0130\U0001F600x");
    EXPECT_EQ(GrossZeichenweise(sonder).size(), sonder.size());
    EXPECT_EQ(KleinZeichenweise(sonder).size(), sonder.size());
}

TEST(Wort, ZaehltVonVornUndVonHinten) {
    const Wert nummer(u"0221/123 456");
    EXPECT_EQ(Wort(nummer, 1), Wert(u"0221"));
    EXPECT_EQ(Wort(nummer, 2), Wert(u"123"));
    EXPECT_EQ(Wort(nummer, 3), Wert(u"456"));
    EXPECT_EQ(Wort(nummer, -1), Wert(u"456"));
    EXPECT_EQ(Wort(nummer, -2), Wert(u"123"));
    EXPECT_EQ(Wort(nummer, -3), Wert(u"0221"));
}

TEST(Wort, JenseitsDesLetztenIstLeerUndNichtLeererText) {
    EXPECT_TRUE(Wort(Wert(u"a b"), 3).istLeer());
    EXPECT_TRUE(Wort(Wert(u"a b"), -3).istLeer());
    EXPECT_TRUE(Wort(Wert(u""), 1).istLeer());
    EXPECT_TRUE(Wort(Wert(u" ./ "), 1).istLeer());
}

TEST(Wort, NummerNullGibtNichts) {
    EXPECT_TRUE(Wort(Wert(u"a b"), 0).istLeer());
}

TEST(Wort, LeerUndNullGebenLeer) {
    EXPECT_TRUE(Wort(Wert(), 1).istLeer());
    EXPECT_TRUE(Wort(Wert::null(), -1).istLeer());
}

TEST(Wort, FuehrendeTrennerZaehlenNicht) {
    EXPECT_EQ(Wort(Wert(u"  (0221) 12"), 1), Wert(u"0221"));
    EXPECT_EQ(Wort(Wert(u"12 -- "), -1), Wert(u"12"));
}

TEST(Wort, UmlauteGehoerenDazuAndereAkzenteTrennen) {
    EXPECT_EQ(Wort(Wert(u"Größe-Maß"), 1), Wert(u"Größe"));
    EXPECT_EQ(Wort(Wert(u"Größe-Maß"), -1), Wert(u"Maß"));
    EXPECT_EQ(Wort(Wert(u"Café1"), 1), Wert(u"Caf"));
    EXPECT_EQ(Wort(Wert(u"Café1"), 2), Wert(u"1"));
    EXPECT_EQ(Wort(Wert(u"ÄÖÜäöüß.x"), 1), Wert(u"ÄÖÜäöüß"));
}

TEST(Wort, ZahlenGehenUeberIhrenText) {
    EXPECT_EQ(Wort(Wert(12.5), 1), Wert(u"12"));
    EXPECT_EQ(Wort(Wert(12.5), -1), Wert(u"5"));
    EXPECT_EQ(Wort(Wert(221), 1), Wert(u"221"));
}

TEST(Text, BitGesetztVerlangtAlleBits) {
    EXPECT_TRUE(BitGesetzt(7, 2));
    EXPECT_TRUE(BitGesetzt(7, 5));
    EXPECT_FALSE(BitGesetzt(5, 2));
    EXPECT_FALSE(BitGesetzt(5, 6));
    EXPECT_TRUE(BitGesetzt(0, 0));
    EXPECT_TRUE(BitGesetzt(-1, -1));
    EXPECT_FALSE(BitGesetzt(7, -1));
}

TEST(Text, WasSichAlsZahlLiest) {
    for (const char16_t* zahl :
         {u"49", u" 4", u"4 ", u"  12  ", u"+4", u"-4", u"1,5", u"1.5", u",5", u"5,", u"007"})
        EXPECT_TRUE(TextLiestSichAlsZahl(QString::fromUtf16(zahl))) << qPrintable(QString::fromUtf16(zahl));
    for (const char16_t* keine : {u"", u" ", u"4a", u"a4", u"4 5", u"+", u"-", u",", u"1,5,2", u"1.000,5",
                                  u"+-4", u"- 4", u"4-", u"\u0663", u"1e5", u"\t4", u"&H1"})
        EXPECT_FALSE(TextLiestSichAlsZahl(QString::fromUtf16(keine)))
            << qPrintable(QString::fromUtf16(keine));
}

TEST(Text, WelcherWertSichAlsZahlLiest) {
    for (const Wert& zahl :
         {Wert(1), Wert(-1.5), Wert(1e20), Wert(Waehrung{1}), Wert(Dezimal{}), Wert(true), Wert(u"12")})
        EXPECT_TRUE(LiestSichAlsZahl(zahl)) << qPrintable(zahl.alsText());
    for (const Wert& keine :
         {Wert(), Wert::null(), Wert(u""), Wert(u"12a"), Wert(DatumZeit{5}), Wert(QByteArray("1"))})
        EXPECT_FALSE(LiestSichAlsZahl(keine)) << qPrintable(keine.alsText());
}

}  // namespace
