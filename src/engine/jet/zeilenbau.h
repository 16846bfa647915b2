// A row of an .mdb file put together from the stored bytes of its values.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "engine/jet/tdef.h"

namespace jet {

// One stored value for each column of the table, in the order of Tabelle::spalten; nothing for Null. For
// Boolean: something (of any content) for True, nothing for False.
using Rohwerte = std::vector<std::optional<QByteArray>>;

// The row's bytes. Raises kBeschaedigt for a fixed value that has not its column's length.
QByteArray zeileBauen(const Format& format, const Tabelle& tabelle, const Rohwerte& werte);

// Length of that row in bytes, without building it.
qsizetype zeilenlaenge(const Format& format, const Tabelle& tabelle, const Rohwerte& werte);

// Bytes of the fixed part of a row: to the end of the last fixed column.
int festerTeil(const Tabelle& tabelle);

}  // namespace jet
