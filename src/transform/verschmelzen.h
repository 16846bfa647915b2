// The operation "merge fields".
#pragma once

#include <QString>

// Runs the merge with the options of frame 41; ends on frame 42, or on frame 3 after an abort.
void VerschmelzenStarten(const QString& quelle, const QString& ziel);
