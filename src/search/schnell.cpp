// All pairs of a block at speed.
#include "search/schnell.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "search/blockgruppen.h"
#include "search/paarfolge.h"

namespace {

constexpr size_t kMeisteFelder = 64;             // a bit each in the sets of filled fields
constexpr size_t kMeistesImVorrat = 200000;      // beyond it a new block begins with empty stores
constexpr size_t kPartnerImSpeicher = 32 << 20;  // of all groups together
constexpr qint64 kSchritteJeAtempause = 20000;

// One block: goes through its slices in order, and for each record only to the groups that can be its
// partners.
class Lauf {
  public:
    Lauf(const Blocksicht& block, bool differenzieren, float schwelle, const Paarempfang& empfang)
        : block_(block), differenzieren_(differenzieren), schwelle_(schwelle), empfang_(empfang) {}

    bool ausfuehren() {
        if (!gruppen_.bilden(block_, [this](qint64 n) { return schritte(n); })) return false;
        if (!ordnen()) return false;
        const qint64 breite = Scheibenbreite(qint64(block_.zeilen));
        for (qint64 anfang = 0; anfang < qint64(block_.zeilen) && gewollt_; anfang += breite) {
            const qint64 ende = std::min(anfang + breite, qint64(block_.zeilen));
            if (!scheibe(anfang, ende, breite)) return false;
        }
        const qint64 alle = qint64(block_.zeilen) * (qint64(block_.zeilen) - 1) / 2;
        return empfang_.atempause(alle - gemeldet_);
    }

  private:
    struct Treffer {
        qint32 i;
        qint32 j;
    };

    // Counts work; True to go on.
    bool schritte(qint64 anzahl) {
        schritte_ += anzahl;
        if (schritte_ < kSchritteJeAtempause) return true;
        schritte_ = 0;
        gemeldet_ += entschieden_;
        return empfang_.atempause(std::exchange(entschieden_, 0));
    }

    // Rows by group, side by side; the fields with tables first, then by what they can change.
    bool ordnen() {
        uebrige_ = gruppen_.uebrige();
        std::stable_sort(uebrige_.begin(), uebrige_.end(), [this](size_t a, size_t b) {
            const bool ohneTafelA = !gruppen_.tafel(a);
            const bool ohneTafelB = !gruppen_.tafel(b);
            if (ohneTafelA != ohneTafelB) return ohneTafelB;
            return block_.vorraete[a].gewicht() > block_.vorraete[b].gewicht();
        });
        platzVon_.resize(block_.zeilen);
        naechster_.assign(gruppen_.anzahl(), 0);
        partner_.resize(gruppen_.anzahl());
        gemerkt_.assign(gruppen_.anzahl(), false);
        werte_.reserve(block_.zeilen * uebrige_.size());
        schranken_.reserve(block_.zeilen * uebrige_.size());
        const int* alle = gruppen_.anfang(0);
        for (size_t platz = 0; platz < block_.zeilen; ++platz) {
            const size_t zeile = size_t(alle[platz]);
            platzVon_[zeile] = platz;
            for (const size_t f : uebrige_) {
                werte_.push_back(block_.wert(zeile, f));
                schranken_.push_back(qint16(block_.vorraete[f].bestens(werte_.back())));
            }
            if (!schritte(1)) return false;
        }
        return true;
    }

    bool scheibe(qint64 anfang, qint64 ende, qint64 breite) {
        breite_ = breite;
        treffer_.clear();
        for (qint64 i = anfang; i < ende; ++i) {
            if (!partnerDurchgehen(qint32(i))) return false;
            entschieden_ += qint64(block_.zeilen) - 1 - i;
        }
        return melden();
    }

    const std::vector<int>& partnerVon(size_t gruppe) {
        std::vector<int>& gemerkt = partner_[gruppe];
        if (gemerkt_[gruppe]) return gemerkt;
        gruppen_.partner(gruppe, partnerNeu_);
        schritte_ += qint64(gruppen_.anzahl()) / 8;
        if (gemerkteEintraege_ + partnerNeu_.size() > kPartnerImSpeicher) return partnerNeu_;
        gemerkteEintraege_ += partnerNeu_.size();
        gemerkt_[gruppe] = true;
        return gemerkt = partnerNeu_;
    }

