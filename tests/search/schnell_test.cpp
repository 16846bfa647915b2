// The fast comparison of blocks against the letter of the rules.
#include "search/schnell.h"

#include <gtest/gtest.h>

#include <cmath>

#include "fields/einstellungen.h"
#include "gemeinsam/instrumentiert.h"
#include "search/blocksuche.h"
#include "search/boesewerte.h"
#include "search/zufallsadressen.h"

namespace {

using Paarliste = std::vector<std::pair<qint32, qint32>>;

class Schnell : public ::testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
    void TearDown() override { EinstellungenAnwenden({}); }
};

// The slices and sweeps as they are told, with two positions that walk on.
Paarliste woertlich(const FeldZuordnungen& zuordnungen, const std::vector<Zeile>& zeilen, bool differenzieren,
                    float schwelle) {
    const Vergleicher vergleicher(zuordnungen, differenzieren);
    Paarliste treffer;
    const int letzter = int(zeilen.size());
    if (letzter == 0) return treffer;
    const int breite = int(std::log(letzter) / std::log(1.5) + 1);
    int position1 = 1;
    while (position1 <= letzter) {
        const int n1 = std::min(breite, letzter - position1 + 1);
        const int anfang1 = position1;
        position1 += n1;
        int position2 = anfang1;
        bool erster = true;
        while (position2 <= letzter) {
            const int n2 = std::min(breite, letzter - position2 + 1);
            const int anfang2 = position2;
            position2 += n2;
            for (int i = 1; i <= n1; ++i)
                for (int j = erster ? i + 1 : 1; j <= n2; ++j) {
                    const int a = anfang1 + i - 2;
                    const int b = anfang2 + j - 2;
                    if (*vergleicher.vergleichen(zeilen[size_t(a)].data(), zeilen[size_t(b)].data()) >=
                        schwelle)
                        treffer.emplace_back(a, b);
                }
            erster = false;
        }
    }
    return treffer;
}

struct Ergebnis {
    Paarliste treffer;
    qint64 paare = 0;
};

Ergebnis schnell(Schnellvergleich& vergleich, const std::vector<Zeile>& zeilen) {
    Ergebnis ergebnis;
    vergleich.leeren();
    for (const Zeile& zeile : zeilen) EXPECT_TRUE(vergleich.anfuegen(zeile.data()));
    Paarempfang empfang;
    empfang.treffer = [&](qint32 i, qint32 j) {
        ergebnis.treffer.emplace_back(i, j);
        return true;
    };
    empfang.atempause = [&](qint64 paare) {
        ergebnis.paare += paare;
        return true;
    };
    EXPECT_TRUE(vergleich.vergleichen(empfang));
    return ergebnis;
}

// Where a small block ends: every second time the way of the great ones is gone with a few rows as well.
size_t kleinerBlock(quint32 runde) {
    return runde % 2 == 0 ? Schnellvergleich::kKleinerBlock : 2;
}

constexpr float kSchwellen[] = {0.82f, 0.73f, 0.62f, 0.5f, 0.05f, 1.0f};

TEST_F(Schnell, SameHitsInTheSameOrderAsTheLetterInManySmallBlocks) {
    qint64 gefunden = 0;
    qint64 paare = 0;
    constexpr quint32 kSchritt = kInstrumentiert ? 11 : 1;
    for (quint32 runde = 0; runde < 2000; runde += kSchritt) {
        SCOPED_TRACE(runde);
        const FeldZuordnungen& zuordnungen = Zufallszuordnungen()[runde % Zufallszuordnungen().size()];
        const bool differenzieren = runde % 4 == 3;
        const float schwelle = kSchwellen[runde / 7 % 6];
        Zufallsadressen adressen(runde, 2 + int(runde % 30));
        Schnellvergleich vergleich(zuordnungen, differenzieren, schwelle, kleinerBlock(runde));
        ASSERT_TRUE(vergleich.moeglich());
        // The store of values stays from block to block.
        for (int block = 0; block < 2; ++block) {
            const std::vector<Zeile> zeilen = adressen.zeilen(zuordnungen, adressen.zahl(0, 40));
            const Paarliste soll = woertlich(zuordnungen, zeilen, differenzieren, schwelle);
            const Ergebnis ist = schnell(vergleich, zeilen);
            ASSERT_EQ(soll, ist.treffer);
            const qint64 n = qint64(zeilen.size());
            ASSERT_EQ(n * (n - 1) / 2, ist.paare);
            gefunden += qint64(soll.size());
            paare += ist.paare;
        }
    }
    EXPECT_GT(gefunden, 10000 / kSchritt);
    EXPECT_GT(paare - gefunden, 10000 / kSchritt);
}

