// Shapes and what they can gain.
#include "search/formen.h"

#include <algorithm>

namespace {

constexpr size_t kMeisteFormen = 200;
constexpr int kNieErreicht = -(1 << 28);

// For each value of a stage the kind that goes with its greatest gain, from 0; that of the missing value is
// 0.
std::vector<int> artenDerWerte(const Stufe& stufe) {
    std::vector<int> gewinne;
    std::vector<int> arten{0};
    for (int wert = 1; wert <= stufe.anzahl(); ++wert) {
        const auto fund = std::find(gewinne.begin(), gewinne.end(), stufe.bestens(wert));
        arten.push_back(int(fund - gewinne.begin()) + 1);
        if (fund == gewinne.end()) gewinne.push_back(stufe.bestens(wert));
    }
    return arten;
}

}  // namespace

bool Formen::bilden(const std::vector<const Stufe*>& stufen, size_t zeilen,
                    const std::function<bool()>& weiter) {
    formVon_.assign(zeilen, 0);
    size_t anzahl = 1;
    Kleinzahlen kleinzahlen;
    for (const Stufe* stufe : stufen) {
        const std::vector<int> arten = artenDerWerte(*stufe);
        const int artenzahl = *std::max_element(arten.begin(), arten.end()) + 1;
        kleinzahlen.beginnen(anzahl * size_t(artenzahl));
        std::vector<int> neu(zeilen);
        for (size_t zeile = 0; zeile < zeilen; ++zeile) {
            const int art = arten[size_t(stufe->werte()[zeile])];
            neu[zeile] = kleinzahlen.nummer(formVon_[zeile] * artenzahl + art) - 1;
        }
        if (!weiter()) return false;
        if (kleinzahlen.gekommen().size() > kMeisteFormen) continue;
        formVon_ = std::move(neu);
        anzahl = kleinzahlen.gekommen().size();
    }
    grenzen_.assign(anzahl, std::vector<Grenze>(stufen.size(), {kNieErreicht, false, false, 0}));
    for (size_t k = 0; k < stufen.size(); ++k) {
        for (std::vector<Grenze>& form : grenzen_) form[k].mindestens = stufen[k]->mindestens();
        for (size_t zeile = 0; zeile < zeilen; ++zeile) {
            const int wert = stufen[k]->werte()[zeile];
            Grenze& grenze = grenzen_[size_t(formVon_[zeile])][k];
            if (wert == 0) {
                grenze.fehlt = true;
            } else {
                grenze.gefuellt = true;
                grenze.bestens = std::max(grenze.bestens, stufen[k]->bestens(wert));
            }
        }
        if (!weiter()) return false;
    }
    return true;
}

int Formen::hoechstens(size_t a, size_t b, size_t stufe) const {
    const Grenze& x = grenzen_[a][stufe];
    const Grenze& y = grenzen_[b][stufe];
    if (nie(a, b, stufe)) return 0;
    const int bestens = std::min(x.bestens, y.bestens);
    return x.fehlt || y.fehlt ? std::max(0, bestens) : bestens;
}

bool Formen::gemeinsames(size_t a, size_t b) const {
    for (size_t k = 0; k < grenzen_[a].size(); ++k)
        if (!nie(a, b, k)) return true;
    return false;
}

bool Formen::nie(size_t a, size_t b, size_t stufe) const {
    return !grenzen_[a][stufe].gefuellt || !grenzen_[b][stufe].gefuellt;
}

int Formen::hoechstensAusgelassen(size_t a, size_t b, size_t stufe) const {
    if (nie(a, b, stufe)) return 0;
    const Grenze& x = grenzen_[a][stufe];
    const Grenze& y = grenzen_[b][stufe];
    const int bestens = std::max(x.bestens, y.bestens);
    return x.fehlt || y.fehlt ? std::max(0, bestens) : bestens;
}

bool Formen::festAusgelassen(size_t a, size_t b, size_t stufe) const {
    if (nie(a, b, stufe)) return true;
    const Grenze& x = grenzen_[a][stufe];
    const Grenze& y = grenzen_[b][stufe];
    return !x.fehlt && !y.fehlt && std::max(x.bestens, y.bestens) == x.mindestens;
}