    bool partnerDurchgehen(qint32 i) {
        const size_t gruppe = size_t(gruppen_.gruppeVon(size_t(i)));
        for (const int h : partnerVon(gruppe)) {
            const size_t andere = size_t(h);
            const int* erste = gruppen_.anfang(andere);
            const qint64 anzahl = gruppen_.ende(andere) - erste;
            qint64& k = naechster_[andere];
            while (k < anzahl && erste[k] <= i) ++k;
            if (!schritte(1)) return false;
            if (k == anzahl) continue;
            if (!zeilenDurchgehen(i, andere, k, gruppen_.gewinn(gruppe, andere))) return false;
        }
        return true;
    }

    bool zeilenDurchgehen(qint32 i, size_t gruppe, qint64 ab, int gewinn) {
        const int* erste = gruppen_.anfang(gruppe);
        const qint64 anzahl = gruppen_.ende(gruppe) - erste;
        const size_t platz = size_t(erste - gruppen_.anfang(0));
        for (qint64 k = ab; k < anzahl; ++k) {
            if (k % 256 == 0 && !schritte(256)) return false;
            if (!moeglich(platzVon_[size_t(i)], platz + size_t(k), gewinn)) continue;
            if (erreicht(size_t(i), size_t(erste[k]))) eintragen({i, erste[k]});
        }
        return true;
    }

    // Whether the gains of two rows, by their places, can come to the threshold.
    bool moeglich(size_t a, size_t b, int summe) const {
        const size_t felder = uebrige_.size();
        const int* werteA = werte_.data() + a * felder;
        const int* werteB = werte_.data() + b * felder;
        const qint16* schrankenA = schranken_.data() + a * felder;
        const qint16* schrankenB = schranken_.data() + b * felder;
        for (size_t f = 0; f < felder; ++f)
            if (werteA[f] != 0 && werteB[f] != 0) summe += std::min(schrankenA[f], schrankenB[f]);
        for (size_t f = 0; f < felder && summe >= 0; ++f)
            if (werteA[f] != 0 && werteB[f] != 0)
                summe += gewinn(uebrige_[f], werteA[f], werteB[f]) - std::min(schrankenA[f], schrankenB[f]);
        return summe >= 0;
    }

    int gewinn(size_t feld, int a, int b) const {
        if (const Gewinntafel* tafel = gruppen_.tafel(feld))
            return tafel->zeile(tafel->imBlock[size_t(a)])[tafel->imBlock[size_t(b)]];
        return block_.vorraete[feld].gewinn(a, b, block_.texte);
    }

    // The decision itself: the sums of the rules, in their order and precision.
    bool erreicht(size_t i, size_t j) const {
        Vergleichssummen summen(differenzieren_);
        for (size_t f = 0; f < block_.felder(); ++f) {
            const int a = block_.wert(i, f);
            const int b = block_.wert(j, f);
            if (a != 0 && b != 0) block_.vorraete[f].summieren(summen, a, b, block_.texte);
        }
        return summen.relevanz() >= schwelle_;
    }

    auto rang(const Treffer& t) const { return std::tuple(t.j / breite_, t.i, t.j); }

    // Within a slice the sweeps come first, then the records of the slice.
    bool vor(const Treffer& a, const Treffer& b) const { return rang(a) < rang(b); }

    void eintragen(const Treffer& treffer) {
        treffer_.push_back(treffer);
        if (treffer_.size() < 2 * empfang_.hoechstens) return;
        const auto grenze = treffer_.begin() + qint64(empfang_.hoechstens);
        std::nth_element(treffer_.begin(), grenze, treffer_.end(),
                         [this](const Treffer& a, const Treffer& b) { return vor(a, b); });
        treffer_.erase(grenze, treffer_.end());
    }

