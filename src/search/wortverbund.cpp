// A join of texts by their words.
#include "search/wortverbund.h"

#include <algorithm>
#include <numeric>

#include "base/sortieren.h"

namespace {

constexpr size_t kLaengstesWort = 40;
constexpr qint64 kNachbarnAnfang = 50;   // a word that stands in more rows is frequent, but for
constexpr qint64 kNachbarnTeiler = 200;  // this share of all rows
constexpr qint64 kHaeufigeTeiler = 10;   // more rows than this share with a frequent word spoil the join
constexpr qint64 kSchritteJeZeile = 100;
constexpr qint64 kSchritteJeStueck = 1 << 15;  // of what is sorted
constexpr quint64 kAnfang = 0xCBF29CE484222325u;

quint64 weiter(quint64 summe, char16_t zeichen) {
    return (summe ^ zeichen) * 0x9E3779B97F4A7C15u;
}

// The distinct words of texts, of at most `kLaengstesWort` characters, found by them or by a part of a longer
// word.
class Wortliste {
  public:
    explicit Wortliste(size_t hoechstens) {
        while (plaetze_.size() < 2 * hoechstens + 2)
            plaetze_.resize(std::max<size_t>(64, 2 * plaetze_.size()), -1);
        verschiebung_ = 64 - std::countr_zero(plaetze_.size());
        filter_.resize(plaetze_.size() / 4);
    }

    int einfuegen(std::u16string_view wort) {
        quint64 summe = kAnfang;
        for (const char16_t c : wort) summe = weiter(summe, c);
        int& platz = suchen(summe, wort);
        if (platz >= 0) return platz;
        filter_[filterplatz(summe)] |= filterbit(summe);
        laengen_ |= quint64(1) << wort.size();
        worte_.push_back(wort);
        return platz = int(worte_.size()) - 1;
    }

    // Calls `besuch(number)` for each word that stands in this one and is shorter.
    template <typename Besuch>
    void teileBesuchen(std::u16string_view wort, Besuch besuch) {
        for (size_t von = 0; von < wort.size(); ++von) {
            quint64 summe = kAnfang;
            for (size_t bis = von; bis < wort.size() && bis - von + 1 < wort.size(); ++bis) {
                summe = weiter(summe, wort[bis]);
                if ((laengen_ >> (bis - von + 1) & 1) == 0) continue;
                if ((filter_[filterplatz(summe)] & filterbit(summe)) == 0) continue;
                const int nummer = suchen(summe, wort.substr(von, bis - von + 1));
                if (nummer >= 0) besuch(size_t(nummer));
            }
        }
    }

    const std::vector<std::u16string_view>& worte() const { return worte_; }

  private:
    int& suchen(quint64 summe, std::u16string_view wort) {
        size_t i = size_t(summe >> verschiebung_);
        while (plaetze_[i] >= 0 && worte_[size_t(plaetze_[i])] != wort) i = (i + 1) & (plaetze_.size() - 1);
        return plaetze_[i];
    }
    size_t filterplatz(quint64 summe) const { return size_t(summe >> (verschiebung_ + 2)); }
    static quint64 filterbit(quint64 summe) { return quint64(1) << (summe >> 8 & 63); }

    std::vector<std::u16string_view> worte_;
    std::vector<int> plaetze_;  // a power of two of them, -1 is free
    std::vector<quint64> filter_;
    quint64 laengen_ = 0;  // a bit for each length that a word has
    int verschiebung_ = 0;
};

// Joins the texts of a block.
class Verbinder {
  public:
    Verbinder(const Textvorrat& vorrat, const std::vector<Verbundtext>& texte, qint64 hoechstens,
              const std::function<bool(qint64)>& weiter)
        : vorrat_(vorrat),
          texte_(texte),
          hoechstens_(hoechstens),
          weiter_(weiter),
          haeufig_(texte.size()),
          liste_(alleWorte()) {
        for (const Verbundtext& t : texte) zeilen_ += t.zeilen;
        meisteNachbarn_ = kNachbarnAnfang + zeilen_ / kNachbarnTeiler;
        meisteHaeufige_ = zeilen_ / kHaeufigeTeiler;
    }

    std::optional<Wortverbund> verbinden() {
        if (!worteSammeln()) return {};
        if (haeufige_ > meisteHaeufige_ || !schrittezahlReicht() || !nachbarnSuchen()) return {};
        return paareBilden();
    }

  private:
    size_t alleWorte() const {
        size_t anzahl = 0;
        for (const Verbundtext& t : texte_) anzahl += vorrat_.woerter(t.text);
        return anzahl;
    }

