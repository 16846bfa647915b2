// What a column of a dBase table brings along into a copy (FeldDef::formatEigenes).
#pragma once

#include <QByteArray>
#include <optional>

#include "engine/dbase/zeichensatz.h"

namespace dbase {

struct Merkmal {
    // Why the column cannot be written again, if it cannot.
    enum class Hindernis : quint8 { Keines, UnlesbareArt, OhneMemodatei, Zeichensatz };

    char art = 'C';
    int laenge = 0;
    int stellen = 0;
    int feldtyp = 0;  // the published type that the column was read as
    quint8 sprachbyte = 0;
    Seitenwahl seite;
    int stufe = 4;  // 3 for a table of dBase III with memo, else 4
    Hindernis hindernis = Hindernis::Keines;
    bool operator==(const Merkmal&) const = default;
};

QByteArray merkmalSchreiben(const Merkmal& merkmal);
// Nothing for what another format wrote.
std::optional<Merkmal> merkmalLesen(const QByteArray& bytes);

}  // namespace dbase
