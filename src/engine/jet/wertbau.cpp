// Values turned into the bytes of a row.
#include "engine/jet/wertbau.h"

#include <QDateTime>
#include <QUuid>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/fehler.h"
#include "engine/jet/bytes.h"

namespace jet {
namespace {

__extension__ using Ganz128 = unsigned __int128;

constexpr qsizetype kKuerzesterKomprimierter = 3;
constexpr qsizetype kLaengsterKomprimierter = 1024;
constexpr qint64 kZehntausend = 10000;
constexpr int kGuidBytes = 16;
constexpr qsizetype kGezeigterText = 40;  // characters of a text in a message

[[noreturn]] void passtNicht(const Spalte& spalte) {
    throw EngineFehler(kUmwandlung,
                       u"Ein Wert des Feldes '%1' passt nicht zum Datentyp des Feldes. Berichtigen Sie "
                       "den Wert oder wählen Sie einen anderen Feldtyp."_qs.arg(spalte.name));
}

[[noreturn]] void zuLang(const Spalte& spalte) {
    throw EngineFehler(kFeldZuKlein,
                       u"Ein Wert des Feldes '%1' ist länger, als das Feld es zulässt. Vergrößern Sie "
                       "das Feld oder kürzen Sie den Wert."_qs.arg(spalte.name));
}

double gleitzahlVon(const Spalte& spalte, const Wert& wert) {
    switch (wert.art()) {
        case Wert::Art::Ganzzahl:
            return double(wert.ganzzahl());
        case Wert::Art::Gleitzahl:
            return wert.gleitzahl();
        case Wert::Art::Waehrung:
            return double(wert.waehrung().zehntausendstel) / double(kZehntausend);
        case Wert::Art::DatumZeit:
            return wert.datumZeit().tage;
        case Wert::Art::Wahrheit:
        case Wert::Art::Dezimal:
            return wert.alsZahl();
        default:
            passtNicht(spalte);
    }
}

qint64 ganzzahlVon(const Spalte& spalte, const Wert& wert, qint64 kleinste, qint64 groesste) {
    qint64 zahl = 0;
    if (wert.art() == Wert::Art::Ganzzahl) {
        zahl = wert.ganzzahl();
    } else {
        const double d = gleitzahlVon(spalte, wert);
        if (!(std::fabs(d) < 9.2e18) || d != std::nearbyint(d)) passtNicht(spalte);
        zahl = qint64(d);
    }
    if (zahl < kleinste || zahl > groesste) passtNicht(spalte);
    return zahl;
}

qint64 zehntausendstelVon(const Spalte& spalte, const Wert& wert) {
    if (wert.art() == Wert::Art::Waehrung) return wert.waehrung().zehntausendstel;
    if (wert.art() == Wert::Art::Ganzzahl) {
        constexpr qint64 grenze = std::numeric_limits<qint64>::max() / kZehntausend;
        return ganzzahlVon(spalte, wert, -grenze, grenze) * kZehntausend;
    }
    const double d = std::nearbyint(gleitzahlVon(spalte, wert) * double(kZehntausend));
    if (!(std::fabs(d) < 9.2e18)) passtNicht(spalte);
    return qint64(d);
}

template <typename T>
T ganzeVon(const Spalte& spalte, const Wert& wert) {
    return T(ganzzahlVon(spalte, wert, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

Dezimal dezimalVon(const Spalte& spalte, const Wert& wert) {
    if (wert.art() == Wert::Art::Dezimal) return wert.dezimal();
    if (wert.art() == Wert::Art::Ganzzahl) {
        const qint64 n = wert.ganzzahl();
        return {n < 0, 0, n < 0 ? quint64(0) - quint64(n) : quint64(n), 0};
    }
    if (wert.art() == Wert::Art::Waehrung) {
        const qint64 n = wert.waehrung().zehntausendstel;
        return {n < 0, 0, n < 0 ? quint64(0) - quint64(n) : quint64(n), 4};
    }
    // A floating number as far as its 15 digits are worth.
    const double d = gleitzahlVon(spalte, wert);
    const double skaliert = std::nearbyint(std::fabs(d) * std::pow(10.0, spalte.skala));
    if (!(skaliert < 1e18)) passtNicht(spalte);
    return {d < 0, 0, quint64(skaliert), spalte.skala};
}

// The number's digits at the column's scale; what does not fit behind the comma must be zeros.
Ganz128 dezimalBeiSkala(const Spalte& spalte, const Dezimal& zahl) {
    Ganz128 wert = Ganz128(zahl.hoch) << 64 | zahl.tief;
    for (int skala = zahl.skala; skala > spalte.skala; --skala) {
        if (wert % 10 != 0) passtNicht(spalte);
        wert /= 10;
    }
    for (int skala = zahl.skala; skala < spalte.skala; ++skala) {
        if (wert > ~Ganz128(0) / 10) passtNicht(spalte);
        wert *= 10;
    }
    Ganz128 grenze = 1;
    for (int i = 0; i < spalte.genauigkeit; ++i) grenze *= 10;
    if (wert >= grenze) passtNicht(spalte);
    return wert;
}

// Sign, then four words of 32 bits, the most significant one first, each little endian.
void dezimalAnhaengen(QByteArray& ziel, const Spalte& spalte, const Wert& wert) {
    const Dezimal zahl = dezimalVon(spalte, wert);
    const Ganz128 betrag = dezimalBeiSkala(spalte, zahl);
    u8Anhaengen(ziel, zahl.negativ && betrag != 0 ? 0x80 : 0);
    for (int wort = 3; wort >= 0; --wort) u32Anhaengen(ziel, quint32(betrag >> (32 * wort)));
}

// The first three groups of a GUID stand little endian, the rest as it reads.
QByteArray guidBytes(const Spalte& spalte, const Wert& wert) {
    if (wert.art() == Wert::Art::Bytes && wert.bytes().size() == kGuidBytes) return wert.bytes();
    if (!wert.istText()) passtNicht(spalte);
    const QUuid guid = QUuid::fromString(wert.text());
    if (guid.isNull() && !wert.text().contains(u"00000000-0000-0000-0000-000000000000")) passtNicht(spalte);
    QByteArray bytes;
    u32Anhaengen(bytes, guid.data1);
    u16Anhaengen(bytes, guid.data2);
    u16Anhaengen(bytes, guid.data3);
    bytes.append(reinterpret_cast<const char*>(guid.data4), sizeof guid.data4);
    return bytes;
}

[[noreturn]] void zeichenFehlt(const Spalte& spalte, const QString& text) {
    const auto fehlt = std::find_if(text.begin(), text.end(), [](QChar zeichen) {
        bool ok = true;
        text1252(QStringView(&zeichen, 1), &ok);
        return !ok;
    });
    throw EngineFehler(
        kUmwandlung,
        u"Ein Text des Feldes '%1' enthält das Zeichen '%2', das es in einer Datenbank von Access 97 nicht "
        u"gibt: "
        "\"%3\". Ersetzen Sie es oder speichern Sie die Datenbank im Format von Access 2000 bis 2003."_qs.arg(
            spalte.name, QString(fehlt, fehlt->isHighSurrogate() ? 2 : 1), text.left(kGezeigterText)));
}

QByteArray textBytes3(const Spalte& spalte, const QString& text) {
    bool ok = true;
    const QByteArray bytes = text1252(text, &ok);
    if (!ok) zeichenFehlt(spalte, text);
    return bytes;
}

// Numbers and dates are taken as their text, as the engine converts them.
QString textVon(const Spalte& spalte, const Wert& wert) {
    if (wert.art() == Wert::Art::Bytes) passtNicht(spalte);
    return wert.istText() ? wert.text() : wert.alsText();
}

// UTF-16 text that begins with U+FEFF would read as compressed: it is stored compressed indeed, switching to
// two bytes and back. A unit with a zero byte has no place in that form.
QByteArray mitFeffBeginnend(const Spalte& spalte, const QString& text) {
    QByteArray bytes("\xFF\xFE");
    bool zweiBytes = false;
    for (const QChar zeichen : text) {
        const char16_t einheit = zeichen.unicode();
        const bool breit = einheit > 0xFF;
        if (einheit == 0 || (breit && (einheit & 0xFF) == 0)) passtNicht(spalte);
        if (breit != zweiBytes) bytes.append('\0');
        zweiBytes = breit;
        bytes.append(char(einheit));
        if (breit) bytes.append(char(einheit >> 8));
    }
    return bytes;
}

void einzelnAnhaengen(QByteArray& ziel, QStringView text) {
    const qsizetype ab = ziel.size();
    ziel.resize(ab + text.size());
    std::transform(text.begin(), text.end(), ziel.data() + ab, [](QChar c) { return char(c.unicode()); });
}

bool komprimierbar(QStringView text) {
    return text.size() >= kKuerzesterKomprimierter && text.size() <= kLaengsterKomprimierter &&
           std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 1 && c.unicode() <= 0xFF; });
}

void textAnhaengen4(QByteArray& ziel, QStringView text, bool komprimieren) {
    if (komprimieren && komprimierbar(text)) {
        bytesAnhaengen(ziel, "\xFF\xFE", 2);
        einzelnAnhaengen(ziel, text);
    } else {
        bytesAnhaengen(ziel, text.utf16(), text.size() * 2);
    }
}

void textAnhaengen(QByteArray& ziel, const Format& format, const Spalte& spalte, const Wert& wert) {
    QString text = textVon(spalte, wert);
    const qsizetype zeichen = format.jet4 ? spalte.laenge / 2 : spalte.laenge;
    if (spalte.typ == kTypText && text.size() > zeichen) zuLang(spalte);
    if (spalte.istFest()) text = text.leftJustified(zeichen, u' ');
    if (!format.jet4)
        ziel += textBytes3(spalte, text);
    else if (text.startsWith(QChar::ByteOrderMark))
        ziel += mitFeffBeginnend(spalte, text);
    else
        textAnhaengen4(ziel, text, (spalte.flags2 & kSpalteKomprimiert) && !spalte.istFest());
}

QByteArray binaerBytes(const Spalte& spalte, const Wert& wert) {
    if (wert.art() != Wert::Art::Bytes) passtNicht(spalte);
    QByteArray bytes = wert.bytes();
    if (spalte.istLang()) return bytes;
    if (bytes.size() > spalte.laenge) zuLang(spalte);
    if (spalte.istFest()) bytes = bytes.leftJustified(spalte.laenge, '\0');
    return bytes;
}

}  // namespace

QByteArray textBytes4(QStringView text, bool komprimieren) {
    QByteArray bytes;
    textAnhaengen4(bytes, text, komprimieren);
    return bytes;
}

bool wahrheitVon(const Spalte& spalte, const Wert& wert) {
    return wert.art() == Wert::Art::Wahrheit ? wert.wahrheit() : gleitzahlVon(spalte, wert) != 0;
}

void wertAnhaengen(QByteArray& ziel, const Format& format, const Spalte& spalte, const Wert& wert) {
    switch (spalte.typ) {
        case kTypBoolean:
            return;
        case kTypByte:
            return zahlAnhaengen(ziel, ganzeVon<quint8>(spalte, wert));
        case kTypInteger:
            return zahlAnhaengen(ziel, ganzeVon<qint16>(spalte, wert));
        case kTypLong:
            return zahlAnhaengen(ziel, ganzeVon<qint32>(spalte, wert));
        case kTypWaehrung:
            return zahlAnhaengen(ziel, zehntausendstelVon(spalte, wert));
        case kTypSingle:
            return zahlAnhaengen(ziel, float(gleitzahlVon(spalte, wert)));
        case kTypDouble:
        case kTypDatum:
            return zahlAnhaengen(ziel, gleitzahlVon(spalte, wert));
        case kTypText:
        case kTypMemo:
            return textAnhaengen(ziel, format, spalte, wert);
        case kTypGuid:
            ziel += guidBytes(spalte, wert);
            return;
        case kTypDezimal:
            return dezimalAnhaengen(ziel, spalte, wert);
        default:
            ziel += binaerBytes(spalte, wert);
    }
}

QByteArray jetztBytes() {
    const QDateTime zeit = QDateTime::currentDateTime();
    const double tage =
        double(QDate(1899, 12, 30).daysTo(zeit.date())) + zeit.time().msecsSinceStartOfDay() / 86400000.0;
    QByteArray bytes;
    f64Anhaengen(bytes, tage);
    return bytes;
}

}  // namespace jet
