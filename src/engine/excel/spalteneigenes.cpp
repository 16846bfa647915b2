// What travels with a copied column.
#include "engine/excel/spalteneigenes.h"

#include "engine/excel/bytes.h"

namespace excel {
namespace {

constexpr QByteArrayView kKennung("LGX1", 4);

}  // namespace

QByteArray spalteneigenesSchreiben(const Spalteneigenes& eigenes) {
    QByteArray bytes = kKennung.toByteArray();
    anhaengen<quint16>(bytes, quint16(eigenes.nummer));
    const QByteArray format = eigenes.format.toUtf8();
    anhaengen<quint32>(bytes, quint32(format.size()));
    return bytes + format + eigenes.kopf.toUtf8();
}

bool spalteneigenesLesen(QByteArrayView bytes, Spalteneigenes& eigenes) {
    constexpr qsizetype kText = 10;
    if (!bytes.startsWith(kKennung) || bytes.size() < kText) return false;
    const qsizetype laenge = u32(bytes, 6);
    if (laenge > bytes.size() - kText) return false;
    eigenes.nummer = u16(bytes, 4);
    eigenes.format = QString::fromUtf8(bytes.sliced(kText, laenge));
    eigenes.kopf = QString::fromUtf8(bytes.sliced(kText + laenge));
    return true;
}

}  // namespace excel
