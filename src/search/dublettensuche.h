// The operation "find duplicates": search, review, corrected table.
#pragma once

#include <QString>

// The whole operation behind frame 11, from `gAusgangsTabelle` to `gZielTabelle`.
void DublettensucheStarten(const QString& quelle, const QString& ziel);
