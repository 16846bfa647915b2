// The shared texts of a BIFF8 workbook (SST), found by number without a copy of them all.
#pragma once

#include <QString>
#include <vector>

#include "engine/excel/ketten.h"
#include "engine/excel/mappe.h"

namespace excel {

class Texttafel {
  public:
    // Reads to the end of the data; the counts of the record are not trusted. An absent SST is an empty
    // table. The workbook must outlive it unchanged.
    explicit Texttafel(const Mappe& mappe);
    quint32 anzahl() const { return quint32(eintraege_.size()); }
    // A number beyond the table gives "".
    QString text(quint32 nummer) const;
    // In UTF-16 units.
    int laenge(quint32 nummer) const { return nummer < eintraege_.size() ? eintraege_[nummer].laenge : 0; }
    bool schlicht(quint32 nummer) const { return eintraege_[nummer].schlicht; }
    // Where a text begins: the record of the group (0 is the SST itself) and the place in its data.
    std::pair<int, int> ort(quint32 nummer) const;
    // False when the data ended within a text.
    bool heil() const { return heil_; }

  private:
    struct Eintrag {
        Kettenleser::Stelle stelle;
        quint16 laenge = 0;
        bool schlicht = true;
    };
    mutable Kettenleser leser_;
    std::vector<Eintrag> eintraege_;
    bool heil_ = true;
};

}  // namespace excel