TEST_F(Schnell, SameHitsInTheSameOrderAsTheLetterInBlocksWithTablesAndGroups) {
    qint64 gefunden = 0;
    constexpr quint32 kSchritt = kInstrumentiert ? 5 : 1;
    for (quint32 runde = 0; runde < 21; runde += kSchritt) {
        SCOPED_TRACE(runde);
        const FeldZuordnungen& zuordnungen = Zufallszuordnungen()[runde % Zufallszuordnungen().size()];
        const bool differenzieren = runde / 7 == 1;
        const float schwelle = kSchwellen[runde % 4];
        Zufallsadressen adressen(1000 + runde, 4 + int(runde) * 3);
        const std::vector<Zeile> zeilen = adressen.zeilen(zuordnungen, 270 + int(runde) * 8);
        Schnellvergleich vergleich(zuordnungen, differenzieren, schwelle);
        const Paarliste soll = woertlich(zuordnungen, zeilen, differenzieren, schwelle);
        ASSERT_EQ(soll, schnell(vergleich, zeilen).treffer);
        gefunden += qint64(soll.size());
    }
    EXPECT_GT(gefunden, 1000 / kSchritt);
}

// Of some pair that is not quite different, 0 when there is none to be found.
float relevanzEinesPaars(const FeldZuordnungen& zuordnungen, bool differenzieren,
                         const std::vector<Zeile>& zeilen, BoeseWerte& werte) {
    const Vergleicher vergleicher(zuordnungen, differenzieren);
    const auto eine = [&] { return zeilen[size_t(werte.zahl(0, int(zeilen.size()) - 1))].data(); };
    for (int versuch = 0; versuch < 100; ++versuch)
        if (const float relevanz = *vergleicher.vergleichen(eine(), eine()); relevanz > 0.2f && relevanz < 1)
            return relevanz;
    return 0;
}

// A million pairs; ten million with LINDGARN_LANG.
qint64 genugPaare() {
    if (qEnvironmentVariableIsSet("LINDGARN_LANG")) return 10000000;
    return kInstrumentiert ? 300000 : 1000000;
}

TEST_F(Schnell, SameHitsInTheSameOrderAsTheLetterOnNastyValues) {
    const qint64 genug = genugPaare();
    qint64 gefunden = 0;
    qint64 amRand = 0;
    qint64 paare = 0;
    for (quint32 runde = 0; paare < genug; ++runde) {
        SCOPED_TRACE(runde);
        BoeseWerte werte(runde);
        const FeldZuordnungen zuordnungen = werte.zuordnung();
        const bool differenzieren = werte.zahl(0, 2) == 0;
        const std::vector<Zeile> zeilen = werte.zeilen(zuordnungen, werte.zahl(2, runde % 3 == 0 ? 260 : 90));
        if (zeilen[0].empty()) continue;
        // Now and then the threshold is what a pair has, or just above it.
        float schwelle = kSchwellen[werte.zahl(0, 3)];
        const float eine = relevanzEinesPaars(zuordnungen, differenzieren, zeilen, werte);
        if (eine > 0 && werte.zahl(0, 1)) {
            schwelle = werte.zahl(0, 1) ? eine : std::nextafter(eine, 2.0f);
            ++amRand;
        }
        Schnellvergleich vergleich(zuordnungen, differenzieren, schwelle, kleinerBlock(runde));
        ASSERT_TRUE(vergleich.moeglich());
        const Paarliste soll = woertlich(zuordnungen, zeilen, differenzieren, schwelle);
        const Ergebnis ist = schnell(vergleich, zeilen);
        ASSERT_EQ(soll, ist.treffer);
        paare += ist.paare;
        gefunden += qint64(soll.size());
    }
    EXPECT_GT(gefunden, paare / 100);
    EXPECT_GT(paare - gefunden, paare / 100);
    EXPECT_GT(amRand, 20);
}

