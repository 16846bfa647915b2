// Preparing values: two spellings of the same address are to look alike before they are compared.
#pragma once

#include <optional>

#include "base/wert.h"
#include "fields/feldarten.h"

// Lower-case letters (a to z, ä, ö, ü, "ß" as "ss") and digits; everything between them becomes one blank.
// Empty or Null gives "".
QString TextNormalisieren(const Wert& wert);
// The digits of the value. Empty or Null gives "".
QString ZiffernFiltern(const Wert& wert);
// The text without any occurrence of `wort`, inside of words as well. Null gives Empty.
Wert WortEntfernen(const Wert& wert, const QString& wort);

// What preparing needs to know of a column.
struct Spaltenart {
    int typ = 0;  // dao::Feldtyp
    int attribute = 0;
    int groesse = 0;  // the declared size: most characters of a prepared text
};

// False for columns that stay as they are whatever their kind: counters, Booleans, money, dates and times.
bool WirdAufbereitet(const Spaltenart& spalte);

// The steps that make the prepared value of a column: each takes what the column holds and gives what it then
// holds. One step for most kinds, none for a kind without a rule, up to three for addresses on the net.
struct Aufbereitung {
    using Schritt = Wert (*)(const Wert& wert, int groesse);
    Schritt schritte[3] = {};
    int anzahl = 0;
};
Aufbereitung AufbereitungFuer(const FeldZuordnung& zuordnung);

// All steps at once.
Wert AufbereiteterWert(const Wert& wert, const FeldZuordnung& zuordnung, int groesse);
