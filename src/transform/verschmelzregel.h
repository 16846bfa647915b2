// What a merge makes of two values.
#pragma once

#include <QString>
#include <optional>

#include "base/wert.h"

// The first value, the separator and the second value as one text of at most 255 characters; Null counts as
// "". The separator goes in whatever the values hold. Without a separator two Nulls give Null.
Wert Verschmelzen(const Wert& erster, const Wert& zweiter, const std::optional<QString>& trennzeichen);
