// Help files of any kind: every topic is found or not, within the bounds of the text.
#include <cstddef>
#include <cstdint>

#include "fields/einstellungen.h"
#include "ui/hilfethema.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t laenge) {
    const QByteArray bytes(reinterpret_cast<const char*>(daten), qsizetype(laenge));
    HilfeThemaSuchen(TextAusBytes(bytes), QStringLiteral("Nichts"));
    return 0;
}
