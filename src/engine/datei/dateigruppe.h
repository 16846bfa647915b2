// How several files of a folder change together: all of them, or none.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "engine/datei/austausch.h"
#include "engine/datei/platte.h"

namespace engine {

// One file that is put in place, replaced or removed.
struct Gruppenschritt {
    QString ziel;
    // The finished file that takes the place of `ziel`, in the same folder; without a name `ziel` is removed.
    Beiname neu;
    // What `ziel` must be like at the start; nothing when there must be no such file.
    std::optional<Dateistand> stand;
};

// Raises what would keep one of the steps from being carried out: kDateiGeaendert for a file that is not what
// its `stand` says, kSchreibgeschuetzt, kDateiGesperrt. Changes nothing.
void gruppePruefen(const std::vector<Gruppenschritt>& schritte);

// Carries out the steps in their order. Until the last one is done every old file is kept under a private
// name beside its place; when a step fails, those before it are undone and the failure is raised: as from
// `gruppePruefen`, kDatentraegerVoll or kDateifehler. A file at its place is at every moment the old or the
// new one, except for one that is removed. A crash in between is undone by the next `ueberbleibselRaeumen`.
// Each folder that symbolic links lead to goes back for itself.
void gruppeAustauschen(std::vector<Gruppenschritt> schritte);

}  // namespace engine
