// A sheet or a range as a table: its fields by header and first rows, and its rows one after the other.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/excel/arbeitsmappe.h"
#include "engine/excel/zellen.h"

namespace excel {

struct Tabellenplan {
    int blatt = 0;
    std::optional<Bereich> bereich;  // header and rows; none for a table without any cell
    bool geordnet = true;
    std::vector<engine::FeldDef> felder;
    qint64 zeilen = 0;
};

// Field types by the first eight rows below the header; the kind that occurs most often wins, in a tie number
// before money before date before text before Boolean. A text column is a memo if any of its texts is longer
// than 255 characters. At most 255 fields.
Tabellenplan tabellenplan(const Arbeitsmappe& mappe, const Tabellenort& ort);

// What the user is to hear of the rows, once the last one was read.
using Lesebericht = std::function<void(const std::vector<QString>& saetze)>;

// The rows below the header. What does not fit a column's type is Null, and counted for the report; so are
// errors and empty texts, which nobody misses. `tabelle` is the name that the report uses.
std::unique_ptr<engine::Zeilenquelle> tabellenzeilen(std::shared_ptr<const Arbeitsmappe> mappe,
                                                     Tabellenplan plan, const QString& tabelle = {},
                                                     Lesebericht bericht = {});

}  // namespace excel
