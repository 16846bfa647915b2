// Walks over the work table in its own order, the quickest one to read it in.
#pragma once

#include <memory>
#include <vector>

#include "engine/dao/recordset.h"
#include "run/fenster.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/suchzustand.h"

// Calls `besuch(records, bookmarks)` for some records at a time, which it has to fetch; False ends the walk.
// False when the user stopped.
template <typename Besuch>
bool ArbeitstabelleDurchgehen(Schritte& s, Besuch besuch) {
    constexpr qint64 kPortion = 256;
    std::unique_ptr<dao::Recordset> saetze;
    s.tu([&] { saetze = gDatenbank->OpenRecordset(gArbeitsTabelle); });
    while (!Angehalten()) {
        std::vector<qint64> merkzeichen;
        s.tu([&] { merkzeichen = Gesetzt(saetze).Bookmarks(kPortion); });
        if (merkzeichen.empty() || !besuch(*saetze, merkzeichen)) return true;
        DoEvents();
    }
    return false;
}
