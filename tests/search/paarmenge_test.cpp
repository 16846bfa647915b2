// The set of listed pairs.
#include "search/paarmenge.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

TEST(PaarMenge, APairIsListedOnceInEitherOrder) {
    PaarMenge menge;
    EXPECT_FALSE(menge.enthaelt(1, 2));
    EXPECT_TRUE(menge.einfuegen(1, 2));
    EXPECT_FALSE(menge.einfuegen(1, 2));
    EXPECT_FALSE(menge.einfuegen(2, 1));
    EXPECT_TRUE(menge.enthaelt(2, 1));
    EXPECT_FALSE(menge.enthaelt(1, 3));
    EXPECT_EQ(1u, menge.anzahl());
    menge.leeren();
    EXPECT_FALSE(menge.enthaelt(1, 2));
    EXPECT_TRUE(menge.einfuegen(2, 1));
}

TEST(PaarMenge, SameAnswersAsAPlainSet) {
    std::mt19937 zufall(11);
    std::uniform_int_distribution<qint32> satz(1, 400);
    PaarMenge menge;
    std::set<std::pair<qint32, qint32>> plain;
    for (int i = 0; i < 200000; ++i) {
        const qint32 a = satz(zufall);
        const qint32 b = satz(zufall);
        const bool neu = plain.insert(std::minmax(a, b)).second;
        ASSERT_EQ(neu, menge.einfuegen(a, b));
    }
    EXPECT_EQ(plain.size(), menge.anzahl());
}

}  // namespace
