// One pass of the search over the work table in one sort order.
#pragma once

#include <QString>

class Bereichsvergleich;

// `blockSpalte` is a position from 0 in the source's columns, used on the work table as it stands: with an
// ignored column in front of it, it meets another column there. `blockLaenge` counts characters. `sortierung`
// is the text behind ORDER BY. With `quick` only neighbours in the sort order are compared, otherwise all
// pairs of a block. `vergleich` is the same one for all passes of a search. Sets `gAbbruch` when there is
// nothing to compare.
void SuchdurchlaufAusfuehren(int blockSpalte, int blockLaenge, const QString& sortierung, bool quick,
                             Bereichsvergleich& vergleich);
