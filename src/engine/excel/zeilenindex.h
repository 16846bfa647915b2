// The INDEX record of a sheet: absolute places of its row blocks, to be put right when bytes move.
#pragma once

#include <QByteArray>

namespace excel {

// The substream at `ort` of the stream has moved by `versatz` bytes: its INDEX follows. Entries that did not
// point into the substream (0, rubbish) stay.
void indexVerschieben(QByteArray& strom, qsizetype ort, bool biff8, qsizetype versatz);

// In a substream that stood at `ort`, the bytes from the place `ab` (in it) on have moved by `zuwachs`:
// entries to them follow.
void indexDehnen(QByteArray& teilstrom, qsizetype ort, bool biff8, qsizetype ab, qsizetype zuwachs);

}  // namespace excel
