// Compares the records of a pass: all pairs of a block, or neighbours.
#pragma once

#include <optional>
#include <vector>

#include "engine/dao/recordset.h"
#include "run/schritte.h"
#include "search/schnell.h"
#include "search/vergleich.h"

// Works on `gArbeitsDaten` and `gZweitDaten`, two recordsets over the same sorted selection; positions
// from 1. What reaches `gRelevanz` goes into the pair list. Failures go to the error box; Abbrechen sets
// `gFehler`.
class Bereichsvergleich {
  public:
    // Takes the assignment, the weights and the option of the search as they are now.
    Bereichsvergleich();

    // Compares the record at the position with the one behind it, and notes a hit's percentage at both.
    void NachbarVergleichen(qint64 position);
    // Compares all pairs of a block. `gAbbruch` is looked at behind each yield.
    void BereichVergleichen(qint64 erster, qint64 letzter);

  private:
    std::optional<float> datensatzVergleichen(const dao::Block& block1, const dao::Block& block2, int zeile1,
                                              int zeile2);
    bool zeilenLaden(Schritte& s, qint64 erster, qint64 letzter);
    void schnellVergleichen();
    void woertlichVergleichen(Schritte& s, qint64 erster, qint64 letzter);
    void scheibeVergleichen(Schritte& s, const dao::Block& scheibe, qint64 anfang, qint64 letzter,
                            qint64 breite);
    void paareDerScheibe(const dao::Block& block1, const dao::Block& block2, bool ersterLauf);

    Vergleicher vergleicher_;
    Schnellvergleich schnell_;
    std::vector<qint32> satznummern_;  // of the rows that `schnell_` holds
};
