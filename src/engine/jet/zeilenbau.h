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
// The same, of bytes that somebody else keeps.
using Rohsichten = std::vector<std::optional<QByteArrayView>>;
Rohsichten sichten(const Rohwerte& werte);

// The row's bytes. Raises kBeschaedigt for a fixed value that has not its column's length.
QByteArray zeileBauen(const Format& format, const Tabelle& tabelle, const Rohsichten& werte);

// Bytes of all values that have no fixed place.
qsizetype variableBytes(const Tabelle& tabelle, const Rohsichten& werte);
// Length of a row whose variable values have so many bytes.
qsizetype zeilenlaenge(const Format& format, const Tabelle& tabelle, qsizetype variableBytes);

// Bytes of the fixed part of a row: to the end of the last fixed column.
int festerTeil(const Tabelle& tabelle);

}  // namespace jet
