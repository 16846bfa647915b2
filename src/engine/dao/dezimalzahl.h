// A number as its decimal digits, for conversions that must not lose any.
#pragma once

#include <QByteArray>
#include <optional>

#include "base/wert.h"

namespace dao {

struct Dezimalzahl {
    bool negativ = false;
    QByteArray ziffern;  // without zeros in front; empty for 0
    int skala = 0;       // digits behind the decimal sign, 0 or more

    // Rounded to `stellen` digits behind the sign, halves to the even neighbour, as a whole number of the
    // last digit's unit; none when it does not fit into 64 bits.
    std::optional<qint64> verschoben(int stellen) const;
    // The nearest floating number; infinite beyond the greatest one.
    double alsDouble() const;
    // None when there are more than `genauigkeit` digits (0: 28) with `nachkommastellen` of them behind the
    // sign.
    std::optional<Dezimal> alsDezimal(int genauigkeit, int nachkommastellen) const;
    Dezimalzahl gerundet(int stellen) const;
};

// The digits of a number, a date, a Boolean, or a text that reads as a number (blanks around it, one sign,
// one comma or point, "E" with an exponent). None for everything else.
std::optional<Dezimalzahl> dezimalzahlAus(const Wert& wert);

}  // namespace dao
