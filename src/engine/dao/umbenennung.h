// The order in which tables are renamed in a file, so that no step meets a name that is still taken.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "engine/datei/datenbankdatei.h"

namespace dao {

// `vorhandene` are the names of the tables in the file, those to be renamed among them. Chains are renamed
// from their end; a ring is opened with a name in between that `erlaubt` accepts and nobody has or wants.
std::vector<engine::TabelleUmbenennen> umbenennungenOrdnen(
    std::vector<engine::TabelleUmbenennen> offene, std::vector<QString> vorhandene,
    const std::function<bool(const QString&)>& erlaubt);

}  // namespace dao
