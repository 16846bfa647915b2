// Puts the rows of a block in the order in which they are compared.
#include "search/blockordnung.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <tuple>

namespace {

constexpr qint64 kZellenJeTafel = 24 << 20;
constexpr size_t kKleinsteProbe = 200;  // pairs looked at to put the stages in order
constexpr size_t kGroessteProbe = 20000;
constexpr qint64 kVerbundJeZeile = 8;  // pairs of a join that a row is worth
constexpr qint64 kVerbundAnfang = 1 << 16;

bool nurWoerter(const Wertvorrat& vorrat) {
    for (size_t teil = 0; teil < vorrat.teile(); ++teil)
        if (vorrat.teilmass(teil) != Mass::Woerter) return false;
    return true;
}

// How much of what the pairs of the sample have left a stage takes; of pairs that have nothing left, how
// much it takes at all.
std::pair<qint64, qint64> nutzen(const std::vector<int>& verluste, const std::vector<int>& rest) {
    constexpr qint64 kGanz = 1024;
    std::pair<qint64, qint64> nutzen;
    for (size_t p = 0; p < rest.size(); ++p)
        if (rest[p] < 0)
            nutzen.second += verluste[p];
        else
            nutzen.first += kGanz * std::min(verluste[p], rest[p] + 1) / (rest[p] + 1);
    return nutzen;
}

}  // namespace

bool Blockordnung::bilden(const Blocksicht& block, Kleinzahlen& kleinzahlen, const Weiter& weiter) {
    block_ = &block;
    kleinzahlen_ = &kleinzahlen;
    weiter_ = &weiter;
    return stufenBilden() && stufenOrdnen() && formenBilden() && zeilenOrdnen() && bereicheFinden();
}

bool Blockordnung::stufenBilden() {
    for (size_t f = 0; f < block_->felder(); ++f) {
        const Wertvorrat& vorrat = block_->vorraete[f];
        if (vorrat.gewicht() <= 0) continue;
        const bool einzeln = vorrat.teile() == 1;
        if (einzeln || nurWoerter(vorrat)) {
            Stufe ganz(*block_, f, Stufe::kGanz, *kleinzahlen_);
            if (!ganzDurchgegangen()) return false;
            if (einzeln || tafelLohnt(ganz)) {
                if (!stufeAufnehmen(std::move(ganz))) return false;
                continue;
            }
        }
        for (size_t teil = 0; teil < vorrat.teile(); ++teil)
            if (vorrat.teilZaehlt(teil) && !stufeAufnehmen(Stufe(*block_, f, teil, *kleinzahlen_)))
                return false;
    }
    return true;
}

bool Blockordnung::tafelLohnt(const Stufe& stufe) const {
    const qint64 zellen = qint64(stufe.anzahl() + 1) * (stufe.anzahl() + 1);
    const qint64 paare = qint64(block_->zeilen) * qint64(block_->zeilen);
    return zellen <= std::min(kZellenJeTafel, paare / 16);
}

// Making a stage takes a look at every row; the window breathes before the next one.
bool Blockordnung::stufeAufnehmen(Stufe stufe) {
    if (!ganzDurchgegangen()) return false;
    const Wertvorrat& vorrat = block_->vorraete[stufe.feld()];
    const bool woerter =
        stufe.teil() == Stufe::kGanz ? nurWoerter(vorrat) : vorrat.teilmass(stufe.teil()) == Mass::Woerter;
    const bool tafel = woerter && tafelLohnt(stufe);
    if (woerter && !tafel) {
        std::optional<Wortverbund> verbund = verbundVon(stufe);
        if (verbund) {
            stufe.auslassen(std::move(verbund->haeufig));
            verbuende_.push_back({std::move(stufe), std::move(verbund->paare)});
            return ganzDurchgegangen();
        }
    }
    stufe.vorbereiten(tafel);
    if (!(*weiter_)(qint64(stufe.anzahl()))) return false;
    stufen_.push_back(std::move(stufe));
    return true;
}

// The pairs of values of a stage that have a word in common, when they are few.
std::optional<Wortverbund> Blockordnung::verbundVon(const Stufe& stufe) {
    const size_t teil = stufe.teil() == Stufe::kGanz ? 0 : stufe.teil();
    std::vector<int> zeilen(size_t(stufe.anzahl()) + 1);
    for (const int wert : stufe.werte()) ++zeilen[size_t(wert)];
    std::vector<Verbundtext> texte;
    std::vector<int> werte;
    for (int wert = 1; wert <= stufe.anzahl(); ++wert) {
        const int text = stufe.text(wert, teil);
        if (text < 0) continue;
        texte.push_back({text, zeilen[size_t(wert)]});
        werte.push_back(wert);
    }
    const qint64 hoechstens = kVerbundAnfang + kVerbundJeZeile * qint64(block_->zeilen);
    std::optional<Wortverbund> verbund = TexteVerbinden(block_->texte, texte, hoechstens, *weiter_);
    if (!verbund) return {};
    for (auto& paar : verbund->paare) paar = {werte[size_t(paar.first)], werte[size_t(paar.second)]};
    std::vector<bool> haeufig(size_t(stufe.anzahl()) + 1);
    for (size_t k = 0; k < werte.size(); ++k) haeufig[size_t(werte[k])] = verbund->haeufig[k];
    verbund->haeufig = std::move(haeufig);
    return verbund;
}

