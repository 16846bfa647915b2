// How a value is kept in a cell of the working store, and by which key it sorts.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <set>

#include "base/wert.h"

namespace store {

// What a column holds. The natural kind of a column is kept as the store's own number or text; a value of
// another kind is kept exactly too, in a tagged form, so that nothing that was put in comes out changed.
enum class Spaltenart : quint8 { Wahrheit, Ganzzahl, Gleitzahl, Waehrung, DatumZeit, Text, Bytes, Dezimal };

// The column kind for a published field type (dao::Feldtyp); text for an unknown one.
Spaltenart spaltenartVon(int feldtyp);

// Binds a value to parameter `nummer` (from 1). The value must outlive the next step. Empty is kept as Null.
// Returns the store's result code.
int zelleBinden(sqlite3_stmt* anweisung, int nummer, const Wert& wert, Spaltenart art);

// The value of result column `spalte` (from 0).
Wert zelleLesen(sqlite3_stmt* anweisung, int spalte, Spaltenart art);

// Appends the key of result column `spalte` (from 0): keys compare as unsigned bytes as the values sort, Null
// first, then numbers, text by the General order; keys of several columns may stand one behind the other.
void sortSchluesselAnhaengen(QByteArray& ziel, sqlite3_stmt* anweisung, int spalte);

// Makes a function known to the store: `zahl(zelle, art)`, the value as a floating number.
int funktionenAnmelden(sqlite3* datenbank);

// What the store calls the column of this number.
QByteArray spaltenname(int spalte);

// A condition in the store's language; an empty one holds for all rows. Conditions are joined with AND, OR
// and NOT.
struct Bedingung {
    QByteArray text;
    std::set<int> spalten;  // an index over their `suchbareZellen` finds the rows
};
// The cells of a column that are worth an index, as a condition: all but zeros, of which the columns that are
// searched are full. A condition that is to use the index says it as well.
QByteArray suchbareZellen(int spalte);
// "Cell of column `spalte` equals `zahl`", for a column of a kind that holds numbers.
Bedingung gleich(int spalte, Spaltenart art, const Wert& zahl);

}  // namespace store
