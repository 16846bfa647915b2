// The directory of a compound file, walked without the container library, to notice what that leaves out.
#pragma once

#include <QByteArrayView>

namespace excel {

// The number of storages and streams that hang in the directory's tree, the root not counted; -1 where the
// directory or its tree is damaged.
int verzeichniseintraege(QByteArrayView datei);

}  // namespace excel
