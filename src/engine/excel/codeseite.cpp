// Code pages, by the C library's converter.
#include "engine/excel/codeseite.h"

#include <iconv.h>

#include <cerrno>

namespace excel {
namespace {

constexpr int kErstesNichtAscii = 0x80;

class Wandler {
  public:
    Wandler(const char* nach, const char* von) : griff_(::iconv_open(nach, von)) {}
    ~Wandler() {
        if (offen()) ::iconv_close(griff_);
    }
    Wandler(const Wandler&) = delete;
    Wandler& operator=(const Wandler&) = delete;
    bool offen() const { return griff_ != iconv_t(-1); }
    // Converts what it can; the rest stays in `ein`. 0 or the error number.
    int wandeln(QByteArrayView& ein, QByteArray& aus) {
        char* von = const_cast<char*>(ein.data());
        size_t rest = size_t(ein.size());
        QByteArray puffer(ein.size() * 4 + 16, Qt::Uninitialized);
        char* nach = puffer.data();
        size_t platz = size_t(puffer.size());
        const size_t ergebnis = ::iconv(griff_, &von, &rest, &nach, &platz);
        const int fehler = ergebnis == size_t(-1) ? errno : 0;
        // CP1258 keeps a letter back until it knows whether an accent follows.
        if (fehler == 0) ::iconv(griff_, nullptr, nullptr, &nach, &platz);
        aus.append(puffer.constData(), puffer.size() - qsizetype(platz));
        ein = ein.last(qsizetype(rest));
        return fehler;
    }

  private:
    iconv_t griff_;
};

QByteArray wandlername(int nummer) {
    switch (nummer) {
        case 0:
        case 367:
        case 1200:
        case 32769:
            return "CP1252";
        case 10000:
        case 32768:
            return "MACINTOSH";
        case 10006:
            return "MACGREEK";
        case 10007:
            return "MAC-CYRILLIC";
        case 10029:
            return "MAC-CENTRALEUROPE";
        default:
            return "CP" + QByteArray::number(nummer);
    }
}

QString alsText(const QByteArray& utf16) {
    return QString(reinterpret_cast<const QChar*>(utf16.constData()), utf16.size() / 2);
}

}  // namespace

Codeseite::Codeseite(int nummer) : name_(wandlername(nummer)) {
    nurAscii_ = name_.startsWith("MAC");
    if (!Wandler("UTF-16LE", name_.constData()).offen()) {
        name_ = "CP1252";
        nurAscii_ = true;
    }
    tafelBauen();
}

// One character a byte; a byte that is none by itself makes the page one of several bytes.
void Codeseite::tafelBauen() {
    Wandler wandler("UTF-16LE", name_.constData());
    for (int i = 0; i < 256; ++i) {
        const char byte = char(i);
        QByteArrayView ein(&byte, 1);
        QByteArray aus;
        const int fehler = wandler.offen() ? wandler.wandeln(ein, aus) : EILSEQ;
        mehrfach_ = mehrfach_ || fehler == EINVAL;
        tafel_[i] = fehler == 0 && aus.size() == 2 ? alsText(aus)[0].unicode() : char16_t(i);
        if (fehler == 0 && aus.size() == 2) rueck_.insert(tafel_[i], byte);
    }
}

QString Codeseite::lesen(QByteArrayView bytes) const {
    if (!mehrfach_) {
        QString text(bytes.size(), Qt::Uninitialized);
        for (qsizetype i = 0; i < bytes.size(); ++i) text[i] = QChar(tafel_[quint8(bytes[i])]);
        return text;
    }
    Wandler wandler("UTF-16LE", name_.constData());
    QByteArray utf16;
    while (!bytes.isEmpty() && wandler.wandeln(bytes, utf16) != 0) {
        utf16.append("\xFD\xFF", 2);
        bytes = bytes.sliced(1);
    }
    return alsText(utf16);
}

std::optional<QByteArray> Codeseite::schreiben(QStringView text) const {
    QByteArray bytes;
    if (mehrfach_) {
        Wandler wandler(name_.constData(), "UTF-16LE");
        QByteArrayView ein(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        if (wandler.wandeln(ein, bytes) != 0 || !ein.isEmpty()) return std::nullopt;
        return bytes;
    }
    for (const QChar c : text) {
        const auto fund = rueck_.find(c.unicode());
        if (fund == rueck_.end() || (nurAscii_ && c.unicode() >= kErstesNichtAscii)) return std::nullopt;
        bytes += *fund;
    }
    return bytes;
}

}  // namespace excel
