// What the General order knows of each UTF-16 unit.
#pragma once

#include <QtGlobal>
#include <array>

namespace sort {

// How a unit takes part in a key.
enum class Zeichenart : quint8 {
    Ohne,          // not at all
    Einfach,       // inline bytes
    MitAkzent,     // inline bytes of the base letter, extra bytes for the accent
    Unsichtbar,    // a code behind everything else: control characters, apostrophe, hyphen
    Kombinierend,  // an accent of its own, added to the one before it
    Kana,          // inline bytes, perhaps an accent, and a flag
};

struct Zeichen {
    std::array<quint8, 8> inlineBytes{};
    std::array<quint8, 2> akzent{};
    quint8 inlineLaenge = 0;
    quint8 akzentLaenge = 0;
    quint8 code = 0;    // Unsichtbar: the code; Kana: the flag, 2 or 3
    quint8 breite = 0;  // positions in the key: 2 for ß
    Zeichenart art = Zeichenart::Ohne;
};

// All units from 0 to 0xFFFF, surrogates included; made at the first call.
const std::array<Zeichen, 0x10000>& zeichentafel();

// The tables as texts, tab-separated, "-" for empty. The first one has: code, kind, inline bytes, accent,
// other, width; the second one runs of codes: from, to, kind, inline bytes of the first one, accent, other.
extern const char* const kGeneralLatein;
extern const char* const kGeneralUebrige;
// The one of Access 97: byte of Windows-1252, kind, inline bytes, half byte of the accent, letters that could
// bear one.
extern const char* const kGeneral97;

}  // namespace sort
