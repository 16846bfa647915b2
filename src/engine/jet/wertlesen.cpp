// Stored bytes turned into values.
#include <charconv>
#include <cmath>

#include "engine/jet/bytes.h"
#include "engine/jet/langwert.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

constexpr int kHoechsteSkala = 28;

Wert gleitzahl(double d) {
    return std::isnan(d) ? Wert::null() : Wert(d);
}

// 0.1f is 0.100000001490116 as a double; users typed 0,1.
Wert einfachgenau(float f) {
    if (!std::isfinite(f)) return gleitzahl(double(f));
    char puffer[32];
    const auto ende = std::to_chars(puffer, puffer + sizeof puffer, f).ptr;
    double d = 0;
    std::from_chars(puffer, ende, d);
    return Wert(d);
}

Wert datum(double tage) {
    return std::isnan(tage) ? Wert::null() : Wert(DatumZeit{tage});
}

Wert guid(const Sicht& s) {
    QString text = u"{%1-%2-%3-"_qs.arg(s.u32(0), 8, 16, QChar(u'0'))
                       .arg(s.u16(4), 4, 16, QChar(u'0'))
                       .arg(s.u16(6), 4, 16, QChar(u'0'));
    for (int i = 8; i < 16; ++i) {
        text += u"%1"_qs.arg(s.u8(i), 2, 16, QChar(u'0'));
        if (i == 9) text += u'-';
    }
    return Wert(QString(text.toUpper() + u'}'));
}

// Sign, then four words with the most significant one first.
Wert dezimal(const Sicht& s, quint8 skala) {
    if (skala > kHoechsteSkala) return Wert(s.bytes().toByteArray());
    Dezimal d;
    d.negativ = s.u8(0) & 0x80;
    d.hoch = quint64(s.u32(1)) << 32 | s.u32(5);
    d.tief = quint64(s.u32(9)) << 32 | s.u32(13);
    d.skala = skala;
    if (d.hoch == 0 && d.tief == 0) d.negativ = false;
    return Wert(d);
}

}  // namespace

Wert wertAusBytes(const Format& format, const Spalte& spalte, QByteArrayView bytes, QStringView struktur,
                  quint32 seite) {
    const Sicht s(bytes, struktur, seite);
    if (spalte.flags2 & kSpalteBerechnet) return Wert(bytes.toByteArray());
    switch (spalte.typ) {
        case kTypByte:
            return Wert(qint64(s.u8(0)));
        case kTypInteger:
            return Wert(qint64(s.i16(0)));
        case kTypLong:
        case kTypKomplex:
            return Wert(qint64(s.i32(0)));
        case kTypWaehrung:
            return Wert(Waehrung{s.i64(0)});
        case kTypSingle:
            return einfachgenau(s.f32(0));
        case kTypDouble:
            return gleitzahl(s.f64(0));
        case kTypDatum:
            return datum(s.f64(0));
        case kTypText:
        case kTypMemo:
            return Wert(textLesen(format, bytes));
        case kTypGuid:
            return guid(s);
        case kTypDezimal:
            return dezimal(s, spalte.skala);
        case kTypBigInt:
            return Wert(s.i64(0));
        default:
            return Wert(bytes.toByteArray());
    }
}

Wert wertLesen(const Seitendatei& datei, const Spalte& spalte, const Zeilenteile& teile) {
    if (spalte.typ == kTypBoolean) return Wert(teile.gesetzt(spalte.nummer));
    const std::optional<QByteArrayView> roh = teile.roh(spalte);
    if (!roh) return Wert::null();
    const QStringView tabelle = teile.sicht().struktur();
    const quint32 seite = teile.sicht().seite();
    if (!spalte.istLang()) return wertAusBytes(datei.format(), spalte, *roh, tabelle, seite);
    if (roh->isEmpty()) return Wert::null();
    return wertAusBytes(datei.format(), spalte, langwertLesen(datei, *roh, tabelle).bytes, tabelle, seite);
}

}  // namespace jet
