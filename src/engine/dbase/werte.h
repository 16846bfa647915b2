// Values in the text form of a record's fields.
#pragma once

#include <QByteArrayView>
#include <optional>

#include "base/wert.h"

namespace dbase {

// What a field's bytes say: a value, Null, or something that nobody can read.
struct Gelesen {
    Wert wert = Wert::null();
    bool lesbar = true;
};

// A number of an N or F field: digits with a point or one comma, an exponent at most. Blank, an overflow
// ("*"), a lone point or sign are Null. A whole number that a double would not hold exactly comes as a whole
// number.
Gelesen zahlLesen(QByteArrayView feld);
// YYYYMMDD; blank or zeros are Null.
Gelesen datumLesen(QByteArrayView feld);
// T t Y y 1 and F f N n 0; a field that was never set counts as False, as the old engines had it.
Wert wahrheitLesen(char zeichen);
// The block number of a memo in digits; 0 for none.
qint64 blocknummerLesen(QByteArrayView feld);
// The length of a text without the blanks and zero bytes at its end.
qsizetype laengeOhneEnde(const char* feld, qsizetype laenge);

// Days since 1899-12-30 of a day in the calendar of today; nothing for a day that is none. Years 1 to 9999.
std::optional<qint64> tageVon(int jahr, int monat, int tag);
struct Kalendertag {
    int jahr;
    int monat;
    int tag;
};
Kalendertag kalendertagVon(qint64 tage);

// A finite number as decimal digits: 0.d1d2d3... times ten to the power of `stelle`, without zeros at its
// end.
struct Dezimaltext {
    bool negativ = false;
    QByteArray ziffern;  // empty for zero
    int stelle = 0;

    int vorkomma() const { return std::max(stelle, 0); }
    int nachkomma() const { return std::max<int>(int(ziffern.size()) - stelle, 0); }
};

// Nothing for NaN and infinity. `stellen` is the number of significant digits of a double, 17 at most.
std::optional<Dezimaltext> dezimaltextVon(const Wert& wert, int stellen);

// How a number came into its field. `Gerundet`: digits behind the point were lost.
enum class Zahlergebnis : quint8 { Genau, Gerundet, PasstNicht };

// Writes a number with `stellen` digits behind the point, right-justified in `breite` bytes. One with more
// digits behind it keeps them where the field has room, else half is rounded away from zero. What is no
// finite number does not fit.
Zahlergebnis zahlSchreiben(const Wert& wert, char* ziel, int breite, int stellen);

}  // namespace dbase
