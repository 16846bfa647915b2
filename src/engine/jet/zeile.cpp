// Rows taken apart: fixed part, variable values, null mask.
#include "engine/jet/zeile.h"

namespace jet {
namespace {

// A row that is older than every variable column has no list of variable values.
bool hatVariable(const Tabelle& tabelle, int spaltenDerZeile) {
    if (tabelle.variable == 0) return false;
    for (const Spalte& s : tabelle.spalten)
        if (!s.istFest() && s.typ != kTypBoolean && s.nummer < spaltenDerZeile) return true;
    return false;
}

}  // namespace

Zeilenteile::Zeilenteile(const Format& format, const Tabelle& tabelle, QByteArrayView bytes, quint32 seite)
    : format_(format), sicht_(bytes, tabelle.name, seite) {
    spalten_ = format.jet4 ? sicht_.u16(0) : sicht_.u8(0);
    maskeAb_ = int(bytes.size()) - (spalten_ + 7) / 8;
    if (maskeAb_ < format.zeileKopf) sicht_.kaputt(0);
    festEnde_ = maskeAb_;
    if (!hatVariable(tabelle, spalten_)) return;
    if (format.jet4)
        stellenLesen4();
    else
        stellenLesen3();
}

// In front of the mask: end of the values, offsets from the last value to the first, their number.
void Zeilenteile::stellenLesen4() {
    const int zahlAb = maskeAb_ - 2;
    const int zahl = sicht_.u16(zahlAb);
    const int trailerAb = zahlAb - 2 * (zahl + 1);
    stellen_.resize(zahl + 1);
    for (int k = 0; k <= zahl; ++k) stellen_[k] = sicht_.u16(zahlAb - 2 * (k + 1));
    stellenPruefen(trailerAb);
}

// The same with one byte each; a jump table tells where the offsets pass 256, 512, ...
void Zeilenteile::stellenLesen3() {
    const int zahlAb = maskeAb_ - 1;
    const int zahl = sicht_.u8(zahlAb);
    const int spruenge = int(sicht_.groesse() - 1) / 256;
    const int trailerAb = zahlAb - spruenge - zahl - 1;
    // Only the trailer crosses the last border: its jump entry is a dummy.
    const int gueltige = trailerAb / 256 < spruenge ? spruenge - 1 : spruenge;
    stellen_.resize(zahl + 1);
    int sprung = 0;
    for (int k = 0; k <= zahl; ++k) {
        while (sprung < gueltige && sicht_.u8(zahlAb - 1 - sprung) <= k) ++sprung;
        stellen_[k] = quint16(sicht_.u8(zahlAb - spruenge - 1 - k) + 256 * sprung);
    }
    stellenPruefen(trailerAb);
}

void Zeilenteile::stellenPruefen(int trailerAb) const {
    int vorige = format_.zeileKopf;
    for (const quint16 stelle : stellen_) {
        if (stelle < vorige || stelle > trailerAb) sicht_.kaputt(trailerAb);
        vorige = stelle;
    }
}

bool Zeilenteile::gesetzt(quint16 nummer) const {
    if (nummer >= spalten_) return false;
    return sicht_.u8(maskeAb_ + nummer / 8) >> nummer % 8 & 1;
}

std::optional<QByteArrayView> Zeilenteile::roh(const Spalte& spalte) const {
    if (spalte.typ == kTypBoolean || !gesetzt(spalte.nummer)) return {};
    if (spalte.istFest()) {
        const int ab = format_.zeileKopf + spalte.fest;
        if (ab + spalte.laenge > festEnde_) sicht_.kaputt(ab);
        return sicht_.teil(ab, spalte.laenge);
    }
    if (spalte.variabel + 1 >= stellen_.size()) return {};
    const int ab = stellen_[spalte.variabel];
    return sicht_.teil(ab, stellen_[spalte.variabel + 1] - ab);
}

}  // namespace jet
