// Mixing two tables into one that has the structure of the first.
#pragma once

#include <QString>

#include "engine/dao/recordset.h"
#include "fields/feldarten.h"

// Makes the table `misch`: the records of the first table and behind them those of the second one, converted
// into its fields; a control column tells the origin. `ergebnis` becomes the assignment of the mix, that of
// the first table and an element for the control column. `gAbbruch` or `gFehler` tell that there is none; the
// table is then gone.
void TabellenMischen(const QString& tabelle1, const QString& tabelle2, const QString& misch,
                     const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2,
                     FeldZuordnungen& ergebnis);

// Fills the record under AddNew from the current record of the second table, by the assignments of the two
// tables. Failures are shown; `gFehler` tells that the user stopped.
void DatensatzErgaenzen(dao::Recordset& mischSatz, dao::Recordset& zweitSatz,
                        const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2);
