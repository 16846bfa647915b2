// Decimal digits of a number.
#include "engine/dao/dezimalzahl.h"

#include <QLocale>
#include <QRegularExpression>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace dao {
namespace {

constexpr int kMaxExponent = 400;  // beyond every floating number
constexpr int kMaxZiffern = 28;

Dezimalzahl ohneFuehrendeNullen(Dezimalzahl zahl) {
    qsizetype nullen = 0;
    while (nullen < zahl.ziffern.size() && zahl.ziffern[nullen] == '0') ++nullen;
    zahl.ziffern.remove(0, nullen);
    return zahl;
}

std::optional<Dezimalzahl> ausText(const QString& text) {
    static const QRegularExpression muster(QStringLiteral(
        "\\A *(?<v>[+-]?)(?=[.,]?[0-9])(?<g>[0-9]*)(?:[.,](?<b>[0-9]*))?(?:[eE](?<e>[+-]?[0-9]{1,4}))? "
        "*\\z"));
    const QRegularExpressionMatch fund = muster.match(text);
    if (!fund.hasMatch()) return std::nullopt;
    const int exponent = fund.captured(QStringLiteral("e")).toInt();
    if (std::abs(exponent) > kMaxExponent) return std::nullopt;
    Dezimalzahl zahl;
    zahl.negativ = fund.captured(QStringLiteral("v")) == u"-";
    const QByteArray bruchteil = fund.captured(QStringLiteral("b")).toLatin1();
    zahl.ziffern = fund.captured(QStringLiteral("g")).toLatin1() + bruchteil;
    zahl.skala = int(bruchteil.size()) - exponent;
    if (zahl.skala < 0) {
        zahl.ziffern.append(-zahl.skala, '0');
        zahl.skala = 0;
    }
    return ohneFuehrendeNullen(zahl);
}

// One more than the digits say; the digits may grow by one.
void erhoehen(QByteArray& ziffern) {
    qsizetype i = ziffern.size();
    while (i > 0 && ziffern[i - 1] == '9') ziffern[--i] = '0';
    if (i == 0)
        ziffern.prepend('1');
    else
        ++ziffern[i - 1];
}

bool rundetAuf(const QByteArray& behalten, const QByteArray& rest) {
    if (rest[0] != '5') return rest[0] > '5';
    for (char ziffer : rest.sliced(1))
        if (ziffer != '0') return true;
    return !behalten.isEmpty() && (behalten.back() - '0') % 2 == 1;
}

}  // namespace

Dezimalzahl Dezimalzahl::gerundet(int stellen) const {
    Dezimalzahl neu = *this;
    neu.skala = stellen;
    if (stellen >= skala) {
        if (!neu.ziffern.isEmpty()) neu.ziffern.append(stellen - skala, '0');
        return neu;
    }
    const int weg = skala - stellen;
    if (neu.ziffern.size() < weg) neu.ziffern.prepend(QByteArray(weg - neu.ziffern.size(), '0'));
    const QByteArray rest = neu.ziffern.last(weg);
    neu.ziffern.chop(weg);
    if (rundetAuf(neu.ziffern, rest)) erhoehen(neu.ziffern);
    return ohneFuehrendeNullen(neu);
}

std::optional<qint64> Dezimalzahl::verschoben(int stellen) const {
    const QByteArray rund = gerundet(stellen).ziffern;
    if (rund.isEmpty()) return 0;
    bool passt = false;
    const qint64 zahl = ((negativ ? "-" : "") + rund).toLongLong(&passt);
    return passt ? std::optional(zahl) : std::nullopt;
}

double Dezimalzahl::alsDouble() const {
    if (ziffern.isEmpty()) return 0;
    const QByteArray text = ziffern + "E-" + QByteArray::number(skala);
    double betrag = 0;
    const auto ergebnis = std::from_chars(text.constData(), text.constData() + text.size(), betrag);
    if (ergebnis.ec == std::errc::result_out_of_range)
        betrag = ziffern.size() > skala ? std::numeric_limits<double>::infinity() : 0;
    return negativ ? -betrag : betrag;
}

std::optional<Dezimal> Dezimalzahl::alsDezimal(int genauigkeit, int nachkommastellen) const {
    const Dezimalzahl rund =
        genauigkeit > 0 ? gerundet(nachkommastellen) : gerundet(std::min(skala, kMaxZiffern));
    if (rund.ziffern.size() > (genauigkeit > 0 ? genauigkeit : kMaxZiffern)) return std::nullopt;
    Dezimal ergebnis{negativ && !rund.ziffern.isEmpty(), 0, 0, quint8(rund.skala)};
    for (char ziffer : rund.ziffern) {
        const quint64 unten = (ergebnis.tief & 0xffffffffu) * 10 + quint64(ziffer - '0');
        const quint64 oben = (ergebnis.tief >> 32) * 10 + (unten >> 32);
        ergebnis.hoch = ergebnis.hoch * 10 + (oben >> 32);
        ergebnis.tief = oben << 32 | (unten & 0xffffffffu);
    }
    return ergebnis;
}

std::optional<Dezimalzahl> dezimalzahlAus(const Wert& wert) {
    switch (wert.art()) {
        case Wert::Art::Wahrheit:
            return ausText(wert.wahrheit() ? QStringLiteral("-1") : QStringLiteral("0"));
        case Wert::Art::Ganzzahl:
        case Wert::Art::Waehrung:
        case Wert::Art::Dezimal:
        case Wert::Art::Text:
            return ausText(wert.alsText());
        case Wert::Art::Gleitzahl:
        case Wert::Art::DatumZeit:
            // The shortest digits that stand for the number, so that 0.1 is one tenth.
            return ausText(QString::number(wert.alsZahl(), 'g', QLocale::FloatingPointShortest));
        default:
            return std::nullopt;
    }
}

}  // namespace dao
