// Compares the records of a pass: all pairs of a block, or neighbours.
#pragma once

#include <optional>
#include <vector>

#include "engine/dao/recordset.h"
#include "run/schritte.h"
#include "search/schnell.h"
#include "search/vergleich.h"

// Works on `gArbeitsDaten` and `gZweitDaten`, two recordsets over the same sorted selection; positions
// from 1. One for all passes of a search, since it keeps what it has taken apart. What reaches `gRelevanz`
// goes into the pair list. Failures go to the error box; Abbrechen sets `gFehler`.
class Bereichsvergleich {
  public:
    // Takes the assignment, the weights and the option of the search as they are now.
    Bereichsvergleich();

    // Takes the rows of the work table apart, once for all passes. False when the user stopped.
    bool SaetzeAufnehmen(Schritte& s);
    // Compares the record at the position with the one behind it, and notes a hit's percentage at both.
    void NachbarVergleichen(qint64 position);
    // Compares all pairs of a block. `gAbbruch` is looked at behind each yield.
    void BereichVergleichen(qint64 erster, qint64 letzter);

  private:
    std::optional<float> datensatzVergleichen(const dao::Block& block1, const dao::Block& block2, int zeile1,
                                              int zeile2);
    bool zeilenLaden(Schritte& s, qint64 erster, qint64 letzter);
    bool portionLaden(Schritte& s, qint64 anzahl);
    bool bekanntePortion(const std::vector<qint64>& merkzeichen);
    bool neuePortion(Schritte& s, qint64 anzahl, const std::vector<qint64>& merkzeichen);
    void rundeBeginnen();
    std::optional<qint32> satzAufnehmen(const dao::Block& block, int zeile, qint64 merkzeichen);
    void schnellVergleichen();
    void woertlichVergleichen(Schritte& s, qint64 erster, qint64 letzter);
    void scheibeVergleichen(Schritte& s, const dao::Block& scheibe, qint64 anfang, qint64 letzter,
                            qint64 breite);
    void paareDerScheibe(const dao::Block& block1, const dao::Block& block2, bool ersterLauf);

    Vergleicher vergleicher_;
    Schnellvergleich schnell_;
    // Of the rows that `schnell_` has taken in this round: their numbers there by their bookmarks, negative
    // for a row that is not there, and their record numbers.
    std::vector<qint32> aufgenommene_;
    std::vector<qint32> satznummern_;
    quint64 runde_ = 0;
    bool aufgenommen_ = false;   // SaetzeAufnehmen has run
    std::vector<qint32> block_;  // the record numbers of the block
};
