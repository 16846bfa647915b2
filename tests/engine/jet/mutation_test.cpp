// Thousands of seeded mutations of the samples: each is read or refused with an EngineFehler, never more.
#include "mutation.h"
#include "leselauf.h"
#include "proben.h"

namespace {

class JetMutation : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(JetMutation, WirdGelesenOderAbgelehnt) {
    const QString name = QString::fromLatin1(GetParam());
    PROBE_ODER_UEBERSPRINGEN(name);
    constexpr int kMutationen = 300;
    const QByteArray original = proben::bytes(name);
    const int seitengroesse = proben::oeffnen(name)->format().seite;
    mutation::Zufall zufall(20011);
    int abgelehnt = 0;
    for (int i = 0; i < kMutationen; ++i) {
        SCOPED_TRACE(i);
        const QByteArray bytes = mutation::veraendert(zufall, original, seitengroesse);
        // Anything but an EngineFehler ends the test as a failure.
        if (proben::fehlerVon([&] { leselauf::allesLesen(bytes); }) != 0) ++abgelehnt;
    }
    EXPECT_LT(abgelehnt, kMutationen);
}

INSTANTIATE_TEST_SUITE_P(Proben, JetMutation,
                         testing::Values("jet3-typen.mdb", "jet3-relationen.mdb", "jet3-index.mdb",
                                         "jet4-relationen.mdb", "jet4-memo-ole.mdb",
                                         "jet4-verschobene-zeilen.mdb", "jet4-geloeschte-spalten.mdb",
                                         "jet4-leer-adox.mdb", "jet4-verknuepft.mdb", "ace-2007.accdb"));
