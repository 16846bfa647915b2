// Which cells of a sheet are in use, and in which order they stand.
#pragma once

#include <bitset>
#include <optional>

#include "engine/excel/bezuege.h"
#include "engine/excel/texttafel.h"

namespace excel {

struct Umfang {
    std::optional<Bereich>
        bereich;            // from the first to the last cell that holds something; none when all are empty
    bool geordnet = true;   // no row stands behind a later one
    std::bitset<256> lang;  // columns with a text of more than 255 characters below the first row
};

// `grenze`: only cells in it count, and a long text in its first row does not. Cells with an empty text hold
// nothing.
Umfang umfangVon(const Mappe& mappe, const Texttafel& texte, int blatt,
                 const std::optional<Bereich>& grenze = {});

// The cells of a sheet that hold something, errors among them.
int zellenZaehlen(const Mappe& mappe, int blatt);

}  // namespace excel
