// The value of one cell: text forms and comparison.
#include "base/wert.h"

#include <QDate>
#include <QDateTime>
#include <QTime>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kStellen = 15;
constexpr qint64 kSekundenAmTag = 86400;
// What a date can be: the first day of the year 100 to the last one of 9999.
constexpr double kErsterTag = -657434;
constexpr double kNachLetztemTag = 2958466;

QString mitKomma(QString ziffern) {
    const qsizetype punkt = ziffern.indexOf(u'.');
    if (punkt < 0) return ziffern;
    while (ziffern.endsWith(u'0')) ziffern.chop(1);
    if (ziffern.endsWith(u'.')) ziffern.chop(1);
    return ziffern.replace(u'.', u',');
}

// Decimal digits of a 128-bit magnitude, by repeated division by ten.
QString ziffernVon(quint64 hoch, quint64 tief) {
    QString umgekehrt;
    do {
        // (hoch, tief) / 10 in 32-bit limbs, so that no wider type is needed.
        quint64 rest = 0;
        quint64 glieder[4] = {hoch >> 32, hoch & 0xffffffffu, tief >> 32, tief & 0xffffffffu};
        for (quint64& glied : glieder) {
            const quint64 dividend = (rest << 32) | glied;
            glied = dividend / 10;
            rest = dividend % 10;
        }
        hoch = glieder[0] << 32 | glieder[1];
        tief = glieder[2] << 32 | glieder[3];
        umgekehrt.append(QChar(u'0' + char16_t(rest)));
    } while (hoch != 0 || tief != 0);
    std::reverse(umgekehrt.begin(), umgekehrt.end());
    return umgekehrt;
}

QString mitSkala(QString ziffern, int skala, bool negativ) {
    while (ziffern.size() <= skala) ziffern.prepend(u'0');
    if (skala > 0) ziffern.insert(ziffern.size() - skala, u'.');
    ziffern = mitKomma(ziffern);
    return negativ && ziffern != u"0" ? u'-' + ziffern : ziffern;
}

double dezimalAlsZahl(const Dezimal& d) {
    const double betrag =
        (double(d.hoch) * 18446744073709551616.0 + double(d.tief)) / std::pow(10.0, d.skala);
    return d.negativ ? -betrag : betrag;
}

// The order of two decimals of the same scale.
std::weak_ordering gleicheSkala(const Dezimal& a, const Dezimal& b) {
    const std::weak_ordering betrag = std::pair(a.hoch, a.tief) <=> std::pair(b.hoch, b.tief);
    const bool nullen = (a.hoch | a.tief | b.hoch | b.tief) == 0;
    if (a.negativ != b.negativ && !nullen) return b.negativ <=> a.negativ;
    if (a.negativ && b.negativ) return std::pair(b.hoch, b.tief) <=> std::pair(a.hoch, a.tief);
    return betrag;
}

}  // namespace

bool Wert::istZahl() const {
    switch (art()) {
        case Art::Ganzzahl:
        case Art::Gleitzahl:
        case Art::Waehrung:
        case Art::DatumZeit:
        case Art::Dezimal:
            return true;
        default:
            return false;
    }
}

QString zahlText(double zahl) {
    if (zahl == 0) return QStringLiteral("0");
    if (std::isnan(zahl)) return QStringLiteral("NaN");
    if (std::isinf(zahl)) return zahl < 0 ? QStringLiteral("-INF") : QStringLiteral("INF");
    const QString wissenschaftlich = QString::number(zahl, 'e', kStellen - 1);
    const qsizetype e = wissenschaftlich.indexOf(u'e');
    const int exponent = wissenschaftlich.mid(e + 1).toInt();
    if (exponent >= kStellen || exponent < -kStellen) {
        const QString vorzeichen = exponent < 0 ? QStringLiteral("-") : QStringLiteral("+");
        return mitKomma(wissenschaftlich.left(e)) + u'E' + vorzeichen +
               QStringLiteral("%1").arg(std::abs(exponent), 2, 10, QLatin1Char('0'));
    }
    return mitKomma(QString::number(zahl, 'f', kStellen - 1 - exponent));
}

