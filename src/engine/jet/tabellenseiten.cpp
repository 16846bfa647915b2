// A table's pages collected.
#include "engine/jet/tabellenseiten.h"

#include <algorithm>

#include "engine/jet/karte.h"

namespace jet {
namespace {

void anhaengen(std::vector<quint32>& ziel, const std::vector<quint32>& seiten) {
    ziel.insert(ziel.end(), seiten.begin(), seiten.end());
}

}  // namespace

Tabellenseiten tabellenseitenSammeln(const Seitendatei& datei, const Tabelle& tabelle) {
    Tabellenseiten sammlung;
    sammlung.definition = tabelle.seiten;
    const auto lesen = [&](Zeilenort ort, std::vector<quint32>* ziel) {
        if (ort.seite == 0) return;
        const Karte karte = karteLesen(datei, ort, tabelle.name);
        sammlung.karten.push_back(ort);
        anhaengen(sammlung.bits, karte.bitmapseiten);
        if (ziel) anhaengen(*ziel, karte.seiten);
    };
    lesen(tabelle.besitz, &sammlung.daten);
    lesen(tabelle.frei, nullptr);
    for (const Langwertkarten& karten : tabelle.lange) {
        lesen(karten.besitz, &sammlung.lange);
        lesen(karten.frei, nullptr);
    }
    for (const EchterIndex& index : tabelle.echte) lesen(index.karte, &sammlung.index);
    return sammlung;
}

std::vector<quint32> Tabellenseiten::alle() const {
    std::vector<quint32> seiten;
    for (const auto* teil : {&definition, &daten, &lange, &index, &bits}) anhaengen(seiten, *teil);
    std::sort(seiten.begin(), seiten.end());
    seiten.erase(std::unique(seiten.begin(), seiten.end()), seiten.end());
    return seiten;
}

}  // namespace jet
