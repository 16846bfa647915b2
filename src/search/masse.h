// The two similarity measures of prepared values.
#pragma once

#include "base/wert.h"

// The share of words of both values that stand somewhere in the other one, 0 to 1. A word is what stands
// between blanks; two blanks in a row make an empty word, which is found everywhere. "" has one empty word;
// Empty and Null give 0. A number goes by its text. Raises 6 when both values together have more than 255
// words.
float WoerterVergleichen(const Wert& a, const Wert& b);

// Digits in the same place, 0 to 1: a share for each place that agrees, half a share off for each place that
// only one value has, and 0 when the first ones differ. 0 when one of them does not read as a number.
float NummernVergleichen(const Wert& a, const Wert& b);

// The number of words of both texts together beyond which WoerterVergleichen fails.
inline constexpr int kMeisteWoerter = 255;

// Calls `besuch(word)` for each word of the text, empty words included.
template <typename Besuch>
void WoerterBesuchen(QStringView text, Besuch besuch) {
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != u' ') continue;
        besuch(text.mid(start, i - start));
        start = i + 1;
    }
}

// The measure of numbers of `kurz` and `lang` characters that agree in their first and in `gleiche` places.
float Nummernmass(int lang, int kurz, int gleiche);
