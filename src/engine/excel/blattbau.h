// Makes the substream of a new sheet from a table's definition and rows.
#pragma once

#include <QByteArray>

#include "engine/datei/datenbankdatei.h"
#include "engine/excel/mappe.h"

namespace excel {

struct Neublatt {
    QByteArray teilstrom;
    int zeilen = 0;  // rows of the table, the header not counted
    int zellen = 0;  // cells written, the header's among them
};

// Raises kSystemgrenze for more fields than a sheet has columns and, where `def.zeilen` tells, for more rows
// than it takes beside its header.
void blattUmfangPruefen(const engine::TabellenDef& def, bool biff8);

// The texts and formats that the rows need enter the workbook; its sheets stay as they are. Null and "" give
// no cell. Raises kSystemgrenze for what does not fit (rows, columns, long texts, characters that the code
// page lacks, bytes); the workbook in memory is then of no use any more.
Neublatt blattBauen(Mappe& mappe, const engine::TabellenDef& def, engine::Zeilenquelle& zeilen);

}  // namespace excel