TEST_F(Schnell, SameHitsWithWeightsFromTheSettings) {
    for (quint32 runde = 0; runde < 200; ++runde) {
        SCOPED_TRACE(runde);
        const FeldZuordnungen& zuordnungen = Zufallszuordnungen()[runde % Zufallszuordnungen().size()];
        Zufallsadressen adressen(5000 + runde, 8);
        for (Feldart& art : gFeldArten)
            art.RelevanzFaktor = qint16(adressen.zahl(0, 3) * adressen.zahl(0, 333));
        Schnellvergleich vergleich(zuordnungen, false, 0.62f, kleinerBlock(runde));
        const std::vector<Zeile> zeilen = adressen.zeilen(zuordnungen, 40);
        ASSERT_EQ(woertlich(zuordnungen, zeilen, false, 0.62f), schnell(vergleich, zeilen).treffer);
    }
}

TEST_F(Schnell, ATableWhoseFieldsHaveNoWeightHasNoHits) {
    const FeldZuordnungen zuordnungen{{4, 4}};
    Schnellvergleich vergleich(zuordnungen, true, 0.5f);
    ASSERT_TRUE(vergleich.moeglich());
    const Ergebnis ist = schnell(vergleich, std::vector<Zeile>(100, Zeile{Wert(u"meyer")}));
    EXPECT_TRUE(ist.treffer.empty());
    EXPECT_EQ(4950, ist.paare);
}

TEST_F(Schnell, AValueOfManyWordsIsLeftToTheLetter) {
    const FeldZuordnungen zuordnungen{{3, 8}};
    Schnellvergleich vergleich(zuordnungen, false, 0.5f);
    const Wert knapp(QStringLiteral("x ").repeated(126) + u'x');
    const Wert zuViel(QStringLiteral("x ").repeated(127) + u'x');
    EXPECT_TRUE(vergleich.anfuegen(&knapp));
    EXPECT_FALSE(vergleich.anfuegen(&zuViel));
    // The next block knows nothing of it.
    vergleich.leeren();
    EXPECT_TRUE(vergleich.anfuegen(&knapp));
}

TEST_F(Schnell, NegativeWeightsAndThresholdsAreLeftToTheLetter) {
    EXPECT_FALSE(Schnellvergleich({{3, 8}}, false, 0).moeglich());
    EXPECT_FALSE(Schnellvergleich({{1, 11}}, false, 0.5f).moeglich());
    gFeldArten[kOrt].RelevanzFaktor = -1;
    EXPECT_FALSE(Schnellvergleich({{3, 8}}, false, 0.5f).moeglich());
}

TEST_F(Schnell, TheReceiverCanHaveEnough) {
    const std::vector<Zeile> zeilen(500, Zeile{Wert(u"köln")});
    Schnellvergleich vergleich({{3, 8}}, false, 0.5f);
    for (const Zeile& zeile : zeilen) vergleich.anfuegen(zeile.data());
    const Paarliste alle = woertlich({{3, 8}}, zeilen, false, 0.5f);
    Paarliste treffer;
    qint64 paare = 0;
    Paarempfang empfang;
    empfang.hoechstens = 1000;
    empfang.treffer = [&](qint32 i, qint32 j) {
        treffer.emplace_back(i, j);
        return treffer.size() < 1000;
    };
    empfang.atempause = [&](qint64 n) {
        paare += n;
        return true;
    };
    EXPECT_TRUE(vergleich.vergleichen(empfang));
    EXPECT_EQ(Paarliste(alle.begin(), alle.begin() + 1000), treffer);
    EXPECT_EQ(500 * 499 / 2, paare);
}

