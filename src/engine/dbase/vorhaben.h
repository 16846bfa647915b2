// What a list of changes comes to: which tables leave the folder, which enter it, and under which names.
#pragma once

#include <functional>
#include <vector>

#include "engine/dbase/tabelle.h"

namespace dbase {

struct Vorhaben {
    struct Umzug {
        const Tabelle* tabelle;
        QString neu;
    };
    std::vector<const Tabelle*> gehende;  // dropped or renamed
    std::vector<Umzug> umzuege;
    std::vector<const engine::TabelleAnlegen*> neue;
};

// Carries out the list in its order on the names alone. `belegt` says of a name why no table can take it; it
// is empty for a free one. Raises 3011 for an unknown table, 3010 for a name that is taken, 3125 for one that
// is not allowed, kBeschaedigt when a damaged table would be dropped, renamed or written over.
Vorhaben vorhabenErmitteln(const std::vector<Tabelle>& tabellen, const std::vector<engine::Aenderung>& liste,
                           const std::function<QString(const QString&)>& belegt);

}  // namespace dbase
