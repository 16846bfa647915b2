// A workbook as it is read: its stream with texts, formats and dates at hand, and the tables in it.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "engine/excel/bezuege.h"
#include "engine/excel/formate.h"
#include "engine/excel/mappe.h"
#include "engine/excel/texttafel.h"

namespace excel {

// What the catalogue lists: a sheet, a range with a name, or both in one.
struct Tabellenort {
    QString name;           // as the catalogue lists it: "Blatt$", "Bereich", or "Blatt" for both in one
    int blatt = 0;
    std::optional<size_t> definition;  // the name among the workbook's; none for a plain sheet
    std::optional<Bereich> bereich;    // of a range that is not the whole sheet; else its used cells count
    bool ganzesBlatt() const { return !bereich; }
};

class Arbeitsmappe {
  public:
    // Raises what `Mappe` raises.
    explicit Arbeitsmappe(QByteArray strom);
    Arbeitsmappe(const Arbeitsmappe&) = delete;
    Arbeitsmappe& operator=(const Arbeitsmappe&) = delete;

    const Mappe& mappe() const { return mappe_; }
    const Formate& formate() const { return formate_; }
    const Texttafel& texte() const { return texte_; }
    bool datum1904() const { return datum1904_; }
    const std::vector<Definition>& definitionen() const { return definitionen_; }
    // Sheets in their order, then ranges.
    const std::vector<Tabellenort>& tabellen() const { return tabellen_; }
    // Case does not matter; null if there is none.
    const Tabellenort* tabelle(const QString& name) const;

  private:
    void tabellenSuchen();
    std::optional<size_t> namensvetter(int blatt) const;

    Mappe mappe_;
    Formate formate_;
    Texttafel texte_;
    bool datum1904_;
    std::vector<Definition> definitionen_;
    std::vector<Tabellenort> tabellen_;
};

// Whether a sheet can be a table: a worksheet that is there, no dialog.
bool istTabellenblatt(const Mappe& mappe, const Blatt& blatt);

// Whether a name of the workbook stands for a table: one live area on such a sheet, not hidden.
bool istTabellenname(const Mappe& mappe, const Definition& definition);

}  // namespace excel
