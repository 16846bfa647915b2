// Data pages: slots and the rows they lead to.
#pragma once

#include <optional>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

struct Slot {
    quint16 flags = 0;  // kSlotGeloescht, kSlotZeiger
    quint16 ab = 0;     // the row's first byte in the page
    quint16 laenge = 0;
};

// The slots of a data page's bytes, checked: every row lies behind the slots, below its predecessor.
// Raises kBeschaedigt naming `nummer`.
std::vector<Slot> slotsLesen(const Format& format, const QByteArray& seite, quint32 nummer);
// u32 owner: a definition page, "LVAL" (kBesitzerLang) or 0 for maps.
quint32 besitzerLesen(const QByteArray& seite);
inline constexpr quint32 kBesitzerLang = 0x4C41564C;

// A row's bytes, with the page that holds them.
struct Zeilenbytes {
    QByteArray seite;  // keeps the bytes alive
    QByteArrayView bytes;
    Zeilenort ort;  // where the bytes are (differs from the asked place for a moved row)
};

// The bytes of one row, whatever its flags; with `folgen` pointer rows are followed (at most 8 hops).
// Raises kBeschaedigt for a page that is no data page or has no such slot.
Zeilenbytes zeileHolen(const Seitendatei& datei, Zeilenort ort, bool folgen, QStringView struktur);

}  // namespace jet
