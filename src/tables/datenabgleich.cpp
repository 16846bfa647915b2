// The operation "reconcile against a second table".
#include "tables/datenabgleich.h"

#include "data/steuerfelder.h"
#include "tables/zweitabellenlauf.h"

namespace {

// Records of the second table that the user did not take over.
QString nichtUebernommeneZweite() {
    return QStringLiteral("WHERE ([%1] = 2 AND NOT ([%2] = %3 OR [%2] = %4))")
        .arg(QString::fromUtf16(kTempDsq), QString::fromUtf16(kTempDss))
        .arg(int(kStatusAngereichertBleibt))
        .arg(int(kStatusDubletteBleibt));
}

}  // namespace

void DatenabgleichStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                          const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2) {
    ZweitabellenlaufStarten(
        quelle, zweite, ziel, zuordnung1, zuordnung2,
        {QStringLiteral("TEMP_DA"),
         false,
         {StatusBedingung(kStatusDublette), StatusBedingung(kStatusAngereichert), nichtUebernommeneZweite()},
         QStringLiteral("Fehler beim Erstellen der Tabelle mit abgeglichenen Datensätzen."),
         53});
}
