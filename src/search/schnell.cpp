// All pairs of a block at speed.
//
// A pair is found when its score is not below the threshold times its weight. What a field adds to the one
// less the other is its gain, and the gains of a pair have to sum to 0 or more.
// - Every field of a block is a stage; one with many values is a stage for each of its measures. The stages
//   that part most pairs come first, and the rows are sorted by their values, so that rows alike up to some
//   stage stand together as a range.
// - Two ranges are compared stage by stage: each value of the one with each of the other, and only the pairs
//   of values go on with which the later stages could still reach 0. One look thus drops many pairs of rows.
// - What the later stages can gain goes by the shapes of the rows: which values are there at all and measure
//   something. Shapes that cannot reach 0 together never meet.
// - A stage of words that hardly two rows share, as phone numbers, is left out: its pairs with a word in
//   common come from a join, all others have no gain there, so that the other stages have to make up for it.
// - Gains are rounded up. What is left gets the sums of the rules, in their order and precision, and is told
//   in the order of slices and sweeps.
#include "search/schnell.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

#include "search/blockordnung.h"
#include "search/treffersammlung.h"

namespace {

constexpr size_t kMeisteFelder = 64;
constexpr size_t kMeisteTexte = 8000000;  // with more of them, a new block begins with empty stores
constexpr qint64 kSchritteJeAtempause = 20000;
constexpr size_t kTrefferImSpeicher = 4 << 20;
// By how much the gain of a stage exceeds what it stands for, at most.
constexpr int kRundung = 2;

// One block.
class Lauf {
  public:
    Lauf(const Blocksicht& block, bool differenzieren, float schwelle, const Paarempfang& empfang, bool klein,
         Kleinzahlen& kleinzahlen)
        : block_(block),
          differenzieren_(differenzieren),
          schwelle_(schwelle),
          empfang_(empfang),
          klein_(klein),
          kleinzahlen_(kleinzahlen),
          treffer_(block.zeilen, std::min(empfang.hoechstens, kTrefferImSpeicher)) {}

    bool ausfuehren() {
        if (!klein_ && !ordnung_.bilden(block_, kleinzahlen_, [this](qint64 n) { return schritte(n); }))
            return false;
        do {
            if (!(klein_ ? jedesPaar() : inStufen())) return false;
            if (!melden()) return false;
        } while (gewollt_ && treffer_.weiterruecken());
        const qint64 alle = qint64(block_.zeilen) * (qint64(block_.zeilen) - 1) / 2;
        return empfang_.atempause(alle - gemeldet_);
    }

  private:
    struct Entscheidung {
        size_t i;
        size_t j;
        bool erreicht;
    };

    // Counts work; True to go on.
    bool schritte(qint64 anzahl) {
        schritte_ += anzahl;
        if (schritte_ < kSchritteJeAtempause) return true;
        schritte_ = 0;
        const qint64 paare = std::max<qint64>(entschieden_, 0);
        entschieden_ -= paare;
        gemeldet_ += paare;
        return empfang_.atempause(paare);
    }

    // Pairs decided; they count once, though they may be looked at for several windows of hits.
    void entschieden(qint64 paare) {
        if (ersterGang_) entschieden_ += paare;
    }

    // A hit counts as decided only when it is told.
    void gefunden(qint32 i, qint32 j) {
        entschieden(-1);
        treffer_.eintragen(i, j);
    }

    // --- a small block ---

    bool jedesPaar() {
        for (size_t i = 0; i < block_.zeilen; ++i) {
            for (size_t j = i + 1; j < block_.zeilen; ++j)
                if (moeglich(i, j) && erreicht(i, j)) gefunden(qint32(i), qint32(j));
            entschieden(qint64(block_.zeilen - 1 - i));
            if (!schritte(qint64(block_.zeilen))) return false;
        }
        return true;
    }