// More hits than are held at once: they come window by window, still in order.
TEST_F(Schnell, AllHitsOfAGreatBlockOfEqualRecords) {
    constexpr qint32 kSaetze = 3200;
    const std::vector<Zeile> zeilen(kSaetze, Zeile{Wert(u"köln"), Wert(u"50667")});
    Schnellvergleich vergleich({{3, 8}, {3, 4}}, false, 1.0f);
    for (const Zeile& zeile : zeilen) vergleich.anfuegen(zeile.data());
    const qint64 breite = qint64(std::log(kSaetze) / std::log(1.5) + 1);
    qint64 anzahl = 0;
    qint64 paare = 0;
    std::tuple<qint64, qint64, qint32, qint32> zuvor{-1, 0, 0, 0};
    bool geordnet = true;
    Paarempfang empfang;
    empfang.treffer = [&](qint32 i, qint32 j) {
        ++anzahl;
        geordnet = geordnet && i < j && zuvor < std::tuple(i / breite, j / breite, i, j);
        zuvor = {i / breite, j / breite, i, j};
        return true;
    };
    empfang.atempause = [&](qint64 n) {
        paare += n;
        return true;
    };
    EXPECT_TRUE(vergleich.vergleichen(empfang));
    EXPECT_EQ(qint64(kSaetze) * (kSaetze - 1) / 2, anzahl);
    EXPECT_EQ(anzahl, paare);
    EXPECT_TRUE(geordnet);
}

TEST_F(Schnell, ItBreathesAndCanBeStopped) {
    Zufallsadressen adressen(3, 500);
    const FeldZuordnungen& zuordnungen = Zufallszuordnungen()[0];
    Schnellvergleich vergleich(zuordnungen, false, 0.73f);
    for (const Zeile& zeile : adressen.zeilen(zuordnungen, 5000)) vergleich.anfuegen(zeile.data());
    Paarempfang empfang;
    empfang.treffer = [](qint32, qint32) { return true; };
    int atemzuege = 0;
    empfang.atempause = [&](qint64) { return ++atemzuege < 20; };
    EXPECT_FALSE(vergleich.vergleichen(empfang));
    EXPECT_EQ(20, atemzuege);
}

// A block without a firm is the normal case; most of its pairs must go without being looked at.
TEST_F(Schnell, AGreatBlockOfBlankFirmsTakesSeconds) {
    const FeldZuordnungen zuordnungen{{2, 3}, {4, 2}, {4, 4}, {3, 1}, {3, 4}, {3, 8}};
    std::mt19937 zufall(7);
    const auto zahl = [&](int n) { return int(zufall() % quint32(n)); };
    Schnellvergleich vergleich(zuordnungen, false, 0.73f);
    constexpr int kSaetze = 100000;
    for (int i = 0; i < kSaetze; ++i) {
        const int ort = zahl(3000);
        const Zeile zeile{Wert(u" "),
                          Wert(QStringLiteral("vor%1").arg(zahl(500))),
                          Wert(QStringLiteral("nach%1").arg(zahl(20000))),
                          Wert(QStringLiteral("str%1").arg(zahl(50000))),
                          Wert(QString::number(10000 + ort * 29)),
                          Wert(QStringLiteral("ort%1").arg(ort))};
        ASSERT_TRUE(vergleich.anfuegen(zeile.data()));
    }
    qint64 paare = 0;
    qint64 schritte = 0;
    Paarempfang empfang;
    empfang.treffer = [](qint32, qint32) { return true; };
    empfang.atempause = [&](qint64 n) {
        paare += n;
        ++schritte;
        return true;
    };
    EXPECT_TRUE(vergleich.vergleichen(empfang));
    EXPECT_EQ(qint64(kSaetze) * (kSaetze - 1) / 2, paare);
    // Steps are counted, not seconds: far fewer than one for each hundred pairs.
    EXPECT_LT(schritte * 20000, paare / 100);
}

}  // namespace
