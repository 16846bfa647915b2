// The 'General' sort order: one source for ORDER BY and for the keys of text in indexes.
#pragma once

#include <QByteArray>
#include <QStringView>

namespace sort {

// The key of a text; keys compare as unsigned bytes as the texts sort: case does not count, umlauts stand
// beside their base letters, the accent decides only between equals, hyphen and apostrophe count last. The
// first 255 UTF-16 units count, blanks at their end do not. The key is the one of an ascending index of
// Access 2000 to 2003 (seen in files of five builds of its engine), without the flag byte in front and with
// the 00 at the end.
QByteArray sortSchluessel(QStringView text);

// -1, 0 or 1: how the keys of two texts compare.
int vergleichen(QStringView a, QStringView b);

}  // namespace sort
