// The General order: keys as real indexes hold them, and what they make of German texts.
#include "engine/sort/general.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>
#include <vector>

namespace {

QByteArray hex(const char* text) {
    return QByteArray::fromHex(text);
}

struct Schluesselfall {
    const char16_t* text;
    const char* schluessel;
};

TEST(General, SchluesselWieInDenIndexenVonAccess) {
    const Schluesselfall faelle[] = {
        {u"", "01 00"},
        {u"A", "4A 01 00"},
        {u"a", "4A 01 00"},
        {u"abc ", "4A 4C 4D 01 00"},
        {u"Ä", "4A 01 13 00"},
        {u"Ae", "4A 51 01 00"},
        {u"Müller", "60 6F 5E 5E 51 69 01 02 13 00"},
        {u"MÜLLER", "60 6F 5E 5E 51 69 01 02 13 00"},
        {u"Möller", "60 64 5E 5E 51 69 01 02 13 00"},
        {u"Weiß", "73 51 59 6B 6B 01 00"},
        {u"Weiss", "73 51 59 6B 6B 01 00"},
        {u"Größe", "55 69 64 6B 6B 51 01 02 02 13 00"},
        {u"café", "4D 4A 53 51 01 02 02 02 0E 00"},
        {u"Café-Bar", "4D 4A 53 51 4C 4A 69 01 02 02 02 0E 01 01 01 80 17 06 82 00"},
        {u"O'Neill", "64 62 51 59 5E 5E 01 01 01 01 80 0B 06 80 00"},
        {u"x-y-z", "75 76 78 01 01 01 01 80 0B 06 82 80 0F 06 82 00"},
        {u"Großmann-Öz",
         "55 69 64 6B 6B 60 4A 62 62 64 78 01 02 02 02 02 02 02 02 02 02 13 01 01 01 80 2B 06 82 00"},
        {u"1. FC Köln", "38 1C 07 53 4D 07 5C 64 5E 62 01 02 02 02 02 02 02 02 13 00"},
        {u"12345", "38 3A 3C 3E 40 01 00"},
        {u"€ 5", "35 A1 07 40 01 00"},
    };
    for (const Schluesselfall& fall : faelle) {
        SCOPED_TRACE(QStringView(fall.text).toString().toStdString());
        EXPECT_EQ(sort::sortSchluessel(fall.text).toHex(' '), hex(fall.schluessel).toHex(' '));
    }
}

TEST(General, NurDieErstenZweihundertfuenfundfuenfzigZeichenZaehlen) {
    const QString lang(255, u'a');
    EXPECT_EQ(sort::sortSchluessel(lang + u'b'), sort::sortSchluessel(lang));
    EXPECT_NE(sort::sortSchluessel(lang.left(254) + u'b'), sort::sortSchluessel(lang));
}

TEST(General, LeerzeichenZaehlenNurAmEndeNicht) {
    EXPECT_EQ(sort::vergleichen(u"Berg  ", u"Berg"), 0);
    EXPECT_NE(sort::vergleichen(u" Berg", u"Berg"), 0);
    EXPECT_EQ(sort::sortSchluessel(u"   "), sort::sortSchluessel(u""));
}

TEST(General, TabulatorAmEndeZaehlt) {
    EXPECT_NE(sort::vergleichen(u"Berg\t", u"Berg"), 0);
}

TEST(General, EinKombinierenderAkzentAddiertSichZumBuchstaben) {
    EXPECT_EQ(sort::sortSchluessel(u"Bu\u0308ro"), sort::sortSchluessel(u"Büro"));
    EXPECT_EQ(sort::sortSchluessel(u"\u0308u").toHex(' '), hex("6F 01 11 00").toHex(' '));
}

TEST(General, ErsatzpaareHabenIhrenPlatz) {
    EXPECT_EQ(sort::sortSchluessel(u"\U0001F600").size(), 2 + 2 + 1 + 2 + 1);
    EXPECT_EQ(sort::vergleichen(u"\U0001F600", u"\U0001F601"), -1);
}

TEST(General, ZeichenOhneEintragZaehlenNicht) {
    EXPECT_EQ(sort::vergleichen(u"a\u0378b", u"ab"), 0);
}

TEST(General, SortiertDeutscheNamen) {
    std::vector<QString> namen;
    for (const char16_t* name : {u"Zander", u"Müller", u"Muller", u"mueller", u"MÜLLERS", u"Möller", u"Weiß",
                                 u"Weisz", u"Weiss", u"Änne", u"Anne", u"O'Neill", u"Oneill", u"1. FC", u""})
        namen.push_back(QStringView(name).toString());
    std::stable_sort(namen.begin(), namen.end(),
                     [](const QString& a, const QString& b) { return sort::vergleichen(a, b) < 0; });
    EXPECT_EQ(QStringList(namen.begin(), namen.end()).join(u'|').toStdString(),
              "|1. FC|Anne|Änne|Möller|mueller|Muller|Müller|MÜLLERS|Oneill|O'Neill|Weiß|Weiss|Weisz|Zander");
}

}  // namespace