bool Blockordnung::probeZiehen(Probe& probe) {
    std::minstd_rand zufall(1);
    std::uniform_int_distribution<size_t> zeile(0, block_->zeilen - 1);
    const size_t anzahl = std::clamp<size_t>(2 * block_->zeilen, kKleinsteProbe, kGroessteProbe);
    probe.rest.assign(anzahl, 0);
    probe.verluste.assign(stufen_.size(), std::vector<int>(anzahl));
    for (size_t p = 0; p < anzahl; ++p) {
        const size_t i = zeile(zufall);
        const size_t j = zeile(zufall);
        for (size_t k = 0; k < stufen_.size(); ++k) {
            const int a = stufen_[k].werte()[i];
            const int b = stufen_[k].werte()[j];
            if (a == 0 || b == 0) continue;
            const int bestens = std::min(stufen_[k].bestens(a), stufen_[k].bestens(b));
            probe.rest[p] += bestens;
            probe.verluste[k][p] = bestens - stufen_[k].gewinn(a, b);
        }
        for (const Verbund& verbund : verbuende_)
            if (verbund.stufe.werte()[i] != 0 && verbund.stufe.werte()[j] != 0)
                probe.rest[p] += verbund.stufe.mindestens();
        if (!(*weiter_)(qint64(stufen_.size()))) return false;
    }
    return true;
}

// The stage that takes most from the pairs of a sample comes first, then the one that takes most of what
// is left. Stages with many values come behind those with few.
bool Blockordnung::stufenOrdnen() {
    Probe probe;
    if (!probeZiehen(probe)) return false;
    const int wenige = int(8 * std::sqrt(double(block_->zeilen)));
    std::vector<Stufe> geordnet;
    std::vector<bool> vergeben(stufen_.size());
    for (size_t n = 0; n < stufen_.size(); ++n) {
        std::tuple<bool, std::pair<qint64, qint64>, size_t> beste{false, {-1, 0}, 0};
        for (size_t k = 0; k < stufen_.size(); ++k)
            if (!vergeben[k])
                beste = std::max(beste,
                                 {stufen_[k].anzahl() <= wenige, nutzen(probe.verluste[k], probe.rest), k});
        const size_t k = std::get<2>(beste);
        vergeben[k] = true;
        for (size_t p = 0; p < probe.rest.size(); ++p) probe.rest[p] -= probe.verluste[k][p];
        geordnet.push_back(std::move(stufen_[k]));
    }
    stufen_ = std::move(geordnet);
    return true;
}

// The shapes know the stages of `stufen_` first, then those that were left out.
bool Blockordnung::formenBilden() {
    std::vector<const Stufe*> alle;
    for (const Stufe& stufe : stufen_) alle.push_back(&stufe);
    for (const Verbund& verbund : verbuende_) alle.push_back(&verbund.stufe);
    return formen_.bilden(alle, block_->zeilen, [this] { return ganzDurchgegangen(); });
}

// Every row was looked at.
bool Blockordnung::ganzDurchgegangen() const {
    return (*weiter_)(qint64(block_->zeilen));
}

// Sorts by shape, then stage by stage.
bool Blockordnung::zeilenOrdnen() {
    zeilen_.resize(block_->zeilen);
    std::iota(zeilen_.begin(), zeilen_.end(), 0);
    std::vector<int> puffer(block_->zeilen);
    for (size_t k = stufen_.size(); k-- > 0;) {
        nachWerten(stufen_[k].werte(), stufen_[k].anzahl() + 1, puffer);
        if (!ganzDurchgegangen()) return false;
    }
    nachWerten(formen_.formVon(), int(formen_.anzahl()), puffer);
    for (size_t k = 0; k < stufen_.size(); ++k) {
        nachPlatz(stufen_[k].werte(), puffer);
        if (!ganzDurchgegangen()) return false;
    }
    for (Verbund& verbund : verbuende_) nachPlatz(verbund.stufe.werte(), puffer);
    return ganzDurchgegangen();
}

// The ranges of rows alike up to a stage.
bool Blockordnung::bereicheFinden() {
    const int anzahl = int(block_->zeilen);
    formbereiche_.assign(formen_.anzahl(), {anzahl, 0});
    std::vector<bool> beginnt(block_->zeilen + 1);
    beginnt[0] = beginnt[block_->zeilen] = true;
    for (int p = 0; p < anzahl; ++p) {
        Bereich& form = formbereiche_[size_t(formen_.formVon()[size_t(zeilen_[size_t(p)])])];
        if (form.bis == 0) {
            form.von = p;
            beginnt[size_t(p)] = true;
        }
        form.bis = p + 1;
    }
    ende_.resize(stufen_.size());
    for (size_t k = 0; k < stufen_.size(); ++k) {
        const std::vector<int>& werte = stufen_[k].werte();
        ende_[k].resize(block_->zeilen);
        for (int p = anzahl - 1; p >= 0; --p) {
            const size_t platz = size_t(p);
            if (p > 0 && werte[platz] != werte[platz - 1]) beginnt[platz] = true;
            ende_[k][platz] = p + 1 == anzahl || beginnt[platz + 1] ? p + 1 : ende_[k][platz + 1];
        }
        if (!ganzDurchgegangen()) return false;
    }
    return true;
}

// Sorts `zeilen_` by values from 0 below `anzahl`; rows with the same one stay in order.
void Blockordnung::nachWerten(const std::vector<int>& werte, int anzahl, std::vector<int>& puffer) {
    std::vector<int> stelle(size_t(anzahl) + 1);
    for (const int wert : werte) ++stelle[size_t(wert) + 1];
    std::partial_sum(stelle.begin(), stelle.end(), stelle.begin());
    for (const int zeile : zeilen_) puffer[size_t(stelle[size_t(werte[size_t(zeile)])]++)] = zeile;
    zeilen_.swap(puffer);
}

// From the order of the rows to that of the places.
void Blockordnung::nachPlatz(std::vector<int>& werte, std::vector<int>& puffer) {
    for (size_t p = 0; p < block_->zeilen; ++p) puffer[p] = werte[size_t(zeilen_[p])];
    werte.swap(puffer);
}
