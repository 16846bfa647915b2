// The best of a group: collects the values of its members and composes the enriched record from them.
#pragma once

#include <array>
#include <vector>

#include "base/wert.h"
#include "fields/feldarten.h"

// For every kind number the first column that holds it, -1 for none.
using FeldZuArt = std::array<int, kLetzteFeldart + 1>;
FeldZuArt FelderZuArtenSuchen(const FeldZuordnungen& zuordnungen);

// What the members of one group have given so far; everything Empty at the start of a group.
struct Gruppenbestes {
    std::vector<Wert> ganz;                     // per column: the best whole value
    std::array<Wert, kLetzteFeldart + 1> teil;  // per kind number: the longest part
    Wert anredeForm;                            // the longest form of address
    Wert titel;                                 // the longest titles
};

// A column's value of one member: the longest text, or the greatest value of another type; Null changes
// nothing.
void WertSammeln(Wert& bestes, const Wert& wert, int typ);
// The part of the kind in the value: the longest one stays, the first of equally long ones.
void TeilSammeln(Gruppenbestes& bestes, int feldart, const Wert& wert);
// Behind the last member: form of address and titles become the part of kind 41, always a text.
void AnredeZusammensetzen(Gruppenbestes& bestes);

// The enriched record's value of a column.
Wert AngereicherterWert(const Gruppenbestes& bestes, size_t spalte, const FeldZuordnung& zuordnung);
