// Names of tables and fields.
#pragma once

#include <QString>
#include <vector>

#include "engine/dbase/zeichensatz.h"

namespace dbase {

inline constexpr int kMaxTabellenname = 8;
inline constexpr int kMaxFeldname = 10;
inline constexpr int kMaxTextbreite = 254;

// Whether a new table may be called so: 1 to 8 characters that every file system and dBase itself take.
bool tabellennameErlaubt(const QString& name);

// The name of a field that is read, made visible and different from those before it.
QString lesbarerFeldname(const QString& roh, const std::vector<QString>& vorhandene);

// The name under which a new field is written: capitals, digits and underscores, a letter first, at most ten
// bytes, different from the other names without regard to case.
QString neuerFeldname(const QString& wunsch, const Zeichensatz& zeichensatz,
                      const std::vector<QString>& vorhandene);

}  // namespace dbase
