// The indexes of a table made from its rows.
#pragma once

#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/jet/indexeintraege.h"
#include "engine/jet/tdef.h"
#include "engine/jet/zeile.h"
#include "engine/jet/zeilenbau.h"

namespace jet {

class Seitenvergabe;

// The key of the row that `teile` hold. Raises what schluesselAnhaengen raises.
QByteArray zeilenSchluessel(const Seitendatei& datei, const Tabelle& tabelle, const EchterIndex& index,
                            const Zeilenteile& teile);
// Whether a row with this key has an entry: an index may leave out rows that are all Null.
bool gehoertInIndex(const EchterIndex& index, const QByteArray& schluessel);

// The indexes of a new table. Gathers their entries row by row, then writes the trees.
class Indexbau {
  public:
    // `tabelle` needs its columns and its real indexes; both must stay. Raises kBeschaedigt for
    // an index on a column that is not there.
    Indexbau(Seitendatei& datei, const Tabelle& tabelle);

    // Takes in a row that was written at `ort`: its stored values, of a Memo or OLE column the content.
    // Raises what schluesselAnhaengen raises.
    void aufnehmen(const Rohsichten& werte, Zeilenort ort);

    // Writes the trees and returns the pages of each, ascending; roots and counters go into `tabelle`, the
    // one given at the start. An index whose rows break its conditions (unique, no Null) becomes a plain one,
    // and `hinweise` tell so: no row is left out for its sake.
    std::vector<std::vector<quint32>> bauen(Seitenvergabe& vergabe, Tabelle& tabelle,
                                            engine::Hinweise& hinweise);

  private:
    struct Sammlung {
        std::vector<size_t> spalten;  // places in Tabelle::spalten
        Indexeintraege eintraege;
        bool hatNull = false;  // of a row with Null in one of the columns
    };
    void bedingungenPruefen(const Sammlung& sammlung, size_t nummer, Tabelle& tabelle,
                            engine::Hinweise& hinweise) const;

    Seitendatei& datei_;
    const Tabelle& tabelle_;
    std::vector<Sammlung> sammlungen_;  // by real index
};

// Makes the indexes of an existing table anew from its rows: roots stay where they are, pages and counters
// are brought up to date in the file. Conditions are not looked at. Raises kBeschaedigt when the pages of an
// index belong to something else.
void indexeErneuern(Seitendatei& datei, Seitenvergabe& vergabe, const Tabelle& tabelle);

}  // namespace jet
