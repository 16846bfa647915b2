// Which names sheets, defined names and fields may have, and how one is made from the other.
#pragma once

#include <QString>
#include <vector>

namespace excel {

inline constexpr int kMaxBlattname = 31;
inline constexpr int kMaxFeldname = 64;

// 1 to 31 units, none of : \ / ? * [ ] $ and no control character, no ' at either end, not "History".
bool blattnameErlaubt(const QString& name);

// The name as Excel takes it for a range: other characters become "_", and "_" goes in front of a digit and
// of what reads like a cell.
QString bereichsname(const QString& name);

// A header cell's text as a field name: "." becomes "#", "!" and line ends "_", brackets round ones, 64 units
// at most. Empty for a text of blanks.
QString feldname(const QString& kopf);

// The field names of a row of header texts: those of empty ones are F1, F2, ... by their place, a repeated
// one gets the first free number (Name, Name1).
std::vector<QString> feldnamen(const std::vector<QString>& koepfe);

// Whether a new field may have the name: what `feldname` makes of a header is.
bool feldnameErlaubt(const QString& name);

}  // namespace excel