    bool moeglich(size_t i, size_t j) const {
        const int* a = block_.werte.data() + i * block_.felder();
        const int* b = block_.werte.data() + j * block_.felder();
        int summe = 0;
        for (size_t f = 0; f < block_.felder(); ++f)
            if (a[f] != 0 && b[f] != 0)
                summe += std::min(block_.vorraete[f].bestens(a[f]), block_.vorraete[f].bestens(b[f]));
        for (size_t f = 0; f < block_.felder() && summe >= 0; ++f)
            if (a[f] != 0 && b[f] != 0 && block_.vorraete[f].gewicht() > 0)
                summe += block_.vorraete[f].gewinn(a[f], b[f], block_.texte) -
                         std::min(block_.vorraete[f].bestens(a[f]), block_.vorraete[f].bestens(b[f]));
        return summe >= 0;
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

    // --- a block in stages ---

    bool inStufen() { return verbundeneVergleichen() && formenVergleichen(); }

    // The pairs that have a word in common at a stage that was left out.
    bool verbundeneVergleichen() {
        for (size_t v = 0; v < verbuende_.size(); ++v) {
            const Stufe& stufe = verbuende_[v].stufe;
            std::vector<size_t> grenzen(size_t(stufe.anzahl()) + 2);
            std::vector<int> plaetze(block_.zeilen);
            for (const int wert : stufe.werte()) ++grenzen[size_t(wert) + 1];
            std::partial_sum(grenzen.begin(), grenzen.end(), grenzen.begin());
            std::vector<size_t> stelle(grenzen.begin(), grenzen.end() - 1);
            for (size_t p = 0; p < block_.zeilen; ++p) plaetze[stelle[size_t(stufe.werte()[p])]++] = int(p);
            for (const auto& paar : verbuende_[v].paare)
                for (size_t a = grenzen[size_t(paar.first)]; a < grenzen[size_t(paar.first) + 1]; ++a) {
                    const bool selbst = paar.first == paar.second;
                    for (size_t b = selbst ? a + 1 : grenzen[size_t(paar.second)];
                         b < grenzen[size_t(paar.second) + 1]; ++b)
                        verbundenesPaar(v, size_t(plaetze[a]), size_t(plaetze[b]));
                    if (!schritte(8)) return false;
                }
        }
        return true;
    }

    void verbundenesPaar(size_t v, size_t p, size_t q) {
        int summe = 0;
        for (size_t w = 0; w < verbuende_.size(); ++w) {
            const Stufe& stufe = verbuende_[w].stufe;
            const int gewinn = stufe.gewinn(stufe.werte()[p], stufe.werte()[q]);
            if (w < v && verwandt(stufe, p, q)) return;
            summe += gewinn;
        }
        for (const Stufe& stufe : stufen_) summe += stufe.gewinn(stufe.werte()[p], stufe.werte()[q]);
        if (summe < 0) return;
        const size_t i = size_t(zeilen_[p]);
        const size_t j = size_t(zeilen_[q]);
        if (erreicht(std::min(i, j), std::max(i, j))) gefunden(qint32(i), qint32(j));
    }

    // Whether the rows have a word in common at a stage that was left out.
    bool verwandt(const Stufe& stufe, size_t p, size_t q) const {
        const int a = stufe.werte()[p];
        const int b = stufe.werte()[q];
        return a != 0 && b != 0 && stufe.verbunden(a, b);
    }

    bool formenVergleichen() {
        for (size_t a = 0; a < formen_.anzahl(); ++a)
            for (size_t b = a; b < formen_.anzahl(); ++b) {
                if (!schritte(qint64(stufen_.size()))) return false;
                if (!schrankenSetzen(a, b)) continue;
                if (!gehen(0, formbereiche_[a], formbereiche_[b], grundsumme_)) return false;
            }
        return true;
    }

    // What the stages can gain from each one on. False when two shapes never reach the threshold.
    bool schrankenSetzen(size_t a, size_t b) {
        rest_.assign(stufen_.size() + 1, 0);
        for (size_t k = stufen_.size(); k-- > 0;) rest_[k] = rest_[k + 1] + formen_.hoechstens(a, b, k);
        grundsumme_ = 0;
        genau_ = !differenzieren_;
        for (size_t v = 0; v < verbuende_.size(); ++v) {
            const size_t k = stufen_.size() + v;
            grundsumme_ += formen_.hoechstensAusgelassen(a, b, k);
            genau_ = genau_ && formen_.festAusgelassen(a, b, k);
        }
        if (grundsumme_ + rest_[0] < 0 || !formen_.gemeinsames(a, b)) {
            const qint64 n = formbereiche_[a].zeilen();
            entschieden(a == b ? n * (n - 1) / 2 : n * formbereiche_[b].zeilen());
            return false;
        }
        return true;
    }

    // The pairs of two ranges that are alike before stage `k` and have gained `summe` there.
    bool gehen(size_t k, Bereich a, Bereich b, int summe) {
        if (k == stufen_.size()) return vergleichen(a, b, summe);
        const bool selbst = a.von == b.von;
        if (a.zeilen() == 1 && b.zeilen() == 1)
            return selbst || einzeln(k, size_t(a.von), size_t(b.von), summe);
        const Stufe& stufe = stufen_[k];
        const std::vector<int>& ende = ende_[k];
        const int noetig = -summe - rest_[k + 1];
        for (int i = a.von; i < a.bis;) {
            const Bereich teil{i, ende[size_t(i)]};
            const int wert = stufe.werte()[size_t(i)];
            const Bereich andere{selbst ? i : b.von, b.bis};
            i = teil.bis;
            if (wert == 0 ? noetig <= 0 : stufe.bestens(wert) >= noetig || noetig <= 0)
                if (!werteDurchgehen(k, teil, wert, andere, summe, noetig)) return false;
            if (k == 0) {
                const qint64 n = teil.zeilen();
                zweigEntschieden(selbst ? n * (n - 1) / 2 + n * (b.bis - teil.bis) : n * b.zeilen());
            }
        }
        return true;
    }

    // All pairs of a branch; those that were compared one by one have been counted.
    void zweigEntschieden(qint64 paare) { entschieden(paare - std::exchange(imZweig_, 0)); }

    // A range of rows alike in stage `k` as well against all values of another range.
    bool werteDurchgehen(size_t k, Bereich a, int wert, Bereich b, int summe, int noetig) {
        const Stufe& stufe = stufen_[k];
        if (stufe.hatTafel()) {
            const qint16* gewinne = stufe.tafelzeile(wert);
            return werteDurchgehen(k, a, b, summe, noetig, [&stufe, gewinne, wert](int anderer) {
                return stufe.gewinnDerTafel(gewinne, wert, anderer);
            });
        }
        if (stufe.hatZiffern())
            return werteDurchgehen(k, a, b, summe, noetig,
                                   [&](int anderer) { return stufe.gewinnDerZiffern(wert, anderer); });
        return werteDurchgehen(k, a, b, summe, noetig,
                               [&](int anderer) { return stufe.gewinn(wert, anderer); });
    }

    template <typename Gewinn>
    bool werteDurchgehen(size_t k, Bereich a, Bereich b, int summe, int noetig, Gewinn gewinnMit) {
        const int* werte = stufen_[k].werte().data();
        const int* ende = ende_[k].data();
        qint64 besucht = 0;
        for (int j = b.von; j < b.bis; j = ende[j]) {
            ++besucht;
            const int gewinn = gewinnMit(werte[j]);
            if (gewinn >= noetig && !gehen(k + 1, a, {j, ende[j]}, summe + gewinn)) return false;
        }
        return schritte(besucht);
    }

    // Two rows from stage `k` on.
    bool einzeln(size_t k, size_t p, size_t q, int summe) {
        for (; k < stufen_.size(); ++k) {
            const Stufe& stufe = stufen_[k];
            summe += stufe.gewinn(stufe.werte()[p], stufe.werte()[q]);
            if (summe + rest_[k + 1] < 0) return true;
        }
        return vergleichen({int(p), int(p) + 1}, {int(q), int(q) + 1}, summe);
    }

    // Two ranges of rows that are alike at all stages; each has its rows in ascending order.
    bool vergleichen(Bereich a, Bereich b, int summe) {
        const bool sicher = genau_ && summe > kRundung * int(stufen_.size() + verbuende_.size());
        const bool selbst = a.von == b.von;
        const auto ab = [&](qint32 zeile) {
            return int(std::lower_bound(zeilen_.begin() + a.von, zeilen_.begin() + a.bis, zeile) -
                       zeilen_.begin());
        };
        const int von = selbst ? ab(treffer_.ersteZeile()) : a.von;
        for (int p = von; p < a.bis; ++p) {
            const qint32 i = zeilen_[size_t(p)];
            if (selbst && i >= treffer_.zeilengrenze()) break;
            const qint64 paare = selbst ? a.bis - p - 1 : b.zeilen();
            entschieden(paare);
            imZweig_ += paare;
            for (int q = selbst ? p + 1 : b.von; q < b.bis; ++q) {
                const qint32 j = zeilen_[size_t(q)];
                if (verbunden(size_t(p), size_t(q))) continue;
                if (sicher || erreichtWieZuvor(size_t(std::min(i, j)), size_t(std::max(i, j))))
                    gefunden(i, j);
            }
            if (!schritte(paare + 1)) return false;
        }
        return true;
    }

    // The decision for two rows; that of the rows before when they have the same values.
    bool erreichtWieZuvor(size_t i, size_t j) {
        const auto gleich = [this](size_t a, size_t b) {
            const int* werte = block_.werte.data() + a * block_.felder();
            return std::equal(werte, werte + block_.felder(), block_.werte.data() + b * block_.felder());
        };
        if (!zuvor_ || !gleich(zuvor_->i, i) || !gleich(zuvor_->j, j)) zuvor_ = {i, j, erreicht(i, j)};
        return zuvor_->erreicht;
    }

    bool verbunden(size_t p, size_t q) const {
        for (const Verbund& verbund : verbuende_)
            if (verwandt(verbund.stufe, p, q)) return true;
        return false;
    }

    bool melden() {
        ersterGang_ = false;
        treffer_.ordnen();
        for (size_t n = 0; n < treffer_.anzahl() && gewollt_; ++n) {
            if (!schritte(8)) return false;
            const Treffersammlung::Treffer treffer = treffer_.treffer(n);
            ++entschieden_;
            gewollt_ = empfang_.treffer(treffer.i, treffer.j) && ++erzaehlt_ < empfang_.hoechstens;
        }
        return true;
    }

    const Blocksicht& block_;
    bool differenzieren_;
    float schwelle_;
    const Paarempfang& empfang_;
    bool klein_;  // every pair is looked at
    Kleinzahlen& kleinzahlen_;
    Treffersammlung treffer_;
    Blockordnung ordnung_;
    const std::vector<Stufe>& stufen_ = ordnung_.stufen();
    const std::vector<Verbund>& verbuende_ = ordnung_.verbuende();
    const Formen& formen_ = ordnung_.formen();
    const std::vector<int>& zeilen_ = ordnung_.zeilen();
    const std::vector<Bereich>& formbereiche_ = ordnung_.formbereiche();
    const std::vector<std::vector<int>>& ende_ = ordnung_.ende();
    // Of the two shapes that are compared:
    std::vector<int> rest_;  // the most that a stage and all later ones can gain
    int grundsumme_ = 0;     // what the stages gain that were left out
    bool genau_ = true;      // the gains of a pair tell whether it is found, but for rounding
    std::optional<Entscheidung> zuvor_;
    qint64 schritte_ = 0;
    qint64 entschieden_ = 0;  // pairs since the last report
    qint64 gemeldet_ = 0;
    qint64 imZweig_ = 0;  // pairs that were compared one by one since the last branch of the first stage
    bool ersterGang_ = true;
    size_t erzaehlt_ = 0;
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

struct Schnellvergleich::Arbeitsspeicher {
    Kleinzahlen kleinzahlen;
};

Schnellvergleich::Schnellvergleich(const FeldZuordnungen& zuordnungen, bool differenzieren, float schwelle,
                                   size_t kleinerBlock)
    : differenzieren_(differenzieren),
      schwelle_(schwelle),
      kleinerBlock_(kleinerBlock),
      speicher_(std::make_unique<Arbeitsspeicher>()) {
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

Schnellvergleich::~Schnellvergleich() = default;

bool Schnellvergleich::voll() const {
    return texte_.anzahl() > kMeisteTexte || texte_.zuVieleWoerter();
}

void Schnellvergleich::leeren() {
    werte_.clear();
    zeilen_ = 0;
    if (!voll()) return;
    texte_ = {};
    for (Wertvorrat& v : vorraete_) v.leeren();
    aufgenommene_ = {};
    anzahl_ = 0;
    ++runde_;
}

std::optional<qint32> Schnellvergleich::aufnehmen(const Wert* zeile) {
    for (Wertvorrat& vorrat : vorraete_)
        aufgenommene_.push_back(vorrat.nummer(zeile[vorrat.spalte()], texte_));
    if (texte_.zuVieleWoerter()) return {};
    return anzahl_++;
}

void Schnellvergleich::anfuegen(qint32 nummer) {
    ++zeilen_;
    const auto anfang = aufgenommene_.begin() + std::ptrdiff_t(size_t(nummer) * vorraete_.size());
    werte_.insert(werte_.end(), anfang, anfang + std::ptrdiff_t(vorraete_.size()));
}

bool Schnellvergleich::anfuegen(const Wert* zeile) {
    const std::optional<qint32> nummer = aufnehmen(zeile);
    if (nummer) anfuegen(*nummer);
    return nummer.has_value();
}

bool Schnellvergleich::vergleichen(const Paarempfang& empfang) {
    if (zeilen_ < 2) return true;
    const Blocksicht block{vorraete_, texte_, werte_, zeilen_};
    return Lauf(block, differenzieren_, schwelle_, empfang, zeilen_ < kleinerBlock_, speicher_->kleinzahlen)
        .ausfuehren();
}
