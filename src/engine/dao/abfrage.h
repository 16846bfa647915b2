// Reads the few query texts that the program sends, missing blanks included; everything else is an error.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "base/wert.h"

namespace dao {

// One side of an equation: a field or a number.
struct Operand {
    QString feld;  // empty for a number
    Wert zahl;     // Ganzzahl, or Gleitzahl when it is too great for one
};

// A condition. `Gleich` compares two operands; the others join `teile`.
struct Bedingung {
    enum class Art { Gleich, Und, Oder, Nicht };
    Art art = Art::Gleich;
    Operand links;
    Operand rechts;
    std::vector<Bedingung> teile;
};

// "SELECT [a],* FROM [t] WHERE ... ORDER BY [b],[c]"; the last two parts may be missing.
struct Auswahlabfrage {
    std::vector<std::optional<QString>> spalten;  // none: the star
    QString tabelle;
    std::optional<Bedingung> bedingung;
    std::vector<QString> ordnung;
};

// "DELETE * FROM [t] WHERE ...".
struct Loeschabfrage {
    QString tabelle;
    Bedingung bedingung;
};

// True for a text whose first word is SELECT.
bool istAuswahlabfrage(const QString& text);

// All raise 3075 with the place (from 1) and what was expected there. Key words may be in any case, blanks
// and line ends may be missing or many; names stand in brackets and may hold anything but "]"; numbers are
// whole.
Auswahlabfrage auswahlabfrageLesen(const QString& text);
Loeschabfrage loeschabfrageLesen(const QString& text);
Bedingung bedingungLesen(const QString& text);

}  // namespace dao
