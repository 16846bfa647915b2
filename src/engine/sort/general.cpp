// Keys of the General order, put together from the letters, their accents and what counts last.
#include "engine/sort/general.h"

#include <QVarLengthArray>
#include <cstring>
#include <iterator>

#include "engine/sort/zeichentafel.h"

namespace sort {
namespace {

constexpr qsizetype kLaengstes = 255;  // UTF-16 units that count
constexpr quint8 kTrenner = 0x01;
constexpr quint8 kOhneAkzent = 0x02;
constexpr quint8 kEnde = 0x00;

QStringView zaehlenderTeil(QStringView text) {
    text = text.left(kLaengstes);
    while (text.endsWith(u' ')) text.chop(1);
    return text;
}

// A part of a key: on the stack, whatever the text.
class Bytefolge {
  public:
    void anhaengen(quint8 byte) { bytes_.push_back(char(byte)); }
    void anhaengen(const quint8* bytes, int anzahl) {
        bytes_.append(reinterpret_cast<const char*>(bytes), anzahl);
    }
    void anhaengen(const Bytefolge& andere) { bytes_.append(andere.bytes_.data(), andere.bytes_.size()); }
    void kuerzen() { bytes_.removeLast(); }
    bool leer() const { return bytes_.isEmpty(); }
    qsizetype laenge() const { return bytes_.size(); }
    quint8& letztes() { return reinterpret_cast<quint8&>(bytes_.last()); }
    quint8 operator[](qsizetype i) const { return quint8(bytes_[i]); }
    QByteArray alsBytes() const { return QByteArray(bytes_.data(), bytes_.size()); }

  private:
    QVarLengthArray<char, 512> bytes_;
};

// The parts of a key while its text is gone through.
class Sammler {
  public:
    void aufnehmen(const Zeichen& zeichen) {
        const int stelle = position_;
        buchstaben_.anhaengen(zeichen.inlineBytes.data(), zeichen.inlineLaenge);
        position_ += zeichen.breite;
        switch (zeichen.art) {
            case Zeichenart::MitAkzent:
                akzentSetzen(zeichen, stelle);
                break;
            case Zeichenart::Kombinierend:
                akzentAddieren(zeichen, stelle);
                break;
            case Zeichenart::Unsichtbar:
                unsichtbarSetzen(zeichen, stelle);
                break;
            case Zeichenart::Kana:
                if (zeichen.akzentLaenge > 0) akzentSetzen(zeichen, stelle);
                kana_.anhaengen(zeichen.code);
                break;
            case Zeichenart::Einfach:
            case Zeichenart::Ohne:
                break;
        }
    }

    QByteArray schluessel() {
        while (!akzente_.leer() && akzente_.letztes() <= kOhneAkzent) akzente_.kuerzen();
        buchstaben_.anhaengen(kTrenner);
        buchstaben_.anhaengen(akzente_);
        if (!kana_.leer() || !unsichtbare_.leer()) {
            buchstaben_.anhaengen(kTrenner);
            buchstaben_.anhaengen(kTrenner);
        }
        if (!kana_.leer()) kanaAnhaengen();
        if (!unsichtbare_.leer()) {
            buchstaben_.anhaengen(kTrenner);
            buchstaben_.anhaengen(unsichtbare_);
        }
        buchstaben_.anhaengen(kEnde);
        return buchstaben_.alsBytes();
    }

  private:
    void auffuellen(int stelle) {
        while (akzente_.laenge() < stelle) akzente_.anhaengen(kOhneAkzent);
    }
    void akzentSetzen(const Zeichen& zeichen, int stelle) {
        auffuellen(stelle);
        akzente_.anhaengen(zeichen.akzent.data(), zeichen.akzentLaenge);
    }
    // In front of everything else the accent stands alone and takes no letter's place.
    void akzentAddieren(const Zeichen& zeichen, int stelle) {
        auffuellen(stelle);
        if (akzente_.leer())
            akzente_.anhaengen(zeichen.akzent[0]);
        else
            akzente_.letztes() = quint8(akzente_.letztes() + zeichen.akzent[0]);
    }
    void unsichtbarSetzen(const Zeichen& zeichen, int stelle) {
        const int ort = 0x8000 | (7 + 4 * stelle);
        unsichtbare_.anhaengen(quint8(ort >> 8));
        unsichtbare_.anhaengen(quint8(ort & 0xFF));
        unsichtbare_.anhaengen(0x06);
        unsichtbare_.anhaengen(zeichen.code);
    }
    // The flags, three to a byte, the last ones left out while they are 3.
    void kanaAnhaengen() {
        constexpr quint8 kSchluss[] = {0xFF, 0x02, 0x80, 0xFF, 0x80};
        Bytefolge flags = kana_;
        while (!flags.leer() && flags.letztes() == 3) flags.kuerzen();
        for (qsizetype i = 0; i < flags.laenge(); i += 3) {
            quint8 byte = 0x80;
            for (qsizetype k = 0; k < 3 && i + k < flags.laenge(); ++k)
                byte |= quint8(flags[i + k] << (4 - 2 * k));
            buchstaben_.anhaengen(byte);
        }
        buchstaben_.anhaengen(kSchluss, int(std::size(kSchluss)));
        if (!unsichtbare_.leer()) buchstaben_.anhaengen(0xFF);
    }

    Bytefolge buchstaben_;
    Bytefolge akzente_;
    Bytefolge kana_;
    Bytefolge unsichtbare_;
    int position_ = 0;
};

}  // namespace

QByteArray sortSchluessel(QStringView text) {
    const auto& tafel = zeichentafel();
    Sammler sammler;
    for (const QChar zeichen : zaehlenderTeil(text)) sammler.aufnehmen(tafel[zeichen.unicode()]);
    return sammler.schluessel();
}

int vergleichen(QStringView a, QStringView b) {
    const QByteArray links = sortSchluessel(a);
    const QByteArray rechts = sortSchluessel(b);
    const int unterschied =
        std::memcmp(links.constData(), rechts.constData(), size_t(std::min(links.size(), rechts.size())));
    if (unterschied != 0) return unterschied < 0 ? -1 : 1;
    return links.size() == rechts.size() ? 0 : links.size() < rechts.size() ? -1 : 1;
}

}  // namespace sort
