// The run that split and merge have in common: a copy of a table in which new fields are filled from old
// ones.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "data/kopieren.h"
#include "engine/dao/recordset.h"
#include "run/schritte.h"

struct Umformung {
    QString information;  // shown while the records are copied
    QString fehler;       // what the error box says in front of the position
    QString feld;         // the new fields stand directly behind it
    std::vector<NeuesFeld> neueFelder;
    // Fills the new fields of the record under AddNew in `ziel` from the current record of `quelle`; each
    // statement that may fail is a step.
    std::function<void(Schritte& s, dao::Recordset& quelle, dao::Recordset& ziel)> rechnen;
    bool leereWeglassen = false;  // a record that is refused for a zero-length text is left out in silence
    QStringList alteFelder;       // deleted at the end; the user is told of those that cannot be
    int ergebnisrahmen = 0;
};

// Works on frame 6 and ends on the result frame, or on frame 3 with the database as it was.
void UmformungStarten(const QString& quelle, const QString& ziel, const Umformung& umformung);
