// Progress and the estimate of time.
#include "run/fortschritt.h"

#include <gtest/gtest.h>

#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

class Fortschritt : public testing::Test {
  protected:
    Fortschritt() { ZustandZuruecksetzen(); }
    ~Fortschritt() override { ZustandZuruecksetzen(); }
    Fensterattrappe fenster_;
};

struct Zeitfall {
    qint64 laufzeit, wert, gesamt;
    const char16_t* dauer;
    const char16_t* rest;
};

TEST(ZeitAnzeige, EstimateAndRemainingTime) {
    const Zeitfall faelle[] = {
        {1000, 1, 3600, u"1:00:00", u"0:59:59"},    // hours are not padded
        {1000, 1, 36000, u"10:00:00", u"9:59:59"},  // ten hours
        {5000, 10, 10, u"0:00:05", u"0:00:00"},     // at the end
        {1000, 3, 4, u"0:00:01", u"0:00:00"},      {60000, 1, 1, u"0:01:00", u"0:00:00"},
        {2000, 1, 30, u"0:01:00", u"0:00:58"},     {1001, 2, 4, u"0:00:02", u"0:00:01"},
    };
    for (const Zeitfall& fall : faelle) {
        SCOPED_TRACE(testing::Message() << fall.laufzeit << " " << fall.wert << " " << fall.gesamt);
        const auto [dauer, rest] = ZeitAnzeige(fall.laufzeit, fall.wert, fall.gesamt);
        EXPECT_EQ(QStringLiteral("Geschätzte Dauer : ") + QString::fromUtf16(fall.dauer), dauer);
        EXPECT_EQ(QStringLiteral("Verbleibende Zeit  : ") + QString::fromUtf16(fall.rest), rest);
    }
}

TEST(ZeitAnzeige, AHalfGoesToTheEvenNeighbourAndTheRestIsCut) {
    // 999,5 milliseconds go up to 1000, a full second; 998,5 go down to 998.
    EXPECT_EQ(QStringLiteral("Geschätzte Dauer : 0:00:01"), ZeitAnzeige(1999, 2, 1).first);
    EXPECT_EQ(QStringLiteral("Geschätzte Dauer : 0:00:00"), ZeitAnzeige(1997, 2, 1).first);
    // The rest cuts 2999,5 to 2999 before it subtracts.
    EXPECT_EQ(QStringLiteral("Verbleibende Zeit  : 0:00:01"), ZeitAnzeige(1000, 2000, 5999).second);
}

TEST(ZeitAnzeige, PositionZeroShowsNothing) {
    EXPECT_EQ(QString(), ZeitAnzeige(5000, 0, 100).first);
    EXPECT_EQ(QString(), ZeitAnzeige(5000, 0, 100).second);
}

TEST(ZeitAnzeige, TimesBeyond32BitsShowTheGreatestOne) {
    const auto [dauer, rest] = ZeitAnzeige(1000, 1, 180000000000);
    EXPECT_EQ(QStringLiteral("Geschätzte Dauer : 596:31:23"), dauer);
    EXPECT_EQ(QStringLiteral("Verbleibende Zeit  : 596:31:23"), rest);
}

TEST(ZeitZweistellig, PadsBelowTen) {
    EXPECT_EQ(QStringLiteral("00"), ZeitZweistellig(0));
    EXPECT_EQ(QStringLiteral("09"), ZeitZweistellig(9));
    EXPECT_EQ(QStringLiteral("10"), ZeitZweistellig(10));
    EXPECT_EQ(QStringLiteral("59"), ZeitZweistellig(59));
}

TEST_F(Fortschritt, Leeren) {
    fenster_.dauerText = fenster_.restText = QStringLiteral("alt");
    FortschrittLeeren();
    EXPECT_EQ(QString(), fenster_.dauerText);
    EXPECT_EQ(QString(), fenster_.restText);
    EXPECT_EQ(0.0f, fenster_.prozent);
    EXPECT_EQ(QStringLiteral("0 %"), fenster_.prozentText);
}

TEST_F(Fortschritt, StartSetsTotalsAndTimers) {
    gLaufzeitMs = 77;
    gFortschrittWert = 5;
    FortschrittStarten(200, 0.3);
    EXPECT_EQ(0, gLaufzeitMs);
    EXPECT_EQ(200, gFortschrittMax);
    EXPECT_EQ(0, gFortschrittWert);
    EXPECT_EQ(0.3f, gFortschrittAnteil);
    EXPECT_TRUE(fenster_.takt);
}

TEST_F(Fortschritt, StoppingKeepsTheDisplayAndEndingFillsIt) {
    FortschrittStarten(200, 0.1);
    fenster_.prozent = 12;
    fenster_.prozentText = QStringLiteral("12 %");
    FortschrittAnhalten();
    EXPECT_FALSE(fenster_.takt);
    EXPECT_EQ(12.0f, fenster_.prozent);
    EXPECT_EQ(QStringLiteral("12 %"), fenster_.prozentText);
    FortschrittStarten(200, 0.1);
    FortschrittBeenden();
    EXPECT_FALSE(fenster_.takt);
    EXPECT_EQ(100.0f, fenster_.prozent);
    EXPECT_EQ(QStringLiteral("100 %"), fenster_.prozentText);
}

TEST_F(Fortschritt, TheBarsTickShowsTheShareRounded) {
    struct Fall {
        qint64 wert, gesamt;
        float prozent;
        const char16_t* text;
    };
    for (const Fall& fall :
         {Fall{0, 8, 0.0f, u"0 %"}, Fall{1, 8, 12.5f, u"13 %"}, Fall{1, 3, float(100.0 / 3), u"33 %"},
          Fall{5, 1000, 0.5f, u"1 %"}, Fall{4, 1000, 0.4f, u"0 %"}, Fall{8, 8, 100.0f, u"100 %"}}) {
        SCOPED_TRACE(fall.wert);
        FortschrittStarten(fall.gesamt, 0.1);
        gFortschrittWert = fall.wert;
        tmrFortschritt_Timer();
        EXPECT_FLOAT_EQ(fall.prozent, fenster_.prozent);
        EXPECT_EQ(QString::fromUtf16(fall.text), fenster_.prozentText);
    }
}

TEST_F(Fortschritt, APhaseWithoutItemsAndAPositionPastTheEndAreHarmless) {
    FortschrittLeeren();
    FortschrittStarten(0, 0.1);
    tmrFortschritt_Timer();
    EXPECT_EQ(QStringLiteral("0 %"), fenster_.prozentText);
    FortschrittStarten(2, 0.1);
    gFortschrittWert = 3;
    tmrFortschritt_Timer();
    EXPECT_EQ(100.0f, fenster_.prozent);
}

TEST_F(Fortschritt, TheTimeIsTheSumOfTheTicks) {
    FortschrittStarten(3600, 0.1);
    tmrDauer_Timer(1000);
    EXPECT_EQ(QString(), fenster_.dauerText);  // position 0
    gFortschrittWert = 2;
    tmrDauer_Timer(1000);
    EXPECT_EQ(2000, gLaufzeitMs);
    EXPECT_EQ(QStringLiteral("Geschätzte Dauer : 1:00:00"), fenster_.dauerText);
    EXPECT_EQ(QStringLiteral("Verbleibende Zeit  : 0:59:58"), fenster_.restText);
}

}  // namespace
