// The similarity measures.
#include "search/masse.h"

#include <gtest/gtest.h>

#include "base/fehler.h"

namespace {

struct Fall {
    Wert a, b;
    double soll;
};

void wieErwartet(float (*mass)(const Wert&, const Wert&), const std::vector<Fall>& faelle) {
    for (const Fall& fall : faelle) {
        SCOPED_TRACE((fall.a.alsText() + u'/' + fall.b.alsText()).toStdString());
        EXPECT_EQ(float(fall.soll), mass(fall.a, fall.b));
        EXPECT_EQ(float(fall.soll), mass(fall.b, fall.a));
    }
}

QString vieleWoerter(int anzahl) {
    return QStringLiteral("x ").repeated(anzahl - 1) + u'x';
}

TEST(WoerterVergleichen, ShareOfWordsFoundInTheOtherText) {
    wieErwartet(WoerterVergleichen, {
                                        {u"haupt 12", u"haupt 12", 1},
                                        {u"meyer gmbh", u"meyer", 2.0 / 3},
                                        {u"meier", u"meierhof", 0.5},
                                        {u"a b", u"b a", 1},
                                        {u"a a b", u"a", 3.0 / 4},
                                        {u"Meyer", u"meyer", 0},
                                        {50667, 50667, 1},
                                        {u"12,5", 12.5, 1},
                                    });
}

TEST(WoerterVergleichen, OfAValueWithItselfIsOneAndWithoutACommonWordZero) {
    wieErwartet(WoerterVergleichen, {{u"meyer", u"meyer", 1}, {u"meyer söhne", u"schulz", 0}});
}

TEST(WoerterVergleichen, NullAndEmptyGiveZero) {
    wieErwartet(WoerterVergleichen, {{Wert::null(), u"a", 0}, {Wert(), u"a", 0}, {Wert(), Wert(), 0}});
}

TEST(WoerterVergleichen, AnEmptyTextHasOneEmptyWord) {
    wieErwartet(WoerterVergleichen, {{u"", u"", 1}, {u"", u"meyer", 0.5}});
}

TEST(WoerterVergleichen, ASingleBlankHasTwoEmptyWordsWhichAreFound) {
    wieErwartet(WoerterVergleichen, {{u" ", u" ", 1}, {u" ", u"meyer", 2.0 / 3}});
}

TEST(WoerterVergleichen, ADoubleBlankMakesAnEmptyWordThatIsFoundEverywhere) {
    wieErwartet(WoerterVergleichen, {{u"a  b", u"a b", 1}, {u"a  b", u"c", 0.25}});
}

TEST(WoerterVergleichen, MoreThan255WordsOverflow) {
    const Wert hundert(vieleWoerter(100));
    EXPECT_EQ(1, WoerterVergleichen(hundert, Wert(vieleWoerter(155))));
    try {
        WoerterVergleichen(hundert, Wert(vieleWoerter(156)));
        FAIL();
    } catch (const EngineFehler& fehler) {
        EXPECT_EQ(kUeberlauf, fehler.nummer());
    }
}

TEST(NummernVergleichen, DigitsInTheSamePlace) {
    wieErwartet(NummernVergleichen, {
                                        {u"12345", u"12345", 1},
                                        {u"12345", u"22345", 0},
                                        {u"12345", u"13345", 0.8},
                                        {u"12345", u"1234", 0.7},
                                        {u"1", u"1234", 0},
                                        {u"12", u"12345678", 0},
                                        {50667, u"50667", 1},
                                    });
}

TEST(NummernVergleichen, WhatDoesNotReadAsANumberGivesZero) {
    wieErwartet(NummernVergleichen, {{u"12a", u"12a", 0},
                                     {u"", u"", 0},
                                     {Wert::null(), u"1", 0},
                                     {Wert(), u"1", 0},
                                     {DatumZeit{1}, DatumZeit{1}, 0}});
}

TEST(NummernVergleichen, ALeadingZeroMovesEverything) {
    wieErwartet(NummernVergleichen, {{u"0123", u"123", 0}});
}

TEST(NummernVergleichen, LenientNumbersCompareTheirCharactersAsTheyStand) {
    wieErwartet(
        NummernVergleichen,
        {{u" 12", u"12", 0}, {u" 12", u" 12", 1}, {u"12,5", u"12.5", 0.75}, {u"-12", u"-13", 2.0 / 3}});
}

}  // namespace
