// Thousands of seeded mutations of the samples: each is read or refused with an EngineFehler, never more.
#include <random>

#include "leselauf.h"
#include "proben.h"

namespace {

using Zufall = std::mt19937;  // the same numbers on every machine

int ziehe(Zufall& zufall, int grenze) {
    return int(zufall() % quint32(grenze));
}

// A place that matters: the first bytes of a page, its slots, or its rows at the end.
qsizetype stelle(Zufall& zufall, qsizetype groesse, int seitengroesse) {
    const qsizetype seite = ziehe(zufall, int(groesse / seitengroesse)) * qsizetype(seitengroesse);
    switch (ziehe(zufall, 3)) {
        case 0:
            return seite + ziehe(zufall, 64);
        case 1:
            return seite + seitengroesse - 1 - ziehe(zufall, 300);
        default:
            return seite + ziehe(zufall, seitengroesse);
    }
}

void eineStelleAendern(Zufall& zufall, QByteArray& bytes, int seitengroesse) {
    static constexpr quint32 kBesondere[] = {0,      1,      2,      0x7F,       0x80,      0xFF,
                                             0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF};
    const qsizetype ab = std::min(stelle(zufall, bytes.size(), seitengroesse), bytes.size() - 4);
    switch (ziehe(zufall, 5)) {
        case 0:
            bytes[ab] = char(bytes[ab] ^ (1 << ziehe(zufall, 8)));
            break;
        case 1:
            bytes[ab] = char(ziehe(zufall, 256));
            break;
        case 2:
            jet::u16Setzen(bytes, ab, quint16(kBesondere[ziehe(zufall, std::size(kBesondere))]));
            break;
        case 3:
            jet::u32Setzen(bytes, ab, kBesondere[ziehe(zufall, std::size(kBesondere))]);
            break;
        default:
            jet::u32Setzen(bytes, ab, quint32(ziehe(zufall, int(bytes.size() / seitengroesse) + 2)));
    }
}

// A page becomes a copy of another one, or the end is missing.
void grobAendern(Zufall& zufall, QByteArray& bytes, int seitengroesse) {
    const int seiten = int(bytes.size() / seitengroesse);
    if (ziehe(zufall, 4) == 0) {
        bytes.truncate(ziehe(zufall, int(bytes.size())));
        return;
    }
    const QByteArray seite = bytes.mid(ziehe(zufall, seiten) * qsizetype(seitengroesse), seitengroesse);
    bytes.replace((1 + ziehe(zufall, seiten - 1)) * qsizetype(seitengroesse), seitengroesse, seite);
}

QByteArray veraendert(Zufall& zufall, QByteArray bytes, int seitengroesse) {
    const int anzahl = 1 + ziehe(zufall, 8);
    for (int i = 0; i < anzahl; ++i) eineStelleAendern(zufall, bytes, seitengroesse);
    if (ziehe(zufall, 10) == 0) grobAendern(zufall, bytes, seitengroesse);
    return bytes;
}

class JetMutation : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(JetMutation, WirdGelesenOderAbgelehnt) {
    const QString name = QString::fromLatin1(GetParam());
    PROBE_ODER_UEBERSPRINGEN(name);
    constexpr int kMutationen = 300;
    const QByteArray original = proben::bytes(name);
    const int seitengroesse = proben::oeffnen(name)->format().seite;
    Zufall zufall(20011);
    int abgelehnt = 0;
    for (int i = 0; i < kMutationen; ++i) {
        SCOPED_TRACE(i);
        const QByteArray bytes = veraendert(zufall, original, seitengroesse);
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
