// The operation "find duplicates": search, review, corrected table.
#pragma once

#include <QString>

// The whole operation behind frame 11, from `gAusgangsTabelle` to `gZielTabelle`. Ends on frame 13 with the
// result in the file, or on frame 3 with no trace of it.
void DublettensucheStarten(const QString& quelle, const QString& ziel);
