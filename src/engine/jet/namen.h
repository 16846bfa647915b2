// Which names tables, fields and indexes may have, and how names stand in the file.
#pragma once

#include <QByteArray>
#include <QString>

#include "engine/jet/format.h"

namespace jet {

inline constexpr int kMaxName = 64;

// The name's bytes: UTF-16, or Windows-1252 for Jet 3. Raises kUngueltigerName if a character is missing
// there.
QByteArray namenBytes(const Format& format, const QString& name);

// 1 to 64 units, none of ! . [ ] ' " ` and no control characters, no leading blank.
bool tabellenNameErlaubt(const QString& name);

// The looser rule of the engine for names of fields and indexes: ' and " are taken.
bool feldNameErlaubt(const QString& name);

}  // namespace jet
