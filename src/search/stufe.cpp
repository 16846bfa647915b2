// A stage and its gains.
#include "search/stufe.h"

#include <algorithm>

#include "search/masse.h"

void Kleinzahlen::beginnen(size_t grenze) {
    for (const int gross : gekommen_) klein_[size_t(gross)] = 0;
    gekommen_.clear();
    if (klein_.size() < grenze) klein_.resize(grenze + grenze / 2);
}

int Kleinzahlen::nummer(int gross) {
    int& klein = klein_[size_t(gross)];
    if (klein == 0) {
        gekommen_.push_back(gross);
        klein = int(gekommen_.size());
    }
    return klein;
}

Stufe::Stufe(const Blocksicht& block, size_t feld, size_t teil, Kleinzahlen& kleinzahlen)
    : vorrat_(block.vorraete[feld]), texte_(block.texte), feld_(feld), teil_(teil) {
    const bool ganz = teil == kGanz;
    mindestens_ = ganz ? vorrat_.mindestens() : vorrat_.teilMindestens(teil);
    kleinzahlen.beginnen(ganz ? size_t(vorrat_.anzahl()) + 1 : block.texte.anzahl() + 1);
    werte_.reserve(block.zeilen);
    for (size_t zeile = 0; zeile < block.zeilen; ++zeile) {
        const int wert = block.wert(zeile, feld);
        if (wert == 0)
            werte_.push_back(0);
        else
            werte_.push_back(kleinzahlen.nummer(ganz ? wert : vorrat_.teiltext(wert, teil) + 1));
    }
    schluessel_.push_back(0);
    bestens_.push_back(0);
    for (const int gross : kleinzahlen.gekommen()) {
        schluessel_.push_back(ganz ? gross : gross - 1);
        bestens_.push_back(ganz ? vorrat_.bestens(gross) : vorrat_.teilBestens(teil, gross - 1));
    }
}

int Stufe::gemessen(int a, int b) const {
    const int x = schluessel_[size_t(a)];
    const int y = schluessel_[size_t(b)];
    return teil_ == kGanz ? vorrat_.gewinn(x, y, texte_) : vorrat_.teilgewinn(teil_, x, y, texte_);
}

void Stufe::vorbereiten(bool tafel) {
    if (!tafel) {
        ziffernAblegen();
        return;
    }
    breite_ = size_t(anzahl()) + 1;
    tafel_.assign(breite_ * breite_, kUnbekannt);
    for (size_t a = 0; a < breite_; ++a) tafel_[a] = tafel_[a * breite_] = 0;
}

int Stufe::nachtragen(int a, int b) const {
    const int gewinn = gemessen(a, b);
    tafel_[size_t(a) * breite_ + size_t(b)] = tafel_[size_t(b) * breite_ + size_t(a)] = qint16(gewinn);
    return gewinn;
}

// Digits: the gain of two values goes by their lengths and by how many characters agree, where the places
// behind the end of both agree as well.
void Stufe::ziffernAblegen() {
    const size_t teil = teil_ == kGanz ? 0 : teil_;
    if ((teil_ == kGanz && vorrat_.teile() != 1) || vorrat_.teilmass(teil) != Mass::Nummern) return;
    for (int a = 0; a < kArten; ++a)
        for (int b = 0; b < kArten; ++b) {
            const bool fehlt = a == kFehlt || b == kFehlt;
            const bool nichts = a == kNichts || b == kNichts || a == 0 || b == 0;
            const qint16 ohne = qint16(fehlt ? 0 : mindestens_);
            verschieden_[a][b] = ohne;
            for (int gleiche = 0; gleiche <= kMeisteZiffern; ++gleiche) {
                const int lang = std::max(a, b);
                const int kurz = std::min(a, b);
                const int davon = gleiche - (kMeisteZiffern - lang);
                gleiche_[a][b][gleiche] =
                    fehlt || nichts || davon <= 0 || davon > kurz
                        ? ohne
                        : qint16(vorrat_.teilgewinn(teil, double(Nummernmass(lang, kurz, davon))));
            }
        }
    ziffern_.push_back({0, kFehlt});
    for (size_t wert = 1; wert < schluessel_.size(); ++wert) {
        const int text = this->text(int(wert), teil);
        if (text < 0)
            ziffern_.push_back({0, kNichts});
        else if (texte_.istKurz(text))
            ziffern_.push_back({texte_.anfangsbytes(text), quint8(texte_.laenge(text))});
        else
            ziffern_.push_back({0, kLang});
    }
}

void Stufe::auslassen(std::vector<bool> offen) {
    offen_ = std::move(offen);
    for (size_t wert = 1; wert < bestens_.size(); ++wert)
        if (!offen_[wert]) bestens_[wert] = mindestens_;
}

// Whether two values of a stage with one measure measure more than nothing.
bool Stufe::gemeinsames(int a, int b) const {
    const size_t teil = teil_ == kGanz ? 0 : teil_;
    return vorrat_.textmass(teil, text(a, teil), text(b, teil), texte_) > 0;
}
