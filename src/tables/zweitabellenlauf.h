// The run that reconciliation and new data have in common.
#pragma once

#include <QString>
#include <QStringList>

#include "fields/feldarten.h"

struct Zweitabellenlauf {
    QString mischtabelle;                  // name of the mix, gone at the end
    bool angereichertUebernehmen = false;  // enriched records are accepted from the start
    QStringList loeschbedingungen;         // what goes at the end, in this order; each begins with "WHERE"
    QString fehler;                        // what the error box says when the end fails
    int ergebnisrahmen = 0;
};

// Mixes the two tables, searches the mix for duplicates, lets the user review them, and leaves the result in
// `ziel`. Ends on the result frame, or on frame 3 with the database as it was.
void ZweitabellenlaufStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                             const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2,
                             const Zweitabellenlauf& lauf);

// "WHERE [TEMP_DSS] = 13".
QString StatusBedingung(int status);
