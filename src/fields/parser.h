// Value parsers: from a raw value the part that belongs to one field kind.
//
// All are pure. Empty or Null gives Empty; "nothing found" is Empty, which is not "". A number goes by its
// text form. Positions in the rules count from 1; comparisons are exact unless the text is folded first.
#pragma once

#include "base/wert.h"

// The part of the value for a kind number: 1, 11, 23, 44, 61 and 62 give the value as it is, the others go to
// their parser, any other number gives Empty.
Wert FeldInhaltErmitteln(const Wert& wert, int feldart);

Wert FirmennameErmitteln(const Wert& wert);    // 21: the words that are no legal form
Wert RechtsformErmitteln(const Wert& wert);    // 22: the legal forms in normal spelling
Wert StrasseErmitteln(const Wert& wert);       // 31: the text in front of the first digit
Wert HausnummerErmitteln(const Wert& wert);    // 32: from the first digit to the end
Wert PostleitzahlErmitteln(const Wert& wert);  // 33: the first run without letters, from its first digit
Wert OrtErmitteln(const Wert& wert);           // 34: from the first character that is no digit, hyphen, blank
Wert AnredeErmitteln(const Wert& wert);        // 41: form of address and titles
Wert VornameErmitteln(const Wert& wert);       // 42: the first given name
Wert NachnameErmitteln(const Wert& wert);      // 43: the text behind the last blank
Wert VorwahlErmitteln(const Wert& wert);       // 51: area code with its leading 0
Wert TelefonnummerErmitteln(const Wert& wert);  // 52, 53: subscriber number

Wert LandesvorwahlErmitteln(const Wert& wert);  // "+49": plus sign and two characters
Wert AnredeFormErmitteln(const Wert& wert);     // "Herr", "Frau" or Empty
Wert TitelErmitteln(const Wert& wert);          // the title words
