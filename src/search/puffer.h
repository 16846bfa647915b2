// The two copies a search works on: the work table with prepared values and the result table with the
// original ones.
#pragma once

// Builds and fills both tables from the source, in one pass. Afterwards `gAbbruch` and `gFehler` tell whether
// it went through.
void SuchpufferErstellen();

// Drops the work table; failures do not matter.
void ArbeitstabelleLoeschen();
