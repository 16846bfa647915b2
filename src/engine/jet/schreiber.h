// Changes of an .mdb file: tables added with their rows and indexes, dropped, renamed.
#pragma once

#include <QString>

#include "engine/datei/datenbankdatei.h"
#include "engine/jet/katalogbau.h"
#include "engine/jet/seitenvergabe.h"

namespace jet {

// Works on the pages of `datei`, a copy that nobody else uses: after a failure the copy is worthless. The
// global map, the indexes of the catalogue and its row counts are right after `abschliessen` only.
class Schreiber {
  public:
    // Raises kBeschaedigt, and kSchreibgeschuetzt for a file that cannot be written safely (Access 2007 and
    // later, a file that does not end with a whole page).
    explicit Schreiber(Seitendatei& datei);

    // Adds a table with its rows; the indexes of relations (IndexDef::fremd) are left out. Names, numbers of
    // fields and indexes, types and sizes are checked before the first page is written.
    void anlegen(const engine::TabellenDef& def, engine::Zeilenquelle& zeilen);
    void loeschen(const QString& name);
    void umbenennen(const QString& alt, const QString& neu);
    void abschliessen();

    // What the user must be told of the changes so far.
    const engine::Hinweise& hinweise() const { return hinweise_; }

  private:
    void freieSeitenPruefen();
    void kartenLoeschen(const std::vector<Zeilenort>& karten);

    Seitendatei& datei_;
    Seitenvergabe vergabe_;
    Katalogbau katalog_;
    engine::Hinweise hinweise_;
};

// Raises the failure that `Schreiber` would raise at once for this file: for the moment of opening.
void schreibbarPruefen(const Seitendatei& datei);

}  // namespace jet