    bool melden() {
        std::sort(treffer_.begin(), treffer_.end(),
                  [this](const Treffer& a, const Treffer& b) { return vor(a, b); });
        for (const Treffer& treffer : treffer_) {
            if (!schritte(8)) return false;
            gewollt_ = empfang_.treffer(treffer.i, treffer.j);
            if (!gewollt_) break;
        }
        return true;
    }

    const Blocksicht& block_;
    bool differenzieren_;
    float schwelle_;
    const Paarempfang& empfang_;
    Blockgruppen gruppen_;
    std::vector<size_t> uebrige_;    // fields that the groups do not hold
    std::vector<size_t> platzVon_;   // for each row its place in the order of the groups
    std::vector<int> werte_;         // by place: the values of `uebrige_`
    std::vector<qint16> schranken_;  // and the most they can gain
    std::vector<qint64> naechster_;  // in each group the first row behind the present one
    std::vector<std::vector<int>> partner_;
    std::vector<bool> gemerkt_;
    std::vector<int> partnerNeu_;
    size_t gemerkteEintraege_ = 0;
    std::vector<Treffer> treffer_;  // of the present slice
    qint64 breite_ = 1;
    qint64 schritte_ = 0;
    qint64 entschieden_ = 0;  // pairs since the last report
    qint64 gemeldet_ = 0;
    bool gewollt_ = true;
};

bool gewichteTaugen(const Vergleichsfeld& feld) {
    for (const Vergleichsfeld::Zeile& zeile : feld.zeilen) {
        if (zeile.regel.teile.empty()) return false;
        for (const Teilregel& teil : zeile.regel.teile)
            if (gFeldArten[size_t(teil.feldart)].RelevanzFaktor < 0) return false;
    }
    return true;
}

double hauptgewicht(const Vergleichsfeld& feld, bool differenzieren) {
    double gewicht = 0;
    for (const Vergleichsfeld::Zeile& zeile : feld.zeilen)
        if (!(zeile.regel.person && differenzieren)) gewicht += double(zeile.gewicht);
    return gewicht;
}

}  // namespace

Schnellvergleich::Schnellvergleich(const FeldZuordnungen& zuordnungen, bool differenzieren, float schwelle)
    : differenzieren_(differenzieren), schwelle_(schwelle) {
    const std::vector<Vergleichsfeld> felder = VergleichsfelderFuer(zuordnungen);
    double gesamt = 0;
    for (const Vergleichsfeld& feld : felder) {
        gesamt += hauptgewicht(feld, differenzieren);
        moeglich_ = moeglich_ && gewichteTaugen(feld);
    }
    moeglich_ = moeglich_ && schwelle > 0 && felder.size() <= kMeisteFelder;
    if (!moeglich_) return;
    // Without any weight no pair reaches a threshold; the gains then only need some unit.
    if (gesamt == 0) gesamt = 1;
    for (const Vergleichsfeld& feld : felder) vorraete_.emplace_back(feld, differenzieren, schwelle, gesamt);
}

void Schnellvergleich::leeren() {
    werte_.clear();
    zeilen_ = 0;
    size_t vorrat = texte_.anzahl();
    for (const Wertvorrat& v : vorraete_) vorrat = std::max(vorrat, size_t(v.anzahl()));
    if (vorrat <= kMeistesImVorrat && !texte_.zuVieleWoerter()) return;
    texte_ = {};
    for (Wertvorrat& v : vorraete_) v.leeren();
}

bool Schnellvergleich::anfuegen(const Wert* zeile) {
    ++zeilen_;
    for (Wertvorrat& vorrat : vorraete_) werte_.push_back(vorrat.nummer(zeile[vorrat.spalte()], texte_));
    return !texte_.zuVieleWoerter();
}

bool Schnellvergleich::vergleichen(const Paarempfang& empfang) {
    if (zeilen_ < 2) return true;
    const Blocksicht block{vorraete_, texte_, werte_, zeilen_};
    return Lauf(block, differenzieren_, schwelle_, empfang).ausfuehren();
}
