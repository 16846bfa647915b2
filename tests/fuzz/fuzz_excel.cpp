// Fuzz target: any bytes as a workbook stream must end in success or in an EngineFehler; so must any
// container.
#include <cstddef>
#include <cstdint>

#include "engine/excel/behaelter.h"
#include "engine/excel/mappenlauf.h"
#include "gemeinsam/versuchen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t groesse) {
    const QByteArray bytes(reinterpret_cast<const char*>(daten), qsizetype(groesse));
    QByteArray strom = bytes;
    // The seeds are whole files: what they hold counts, and a stream that is none is its own container.
    if (bytes.startsWith("\xD0\xCF\x11\xE0")) {
        Versuchen([&] {
            const excel::Behaelter behaelter(bytes);
            behaelter.bytes();
            const excel::Behaeltereintrag* eintrag = behaelter.strom("Workbook");
            if (!eintrag) eintrag = behaelter.strom("Book");
            if (eintrag) strom = eintrag->bytes;
        });
    }
    Versuchen([&] { mappenlauf::allesLesen(strom); });
    Versuchen([&] { mappenlauf::allesAendern(strom); });
    return 0;
}
