// Text as .mdb files store it: Windows-1252 in Jet 3, UTF-16 or its one-byte form in Jet 4.
#include <array>

#include "engine/jet/seiten.h"

namespace jet {
namespace {

// 0x80 to 0x9F of Windows-1252; what it leaves open stays the control character of the same number.
constexpr std::array<char16_t, 32> k1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString aus1252(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = quint8(bytes[i]);
        text[i] = b >= 0x80 && b < 0xA0 ? QChar(k1252[size_t(b - 0x80)]) : QChar(b);
    }
    return text;
}

QString ausUtf16(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    if (!text.isEmpty()) std::memcpy(text.data(), bytes.data(), size_t(text.size()) * 2);
    return text;
}

bool istKomprimiert(QByteArrayView bytes) {
    return bytes.size() >= 2 && quint8(bytes[0]) == 0xFF && quint8(bytes[1]) == 0xFE;
}

// Behind FF FE: one byte a character until a byte 0, then UTF-16 until a byte 0 where a pair would start.
QString ausKomprimiert(QByteArrayView bytes) {
    if (!bytes.contains('\0')) return QString::fromLatin1(bytes);
    QString text;
    text.reserve(bytes.size());
    bool einzeln = true;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = quint8(bytes[i]);
        if (b == 0) {
            einzeln = !einzeln;
        } else if (einzeln) {
            text += QChar(b);
        } else if (i + 1 < bytes.size()) {
            text += QChar(char16_t(b | quint8(bytes[++i]) << 8));
        }
    }
    return text;
}

bool in1252(char16_t zeichen, char& byte) {
    if (zeichen < 0x80 || (zeichen >= 0xA0 && zeichen < 0x100)) {
        byte = char(zeichen);
        return true;
    }
    for (size_t i = 0; i < k1252.size(); ++i) {
        if (k1252[i] != zeichen) continue;
        byte = char(0x80 + i);
        return true;
    }
    return false;
}

}  // namespace

QString textLesen(const Format& format, QByteArrayView bytes) {
    if (!format.jet4) return aus1252(bytes);
    return istKomprimiert(bytes) ? ausKomprimiert(bytes.sliced(2)) : ausUtf16(bytes);
}

qsizetype textLaenge(const Format& format, QByteArrayView bytes) {
    if (!format.jet4) return bytes.size();
    if (!istKomprimiert(bytes)) return bytes.size() / 2;
    const QByteArrayView einzelne = bytes.sliced(2);
    return einzelne.contains('\0') ? ausKomprimiert(einzelne).size() : einzelne.size();
}

QString namenLesen(const Format& format, QByteArrayView bytes) {
    return format.jet4 ? ausUtf16(bytes) : aus1252(bytes);
}

QByteArray text1252(QStringView text, bool* ok) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    *ok = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (in1252(text[i].unicode(), bytes.data()[i])) continue;
        *ok = false;
        return {};
    }
    return bytes;
}

}  // namespace jet
