// The cell formats of a workbook: XF, FORMAT and FONT records, and what they say of a number.
#pragma once

#include <QString>
#include <unordered_map>
#include <vector>

#include "engine/excel/mappe.h"

namespace excel {

enum class Formatart : quint8 { Zahl, Datum, Waehrung, Nullen };

// How a number format shows a number.
struct Formatangabe {
    Formatart art = Formatart::Zahl;
    int nullen = 0;  // Nullen: the number of digits at least shown
};

// The rule of the public readers, for the format's text; `nummer` decides for the built-in ones without a
// text.
Formatangabe formatDeuten(int nummer, const QString& text);

// The formats of a workbook by the XF index of a cell.
class Formate {
  public:
    explicit Formate(const Mappe& mappe);
    // An unknown index counts as General.
    Formatangabe angabe(int xf) const {
        return size_t(xf) < angaben_.size() ? angaben_[size_t(xf)] : Formatangabe();
    }
    int nummer(int xf) const { return size_t(xf) < nummern_.size() ? nummern_[size_t(xf)] : 0; }
    // The text of a FORMAT record; empty for a built-in number without one.
    QString text(int nummer) const;
    const std::unordered_map<int, QString>& texte() const { return texte_; }

  private:
    std::vector<Formatangabe> angaben_;
    std::vector<int> nummern_;
    std::unordered_map<int, QString> texte_;
};

// The number of a FORMAT record and its text.
std::pair<int, QString> formatLesen(const Mappe& mappe, const QByteArray& daten);

}  // namespace excel
