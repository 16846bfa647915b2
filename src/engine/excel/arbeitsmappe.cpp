// A workbook as it is read.
#include "engine/excel/arbeitsmappe.h"

namespace excel {

Arbeitsmappe::Arbeitsmappe(QByteArray strom)
    : mappe_(std::move(strom)),
      formate_(mappe_),
      texte_(mappe_),
      datum1904_(mappe_.datum1904()),
      definitionen_(definitionenLesen(mappe_)),
      tabellen_(tabellenSuchen(mappe_, texte_, definitionen_)) {}

}  // namespace excel
