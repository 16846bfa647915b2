// The upper halves of the single-byte code pages.
#pragma once

namespace dbase {

// What the bytes 0x80 to 0xFF of a code page stand for; every character stands once.
struct Zeichentafel {
    int seite;
    char16_t oben[128];
};

// The table of a page by its number (437, 850, 1252, ...; 10000 to 10029 are the Macintosh's, 28591 and 28605
// ISO 8859-1 and -15); nullptr for a page that has none here.
const Zeichentafel* zeichentafelSuchen(int seite);

}  // namespace dbase
