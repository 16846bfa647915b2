// Which entry of an index has another key than its row's values make.
#include "engine/jet/indexbau.h"
#include "engine/jet/indexseite.h"
#include "engine/jet/prueftabelle.h"
#include "engine/sort/zeichentafel.h"

namespace jet::pruefung {
namespace {

constexpr char kBuchstabenEnde = 0x01;  // ends the letters of a text's key; complemented when descending

bool hatBreitesZeichen(const Wert& wert) {
    if (!wert.istText()) return false;
    const auto& tafel = sort::zeichentafel();
    for (const QChar zeichen : wert.text())
        if (tafel[zeichen.unicode()].breite > 1) return true;
    return false;
}

// Other libraries take ß and its like for one letter where Access takes it for two: the accents behind it
// then stand elsewhere in the key. Such an entry agrees up to the end of that text's letters.
bool andersGezaehlt(const Seitendatei& datei, const Tabelle& tabelle, const EchterIndex& index,
                    const Zeilenteile& teile, QByteArrayView schluessel) {
    EchterIndex anfang;  // the index' columns so far
    qsizetype ab = 0;
    for (const IndexSpalte& is : index.spalten) {
        anfang.spalten.push_back(is);
        const QByteArray soll = zeilenSchluessel(datei, tabelle, anfang, teile);
        const Spalte& spalte = *tabelle.spalteMitNummer(is.nummer);
        if (spalte.istText() && hatBreitesZeichen(wertLesen(datei, spalte, teile))) {
            const char marke = is.absteigend ? char(~kBuchstabenEnde) : kBuchstabenEnde;
            return schluessel.startsWith(QByteArrayView(soll).first(soll.indexOf(marke, ab + 1) + 1));
        }
        ab = soll.size();
    }
    return false;
}

}  // namespace

std::optional<Zeilenort> falschenSchluesselFinden(const Seitendatei& datei, const Tabelle& tabelle,
                                                  const EchterIndex& index) {
    Baumgang gang(datei, index.wurzel, tabelle.name);
    while (gang.weiter()) {
        const Zeilenort ort = eintragZeile(gang.eintrag());
        const QByteArrayView ist = eintragSchluessel(gang.eintrag());
        const Zeilenbytes zeile = zeileHolen(datei, ort, true, tabelle.name);
        const Zeilenteile teile(datei.format(), tabelle, zeile.bytes, zeile.ort.seite);
        if (ist == zeilenSchluessel(datei, tabelle, index, teile)) continue;
        if (!andersGezaehlt(datei, tabelle, index, teile, ist)) return ort;
    }
    return {};
}

}  // namespace jet::pruefung
