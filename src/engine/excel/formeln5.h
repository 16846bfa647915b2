// Sheet numbers and sheet names in the formulas of a BIFF5 workbook, which BIFF8 keeps in one list.
#pragma once

#include <optional>

#include "engine/excel/mappe.h"

namespace excel {

// All formulas, names and chart links after the sheet `weg` went. Raises kSystemgrenze for a formula that is
// not understood.
void formelnNachVerlust(Mappe& mappe, int weg);

// The entries that name the sheet `alt`, in the globals and in every sheet, name `neu`; without one they mean
// the workbook in general, since an entry for a sheet that is not there makes readers invent it.
void blattnamenErsetzen(Mappe& mappe, const QString& alt, const std::optional<QString>& neu);

}  // namespace excel
