// Fuzz target: any bytes as a table must end in rows or in an EngineFehler.
#include <cstddef>
#include <cstdint>

#include "engine/dbase/lauf.h"

// The same bytes serve as the memo file, so that one input reaches both readers.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t groesse) {
    const QByteArray bytes(reinterpret_cast<const char*>(daten), qsizetype(groesse));
    lauf::tabelle(bytes, bytes);
    return 0;
}
