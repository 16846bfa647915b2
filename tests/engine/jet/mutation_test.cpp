// Thousands of seeded mutations of the samples: each is read or refused with an EngineFehler, never more.
#include "mutation.h"
#include "engine/jet/zeilenbau.h"
#include "leselauf.h"
#include "proben.h"
#include "schaeden.h"
#include "schreiblauf.h"

namespace {

class JetMutationen : public testing::TestWithParam<const char*> {};

}  // namespace

// Changes are tried on every fourth: they cost more, and a damaged file mostly refuses them at once.
TEST_P(JetMutationen, WirdGelesenGeaendertOderAbgelehnt) {
    const QString name = QString::fromLatin1(GetParam());
    PROBE_ODER_UEBERSPRINGEN(name);
    constexpr int kMutationen = 240;
    const QByteArray original = proben::bytes(name);
    const int seitengroesse = proben::oeffnen(name)->format().seite;
    mutation::Zufall zufall(20011);
    int abgelehnt = 0;
    for (int i = 0; i < kMutationen; ++i) {
        SCOPED_TRACE(i);
        const QByteArray bytes = mutation::veraendert(zufall, original, seitengroesse);
        // Anything but an EngineFehler ends the test as a failure.
        if (fehlerVon([&] { leselauf::allesLesen(bytes); }) != 0) ++abgelehnt;
        if (i % 4 == 0) fehlerVon([&] { schreiblauf::allesAendern(bytes); });
    }
    EXPECT_LT(abgelehnt, kMutationen);
}

TEST(JetMutation, AnJederSeitengrenzeAbgeschnitten) {
    for (const QString& name : {u"jet4-relationen.mdb"_qs, u"jet3-relationen.mdb"_qs}) {
        PROBE_ODER_UEBERSPRINGEN(name);
        const QByteArray bytes = proben::bytes(name);
        const int seite = proben::oeffnen(name)->format().seite;
        int gelesen = 0;
        for (qsizetype ende = 0; ende < bytes.size(); ende += seite) {
            SCOPED_TRACE(ende);
            const QByteArray rest = bytes.left(ende);
            if (fehlerVon([&] { leselauf::allesLesen(rest); }) == 0) ++gelesen;
            if (ende / seite % 4 == 0) fehlerVon([&] { schreiblauf::allesAendern(rest); });
        }
        EXPECT_GT(gelesen, 0);
    }
}

TEST(JetMutation, EineUnversehrteDateiLaesstSichAendern) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-verschobene-zeilen.mdb"_qs);
    const QByteArray bytes = proben::bytes(u"jet4-verschobene-zeilen.mdb"_qs);
    EXPECT_EQ(fehlerVon([&] { schreiblauf::allesAendern(bytes); }), 0);
}

TEST(JetMutation, KatalogDessenZeilenAufKeineSeitePassenWirdNichtGeaendert) {
    PROBE_ODER_UEBERSPRINGEN(schaeden::kBeziehungen);
    jet::Seitendatei datei(proben::bytes(schaeden::kBeziehungen));
    const jet::Tabelle objekte = jet::tdefLesen(datei, jet::kSeiteObjekte);
    const jet::Spalte flags = objekte.spalten[size_t(objekte.spalteMitName(u"Flags"))];
    schaeden::spalteSetzen(datei, u"MSysObjects"_qs, objekte.spalteMitName(u"Flags"), jet::kJet4.spalteFest,
                           quint16(datei.format().seite - flags.laenge));
    EXPECT_EQ(fehlerVon([&] { schreiblauf::allesAendern(datei.bytes()); }), kBeschaedigt);
}

TEST(JetMutation, FesterWertDerNichtPasstWirdNichtGeschrieben) {
    jet::Tabelle tabelle;
    tabelle.maxSpalten = 1;
    jet::Spalte& spalte = tabelle.spalten.emplace_back();
    spalte.flags |= jet::kSpalteFest;
    spalte.laenge = 2;
    EXPECT_EQ(fehlerVon([&] { jet::zeileBauen(jet::kJet4, tabelle, {QByteArray(4, 'x')}); }), kBeschaedigt);
    EXPECT_EQ(fehlerVon([&] { jet::zeileBauen(jet::kJet4, tabelle, {QByteArray(2, 'x')}); }), 0);
    QByteArray bytes(4, 'x');
    EXPECT_EQ(fehlerVon([&] { jet::bytesSetzen(bytes, 3, QByteArray(2, 'y')); }), kBeschaedigt);
    EXPECT_EQ(fehlerVon([&] { jet::u32Setzen(bytes, 1, 0); }), kBeschaedigt);
    EXPECT_EQ(bytes, "xxxx");
}

INSTANTIATE_TEST_SUITE_P(Proben, JetMutationen,
                         testing::Values("jet3-typen.mdb", "jet3-relationen.mdb", "jet3-index.mdb",
                                         "jet4-relationen.mdb", "jet4-memo-ole.mdb",
                                         "jet4-verschobene-zeilen.mdb", "jet4-geloeschte-spalten.mdb",
                                         "jet4-leer-adox.mdb", "jet4-verknuepft.mdb", "ace-2007.accdb"));