    // The texts of every word, one list behind the other.
    bool worteSammeln() {
        std::vector<std::pair<int, int>> wortUndText;
        for (size_t t = 0; t < texte_.size(); ++t) {
            if (!weiter_(1)) return false;
            for (size_t k = 0; k < vorrat_.woerter(texte_[t].text); ++k) {
                const std::u16string_view wort = vorrat_.wort(texte_[t].text, k);
                if (wort.empty() || wort.size() > kLaengstesWort)
                    haeufigNennen(int(t));
                else
                    wortUndText.emplace_back(liste_.einfuegen(wort), int(t));
            }
        }
        const size_t worte = liste_.worte().size();
        grenzen_.assign(worte + 1, 0);
        texteDesWorts_.resize(wortUndText.size());
        nachbarn_.assign(worte, 0);
        for (const auto& eintrag : wortUndText) ++grenzen_[size_t(eintrag.first) + 1];
        std::partial_sum(grenzen_.begin(), grenzen_.end(), grenzen_.begin());
        std::vector<size_t> stelle(grenzen_.begin(), grenzen_.end() - 1);
        for (const auto& eintrag : wortUndText) {
            texteDesWorts_[stelle[size_t(eintrag.first)]++] = eintrag.second;
            nachbarn_[size_t(eintrag.first)] += texte_[size_t(eintrag.second)].zeilen;
        }
        zeilenDesWorts_ = nachbarn_;
        return weiter_(qint64(wortUndText.size()));
    }

    // Every part of every word is looked up.
    bool schrittezahlReicht() const {
        qint64 schritte = 0;
        for (const std::u16string_view wort : liste_.worte())
            schritte += qint64(wort.size() * wort.size()) / 2;
        return schritte <= kSchritteJeZeile * zeilen_;
    }

    // Words within words. False when too many rows have a frequent one, or the frequent ones leave too much.
    bool nachbarnSuchen() {
        for (size_t wort = 0; wort < liste_.worte().size(); ++wort) {
            if (!weiter_(1)) return false;
            if (nachbarn_[wort] > meisteNachbarn_) wortHaeufigNennen(wort);
            liste_.teileBesuchen(liste_.worte()[wort], [&](size_t teil) {
                nachbarn_[teil] += zeilenDesWorts_[wort];
                if (nachbarn_[teil] > meisteNachbarn_)
                    wortHaeufigNennen(teil);
                else
                    teile_.emplace_back(int(teil), int(wort));
            });
            if (haeufige_ > meisteHaeufige_ || qint64(teile_.size()) > hoechstens_) return false;
        }
        qint64 zeilenpaare = 0;
        for (size_t wort = 0; wort < nachbarn_.size(); ++wort)
            if (nachbarn_[wort] <= meisteNachbarn_) zeilenpaare += nachbarn_[wort] * zeilenDesWorts_[wort];
        return zeilenpaare / 2 <= hoechstens_;
    }

    std::optional<Wortverbund> paareBilden() {
        bool gewollt = true;
        const auto pause = [&](qint64 schritte) { gewollt = gewollt && weiter_(schritte); };
        for (size_t wort = 0; wort < liste_.worte().size() && gewollt; ++wort) {
            verbinden(wort, wort);
            pause(1);
        }
        for (size_t i = 0; i < teile_.size() && gewollt; ++i) {
            verbinden(size_t(teile_[i].first), size_t(teile_[i].second));
            pause(1);
        }
        SortierenMitPausen(paare_.begin(), paare_.end(), std::less<>(), [&] { pause(kSchritteJeStueck); });
        if (!gewollt) return {};
        paare_.erase(std::unique(paare_.begin(), paare_.end()), paare_.end());
        return Wortverbund{std::move(paare_), std::move(haeufig_)};
    }

    void verbinden(size_t kurz, size_t lang) {
        if (nachbarn_[kurz] > meisteNachbarn_) return;
        for (size_t a = grenzen_[kurz]; a < grenzen_[kurz + 1]; ++a) {
            if (haeufig_[size_t(texteDesWorts_[a])]) continue;
            for (size_t b = kurz == lang ? a : grenzen_[lang]; b < grenzen_[lang + 1]; ++b) {
                if (haeufig_[size_t(texteDesWorts_[b])]) continue;
                const auto paar = std::minmax(texteDesWorts_[a], texteDesWorts_[b]);
                if (paar.first != paar.second || texte_[size_t(paar.first)].zeilen > 1)
                    paare_.push_back(paar);
            }
        }
    }

    void wortHaeufigNennen(size_t wort) {
        for (size_t k = grenzen_[wort]; k < grenzen_[wort + 1]; ++k) haeufigNennen(texteDesWorts_[k]);
    }

    void haeufigNennen(int text) {
        if (haeufig_[size_t(text)]) return;
        haeufig_[size_t(text)] = true;
        haeufige_ += texte_[size_t(text)].zeilen;
    }

    const Textvorrat& vorrat_;
    const std::vector<Verbundtext>& texte_;
    qint64 hoechstens_;
    const std::function<bool(qint64)>& weiter_;
    qint64 zeilen_ = 0;
    qint64 meisteNachbarn_ = 0;
    qint64 meisteHaeufige_ = 0;
    std::vector<bool> haeufig_;
    qint64 haeufige_ = 0;  // rows
    Wortliste liste_;
    std::vector<size_t> grenzen_;  // for each word where its texts begin
    std::vector<int> texteDesWorts_;
    std::vector<qint64> zeilenDesWorts_;
    std::vector<qint64> nachbarn_;            // for each word the rows whose texts it stands in
    std::vector<std::pair<int, int>> teile_;  // words within words
    std::vector<std::pair<int, int>> paare_;
};

}  // namespace

std::optional<Wortverbund> TexteVerbinden(const Textvorrat& vorrat, const std::vector<Verbundtext>& texte,
                                          qint64 hoechstens, const std::function<bool(qint64)>& weiter) {
    return Verbinder(vorrat, texte, hoechstens, weiter).verbinden();
}
