// Groups of a block, and the gains of the fields they have in common.
#include "search/blockgruppen.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <unordered_map>

namespace {

constexpr size_t kZeilenFuerTafeln = 256;        // smaller blocks do without tables
constexpr qint64 kZellenJeTafelsatz = 96 << 20;  // of all tables together
constexpr int kStichprobe = 4096;                // pairs looked at to find the fields that tell rows apart
constexpr int kMeisteGruppen = 40000;
constexpr int kNieErreicht = -(1 << 28);

// Numbers pairs of numbers in the order in which they come.
class Nummerierung {
  public:
    int nummer(quint64 schluessel) {
        return nummern_.try_emplace(schluessel, int(nummern_.size())).first->second;
    }
    int anzahl() const { return int(nummern_.size()); }

  private:
    std::unordered_map<quint64, int> nummern_;
};

quint64 besetzungVon(const Blocksicht& block, size_t zeile) {
    quint64 besetzung = 0;
    for (size_t f = 0; f < block.felder(); ++f)
        if (block.wert(zeile, f) != 0 && block.vorraete[f].gewicht() > 0) besetzung |= quint64(1) << f;
    return besetzung;
}

Gewinntafel werteZaehlen(const Blocksicht& block, size_t feld) {
    Gewinntafel tafel{feld, 0, std::vector<int>(size_t(block.vorraete[feld].anzahl()) + 1, 0), {}};
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile) {
        const int wert = block.wert(zeile, feld);
        if (wert != 0 && tafel.imBlock[size_t(wert)] == 0) tafel.imBlock[size_t(wert)] = ++tafel.werte;
    }
    return tafel;
}

qint64 zellen(const Gewinntafel& tafel) {
    return qint64(tafel.werte + 1) * (tafel.werte + 1);
}

bool tafelFuellen(Gewinntafel& tafel, const Blocksicht& block, const Weiter& weiter) {
    std::vector<int> imVorrat(size_t(tafel.werte) + 1, 0);
    for (size_t i = 0; i < tafel.imBlock.size(); ++i)
        if (tafel.imBlock[i] != 0) imVorrat[size_t(tafel.imBlock[i])] = int(i);
    tafel.gewinne.assign(size_t(zellen(tafel)), 0);
    const size_t breite = size_t(tafel.werte) + 1;
    const Wertvorrat& vorrat = block.vorraete[tafel.feld];
    for (size_t a = 1; a < breite; ++a) {
        for (size_t b = a; b < breite; ++b) {
            const int gewinn = vorrat.gewinn(imVorrat[a], imVorrat[b], block.texte);
            tafel.gewinne[a * breite + b] = tafel.gewinne[b * breite + a] = qint16(gewinn);
        }
        if (!weiter(qint64(breite - a))) return false;
    }
    return true;
}

// The most that the field can gain in the block.
int bestens(const Blocksicht& block, size_t feld) {
    int ergebnis = kNieErreicht;
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile)
        if (const int wert = block.wert(zeile, feld); wert != 0)
            ergebnis = std::max(ergebnis, block.vorraete[feld].bestens(wert));
    return ergebnis;
}

// What the field's gains stay below their best, over some pairs of rows drawn at random.
qint64 trennkraft(const Gewinntafel& tafel, const Blocksicht& block) {
    std::minstd_rand zufall(1);
    std::uniform_int_distribution<size_t> zeile(0, block.zeilen - 1);
    const int beste = bestens(block, tafel.feld);
    qint64 summe = 0;
    for (int i = 0; i < kStichprobe; ++i) {
        const int a = tafel.imBlock[size_t(block.wert(zeile(zufall), tafel.feld))];
        const int b = tafel.imBlock[size_t(block.wert(zeile(zufall), tafel.feld))];
        if (a != 0 && b != 0) summe += beste - tafel.zeile(a)[b];
    }
    return summe;
}

}  // namespace

bool Blockgruppen::bilden(const Blocksicht& block, const Weiter& weiter) {
    if (block.zeilen >= kZeilenFuerTafeln && !tafelnBerechnen(block, weiter)) return false;
    tafelVon_.assign(block.felder(), nullptr);
    for (const Gewinntafel& tafel : tafeln_) tafelVon_[tafel.feld] = &tafel;
    if (!felderWaehlen(block, weiter)) return false;
    merkmaleAblegen(block);
    restschrankenBerechnen(block);
    return true;
}

// The fields with the fewest values first, as long as there is room, and no more than the block is worth.
bool Blockgruppen::tafelnBerechnen(const Blocksicht& block, const Weiter& weiter) {
    Tafeln moegliche;
    for (size_t f = 0; f < block.felder(); ++f)
        if (block.vorraete[f].gewicht() > 0) moegliche.push_back(werteZaehlen(block, f));
    std::sort(moegliche.begin(), moegliche.end(),
              [](const Gewinntafel& a, const Gewinntafel& b) { return a.werte < b.werte; });
    qint64 frei = std::min(kZellenJeTafelsatz, qint64(block.zeilen) * qint64(block.zeilen) / 16);
    for (Gewinntafel& tafel : moegliche) {
        if (!weiter(qint64(block.zeilen))) return false;
        if (zellen(tafel) > frei) break;
        frei -= zellen(tafel);
        if (!tafelFuellen(tafel, block, weiter)) return false;
        tafeln_.push_back(std::move(tafel));
    }
    return true;
}

