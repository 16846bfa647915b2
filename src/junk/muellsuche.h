// The operation "remove junk records".
#pragma once

#include <QString>

// Copies, checks, lets the user review, and deletes what is still marked. Ends on frame 23, or on frame 3
// after an abort or when there is nothing to find.
void MuellsucheStarten(const QString& quelle, const QString& ziel);
