// Hits in any order, told in that of slices and sweeps.
#include "search/treffersammlung.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "search/paarfolge.h"

namespace {

using Paarliste = std::vector<std::pair<qint32, qint32>>;

Paarliste inReihenfolge(qint32 zeilen) {
    const qint32 breite = qint32(Scheibenbreite(zeilen));
    Paarliste paare;
    for (qint32 s = 0; s < zeilen; s += breite)
        for (qint32 t = s; t < zeilen; t += breite)
            for (qint32 i = s; i < std::min(s + breite, zeilen); ++i)
                for (qint32 j = std::max(t, i + 1); j < std::min(t + breite, zeilen); ++j)
                    paare.emplace_back(i, j);
    return paare;
}

void eintragen(Treffersammlung& sammlung, const Paarliste& paare) {
    for (const auto& paar : paare) sammlung.eintragen(paar.second, paar.first);
}

TEST(Paarfolge, WidthOfASlice) {
    const std::pair<qint64, qint64> breiten[] = {{1, 1}, {2, 2}, {10, 6}, {100, 12}, {1000, 18}};
    for (const auto& [anzahl, breite] : breiten) EXPECT_EQ(breite, Scheibenbreite(anzahl)) << anzahl;
}

TEST(Treffersammlung, WindowByWindowInTheOrderOfSlicesAndSweeps) {
    for (const qint32 zeilen : {2, 3, 17, 120}) {
        SCOPED_TRACE(zeilen);
        const Paarliste soll = inReihenfolge(zeilen);
        Paarliste gemischt = soll;
        std::shuffle(gemischt.begin(), gemischt.end(), std::mt19937(1));
        for (const size_t fenster : {size_t(1), size_t(7), soll.size(), soll.size() + 1}) {
            Treffersammlung sammlung(size_t(zeilen), fenster);
            Paarliste ist;
            do {
                eintragen(sammlung, gemischt);
                const qint32 von = sammlung.ersteZeile();
                sammlung.ordnen();
                ASSERT_LE(sammlung.anzahl(), fenster);
                for (size_t n = 0; n < sammlung.anzahl(); ++n) {
                    const auto treffer = sammlung.treffer(n);
                    ASSERT_GE(treffer.i, von);
                    ASSERT_LT(treffer.i, sammlung.zeilengrenze());
                    ist.emplace_back(treffer.i, treffer.j);
                }
            } while (sammlung.weiterruecken());
            EXPECT_EQ(soll, ist);
        }
    }
}

}  // namespace
