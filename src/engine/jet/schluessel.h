// Keys of index entries: a row's values as bytes that compare like the values.
#pragma once

#include <QByteArray>
#include <optional>

#include "engine/jet/tdef.h"

namespace jet {

// Whether keys of this column can be made: not for texts of other sort orders than General of Access 2000 to
// 2007 (or of Access 97), OLE objects and the types of Access 2010 and later.
bool schluesselMoeglich(const Spalte& spalte);

// Appends the key of one value: a flag byte (Null or not), then the value, complemented for a descending
// column (in Jet 4 a text has another 00 behind it). `gespeichert` holds the bytes of the value as a row
// stores it (of a Memo its content); nothing for Null. For Boolean: something for True, nothing for False.
// Raises kSystemgrenze for a column without keys, kBeschaedigt for too few bytes. Seen in the index entries
// of files of Access 97 to 2003.
void schluesselAnhaengen(QByteArray& ziel, const Format& format, const Spalte& spalte, bool absteigend,
                         const std::optional<QByteArrayView>& gespeichert);

// The key of a row whose indexed columns are all Null.
QByteArray nullSchluessel(const EchterIndex& index);

}  // namespace jet
