// Walking the records of a workbook stream.
#include "engine/excel/satzfolge.h"

#include "base/fehler.h"
#include "engine/excel/bytes.h"

namespace excel {

void beschaedigt() {
    throw EngineFehler(
        kBeschaedigt,
        QStringLiteral("Die Arbeitsmappe ist beschädigt. Öffnen Sie sie in dem Programm, mit dem "
                       "sie erstellt wurde, und speichern Sie sie dort neu."));
}

bool Satzfolge::naechster(Satzsicht& satz) {
    if (ort_ < 0 || strom_.size() - ort_ < kSatzkopf) return false;
    const qsizetype laenge = u16(strom_, ort_ + 2);
    if (laenge > strom_.size() - ort_ - kSatzkopf) return false;
    satz.typ = u16(strom_, ort_);
    satz.ort = ort_;
    satz.daten = strom_.sliced(ort_ + kSatzkopf, laenge);
    ort_ = satz.ende();
    return true;
}

qsizetype teilstromEnde(QByteArrayView strom, qsizetype ab) {
    if (ab < 0 || ab >= strom.size()) return -1;
    Satzfolge folge(strom, ab);
    Satzsicht satz;
    int tiefe = 0;
    while (folge.naechster(satz)) {
        if (satz.typ == kBof) ++tiefe;
        if (tiefe == 0) return -1;
        if (satz.typ == kEof && --tiefe == 0) return folge.ort();
    }
    return -1;
}

}  // namespace excel
