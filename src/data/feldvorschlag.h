// The proposal of field kinds for all fields of a table.
#pragma once

#include <QStringList>

#include "fields/feldarten.h"

// Proposes a kind for every field of `tabelle` of the open database. `zeilen` gets the lines of the field
// list. Failures go to the error box; Abbrechen sets `gFehler`.
void FeldArtenVorschlagen(const QString& tabelle, FeldZuordnungen& zuordnungen, qint16& feldAnzahl,
                          QStringList& zeilen);

// Seeds the generator that draws the sample records.
void ZufallStarten(quint32 anfang);
