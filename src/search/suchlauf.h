// The search driver: passes over the sorted work table, blocks, pairs.
#pragma once

#include <QString>

#include "fields/feldarten.h"
#include "search/gruppen.h"

// A whole search from `quelle` to `ziel`, up to and with the evaluation. `gAbbruch` and `gFehler` tell
// whether it went through; if not, the work table and the result table are gone again.
void Suchlauf(const QString& quelle, const QString& ziel, const FeldZuordnungen& zuordnung, bool anreichern,
              bool angereichertUebernehmen);

// Records a pair of record numbers unless it is listed already; past some three million the user is told,
// once, and the pair is dropped.
void PaarEintragen(qint32 a, qint32 b);
bool PaarBekannt(qint32 a, qint32 b);
// True once pairs are dropped and the user knows.
bool PaarlisteVoll();
// The most pairs that can be listed.
inline constexpr size_t kHoechstensPaare = 3000001;
// The pairs found so far; DublettenAuswerten numbers and releases them.
std::vector<Paar>& Paare();
// Empties the pair list for a new search.
void PaareLeeren();

// Undoes what the search has done so far. Failures do not matter; changes no frame.
void SuchlaufAbbrechen();
