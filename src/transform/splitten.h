// The operation "split fields".
#pragma once

#include <QString>

// Runs the split with the options of frame 31; ends on frame 32, or on frame 3 after an abort.
void SplittenStarten(const QString& quelle, const QString& ziel);
