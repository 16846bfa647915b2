// A condition of a query in the working store's language.
#pragma once

#include <vector>

#include "engine/dao/abfrage.h"
#include "engine/katalog.h"
#include "engine/store/zellen.h"

namespace dao {

// `spalten` names the store's column of each field. Raises 3061 for an unknown field and 3464 for a field
// that cannot be compared with a number.
store::Bedingung speicherbedingung(const Bedingung& bedingung, const std::vector<engine::FeldDef>& felder,
                                   const std::vector<int>& spalten);

// The position of a field; raises 3061.
int feldFuerAbfrage(const std::vector<engine::FeldDef>& felder, const QString& name);

}  // namespace dao
