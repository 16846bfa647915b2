// The query texts of the two review windows, exactly as they are sent.
#pragma once

#include <QString>

// `tabelle` is the table's name, `gruppe` a TEMP_BN as plain digits.
QString AbfrageAngereichert(const QString& tabelle);                                 // rsAngereichert
QString AnzeigeAngereichert(const QString& tabelle);                                 // adoAngereichert
QString AbfrageUebernehmen(const QString& tabelle);                                  // rsÜbernehmen
QString AnzeigeUebernehmen(const QString& tabelle);                                  // adoÜbernehmen
QString AbfrageDublette(const QString& tabelle, const QString& gruppe);              // rsDublette
QString AnzeigeDublette(const QString& tabelle, const QString& gruppe);              // adoDublette
QString AnzeigeUebernommeneDublette(const QString& tabelle, const QString& gruppe);  // for the tool tips
QString AnzeigeDubletteLeer(const QString& tabelle);                   // the same from a refresh
QString AnzeigeDubletteLeerNachZeilenwechsel(const QString& tabelle);  // and from a row change
QString AbfrageMuell(const QString& tabelle);                          // rsMüll
QString AnzeigeMuell(const QString& tabelle);                          // adoMüll
QString AbfrageMuellBleibt(const QString& tabelle);                    // rsÜbernehmen of the junk review
QString AnzeigeMuellBleibt(const QString& tabelle);                    // its adoÜbernehmen
// The condition that finds one record by its TEMP_DSN.
QString BedingungSatz(const QString& satznummer);
