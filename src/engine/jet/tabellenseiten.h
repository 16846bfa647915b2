// Every page and every map row that belongs to one table.
#pragma once

#include <vector>

#include "engine/jet/tdef.h"

namespace jet {

struct Tabellenseiten {
    std::vector<quint32> definition;
    std::vector<quint32> daten;  // as the map says; a page may name another owner
    std::vector<quint32> lange;  // long values
    std::vector<quint32> index;
    std::vector<quint32> bits;      // pages of type 5 of all its maps
    std::vector<Zeilenort> karten;  // rows of its maps, page "none" left out

    // All pages but those that hold the map rows, which may be shared with other tables; ascending, each
    // once.
    std::vector<quint32> alle() const;
};

// Raises kBeschaedigt when a map cannot be read.
Tabellenseiten tabellenseitenSammeln(const Seitendatei& datei, const Tabelle& tabelle);

}  // namespace jet
