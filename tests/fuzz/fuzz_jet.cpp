// Fuzz target: any bytes as a database file must end in success or in an EngineFehler.
#include <cstddef>
#include <cstdint>

#include "engine/jet/leselauf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t groesse) {
    try {
        leselauf::allesLesen(QByteArray(reinterpret_cast<const char*>(daten), qsizetype(groesse)));
    } catch (const EngineFehler&) {
        // What a damaged file is answered with.
    }
    return 0;
}
