// Keys of the General order, put together from the letters, their accents and what counts last.
#include "engine/sort/general.h"

#include <cstring>

#include "engine/sort/zeichentafel.h"

namespace sort {
namespace {

constexpr qsizetype kLaengstes = 255;  // UTF-16 units that count
constexpr char kTrenner = 0x01;
constexpr char kOhneAkzent = 0x02;

QStringView zaehlenderTeil(QStringView text) {
    text = text.left(kLaengstes);
    while (text.endsWith(u' ')) text.chop(1);
    return text;
}

// The parts of a key while its text is gone through.
class Sammler {
  public:
    void aufnehmen(const Zeichen& zeichen) {
        const int stelle = position_;
        buchstaben_.append(reinterpret_cast<const char*>(zeichen.inlineBytes.data()), zeichen.inlineLaenge);
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
                kana_.append(char(zeichen.code));
                break;
            case Zeichenart::Einfach:
            case Zeichenart::Ohne:
                break;
        }
    }

    QByteArray schluessel() {
        while (!akzente_.isEmpty() && akzente_.back() <= kOhneAkzent && akzente_.back() >= 0)
            akzente_.chop(1);
        QByteArray ergebnis = std::move(buchstaben_);
        ergebnis.append(kTrenner).append(akzente_);
        if (!kana_.isEmpty() || !unsichtbare_.isEmpty()) ergebnis.append(kTrenner).append(kTrenner);
        if (!kana_.isEmpty()) kanaAnhaengen(ergebnis);
        if (!unsichtbare_.isEmpty()) ergebnis.append(kTrenner).append(unsichtbare_);
        return ergebnis.append('\0');
    }

  private:
    void auffuellen(int stelle) {
        while (akzente_.size() < stelle) akzente_.append(kOhneAkzent);
    }
    void akzentSetzen(const Zeichen& zeichen, int stelle) {
        auffuellen(stelle);
        akzente_.append(reinterpret_cast<const char*>(zeichen.akzent.data()), zeichen.akzentLaenge);
    }
    // In front of everything else the accent stands alone and takes no letter's place.
    void akzentAddieren(const Zeichen& zeichen, int stelle) {
        auffuellen(stelle);
        if (akzente_.isEmpty())
            akzente_.append(char(zeichen.akzent[0]));
        else
            akzente_.back() = char(quint8(akzente_.back()) + zeichen.akzent[0]);
    }
    void unsichtbarSetzen(const Zeichen& zeichen, int stelle) {
        const int ort = 0x8000 | (7 + 4 * stelle);
        unsichtbare_.append(char(ort >> 8))
            .append(char(ort & 0xFF))
            .append(char(0x06))
            .append(char(zeichen.code));
    }
    // The flags, three to a byte, the last ones left out while they are 3.
    void kanaAnhaengen(QByteArray& ergebnis) const {
        QByteArray flags = kana_;
        while (flags.endsWith(char(3))) flags.chop(1);
        for (qsizetype i = 0; i < flags.size(); i += 3) {
            quint8 byte = 0x80;
            for (qsizetype k = 0; k < 3 && i + k < flags.size(); ++k)
                byte |= quint8(flags[i + k] << (4 - 2 * k));
            ergebnis.append(char(byte));
        }
        ergebnis.append("\xFF\x02\x80\xFF\x80", 5);
        if (!unsichtbare_.isEmpty()) ergebnis.append(char(0xFF));
    }

    QByteArray buchstaben_;
    QByteArray akzente_;
    QByteArray kana_;
    QByteArray unsichtbare_;
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
