// Table definitions made: columns laid out from a field list, and the definition's bytes.
#pragma once

#include <QByteArray>
#include <vector>

#include "engine/jet/tdef.h"
#include "engine/katalog.h"

namespace jet {

// The columns of a new table in field order: numbers, offsets, flags. Raises kSystemgrenze for a type or a
// size that the format does not have.
void spaltenAnlegen(const Format& format, const std::vector<engine::FeldDef>& felder, Tabelle& tabelle);

// The whole definition as one piece of bytes: the first page's 8 bytes, then everything else. `codepage` is
// that of the file (Jet 3).
QByteArray tdefBytes(const Format& format, quint16 codepage, const Tabelle& tabelle);

// Number of pages a definition of this many bytes takes.
int tdefSeitenzahl(const Format& format, qsizetype laenge);

// Writes the definition to these pages, in their order; there must be as many as it takes (asserted).
void tdefSchreiben(Seitendatei& datei, const QByteArray& definition, const std::vector<quint32>& seiten);

// Overwrites one number in the first page of an existing definition, at `stelle` from its start.
void tdefZahlSetzen(Seitendatei& datei, quint32 seite, int stelle, quint32 wert);

}  // namespace jet
