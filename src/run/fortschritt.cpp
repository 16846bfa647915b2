// Progress of a phase and the estimate of its time.
#include "run/fortschritt.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "run/fenster.h"
#include "run/zustand.h"

namespace {

constexpr qint64 kStunde = 3600000;
constexpr qint64 kMinute = 60000;
constexpr qint64 kSekunde = 1000;

qint32 in32Bit(double zahl) {
    constexpr double kKleinste = std::numeric_limits<qint32>::min();
    constexpr double kGroesste = std::numeric_limits<qint32>::max();
    return qint32(std::clamp(zahl, kKleinste, kGroesste));
}

// To the nearest whole number, a half to the even one, whatever the thread's rounding mode is.
double rundenZurGeraden(double zahl) {
    const double unten = std::floor(zahl);
    const double rest = zahl - unten;
    if (rest != 0.5) return rest < 0.5 ? unten : unten + 1;
    return std::fmod(unten, 2) == 0 ? unten : unten + 1;
}

QString zeitText(qint64 ms) {
    return QString::number(ms / kStunde) + u':' + ZeitZweistellig(int(ms % kStunde / kMinute)) + u':' +
           ZeitZweistellig(int(ms % kStunde % kMinute / kSekunde));
}

}  // namespace

void FortschrittLeeren() {
    fenster().dauer(QString());
    fenster().verbleibendeZeit(QString());
    fenster().teilFortschritt(0);
    fenster().teilFortschrittText(QStringLiteral("0 %"));
}

void FortschrittStarten(qint64 gesamt, double anteil) {
    gLaufzeitMs = 0;
    gFortschrittMax = gesamt;
    gFortschrittWert = 0;
    gFortschrittAnteil = float(anteil);
    fenster().taktgeber(true);
}

void FortschrittAnhalten() {
    fenster().taktgeber(false);
}

void FortschrittBeenden() {
    FortschrittAnhalten();
    fenster().teilFortschritt(100);
    fenster().teilFortschrittText(QStringLiteral("100 %"));
}

void tmrFortschritt_Timer() {
    if (gFortschrittMax <= 0) return;  // a phase without items shows no share
    const double prozent = double(gFortschrittWert) / double(gFortschrittMax) * 100;
    fenster().teilFortschritt(std::clamp(float(prozent), 0.0f, 100.0f));
    const double gezeigt = double(fenster().teilFortschritt());
    fenster().teilFortschrittText(QString::number(qint64(std::floor(gezeigt + 0.5))) + QStringLiteral(" %"));
}

void tmrDauer_Timer(int intervallMs) {
    gLaufzeitMs = in32Bit(double(gLaufzeitMs) + intervallMs);
    const auto [dauer, rest] = ZeitAnzeige(gLaufzeitMs, gFortschrittWert, gFortschrittMax);
    fenster().dauer(dauer);
    fenster().verbleibendeZeit(rest);
}

std::pair<QString, QString> ZeitAnzeige(qint64 laufzeitMs, qint64 wert, qint64 gesamt) {
    if (wert == 0) return {};
    const double schaetzung = double(laufzeitMs) / double(wert) * double(gesamt);
    // The two figures round differently, so that they can be a second apart from each other's sum.
    const qint32 dauer = in32Bit(rundenZurGeraden(schaetzung));
    const qint32 rest = in32Bit(std::trunc(schaetzung) - double(laufzeitMs));
    return {QStringLiteral("Geschätzte Dauer : ") + zeitText(dauer),
            QStringLiteral("Verbleibende Zeit  : ") + zeitText(rest)};
}

QString ZeitZweistellig(int wert) {
    return wert < 10 ? u'0' + QString::number(wert) : QString::number(wert);
}
