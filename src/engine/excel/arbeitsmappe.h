// A workbook as it is read: its stream with texts, formats, names and tables at hand.
#pragma once

#include <vector>

#include "engine/excel/formate.h"
#include "engine/excel/tabellenorte.h"

namespace excel {

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
    const std::vector<Tabellenort>& tabellen() const { return tabellen_; }

  private:
    Mappe mappe_;
    Formate formate_;
    Texttafel texte_;
    bool datum1904_;
    std::vector<Definition> definitionen_;
    std::vector<Tabellenort> tabellen_;
};

}  // namespace excel
