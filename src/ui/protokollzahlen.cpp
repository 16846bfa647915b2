// The figures of the result frames.
#include "ui/protokollzahlen.h"

namespace {

double anteil(double teil, qint64 ganzes) {
    return ganzes > 0 ? teil / double(ganzes) : 0;
}

QString zahlUnd(qint64 zahl, const QString& text) {
    return QString::number(zahl) + text;
}

QString prozent(qint64 teil, qint64 ganzes, const QString& text) {
    return zahlUnd(qint64(anteil(double(teil), ganzes) * 100), text);
}

Protokollzahlen dubletten(const Ergebniszahlen& e) {
    return {
        {1, anteil(double(e.dubletten), e.gesamt), anteil(double(e.nach), e.gesamt)},
        {zahlUnd(e.gesamt, QStringLiteral(" Datensätze")), zahlUnd(e.dubletten, QStringLiteral(" Dubletten")),
         zahlUnd(e.nach, QStringLiteral(" Datensätze nach Korrektur")),
         prozent(e.dubletten - e.angereichert, e.gesamt, QStringLiteral("% Verunreinigung"))}};
}

Protokollzahlen muell(const Ergebniszahlen& e) {
    return {{1, anteil(double(e.muell), e.gesamt), anteil(double(e.nach), e.gesamt)},
            {zahlUnd(e.gesamt, QStringLiteral(" Datensätze")),
             zahlUnd(e.muell, QStringLiteral(" Mülldatensätze")),
             zahlUnd(e.nach, QStringLiteral(" Datensätze nach Bereinigung")),
             prozent(e.muell, e.gesamt, QStringLiteral("% Verunreinigung"))}};
}

// The bars take the exact half of the pair members, the texts the whole part of it.
Protokollzahlen abgleich(const Ergebniszahlen& e) {
    const qint64 halb = e.dubletten / 2;
    return {{1, anteil(double(e.dubletten) / 2, e.gesamt), anteil(double(e.nach), e.gesamt)},
            {zahlUnd(e.gesamt, QStringLiteral(" Quelldatensätze")),
             QStringLiteral("davon ") + zahlUnd(halb, QStringLiteral(" in Referenz vorhanden")),
             zahlUnd(e.nach, QStringLiteral(" Datensätze nach Abgleich")),
             prozent(halb, e.gesamt, QStringLiteral("% Übereinstimmung"))}};
}

// Here the result is the larger table, and the bars are shares of it.
Protokollzahlen neueDaten(const Ergebniszahlen& e) {
    const qint64 halb = e.dubletten / 2;
    return {{anteil(double(e.gesamt), e.nach), anteil(double(e.dubletten) / 2, e.nach), 1},
            {zahlUnd(e.gesamt, QStringLiteral(" Quelldatensätze")),
             zahlUnd(halb, QStringLiteral(" doppelt vorhanden")),
             zahlUnd(e.nach, QStringLiteral(" Datensätze nach Korrektur")),
             prozent(halb, e.gesamt, QStringLiteral("% Übereinstimmung"))}};
}

}  // namespace

const std::vector<Protokollart>& Protokollarten() {
    static const std::vector<Protokollart> arten{
        {13, QStringLiteral("Dubletten"), QStringLiteral("lblDublettenVerunreinigung"), dubletten},
        {23, QStringLiteral("Müll"), QStringLiteral("lblMüllVerunreinigung"), muell},
        {53, QStringLiteral("Datenabgleich"), QStringLiteral("lblDatenabgleich4"), abgleich},
        {63, QStringLiteral("NeueDaten"), QStringLiteral("lblNeueDaten4"), neueDaten}};
    return arten;
}
