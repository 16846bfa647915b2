// A cell's value as the bytes that a row of an .mdb file holds for it.
#pragma once

#include <QByteArray>
#include <optional>

#include "base/wert.h"
#include "engine/jet/tdef.h"

namespace jet {

// Appends the stored bytes of a value that is neither Null nor Empty; for Memo and OLE columns those of the
// content, before it becomes a long value. Nothing for Boolean, whose value is its bit in the null mask. A
// number is taken for any numeric column it fits into, a text for Text, Memo and GUID, bytes for Binary and
// OLE. Raises kUmwandlung, kFeldZuKlein (text or bytes longer than the column) or, for Jet 3, kUmwandlung
// for a character that Windows-1252 does not have. The description names the column.
void wertAnhaengen(QByteArray& ziel, const Format& format, const Spalte& spalte, const Wert& wert);

// The bit of a Boolean column; numbers other than 0 are True. Raises kUmwandlung for texts and bytes.
bool wahrheitVon(const Spalte& spalte, const Wert& wert);

// Text as Jet 4 stores it: with `komprimieren` as FF FE and one byte a character where that is possible
// (3 to 1024 characters, all U+0001 to U+00FF), else UTF-16.
QByteArray textBytes4(QStringView text, bool komprimieren);

// The present moment as a Date column holds it: days since 1899-12-30, local time.
QByteArray jetztBytes();

}  // namespace jet
