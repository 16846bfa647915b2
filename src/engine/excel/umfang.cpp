// The used cells of a sheet.
#include "engine/excel/umfang.h"

#include <algorithm>

#include "base/atempause.h"
#include "engine/excel/zellen.h"
#include "engine/typen.h"

namespace excel {
namespace {

int textlaenge(const Zelle& zelle, const Zellenleser& leser, const Texttafel& texte) {
    if (zelle.art == Zelle::Art::Verweis) return texte.laenge(zelle.verweis);
    return zelle.art == Zelle::Art::Text ? leser.textlaenge() : 1;
}

void erweitern(std::optional<Bereich>& b, int blatt, int zeile, int spalte) {
    if (!b) {
        b = Bereich{blatt, zeile, zeile, spalte, spalte};
        return;
    }
    b->zeile1 = std::min(b->zeile1, zeile);
    b->zeile2 = std::max(b->zeile2, zeile);
    b->spalte1 = std::min(b->spalte1, spalte);
    b->spalte2 = std::max(b->spalte2, spalte);
}

}  // namespace

Umfang umfangVon(const Mappe& mappe, const Texttafel& texte, int blatt,
                 const std::optional<Bereich>& grenze) {
    Umfang umfang;
    Zellenleser leser(mappe.teilstrom(mappe.blaetter()[size_t(blatt)]), mappe.biff8(), mappe.codeseite());
    int letzte = 0;
    // Without a border the header is the first row that turns up, which is the first one where rows are in
    // order.
    for (Zelle z; leser.naechste(z);) {
        const int zeile = z.zeile;
        if (zeile < letzte) umfang.geordnet = false;
        letzte = zeile;
        if (grenze && !grenze->umfasst({blatt, zeile, zeile, z.spalte, z.spalte})) continue;
        const int laenge = textlaenge(z, leser, texte);
        if (laenge == 0) continue;
        erweitern(umfang.bereich, blatt, zeile, z.spalte);
        const int kopf = grenze ? grenze->zeile1 : umfang.bereich->zeile1;
        if (laenge > dao::kMaxTextGroesse && zeile != kopf) umfang.lang.set(z.spalte);
        Atempause();
    }
    return umfang;
}

int zellenZaehlen(const Mappe& mappe, int blatt) {
    Zellenleser leser(mappe.teilstrom(mappe.blaetter()[size_t(blatt)]), mappe.biff8(), mappe.codeseite());
    int anzahl = 0;
    for (Zelle z; leser.naechste(z);) ++anzahl;
    return anzahl;
}

}  // namespace excel
