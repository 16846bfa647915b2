// Long values (Memo, OLE): inline, on one page, or as a chain of pieces.
#pragma once

#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

enum class Langform { Inline, Einzeln, Kette };

struct Langwert {
    Langform form = Langform::Inline;
    QByteArray bytes;                // as stored (text may be compressed)
    quint32 angekuendigt = 0;        // length in the field; bytes may be shorter in a damaged chain
    std::vector<Zeilenort> stuecke;  // rows on LVAL pages
};

// Reads the value that a row's field (12 bytes, or more inline) leads to. A chain that ends early gives what
// there is; a chain without end, or longer than the file, raises kBeschaedigt.
Langwert langwertLesen(const Seitendatei& datei, QByteArrayView feld, QStringView struktur);

}  // namespace jet
