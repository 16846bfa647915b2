// An index tree built from the bottom up out of sorted entries.
#pragma once

#include <QString>
#include <vector>

#include "engine/jet/indexeintraege.h"

namespace jet {

class Seitenvergabe;

// The tree of an index under construction: where its pages come from and go to.
struct Baumseiten {
    quint32 wurzel = 0;  // 0: to be taken like the others
    // Pages that the tree may use; what it does not need stays here, what it needs beyond comes from the
    // file's free pages.
    std::vector<quint32> vorhandene;
    std::vector<quint32> belegte;  // the tree's pages, the root included, ascending
};

// Writes the tree of the sorted `eintraege`; `besitzer` is the table's definition page. An empty index is an
// empty leaf. Raises kSystemgrenze, naming `name`, when an entry is longer than a page can hold.
void baumBauen(Seitendatei& datei, Seitenvergabe& vergabe, quint32 besitzer, const Indexeintraege& eintraege,
               const QString& name, Baumseiten& seiten);

}  // namespace jet
