// The yield and what long engine operations do meanwhile.
#include "run/fenster.h"

#include <gtest/gtest.h>

#include <chrono>

#include "base/atempause.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

using Uhr = std::chrono::steady_clock;

TEST(DoEvents, PumpsAtEveryCallWithoutADistance) {
    Fensterattrappe fenster;
    for (int i = 0; i < 5; ++i) DoEvents();
    EXPECT_EQ(5, fenster.ereignisse);
}

TEST(DoEvents, PumpsAtOnceAndThenOnlyWhenTimeHasPassed) {
    Fensterattrappe fenster;
    DoEventsAbstandSetzen(3600000);
    for (int i = 0; i < 1000; ++i) DoEvents();
    EXPECT_EQ(1, fenster.ereignisse);
}

TEST(DoEvents, PumpsAgainAfterItsDistance) {
    Fensterattrappe fenster;
    DoEventsAbstandSetzen(8);
    const Uhr::time_point ende = Uhr::now() + std::chrono::milliseconds(100);
    while (Uhr::now() < ende) DoEvents();
    EXPECT_GE(fenster.ereignisse, 2);
    EXPECT_LE(fenster.ereignisse, 13);
}

// The breathing hook runs at most every few milliseconds, so it is called until it does.
void atmenLassen(const Fensterattrappe& fenster) {
    const Uhr::time_point ende = Uhr::now() + std::chrono::seconds(5);
    while (fenster.ereignisse + fenster.zeichnungen == 0 && Uhr::now() < ende) Atempause();
}

TEST(Atempause, ServesClicksWhileARunIsOnShow) {
    Fensterattrappe fenster;
    gRahmen = 6;
    atmenLassen(fenster);
    EXPECT_EQ(1, fenster.ereignisse);
    EXPECT_EQ(0, fenster.zeichnungen);
    ZustandZuruecksetzen();
}

TEST(Atempause, OnlyPaintsElsewhere) {
    for (int rahmen : {-1, 2, 3, 12}) {
        SCOPED_TRACE(rahmen);
        Fensterattrappe fenster;
        gRahmen = qint16(rahmen);
        atmenLassen(fenster);
        EXPECT_EQ(0, fenster.ereignisse);
        EXPECT_EQ(1, fenster.zeichnungen);
    }
    ZustandZuruecksetzen();
}

}  // namespace
