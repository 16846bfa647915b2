// Random damage to headers, records and memos: read or refused, never more, never slow.
#include <gtest/gtest.h>

#include <random>

#include "dbasebank.h"
#include "lauf.h"

namespace {

class DbaseMutation : public testing::TestWithParam<const char*> {};

TEST_P(DbaseMutation, LiestOderLehntAb) {
    const QString name = QString::fromLatin1(GetParam());
    PROBE_ODER_UEBERSPRINGEN(name + QStringLiteral(".dbf"));
    const QByteArray daten = dbasebank::inhalt(dbasebank::probe(name + QStringLiteral(".dbf")));
    const QByteArray memo = dbasebank::inhalt(dbasebank::probe(name + QStringLiteral(".dbt")));
    std::mt19937 zufall(7);
    const auto eins = [&](qsizetype n) { return qsizetype(zufall() % quint32(std::max<qsizetype>(n, 1))); };
    for (int lauf = 0; lauf < 400; ++lauf) {
        QByteArray d = daten;
        QByteArray m = memo;
        for (int i = 0; i <= lauf % 8; ++i) {
            QByteArray& ziel = lauf % 3 == 2 && !m.isEmpty() ? m : d;
            const qsizetype grenze = lauf % 3 == 0 ? std::min<qsizetype>(ziel.size(), 400) : ziel.size();
            ziel[eins(grenze)] = char(zufall());
        }
        if (lauf % 10 == 9) d.truncate(eins(d.size()));
        if (lauf % 10 == 8) m.truncate(eins(m.size()));
        lauf::tabelle(d, m);
    }
}

INSTANTIATE_TEST_SUITE_P(Proben, DbaseMutation,
                         testing::Values("dbase_03", "dbase_83", "dbase_8b", "dbase_31", "eigene/uml1252"));

}  // namespace
