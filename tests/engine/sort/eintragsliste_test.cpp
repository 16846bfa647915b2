// Byte strings sorted eight bytes at a time come in the order in which they compare.
#include "engine/sort/eintragsliste.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <algorithm>
#include <random>
#include <stdexcept>

#include "base/atempause.h"

namespace {

std::vector<QByteArray> sortiert(const std::vector<QByteArray>& eintraege, qsizetype schnitt = 0) {
    sort::Eintragsliste liste;
    for (const QByteArray& e : eintraege) {
        const qsizetype bei = std::min(schnitt, e.size());
        liste.aufnehmen(QByteArrayView(e).first(bei), QByteArrayView(e).sliced(bei));
    }
    liste.sortieren();
    std::vector<QByteArray> folge;
    for (size_t i = 0; i < liste.anzahl(); ++i) folge.push_back(liste[i].toByteArray());
    return folge;
}

bool kleiner(const QByteArray& a, const QByteArray& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return quint8(x) < quint8(y); });
}

void vergleichen(std::vector<QByteArray> eintraege) {
    for (const qsizetype schnitt : {0, 3, 100}) {
        const std::vector<QByteArray> ist = sortiert(eintraege, schnitt);
        std::vector<QByteArray> soll = eintraege;
        std::sort(soll.begin(), soll.end(), kleiner);
        ASSERT_EQ(ist, soll);
    }
}

TEST(Eintragsliste, KurzeVorLangenUndNullenSindZeichen) {
    vergleichen({});
    vergleichen({QByteArray("a\0", 2), QByteArray("a"), QByteArray(), QByteArray("a\0\0\0\0\0\0\0", 8),
                 QByteArray("a\0\0\0\0\0\0\0\0", 9), QByteArray("a\0\0\0\0\0\0\0\0\1", 10),
                 QByteArray("\xff"), QByteArray("12345678"), QByteArray("123456789"),
                 QByteArray("12345678\0", 9), QByteArray("1")});
}

// Few letters and many alike, over more than one of the pieces that are sorted without a breath.
TEST(Eintragsliste, VieleZufaellige) {
    std::mt19937 zufall(5);
    for (const int anzahl : {100, 100000}) {
        std::vector<QByteArray> eintraege;
        for (int i = 0; i < anzahl; ++i) {
            QByteArray e(int(zufall() % 24), Qt::Uninitialized);
            for (char& c : e) c = "\0\1\xffz"[zufall() % 4];
            eintraege.push_back(i % 3 == 0 ? QByteArray("gleicher Anfang") + e : e);
        }
        vergleichen(std::move(eintraege));
    }
}

TEST(Eintragsliste, AtmetUndLaesstSichAbbrechen) {
    sort::Eintragsliste liste;
    for (qint64 i = 0; i < 300000; ++i)
        liste.aufnehmen(QByteArrayView("x"), QByteArray::number(i * 7919 % 300007));
    AtempauseSetzen([] { throw std::runtime_error("genug"); });
    EXPECT_THROW(liste.sortieren(), std::runtime_error);
    AtempauseSetzen({});
}

}  // namespace
