// The operation "add the data of a second table".
#include "tables/neuedaten.h"

#include "data/steuerfelder.h"
#include "tables/zweitabellenlauf.h"

void NeueDatenStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                      const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2) {
    ZweitabellenlaufStarten(quelle, zweite, ziel, zuordnung1, zuordnung2,
                            {QStringLiteral("TEMP_ND"),
                             true,
                             {StatusBedingung(kStatusAngereichert), StatusBedingung(kStatusDublette)},
                             QStringLiteral("Fehler beim Erstellen der Tabelle mit neuen Datensätzen."),
                             63});
}
