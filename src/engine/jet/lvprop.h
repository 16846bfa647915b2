// The properties of a table's columns (AllowZeroLength, Required and what a copy carries along), written.
#pragma once

#include <QByteArray>
#include <vector>

#include "engine/jet/katalog_lesen.h"

namespace jet {

// The bytes of an LvProp value; nothing for no blocks. The counterpart of eigenschaftenLesen.
QByteArray eigenschaftenSchreiben(const Format& format, const std::vector<Eigenschaftsblock>& bloecke);

// What a new table's columns need: AllowZeroLength and Required where they are set, and the properties that
// came with a copied column of a file of the same format.
std::vector<Eigenschaftsblock> eigenschaftenDerFelder(const Format& format,
                                                      const std::vector<engine::FeldDef>& felder);

}  // namespace jet
