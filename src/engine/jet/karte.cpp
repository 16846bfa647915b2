// Usage maps read.
#include "engine/jet/karte.h"

#include <algorithm>

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"

namespace jet {
namespace {

constexpr int kBitsInline = 5;  // first bitmap byte of an inline map
constexpr int kBitsSeite = 4;   // of a bitmap page

void bitsSammeln(QByteArrayView bits, quint64 erste, quint32 seitenzahl, Karte& karte) {
    for (qsizetype i = 0; i < bits.size(); ++i) {
        if (bits[i] == 0) continue;
        for (int b = 0; b < 8; ++b) {
            if (!(quint8(bits[i]) >> b & 1)) continue;
            const quint64 seite = erste + quint64(i) * 8 + quint64(b);
            if (seite < seitenzahl)
                karte.seiten.push_back(quint32(seite));
            else
                ++karte.jenseits;
        }
    }
}

void verweiseLesen(const Seitendatei& datei, const Sicht& zeile, QStringView struktur, Karte& karte) {
    // A row that was an inline map before may be longer than the pointers: the rest of it means nothing.
    const qsizetype verweise = std::min<qsizetype>((zeile.groesse() - 1) / 4, datei.format().karteVerweise);
    for (qsizetype i = 0; i < verweise; ++i) {
        const quint32 nummer = zeile.u32(1 + 4 * i);
        if (nummer == 0) continue;
        if (std::find(karte.bitmapseiten.begin(), karte.bitmapseiten.end(), nummer) !=
            karte.bitmapseiten.end())
            zeile.kaputt(1 + 4 * i);
        const QByteArray seite = datei.seite(nummer, kKartenseite, struktur);
        karte.bitmapseiten.push_back(nummer);
        bitsSammeln(QByteArrayView(seite).sliced(kBitsSeite),
                    quint64(i) * quint64(datei.format().seitenJeTyp5()), datei.seitenzahl(), karte);
    }
}

}  // namespace

Karte karteLesen(const Seitendatei& datei, Zeilenort ort, QStringView struktur) {
    Karte karte;
    if (ort.seite == 0) return karte;
    const Zeilenbytes roh = zeileHolen(datei, ort, false, struktur);
    const Sicht zeile(roh.bytes, struktur, ort.seite);
    switch (zeile.u8(0)) {
        case 0:
            karte.erste = zeile.u32(1);
            bitsSammeln(roh.bytes.sliced(kBitsInline), karte.erste, datei.seitenzahl(), karte);
            break;
        case 1:
            karte.verwiesen = true;
            verweiseLesen(datei, zeile, struktur, karte);
            break;
        default:
            zeile.kaputt(0);
    }
    return karte;
}

}  // namespace jet
