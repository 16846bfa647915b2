// Groups, their list and the program's own sort, against a literal telling of the same rules.
#include "search/gruppen.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// The rules as they are told: recursion over all entries, scans for what is listed, a pivot that is a place.
class Woertlich {
  public:
    explicit Woertlich(std::vector<Paar> paare) : paare_(std::move(paare)) {}

    std::vector<Paar> bilden() {
        qint32 gruppe = 0;
        for (size_t i = 0; i < paare_.size(); ++i)
            if (paare_[i].gruppe == 0) ausbreiten(paare_[i].erster, ++gruppe);
        return paare_;
    }

    std::vector<Dublette> auflisten() const {
        std::vector<Dublette> liste;
        const auto bekannt = [&](qint32 satz) {
            for (const Dublette& d : liste)
                if (d.satz == satz) return true;
            return false;
        };
        for (const Paar& paar : paare_) {
            if (!bekannt(paar.erster)) liste.push_back({paar.erster, paar.gruppe});
            if (!bekannt(paar.zweiter)) liste.push_back({paar.zweiter, paar.gruppe});
        }
        return liste;
    }

  private:
    void ausbreiten(qint32 x, qint32 g) {
        for (Paar& paar : paare_) {
            if (paar.gruppe != 0) continue;
            if (paar.erster == x) {
                paar.gruppe = g;
                ausbreiten(paar.zweiter, g);
            } else if (paar.zweiter == x) {
                paar.gruppe = g;
                ausbreiten(paar.erster, g);
            }
        }
    }

    std::vector<Paar> paare_;
};

class WoertlicheSortierung {
  public:
    explicit WoertlicheSortierung(std::vector<Dublette> d) : d_(std::move(d)) {}
    std::vector<Dublette> sortiert() {
        if (d_.size() > 1) sortieren(1, int(d_.size()));
        return d_;
    }

  private:
    const Dublette& an(int position) const { return d_.at(size_t(position) - 1); }

    int vergleichen(int i, int j) const {
        if (an(i).gruppe < an(j).gruppe) return -1;
        if (an(i).gruppe > an(j).gruppe) return 1;
        if (an(i).satz < an(j).satz) return -1;
        return an(i).satz > an(j).satz ? 1 : 0;
    }

    void sortieren(int lo, int hi) {
        int i = lo;
        int j = hi;
        const int m = (lo + hi) / 2;
        do {
            while (vergleichen(i, m) == -1) ++i;
            while (vergleichen(m, j) == -1) --j;
            if (i <= j) {
                std::swap(d_.at(size_t(i) - 1), d_.at(size_t(j) - 1));
                ++i;
                --j;
            }
        } while (i <= j);
        if (lo < j) sortieren(lo, j);
        if (i < hi) sortieren(i, hi);
    }

    std::vector<Dublette> d_;
};

std::vector<qint32> nummern(std::vector<Paar> paare) {
    GruppenBilden(paare);
    std::vector<qint32> ergebnis;
    for (const Paar& paar : paare) ergebnis.push_back(paar.gruppe);
    return ergebnis;
}

std::vector<Paar> zufallspaare(std::mt19937& zufall, int saetze, int anzahl) {
    std::uniform_int_distribution<qint32> satz(1, saetze);
    std::vector<Paar> paare;
    while (int(paare.size()) < anzahl) {
        const Paar paar{satz(zufall), satz(zufall), 0};
        if (paar.erster != paar.zweiter) paare.push_back(paar);
    }
    return paare;
}

TEST(GruppenBilden, ALikeBAndBLikeCMakesOneGroup) {
    EXPECT_EQ((std::vector<qint32>{1, 1}), nummern({{1, 2}, {2, 3}}));
}

TEST(GruppenBilden, NumbersFollowTheFirstPairOfEachGroup) {
    EXPECT_EQ((std::vector<qint32>{1, 2, 1, 3, 2}), nummern({{9, 8}, {1, 2}, {7, 8}, {5, 6}, {2, 4}}));
}

TEST(GruppenBilden, NoPairs) {
    EXPECT_TRUE(nummern({}).empty());
}

TEST(GruppenBilden, ALongChainNeedsNoStack) {
    std::vector<Paar> kette;
    for (qint32 i = 1; i <= 1000000; ++i) kette.push_back({i, i + 1, 0});
    GruppenBilden(kette);
    EXPECT_EQ(1, kette.front().gruppe);
    EXPECT_EQ(1, kette.back().gruppe);
}

TEST(GruppenBilden, SameNumbersAndListAsTheLiteralRules) {
    std::mt19937 zufall(4711);
    for (int runde = 0; runde < 300; ++runde) {
        SCOPED_TRACE(runde);
        std::vector<Paar> paare = zufallspaare(zufall, 3 + runde % 60, runde % 90);
        Woertlich woertlich(paare);
        GruppenBilden(paare);
        ASSERT_EQ(woertlich.bilden(), paare);
        ASSERT_EQ(woertlich.auflisten(), DublettenAuflisten(paare));
    }
}

TEST(DublettenSortieren, SameListAsTheLiteralRules) {
    std::mt19937 zufall(1971);
    for (int runde = 0; runde < 400; ++runde) {
        SCOPED_TRACE(runde);
        std::vector<Dublette> liste;
        const int laenge = runde % 300;
        std::uniform_int_distribution<qint32> gruppe(1, 1 + runde % 40);
        std::uniform_int_distribution<qint32> satz(1, 500);
        for (int i = 0; i < laenge; ++i) liste.push_back({satz(zufall), gruppe(zufall)});
        const std::vector<Dublette> soll = WoertlicheSortierung(liste).sortiert();
        DublettenSortieren(liste);
        ASSERT_EQ(soll, liste);
    }
}

TEST(DublettenSortieren, ALongListNeedNotEndSorted) {
    std::mt19937 zufall(7);
    std::vector<Dublette> liste;
    for (qint32 i = 1; i <= 200; ++i) liste.push_back({i, i});
    std::shuffle(liste.begin(), liste.end(), zufall);
    DublettenSortieren(liste);
    const auto kleiner = [](const Dublette& a, const Dublette& b) { return a.gruppe < b.gruppe; };
    EXPECT_FALSE(std::is_sorted(liste.begin(), liste.end(), kleiner));
}

TEST(DublettenSortieren, ShortListsEndSorted) {
    for (const std::vector<Dublette>& liste :
         {std::vector<Dublette>{}, {{1, 1}}, {{2, 1}, {1, 1}}, {{1, 2}, {9, 1}, {3, 1}}}) {
        std::vector<Dublette> sortiert = liste;
        DublettenSortieren(sortiert);
        EXPECT_TRUE(
            std::is_sorted(sortiert.begin(), sortiert.end(), [](const Dublette& a, const Dublette& b) {
                return std::tie(a.gruppe, a.satz) < std::tie(b.gruppe, b.satz);
            }));
    }
}

TEST(DublettenSortieren, ASortedListOfManyNeedsNoDeepStack) {
    std::vector<Dublette> liste;
    for (qint32 i = 1; i <= 1000000; ++i) liste.push_back({i, i / 2});
    const std::vector<Dublette> vorher = liste;
    DublettenSortieren(liste);
    EXPECT_EQ(vorher, liste);
}

}  // namespace
