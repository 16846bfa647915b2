// A new table from its definition: checked, laid out, filled.
#pragma once

#include "engine/datei/datenbankdatei.h"
#include "engine/jet/tdef.h"
#include "engine/katalog.h"

namespace jet {

class Seitenvergabe;

// Raises kUngueltigerName for a name that no field may have.
void feldnamePruefen(const QString& name);

// Checks the limits of the format: names of fields and indexes, 1 to 255 fields and none of them calculated,
// at most 32 indexes of at most 10 fields. Raises kZuVieleFelder, kUngueltigerName, kNichtInListe,
// kSystemgrenze.
void tabellenDefPruefen(const engine::TabellenDef& def);

// Writes the table's pages (definition, rows, long values, indexes, maps) and returns it; the catalogue does
// not know it yet. Indexes that cannot be kept as they were asked for are named in `hinweise`.
Tabelle tabelleBauen(Seitendatei& datei, Seitenvergabe& vergabe, const engine::TabellenDef& def,
                     engine::Zeilenquelle& zeilen, engine::Hinweise& hinweise);

}  // namespace jet
