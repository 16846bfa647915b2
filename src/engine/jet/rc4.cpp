// RC4, the stream cipher of page 0's mask and of encoded files.
#include <array>
#include <numeric>
#include <utility>

#include "engine/jet/seiten.h"

namespace jet {

void rc4(QByteArrayView schluessel, char* bytes, qsizetype anzahl) {
    std::array<quint8, 256> zustand;
    std::iota(zustand.begin(), zustand.end(), quint8(0));
    quint8 j = 0;
    for (int i = 0; i < 256; ++i) {
        j = quint8(j + zustand[size_t(i)] + quint8(schluessel[i % schluessel.size()]));
        std::swap(zustand[size_t(i)], zustand[j]);
    }
    quint8 a = 0;
    quint8 b = 0;
    for (qsizetype n = 0; n < anzahl; ++n) {
        b = quint8(b + zustand[++a]);
        std::swap(zustand[a], zustand[b]);
        bytes[n] = char(quint8(bytes[n]) ^ zustand[quint8(zustand[a] + zustand[b])]);
    }
}

}  // namespace jet
