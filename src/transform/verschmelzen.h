// The operation "merge fields".
#pragma once

#include <QString>
#include <optional>

#include "run/fenster.h"

// Runs the merge with the options of frame 41; ends on frame 42, or on frame 3 after an abort.
void VerschmelzenStarten(const QString& quelle, const QString& ziel);

// Why the merge with these options could not be saved in the end; nothing when all that can be known before
// is well.
std::optional<QString> VerschmelzenEinwand(const QString& quelle, const QString& ziel,
                                           const Verschmelzoptionen& optionen);
