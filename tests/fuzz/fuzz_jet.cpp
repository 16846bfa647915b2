// Fuzz target: any bytes as a database file must end in success or in an EngineFehler.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "engine/jet/leselauf.h"
#include "engine/jet/mutation.h"
#include "engine/jet/schreiblauf.h"
#include "gemeinsam/versuchen.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* daten, size_t groesse, size_t hoechstens);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t groesse) {
    const QByteArray bytes(reinterpret_cast<const char*>(daten), qsizetype(groesse));
    Versuchen([&] { leselauf::allesLesen(bytes); });
    Versuchen([&] { schreiblauf::allesAendern(bytes); });
    return 0;
}

// Most changes keep the pages where they are; bytes put in or taken out would ruin all that follows them.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* daten, size_t groesse, size_t hoechstens,
                                          unsigned int saat) {
    constexpr size_t kVersion = 0x14;
    const int seite = groesse > kVersion && daten[kVersion] == 0 ? 2048 : 4096;
    if (groesse < 2 * size_t(seite) || saat % 16 == 0) return LLVMFuzzerMutate(daten, groesse, hoechstens);
    mutation::Zufall zufall(saat);
    const QByteArray neu = mutation::veraendert(
        zufall, QByteArray(reinterpret_cast<const char*>(daten), qsizetype(groesse)), seite);
    const size_t laenge = std::min(hoechstens, size_t(neu.size()));
    std::memcpy(daten, neu.constData(), laenge);
    return laenge;
}
