// Text helpers of the whole program. Comparisons are exact and case-sensitive; lengths count UTF-16 units.
#pragma once

#include <QString>

#include "base/wert.h"

// The characters a word of `Wort` is made of.
inline constexpr QStringView kWortZeichen =
    u"0123456789abcdefghijklmnopqrstuvwxyzäöüABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜß";

// The smaller of two numbers; with equal ones the second.
template <typename T>
T Minimum(T a, T b) {
    return a < b ? a : b;
}

// Blanks (U+0020, nothing else) cut from both ends.
QString Trim(QStringView text);

// Every occurrence of `suche` replaced, left to right; the replacement is not searched again.
// `suche` must not be empty.
QString TextErsetzen(const QString& text, const QString& suche, const QString& ersatz);
QString TextEntfernen(const QString& text, const QString& suche);

// Upper or lower case, one character to one, then "ß" replaced by "SS" or "ss". A Null raises 94.
QString Grossschrift(const Wert& wert);
QString Kleinschrift(const Wert& wert);

// The platform's case mapping alone: one UTF-16 unit to one, "ß" stays.
QString GrossZeichenweise(QStringView text);
QString KleinZeichenweise(QStringView text);

// The n-th longest run of `kWortZeichen`: counted from the front (1, 2, ...) or from the end (-1, -2, ...).
// Empty when the value is Empty or Null, when there are fewer words, and for the number 0.
Wert Wort(const Wert& wert, int nummer);

// True when all bits of `maske` are set in `wert`.
bool BitGesetzt(int wert, int maske);

// The lenient test: blanks around it off, one sign in front at most, ASCII digits with at most one comma
// or point, at least one digit. Empty, Null and dates are no numbers; numbers and
// Booleans are.
bool TextLiestSichAlsZahl(QStringView text);
bool LiestSichAlsZahl(const Wert& wert);
