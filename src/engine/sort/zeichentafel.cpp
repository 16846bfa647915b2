// Reads the two tables of the General order into one row per UTF-16 unit.
#include "engine/sort/zeichentafel.h"

#include <QByteArray>
#include <QList>
#include <memory>

namespace sort {
namespace {

using Tafel = std::array<Zeichen, 0x10000>;

QByteArray hexBytes(const QByteArray& spalte) {
    return spalte == "-" ? QByteArray() : QByteArray::fromHex(spalte);
}

Zeichenart artVon(char kennung) {
    switch (kennung) {
        case 'S':
            return Zeichenart::Einfach;
        case 'I':
            return Zeichenart::MitAkzent;
        case 'U':
            return Zeichenart::Unsichtbar;
        case 'P':
            return Zeichenart::Kombinierend;
        case 'Z':
            return Zeichenart::Kana;
        default:
            return Zeichenart::Ohne;
    }
}

Zeichen zeichenBilden(Zeichenart art, const QByteArray& inlineBytes, const QByteArray& akzent,
                      const QByteArray& andere, int breite) {
    Zeichen zeichen;
    zeichen.art = art;
    zeichen.inlineLaenge = quint8(inlineBytes.size());
    std::copy(inlineBytes.begin(), inlineBytes.end(), zeichen.inlineBytes.begin());
    zeichen.akzentLaenge = quint8(akzent.size());
    std::copy(akzent.begin(), akzent.end(), zeichen.akzent.begin());
    zeichen.breite = quint8(breite);
    if (art == Zeichenart::Unsichtbar) zeichen.code = quint8(hexBytes(andere).at(0));
    if (art == Zeichenart::Kana) zeichen.code = andere == "1" ? 2 : 3;
    return zeichen;
}

QList<QList<QByteArray>> zeilenLesen(const char* text) {
    QList<QList<QByteArray>> zeilen;
    for (const QByteArray& zeile : QByteArray(text).split('\n'))
        if (!zeile.isEmpty() && !zeile.startsWith("# ")) zeilen.append(zeile.split('\t'));
    return zeilen;
}

void lateinLesen(Tafel& tafel) {
    for (const QList<QByteArray>& z : zeilenLesen(kGeneralLatein))
        tafel[z[0].toUInt(nullptr, 16)] =
            zeichenBilden(artVon(z[1][0]), hexBytes(z[2]), hexBytes(z[3]), z[4], z[5].toInt());
}

// The code that follows in a run; a low byte is never 00 or 01.
void weiterzaehlen(QByteArray& bytes) {
    if (bytes.isEmpty()) return;
    const quint8 tief = quint8(bytes.back());
    bytes.back() = char(tief == 0xFF ? 0x02 : tief + 1);
    if (tief == 0xFF && bytes.size() > 1) bytes[bytes.size() - 2] = char(bytes[bytes.size() - 2] + 1);
}

void uebrigeLesen(Tafel& tafel) {
    for (const QList<QByteArray>& z : zeilenLesen(kGeneralUebrige)) {
        QByteArray bytes = hexBytes(z[3]);
        const uint letztes = z[1].toUInt(nullptr, 16);
        for (uint code = z[0].toUInt(nullptr, 16); code <= letztes; ++code, weiterzaehlen(bytes))
            tafel[code] =
                zeichenBilden(artVon(z[2][0]), bytes, hexBytes(z[4]), z[5], bytes.isEmpty() ? 0 : 1);
    }
}

Zeichen surrogat(uint code, uint abstand) {
    const uint wert = code - abstand;
    const char bytes[] = {char(wert >> 8), char(wert & 0xFF)};
    return zeichenBilden(Zeichenart::MitAkzent, QByteArray(bytes, 2), QByteArray(1, '\x3F'), "-", 1);
}

uint abstandTief(uint code) {
    const uint k = code - 0xDC00;
    if (k < 8) return 9992;
    if (k < 262) return 9990;
    if (k < 516) return 9988;
    return k < 770 ? 9986 : 9984;
}

void surrogateLesen(Tafel& tafel) {
    for (uint code = 0xD800; code < 0xDC00; ++code) tafel[code] = surrogat(code, 10238);
    for (uint code = 0xDC00; code < 0xE000; ++code) tafel[code] = surrogat(code, abstandTief(code));
}

std::unique_ptr<Tafel> tafelBauen() {
    auto tafel = std::make_unique<Tafel>();
    lateinLesen(*tafel);
    uebrigeLesen(*tafel);
    surrogateLesen(*tafel);
    return tafel;
}

}  // namespace

const std::array<Zeichen, 0x10000>& zeichentafel() {
    static const std::unique_ptr<Tafel> tafel = tafelBauen();
    return *tafel;
}

}  // namespace sort
