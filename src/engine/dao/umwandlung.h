// Turns a value into what a field of a given type holds, or refuses it.
#pragma once

#include "base/wert.h"
#include "engine/katalog.h"

namespace dao {

// The value as the field keeps it. Empty becomes Null, and so does "" in a field that is no text. Text reads
// as a number with one comma or point as its decimal sign, as a date in the German or the ISO form, as a
// Boolean from Wahr, Falsch, Ja, Nein, True, False or a number. Fractions round to the even neighbour. Raises
// 3163 for a text or bytes that are too long, 3421 for a value that cannot be converted.
Wert feldwertAus(const engine::FeldDef& feld, const Wert& wert);

// Raises 3315 when the value is "" and the field does not take it.
void leertextPruefen(const engine::FeldDef& feld, const Wert& wert);

}  // namespace dao
