// What a field of the first table takes from a record of the second one.
#pragma once

#include <functional>

#include "base/wert.h"
#include "fields/feldarten.h"

// The field of the second table that holds a kind; nothing when there is none.
using Artquelle = std::function<const Wert*(int art)>;

// The value for a field of this assignment, Empty where there is none: for the groups 0 and 1, and for kinds
// that no rule puts together.
//
// Two parts are joined by a blank, area code and number by " / ", and the whole is trimmed; a part without a
// source is left out, and what stands so far is then not trimmed.
Wert MischWert(const FeldZuordnung& zuordnung, const Artquelle& quelle);

// True for a counter field, which takes no value; `typ` and `attribute` are the field's.
bool MischfeldAusgelassen(int typ, int attribute);