QString waehrungText(Waehrung w) {
    const bool negativ = w.zehntausendstel < 0;
    const quint64 betrag = negativ ? quint64(0) - quint64(w.zehntausendstel) : quint64(w.zehntausendstel);
    return mitSkala(QString::number(betrag), 4, negativ);
}

QString dezimalText(const Dezimal& d) {
    return mitSkala(ziffernVon(d.hoch, d.tief), d.skala, d.negativ);
}

QString datumText(DatumZeit d) {
    const double tag = std::trunc(d.tage);
    if (!(tag >= kErsterTag && tag < kNachLetztemTag)) return QString();
    qint64 sekunden = std::llround(std::abs(d.tage - tag) * double(kSekundenAmTag));
    qint64 ganzeTage = qint64(tag);
    if (sekunden == kSekundenAmTag) {
        sekunden = 0;
        ++ganzeTage;
    }
    const QTime zeit = QTime(0, 0).addSecs(int(sekunden));
    const QString zeitText = zeit.toString(QStringLiteral("HH:mm:ss"));
    if (ganzeTage == 0) return zeitText;
    const QString tagText = QDate(1899, 12, 30).addDays(ganzeTage).toString(QStringLiteral("dd.MM.yyyy"));
    return sekunden == 0 ? tagText : tagText + u' ' + zeitText;
}

QString Wert::alsText() const {
    switch (art()) {
        case Art::Leer:
        case Art::Null:
        case Art::Bytes:
            return QString();
        case Art::Wahrheit:
            return wahrheit() ? QStringLiteral("Wahr") : QStringLiteral("Falsch");
        case Art::Ganzzahl:
            return QString::number(ganzzahl());
        case Art::Gleitzahl:
            return zahlText(gleitzahl());
        case Art::Waehrung:
            return waehrungText(waehrung());
        case Art::DatumZeit:
            return datumText(datumZeit());
        case Art::Text:
            return text();
        case Art::Dezimal:
            return dezimalText(dezimal());
    }
    return QString();
}

double Wert::alsZahl() const {
    switch (art()) {
        case Art::Wahrheit:
            return wahrheit() ? -1 : 0;
        case Art::Ganzzahl:
            return double(ganzzahl());
        case Art::Gleitzahl:
            return gleitzahl();
        case Art::Waehrung:
            return double(waehrung().zehntausendstel) / 10000;
        case Art::DatumZeit:
            return datumZeit().tage;
        case Art::Dezimal:
            return dezimalAlsZahl(dezimal());
        default:
            return 0;
    }
}

std::weak_ordering wertVergleichen(const Wert& a, const Wert& b) {
    if (a.istLeerOderNull() || b.istLeerOderNull()) return b.istLeerOderNull() <=> a.istLeerOderNull();
    if (a.istText() && b.istText()) return a.text().compare(b.text()) <=> 0;
    if (a.art() == Wert::Art::Bytes && b.art() == Wert::Art::Bytes) return a.bytes().compare(b.bytes()) <=> 0;
    if (a.art() == Wert::Art::Ganzzahl && b.art() == Wert::Art::Ganzzahl)
        return a.ganzzahl() <=> b.ganzzahl();
    if (a.art() == Wert::Art::Waehrung && b.art() == Wert::Art::Waehrung)
        return a.waehrung() <=> b.waehrung();
    if (a.art() == Wert::Art::Dezimal && b.art() == a.art() && a.dezimal().skala == b.dezimal().skala)
        return gleicheSkala(a.dezimal(), b.dezimal());
    const double links = a.alsZahl();
    const double rechts = b.alsZahl();
    if (links < rechts) return std::weak_ordering::less;
    return links > rechts ? std::weak_ordering::greater : std::weak_ordering::equivalent;
}
