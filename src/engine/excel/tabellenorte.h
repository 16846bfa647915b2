// Which sheets and ranges of a workbook are tables, and under which names.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "engine/excel/bezuege.h"
#include "engine/excel/texttafel.h"

namespace excel {

// What the catalogue lists: a sheet, a range with a name, or both in one.
struct Tabellenort {
    QString name;  // as the catalogue lists it: "Blatt$", "Bereich", or "Blatt" for both in one
    int blatt = 0;
    std::optional<size_t> definition;  // the name among the workbook's; none for a plain sheet
    std::optional<Bereich> bereich;    // of a range that is not the whole sheet; else its used cells count
    bool ganzesBlatt() const { return !bereich; }
};

// Whether a sheet can be a table: a worksheet that is there, no dialog.
bool istTabellenblatt(const Mappe& mappe, const Blatt& blatt);

// Whether a name of the workbook stands for a table: one live area on such a sheet, not hidden.
bool istTabellenname(const Mappe& mappe, const Definition& definition);

// Sheets in their order, then ranges.
std::vector<Tabellenort> tabellenSuchen(const Mappe& mappe, const Texttafel& texte,
                                        const std::vector<Definition>& definitionen);

// Case does not matter; null if there is none.
const Tabellenort* tabelleFinden(const std::vector<Tabellenort>& tabellen, const QString& name);

// Two names are the same to Excel, which does not look at case.
bool namenGleich(const QString& a, const QString& b);

}  // namespace excel
