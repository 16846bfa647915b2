// The 'General' sort order of Access 97: the keys of text in the indexes of its files.
#pragma once

#include <QByteArray>

namespace sort {

// The key of a text that stands in Windows-1252, as an ascending index of Access 97 has it, without the flag
// byte in front: the letters' codes, 00 or the accents packed two to a byte, 00. Case does not count, hyphen
// and apostrophe are ordinary characters. The first 255 bytes count, blanks at their end do not. A descending
// key is its complement. Checked against the index entries of real files.
QByteArray sortSchluessel97(QByteArrayView text);

}  // namespace sort
