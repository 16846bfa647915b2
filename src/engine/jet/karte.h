// Usage maps: sets of pages, as rows on map pages.
#pragma once

#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

struct Karte {
    bool verwiesen = false;             // type 1: the bits lie on pages of their own
    quint32 erste = 0;                  // type 0: page of bit 0
    std::vector<quint32> seiten;        // the pages that are set, ascending, below the end of the file
    std::vector<quint32> bitmapseiten;  // type 1: the pages of type 5, ascending by what they cover
    quint32 jenseits = 0;               // bits set beyond the end of the file
};

// Reads the map at `ort`. A map "none" (page 0) is empty. Raises kBeschaedigt for a row that is no map.
// `struktur` names what the map belongs to in the failure's text.
Karte karteLesen(const Seitendatei& datei, Zeilenort ort, QStringView struktur);

}  // namespace jet
