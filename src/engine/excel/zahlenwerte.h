// Numbers of cells as dates, money and text, and dates as the numbers of cells.
#pragma once

#include <optional>

#include "base/wert.h"
#include "engine/excel/formate.h"

namespace excel {

// Serial day number to date, rounded to the second; below 1 it is a time of day. None outside the years 1900
// (1904) to 9999.
std::optional<DatumZeit> datumAus(double seriell, bool datum1904);
// The reverse; none for what the date system does not hold.
std::optional<double> seriellAus(DatumZeit datum, bool datum1904);

// A number as its cell shows it: with leading zeros, as a date, or in the shortest decimal form.
QString zahlWieGezeigt(double zahl, Formatangabe format, bool datum1904);

// The number that a format of `nullen` zeros shows as this text; none if there is no such number.
std::optional<double> zahlHinterNullen(const QString& text, int nullen);

}  // namespace excel