// The fields that tell rows apart best, as long as the groups stay few.
bool Blockgruppen::felderWaehlen(const Blocksicht& block, const Weiter& weiter) {
    gruppeVon_.resize(block.zeilen);
    Nummerierung besetzungen;
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile)
        gruppeVon_[zeile] = besetzungen.nummer(besetzungVon(block, zeile));
    std::vector<std::pair<qint64, size_t>> nachKraft;
    for (size_t t = 0; t < tafeln_.size(); ++t) {
        nachKraft.emplace_back(-trennkraft(tafeln_[t], block), t);
        if (!weiter(qint64(block.zeilen))) return false;
    }
    std::sort(nachKraft.begin(), nachKraft.end());
    const int hoechstens = std::clamp(int(block.zeilen / 8), 64, kMeisteGruppen);
    for (const std::pair<qint64, size_t>& eintrag : nachKraft) {
        if (einteilen(block, tafeln_[eintrag.second], hoechstens)) gruppenfelder_.push_back(eintrag.second);
        if (!weiter(qint64(block.zeilen))) return false;
    }
    for (size_t f = 0; f < block.felder(); ++f) {
        const bool inGruppen = std::any_of(gruppenfelder_.begin(), gruppenfelder_.end(),
                                           [&](size_t t) { return tafeln_[t].feld == f; });
        if (!inGruppen && block.vorraete[f].gewicht() > 0) uebrige_.push_back(f);
    }
    return true;
}

// Parts the groups by one more field, unless there would be too many.
bool Blockgruppen::einteilen(const Blocksicht& block, const Gewinntafel& tafel, int hoechstens) {
    Nummerierung nummern;
    std::vector<int> neu(block.zeilen);
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile) {
        const int wert = tafel.imBlock[size_t(block.wert(zeile, tafel.feld))];
        neu[zeile] = nummern.nummer(quint64(quint32(gruppeVon_[zeile])) << 32 | quint32(wert));
        if (nummern.anzahl() > hoechstens) return false;
    }
    gruppeVon_ = std::move(neu);
    return true;
}

// Rows by group, and what the rows of a group have in common.
void Blockgruppen::merkmaleAblegen(const Blocksicht& block) {
    const int anzahl = *std::max_element(gruppeVon_.begin(), gruppeVon_.end()) + 1;
    grenzen_.assign(size_t(anzahl) + 1, 0);
    for (const int gruppe : gruppeVon_) ++grenzen_[size_t(gruppe) + 1];
    std::partial_sum(grenzen_.begin(), grenzen_.end(), grenzen_.begin());
    zeilen_.resize(block.zeilen);
    std::vector<size_t> stelle(grenzen_.begin(), grenzen_.end() - 1);
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile)
        zeilen_[stelle[size_t(gruppeVon_[zeile])]++] = int(zeile);
    Nummerierung besetzungen;
    for (const size_t t : gruppenfelder_) {
        gruppenwerte_.emplace_back();
        for (int g = 0; g < anzahl; ++g)
            gruppenwerte_.back().push_back(
                tafeln_[t].imBlock[size_t(block.wert(size_t(*anfang(size_t(g))), tafeln_[t].feld))]);
    }
    for (int g = 0; g < anzahl; ++g) {
        const quint64 besetzung = besetzungVon(block, size_t(zeilen_[grenzen_[size_t(g)]]));
        besetzung_.push_back(besetzungen.nummer(besetzung));
        if (besetzungen.anzahl() > int(besetzungen_.size())) besetzungen_.push_back(besetzung);
    }
}

void Blockgruppen::restschrankenBerechnen(const Blocksicht& block) {
    std::vector<int> beste;
    for (const size_t f : uebrige_) beste.push_back(bestens(block, f));
    for (const quint64 a : besetzungen_)
        for (const quint64 b : besetzungen_) {
            // Rows without a filled field in common never reach a threshold.
            int schranke = (a & b) == 0 ? kNieErreicht : 0;
            for (size_t i = 0; i < uebrige_.size(); ++i)
                if ((a & b) >> uebrige_[i] & 1) schranke += beste[i];
            restschranken_.push_back(schranke);
        }
}

void Blockgruppen::partner(size_t gruppe, std::vector<int>& ergebnis) const {
    ergebnis.clear();
    std::vector<int> summen(anzahl());
    const int* schranken = restschranken_.data() + size_t(besetzung_[gruppe]) * besetzungen_.size();
    for (size_t h = 0; h < anzahl(); ++h) summen[h] = schranken[besetzung_[h]];
    for (size_t k = 0; k < gruppenfelder_.size(); ++k) {
        const std::vector<int>& werte = gruppenwerte_[k];
        const qint16* gewinne = tafeln_[gruppenfelder_[k]].zeile(werte[gruppe]);
        for (size_t h = 0; h < anzahl(); ++h) summen[h] += gewinne[werte[h]];
    }
    for (size_t h = 0; h < anzahl(); ++h)
        if (summen[h] >= 0) ergebnis.push_back(int(h));
}

int Blockgruppen::gewinn(size_t a, size_t b) const {
    int summe = 0;
    for (size_t k = 0; k < gruppenfelder_.size(); ++k)
        summe += tafeln_[gruppenfelder_[k]].zeile(gruppenwerte_[k][a])[gruppenwerte_[k][b]];
    return summe;
}
