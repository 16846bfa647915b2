// How a changed copy takes the place of the user's file, in one step and never over somebody else's change.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "engine/datei/platte.h"

namespace engine {

// What is remembered of a file when it is read, to notice that somebody else changed it since.
struct Dateistand {
    qint64 groesse = -1;
    qint64 geaendertNs = 0;  // modification time, nanoseconds since 1970
    quint64 geraet = 0;
    quint64 knoten = 0;
    bool operator==(const Dateistand&) const = default;
};

// The present state of a regular file, symbolic links followed. Raises kDateiFehlt, kDateifehler.
Dateistand dateistandLesen(const QString& pfad);

// Raises kDateiGeaendert when the file is no longer what `stand` says, kDateiFehlt when it is gone.
void standVergleichen(const QString& pfad, const Dateistand& stand);

// Raises kSchreibgeschuetzt or kDateiGesperrt, with a German description that says what to do, when the
// file or its folder could not be written at the end: read-only file or folder, or another program's lock on
// it. As long as the handle lives no other Lindgarn gets past this with the same file.
Griff schreibbarkeitPruefen(const QString& pfad);

// Replaces the file: `schreiben(neu)` fills a new file beside the old one (a private temporary name, already
// a byte copy of the old one), which is then flushed, handed to `pruefen(neu)` and renamed over the old one.
// Mode, owner and group are taken over; a symbolic link keeps pointing where it did and its target is
// replaced. Raises kDateiGeaendert when the file is no longer what `stand` says, kDatentraegerVoll,
// kSchreibgeschuetzt or kDateifehler otherwise; the old file is then untouched and the new one is gone.
// Behind the renaming it raises nothing any more, and no more may its caller: what `pruefen` has opened stays
// open. Returns the state of the file after the swap.
Dateistand dateiAustauschen(const QString& pfad, const Dateistand& stand,
                            const std::function<void(const QString& neu)>& schreiben,
                            const std::function<void(const QString& neu)>& pruefen);

}  // namespace engine
