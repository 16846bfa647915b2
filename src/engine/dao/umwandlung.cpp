// Conversion of values to field types.
#include "engine/dao/umwandlung.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>
#include <cmath>
#include <limits>
#include <optional>

#include "base/fehler.h"
#include "base/text.h"
#include "engine/dao/dezimalzahl.h"

namespace dao {
namespace {

constexpr qsizetype kMaxGezeigt = 60;
constexpr double kErsterTag = -657434;       // 1 January 100
constexpr double kTagNachLetztem = 2958466;  // 1 January 10000

QString gezeigt(const Wert& wert) {
    if (wert.art() == Wert::Art::Bytes) return QStringLiteral("(Binärdaten)");
    const QString text = wert.alsText();
    return text.size() <= kMaxGezeigt ? text : text.left(kMaxGezeigt) + QStringLiteral(" ...");
}

[[noreturn]] void unverwandelbar(const engine::FeldDef& feld, const Wert& wert) {
    throw EngineFehler(kUmwandlung,
                       QStringLiteral("Der Wert '%1' passt nicht in das Feld '%2': Er kann nicht in den "
                                      "Datentyp des Feldes umgewandelt werden.")
                           .arg(gezeigt(wert), feld.name));
}

[[noreturn]] void zuLang(const engine::FeldDef& feld, const Wert& wert, qsizetype laenge) {
    throw EngineFehler(
        kFeldZuKlein,
        QStringLiteral("Das Feld '%1' nimmt höchstens %2 Zeichen auf, der Wert '%3' hat %4. "
                       "Vergrößern Sie das Feld in der Tabelle oder kürzen Sie den Wert.")
            .arg(feld.name, QString::number(feld.groesse), gezeigt(wert), QString::number(laenge)));
}

Wert alsTextwert(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() == Wert::Art::Bytes) unverwandelbar(feld, wert);
    Wert text = wert.istText() ? wert : Wert(wert.alsText());
    const qsizetype laenge = text.text().size();
    if (feld.typ == dbText && feld.groesse > 0 && laenge > feld.groesse) zuLang(feld, wert, laenge);
    return text;
}

Dezimalzahl alsDezimalzahl(const engine::FeldDef& feld, const Wert& wert) {
    const std::optional<Dezimalzahl> zahl = dezimalzahlAus(wert);
    if (!zahl) unverwandelbar(feld, wert);
    return *zahl;
}

Wert alsGanzzahl(const engine::FeldDef& feld, const Wert& wert, qint64 kleinste, qint64 groesste) {
    std::optional<qint64> zahl;
    if (wert.art() == Wert::Art::Ganzzahl)
        zahl = wert.ganzzahl();
    else
        zahl = alsDezimalzahl(feld, wert).verschoben(0);
    if (!zahl || *zahl < kleinste || *zahl > groesste) unverwandelbar(feld, wert);
    return Wert(*zahl);
}

template <typename T>
Wert alsGanzzahlVon(const engine::FeldDef& feld, const Wert& wert) {
    return alsGanzzahl(feld, wert, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}

double alsDouble(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.istText()) return alsDezimalzahl(feld, wert).alsDouble();
    if (wert.art() == Wert::Art::Bytes) unverwandelbar(feld, wert);
    return wert.alsZahl();
}

// A number with more digits than a double keeps, as a customer's number may be: it is not to lose any.
bool mehrZiffernAlsDouble(const Wert& wert) {
    if (wert.art() != Wert::Art::Ganzzahl) return false;
    const double naechster = double(wert.ganzzahl());
    return std::abs(naechster) >= 9.2e18 || qint64(naechster) != wert.ganzzahl();
}

Wert alsGleitzahl(const engine::FeldDef& feld, const Wert& wert) {
    if (feld.typ == dbDouble && mehrZiffernAlsDouble(wert)) return wert;
    const double zahl = alsDouble(feld, wert);
    // An infinite number that the file held stays; one that a conversion made is an overflow.
    if (std::isinf(zahl) && wert.art() != Wert::Art::Gleitzahl) unverwandelbar(feld, wert);
    return Wert(zahl);
}

Wert alsEinfach(const engine::FeldDef& feld, const Wert& wert) {
    const double zahl = alsGleitzahl(feld, wert).gleitzahl();
    if (std::isfinite(zahl) && std::abs(zahl) > double(std::numeric_limits<float>::max()))
        unverwandelbar(feld, wert);
    return Wert(double(float(zahl)));
}

Wert alsWaehrung(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() == Wert::Art::Waehrung) return wert;
    const std::optional<qint64> zahl = alsDezimalzahl(feld, wert).verschoben(4);
    if (!zahl) unverwandelbar(feld, wert);
    return Wert(Waehrung{*zahl});
}

Wert alsDezimal(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() == Wert::Art::Dezimal && feld.genauigkeit == 0) return wert;
    const std::optional<Dezimal> zahl =
        alsDezimalzahl(feld, wert).alsDezimal(feld.genauigkeit, feld.nachkommastellen);
    if (!zahl) unverwandelbar(feld, wert);
    return Wert(*zahl);
}

