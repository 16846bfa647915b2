// The query texts of the two review windows.
#include "ui/nachbearbeitungsabfragen.h"

#include "data/steuerfelder.h"

namespace {

QString inKlammern(const QString& name) {
    return u'[' + name + u']';
}

QString gleich(const char16_t* feld, const QString& zahl) {
    return inKlammern(QString::fromUtf16(feld)) + QStringLiteral(" = ") + zahl;
}

QString statusGleich(int status) {
    return gleich(kTempDss, QString::number(status));
}

QString alles(const QString& tabelle) {
    return QStringLiteral("SELECT * FROM ") + inKlammern(tabelle);
}

// The remark stands first in a grid.
QString anmerkungUndAlles(const QString& tabelle) {
    return QStringLiteral("SELECT ") + inKlammern(QString::fromUtf16(kTempAmk)) + QStringLiteral(",* FROM ") +
           inKlammern(tabelle);
}

// The missing blanks in front of WHERE and AND are part of the texts.
QString wo(const QString& bedingung) {
    return QStringLiteral("WHERE ") + bedingung;
}

QString zuUebernehmen() {
    return statusGleich(kStatusAngereichertBleibt) + QStringLiteral(" OR ") +
           statusGleich(kStatusDubletteBleibt);
}

QString mitgliedDer(const QString& gruppe, int status) {
    return statusGleich(status) + QStringLiteral("AND ") + gleich(kTempBn, gruppe);
}

}  // namespace

QString AbfrageAngereichert(const QString& tabelle) {
    return alles(tabelle) + u' ' + wo(statusGleich(kStatusAngereichert));
}

QString AnzeigeAngereichert(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(statusGleich(kStatusAngereichert));
}

QString AbfrageUebernehmen(const QString& tabelle) {
    return alles(tabelle) + wo(zuUebernehmen());
}

QString AnzeigeUebernehmen(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(zuUebernehmen());
}

QString AbfrageDublette(const QString& tabelle, const QString& gruppe) {
    return alles(tabelle) + wo(mitgliedDer(gruppe, kStatusDublette));
}

QString AnzeigeDublette(const QString& tabelle, const QString& gruppe) {
    return anmerkungUndAlles(tabelle) + wo(mitgliedDer(gruppe, kStatusDublette));
}

QString AnzeigeUebernommeneDublette(const QString& tabelle, const QString& gruppe) {
    return anmerkungUndAlles(tabelle) + wo(mitgliedDer(gruppe, kStatusDubletteBleibt));
}

QString AnzeigeDubletteLeer(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(QStringLiteral("1 = 2"));
}

QString AnzeigeDubletteLeerNachZeilenwechsel(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(QStringLiteral("1=2"));
}

QString AbfrageMuell(const QString& tabelle) {
    return alles(tabelle) + u' ' + wo(statusGleich(kStatusMuell));
}

QString AnzeigeMuell(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(statusGleich(kStatusMuell));
}

QString AbfrageMuellBleibt(const QString& tabelle) {
    return alles(tabelle) + u' ' + wo(statusGleich(kStatusMuellBleibt));
}

QString AnzeigeMuellBleibt(const QString& tabelle) {
    return anmerkungUndAlles(tabelle) + wo(statusGleich(kStatusMuellBleibt));
}

QString BedingungSatz(const QString& satznummer) {
    return gleich(kTempDsn, satznummer);
}
