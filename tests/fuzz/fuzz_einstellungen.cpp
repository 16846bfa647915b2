// Settings files of any kind: whatever the text says, no weight leaves the table, and the thresholds are
// numbers.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fields/einstellungen.h"
#include "fields/feldarten.h"

namespace {

// A kind that is in use keeps its name and its bit, and the row that no number leads to stays empty.
bool tabelleIstGanz() {
    for (const Feldart& art : gFeldArten)
        if (art.Bezeichnung.isEmpty() != (art.Code < 0)) return false;
    return gFeldArten[0].RelevanzFaktor == 0 && gFeldArten[0].SignifikanzFaktor == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t laenge) {
    const QByteArray bytes(reinterpret_cast<const char*>(daten), qsizetype(laenge));
    EinstellungenAnwenden(TextAusBytes(bytes));
    if (!tabelleIstGanz() || std::isnan(gRelevanz) || std::isnan(gSignifikanz)) std::abort();
    return 0;
}