Wert alsWahrheit(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() == Wert::Art::Wahrheit) return wert;
    if (wert.istText()) {
        const QString text = Trim(wert.text());
        for (const char16_t* ja : {u"Wahr", u"Ja", u"True"})
            if (text.compare(QStringView(ja), Qt::CaseInsensitive) == 0) return Wert(true);
        for (const char16_t* nein : {u"Falsch", u"Nein", u"False"})
            if (text.compare(QStringView(nein), Qt::CaseInsensitive) == 0) return Wert(false);
    }
    return Wert(alsDouble(feld, wert) != 0);
}

std::optional<double> tageVon(const QString& text) {
    static const QRegularExpression muster(QStringLiteral(
        "\\A *(?:(?:(?<t>[0-9]{1,2})(?<trenner>[./-])(?<m>[0-9]{1,2})\\k<trenner>(?<j>[0-9]{4}|[0-9]{2})|"
        "(?<ij>[0-9]{4})-(?<im>[0-9]{1,2})-(?<it>[0-9]{1,2}))(?=\\z| ))? *"
        "(?:(?<h>[0-9]{1,2}):(?<min>[0-9]{2})(?::(?<s>[0-9]{2}))?)? *\\z"));
    const QRegularExpressionMatch fund = muster.match(text);
    if (!fund.hasMatch()) return std::nullopt;
    const auto zahl = [&](const char* name) { return fund.captured(QString::fromLatin1(name)).toInt(); };
    const bool deutsch = fund.hasCaptured(QStringLiteral("t"));
    const bool mitTag = deutsch || fund.hasCaptured(QStringLiteral("ij"));
    const bool mitZeit = fund.hasCaptured(QStringLiteral("h"));
    if (!mitTag && !mitZeit) return std::nullopt;
    int jahr = deutsch ? zahl("j") : zahl("ij");
    // Two digits mean 1930 to 2029.
    if (deutsch && fund.captured(QStringLiteral("j")).size() == 2) jahr += jahr < 30 ? 2000 : 1900;
    const QDate null(1899, 12, 30);
    const QDate tag =
        mitTag ? QDate(jahr, deutsch ? zahl("m") : zahl("im"), deutsch ? zahl("t") : zahl("it")) : null;
    const QTime zeit(zahl("h"), zahl("min"), zahl("s"));
    if (!tag.isValid() || !zeit.isValid()) return std::nullopt;
    const double tage = double(null.daysTo(tag));
    const double bruchteil = zeit.msecsSinceStartOfDay() / 86400000.0;
    return tage < 0 ? tage - bruchteil : tage + bruchteil;
}

Wert alsDatum(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() == Wert::Art::DatumZeit) return wert;
    const std::optional<double> tage = wert.istText() ? tageVon(wert.text()) : alsDouble(feld, wert);
    if (!tage || !(*tage >= kErsterTag && *tage < kTagNachLetztem)) unverwandelbar(feld, wert);
    return Wert(DatumZeit{*tage});
}

Wert alsBytes(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.art() != Wert::Art::Bytes) unverwandelbar(feld, wert);
    if (feld.typ == dbBinary && feld.groesse > 0 && wert.bytes().size() > feld.groesse)
        zuLang(feld, wert, wert.bytes().size());
    return wert;
}

Wert alsKennung(const engine::FeldDef& feld, const Wert& wert) {
    if (!wert.istText() && wert.art() != Wert::Art::Bytes) unverwandelbar(feld, wert);
    return wert;
}

bool istTextfeld(const engine::FeldDef& feld) {
    return feld.typ == dbText || feld.typ == dbMemo;
}

}  // namespace

Wert feldwertAus(const engine::FeldDef& feld, const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert::null();
    if (istTextfeld(feld)) return alsTextwert(feld, wert);
    if (wert.istText() && wert.text().isEmpty()) return Wert::null();
    switch (feld.typ) {
        case dbBoolean:
            return alsWahrheit(feld, wert);
        case dbByte:
            return alsGanzzahlVon<quint8>(feld, wert);
        case dbInteger:
            return alsGanzzahlVon<qint16>(feld, wert);
        case dbLong:
            return alsGanzzahlVon<qint32>(feld, wert);
        case dbBigInt:
            return alsGanzzahlVon<qint64>(feld, wert);
        case dbCurrency:
            return alsWaehrung(feld, wert);
        case dbSingle:
            return alsEinfach(feld, wert);
        case dbDouble:
            return alsGleitzahl(feld, wert);
        case dbDate:
        case dbTime:
            return alsDatum(feld, wert);
        case dbBinary:
        case dbLongBinary:
            return alsBytes(feld, wert);
        case dbGUID:
            return alsKennung(feld, wert);
        case dbDecimal:
            return alsDezimal(feld, wert);
        default:
            return wert;
    }
}

void leertextPruefen(const engine::FeldDef& feld, const Wert& wert) {
    if (feld.leerErlaubt || !wert.istText() || !wert.text().isEmpty()) return;
    throw EngineFehler(kLeereZeichenfolge,
                       QStringLiteral("Das Feld '%1' nimmt keinen leeren Text auf. Lassen Sie es "
                                      "ohne Wert oder erlauben Sie in der Tabelle leere Zeichenfolgen.")
                           .arg(feld.name));
}

}  // namespace dao
