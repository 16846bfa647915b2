// What a split makes of a record's values.
#pragma once

#include <QString>
#include <array>

#include "base/wert.h"

enum class Splittart : int {
    PlzOrt = 0,
    StrasseHausnummer = 1,
    AnredeVornameName = 2,
    VorwahlDurchwahl = 3,
    VorwahlTelefonTelefax = 4,
    Trennzeichen = 5,
};

// Two or three: the number of new fields.
int NeueFelder(Splittart art);

// The values that go into the new fields; Null where there is nothing. `zweiter` counts for
// VorwahlTelefonTelefax alone, `trennzeichen` for Trennzeichen alone, of which one character is skipped.
//
// The third value is Null when the second one is, and goes in as it stands otherwise, "" included.
std::array<Wert, 3> Splitten(Splittart art, const Wert& erster, const Wert& zweiter,
                             const QString& trennzeichen);
