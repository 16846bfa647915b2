// The operation "split fields".
#pragma once

#include <QString>
#include <optional>

#include "run/fenster.h"

// Runs the split with the options of frame 31; ends on frame 32, or on frame 3 after an abort.
void SplittenStarten(const QString& quelle, const QString& ziel);

// Why the split with these options could not be saved in the end; nothing when all that can be known before
// is well.
std::optional<QString> SplittenEinwand(const QString& quelle, const QString& ziel,
                                       const Splittoptionen& optionen);
