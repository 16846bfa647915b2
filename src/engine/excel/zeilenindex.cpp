// INDEX records.
#include "engine/excel/zeilenindex.h"

#include "engine/excel/bytes.h"
#include "engine/excel/satzfolge.h"

namespace excel {
namespace {

constexpr int kEintraege8 = 12;  // behind the row numbers; the first entry is the place of DEFCOLWIDTH
constexpr int kEintraege5 = 8;

// Calls `neu` with each entry of the substream's own INDEX records and stores what it gives.
template <typename F>
void eintraegeAendern(QByteArray& strom, qsizetype ort, bool biff8, F neu) {
    Satzfolge folge(strom, ort);
    Satzsicht satz;
    int tiefe = 0;
    while (folge.naechster(satz)) {
        if (satz.typ == kBof) ++tiefe;
        if (satz.typ == kEof && --tiefe <= 0) return;
        if (satz.typ != kIndex || tiefe != 1) continue;
        const qsizetype anfang = satz.ort + kSatzkopf;
        for (qsizetype i = biff8 ? kEintraege8 : kEintraege5; i + 4 <= satz.daten.size(); i += 4)
            setzen<quint32>(strom, anfang + i, neu(u32(strom, anfang + i)));
        // Storing may have moved the bytes.
        folge = Satzfolge(strom, satz.ort + kSatzkopf + satz.daten.size());
    }
}

}  // namespace

void indexVerschieben(QByteArray& strom, qsizetype ort, bool biff8, qsizetype versatz) {
    if (versatz == 0) return;
    const qsizetype ende = teilstromEnde(strom, ort);
    const qsizetype von = ort - versatz;
    eintraegeAendern(strom, ort, biff8, [&](quint32 stelle) {
        const bool innen = qsizetype(stelle) >= von && qsizetype(stelle) < ende - versatz;
        return innen ? quint32(qsizetype(stelle) + versatz) : stelle;
    });
}

void indexDehnen(QByteArray& teilstrom, qsizetype ort, bool biff8, qsizetype ab, qsizetype zuwachs) {
    if (zuwachs == 0 || ort < 0) return;
    const qsizetype ende = ort + teilstrom.size() - zuwachs;
    eintraegeAendern(teilstrom, 0, biff8, [&](quint32 stelle) {
        const bool dahinter = qsizetype(stelle) >= ort + ab && qsizetype(stelle) < ende;
        return dahinter ? quint32(qsizetype(stelle) + zuwachs) : stelle;
    });
}

}  // namespace excel
