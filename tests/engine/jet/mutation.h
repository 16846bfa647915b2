// Seeded changes of a database file's bytes that keep its pages in place: those a reader has to cope with.
#pragma once

#include <QByteArray>
#include <algorithm>
#include <random>

#include "engine/jet/bytes.h"

namespace mutation {

using Zufall = std::mt19937;  // the same numbers on every machine

inline int ziehe(Zufall& zufall, int grenze) {
    return int(zufall() % quint32(grenze));
}

// A place that matters: the first bytes of a page, its slots, or its rows at the end.
inline qsizetype stelle(Zufall& zufall, qsizetype groesse, int seitengroesse) {
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

inline void eineStelleAendern(Zufall& zufall, QByteArray& bytes, int seitengroesse) {
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
inline void grobAendern(Zufall& zufall, QByteArray& bytes, int seitengroesse) {
    const int seiten = int(bytes.size() / seitengroesse);
    if (ziehe(zufall, 4) == 0) {
        bytes.truncate(ziehe(zufall, int(bytes.size())));
        return;
    }
    const QByteArray seite = bytes.mid(ziehe(zufall, seiten) * qsizetype(seitengroesse), seitengroesse);
    bytes.replace((1 + ziehe(zufall, seiten - 1)) * qsizetype(seitengroesse), seitengroesse, seite);
}

inline QByteArray veraendert(Zufall& zufall, QByteArray bytes, int seitengroesse) {
    const int anzahl = 1 + ziehe(zufall, 8);
    for (int i = 0; i < anzahl; ++i) eineStelleAendern(zufall, bytes, seitengroesse);
    if (ziehe(zufall, 10) == 0) grobAendern(zufall, bytes, seitengroesse);
    return bytes;
}

}  // namespace mutation
