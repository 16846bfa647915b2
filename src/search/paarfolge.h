// The order in which the pairs of a block are compared: slices, and sweeps of slices over what follows.
#pragma once

#include <QtGlobal>
#include <cmath>

// The number of records in a slice of a block of `anzahl` records, at least 1.
inline qint64 Scheibenbreite(qint64 anzahl) {
    return qint64(std::log(double(anzahl)) / std::log(1.5) + 1);
}
