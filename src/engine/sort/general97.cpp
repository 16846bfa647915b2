// Keys of the General order of Access 97: codes of the letters, then the accents as half bytes.
#include "engine/sort/general97.h"

#include <QList>
#include <array>

#include "engine/sort/zeichentafel.h"

namespace sort {
namespace {

constexpr qsizetype kLaengstes = 255;  // bytes that count
constexpr quint8 kOhneAkzent = 2;

// What the order knows of one byte.
struct Zeichen97 {
    std::array<char, 2> inlineBytes{};
    quint8 inlineLaenge = 0;
    quint8 akzent = 0;        // half byte of an accented letter, 0 without
    quint8 akzentfaehig = 0;  // letters that can bear an accent and bear none: 2 for ß
};

using Tafel97 = std::array<Zeichen97, 256>;

Tafel97 tafelLesen() {
    Tafel97 tafel{};
    for (const QByteArray& zeile : QByteArray(kGeneral97).split('\n')) {
        const QList<QByteArray> spalten = zeile.split('\t');
        if (zeile.startsWith('#') || spalten.size() < 5) continue;
        Zeichen97& zeichen = tafel[spalten[0].toUInt(nullptr, 16)];
        const QByteArray codes = QByteArray::fromHex(spalten[2]);
        std::copy(codes.begin(), codes.end(), zeichen.inlineBytes.begin());
        zeichen.inlineLaenge = quint8(codes.size());
        zeichen.akzent = spalten[3] == "-" ? quint8(0) : quint8(spalten[3].toUInt(nullptr, 16));
        zeichen.akzentfaehig = quint8(spalten[4].toUInt());
    }
    return tafel;
}

const Tafel97& tafel97() {
    static const Tafel97 tafel = tafelLesen();
    return tafel;
}

QByteArrayView zaehlenderTeil(QByteArrayView text) {
    text = text.first(std::min(text.size(), kLaengstes));
    while (!text.isEmpty() && text.back() == ' ') text.chop(1);
    return text;
}

// Two half bytes to a byte, the first one high, closed by at least one 0.
QByteArray gepackt(QByteArray halbe) {
    halbe.append('\0');
    if (halbe.size() % 2 != 0) halbe.append('\0');
    QByteArray bytes;
    for (qsizetype i = 0; i < halbe.size(); i += 2) bytes.append(char(halbe[i] << 4 | halbe[i + 1]));
    return bytes;
}

}  // namespace

QByteArray sortSchluessel97(QByteArrayView text) {
    QByteArray schluessel;
    QByteArray akzente;  // half bytes
    int offen = 0;       // letters without their accent since the last accent
    for (const char byte : zaehlenderTeil(text)) {
        const Zeichen97& zeichen = tafel97()[quint8(byte)];
        schluessel.append(zeichen.inlineBytes.data(), zeichen.inlineLaenge);
        offen += zeichen.akzentfaehig;
        if (zeichen.akzent == 0) continue;
        if (akzente.isEmpty()) akzente.append('\0');
        akzente.append(offen, char(kOhneAkzent)).append(char(zeichen.akzent));
        offen = 0;
    }
    return schluessel.append(akzente.isEmpty() ? QByteArray(1, '\0') : gepackt(std::move(akzente)));
}

}  // namespace sort
