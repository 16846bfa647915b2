// What formulas and names mean by a sheet: SUPBOOK and EXTERNSHEET (BIFF8), sheet numbers in the tokens
// (BIFF5).
#pragma once

#include <optional>
#include <vector>

#include "engine/excel/mappe.h"

namespace excel {

// Cells of one sheet, both ends included, from 0.
struct Bereich {
    int blatt = 0;
    int zeile1 = 0;
    int zeile2 = 0;
    int spalte1 = 0;
    int spalte2 = 0;
    bool operator==(const Bereich&) const = default;
    bool umfasst(const Bereich& b) const {
        return blatt == b.blatt && zeile1 <= b.zeile1 && zeile2 >= b.zeile2 && spalte1 <= b.spalte1 &&
               spalte2 >= b.spalte2;
    }
};

inline constexpr quint16 kWeg = 0xFFFF;        // a sheet that was deleted
inline constexpr quint16 kKeinBlatt = 0xFFFE;  // from here on: no sheet number

// EXTERNSHEET of a BIFF8 workbook: which sheets its entries mean.
class Verweisliste {
  public:
    struct Eintrag {
        quint16 mappe = 0;  // number of the SUPBOOK
        quint16 erstes = 0;
        quint16 letztes = 0;
    };
    explicit Verweisliste(const Mappe& mappe);
    const std::vector<Eintrag>& eintraege() const { return eintraege_; }
    std::vector<Eintrag>& eintraege() { return eintraege_; }
    // The number of the SUPBOOK that is the workbook itself; -1 without one.
    int eigeneMappe() const { return eigene_; }
    bool istEigen(const Eintrag& e) const { return eigene_ >= 0 && e.mappe == eigene_; }

  private:
    std::vector<Eintrag> eintraege_;
    int eigene_ = -1;
};

// A defined name.
struct Definition {
    size_t satz = 0;  // its NAME among the globals
    quint16 bits = 0;
    QString text;
    int blatt = 0;  // 0: the whole workbook; else a sheet's position + 1
    QByteArray formel;
    qsizetype formelort = 0;         // place of the tokens in the record
    int eintrag = -1;                // BIFF8: the EXTERNSHEET entry that its one area or cell means
    std::optional<Bereich> bereich;  // set when it means one area or cell of a sheet that is there

    bool verborgen() const { return bits & 0x0001; }
    bool istEingebaut() const { return bits & 0x0020; }
    bool istMakro() const { return bits & 0x000E; }
};

inline constexpr int kNamenskopf = 14;

// All names of the workbook in their order; a damaged one has an empty text.
std::vector<Definition> definitionenLesen(const Mappe& mappe);

// Whether a name's formula is one area or cell whose sheet is gone.
bool istVerwaist(const Mappe& mappe, const Definition& definition);

}  // namespace excel
