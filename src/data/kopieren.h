// The structural copy of a table, and its relations.
#pragma once

#include <QString>
#include <optional>
#include <vector>

// A field that is inserted into the copy; counts only when all three are present.
struct NeuesFeld {
    std::optional<QString> name;
    std::optional<int> typ;
    std::optional<int> groesse;
};

// An empty copy of `quelle` under the name `ziel`; asks before it overwrites. `gAbbruch` tells that the user
// said no, `gFehler` that a step failed; neither is cleared here. The new fields go directly behind
// `feldname`.
void TabelleKopieren(const QString& quelle, const QString& ziel, bool mitRelationen,
                     const std::optional<QString>& feldname = {},
                     const std::vector<NeuesFeld>& neueFelder = {});

// Why a copy of `quelle` called `ziel` with these fields more could not be saved in the end; nothing when all
// that can be known before the work is well. `zeilen` is how many records it will have, -1 when that is open.
// Raises 3265 for an unknown table.
std::optional<QString> KopieEinwand(const QString& quelle, const QString& ziel, qint64 zeilen,
                                    const std::vector<NeuesFeld>& neueFelder = {});

// Repeats the relations of `quelle` on `ziel`; only for the format text "Access".
void RelationenKopieren(const QString& quelle, const QString& ziel);
