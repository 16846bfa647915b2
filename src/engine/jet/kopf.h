// Page 0 taken apart; used by the page file when it opens.
#pragma once

#include "engine/jet/seiten.h"

namespace jet {

// Which format the first bytes of a file announce. Raises kBeschaedigt for too few of them and
// kDateiNichtLesbar for anything else.
const Format& formatErkennen(QByteArrayView anfang);

// The first 0x98 bytes of page 0 with the mask taken off (or put on: it is the same operation).
QByteArray kopfEntmaskieren(const Format& format, QByteArrayView anfang);

// The fields of page 0. Raises kDateiNichtLesbar for an unknown text or version, or when the definition of
// MSysObjects is not where it always is (older engines, files that were decoded wrongly).
Kopf kopfLesen(QByteArrayView anfang);

}  // namespace jet
