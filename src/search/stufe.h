// A stage: one field of a block, or one measure of a field, with the gains of all pairs of its values.
#pragma once

#include <limits>
#include <vector>

#include "search/wertvorrat.h"

// The rows of a block: for each the number of its value in each field.
struct Blocksicht {
    const std::vector<Wertvorrat>& vorraete;
    const Textvorrat& texte;
    const std::vector<int>& werte;
    size_t zeilen;
    size_t felder() const { return vorraete.size(); }
    int wert(size_t zeile, size_t feld) const { return werte[zeile * felder() + feld]; }
};

// Gives the numbers that come small numbers from 1, in the order in which they come.
class Kleinzahlen {
  public:
    // For numbers from 0 below `grenze`.
    void beginnen(size_t grenze);
    int nummer(int gross);
    // What came, in order.
    const std::vector<int>& gekommen() const { return gekommen_; }

  private:
    std::vector<int> klein_;  // 0 for what has not come; stays allocated from use to use
    std::vector<int> gekommen_;
};

class Stufe {
  public:
    static constexpr size_t kGanz = ~size_t(0);

    // Of the field, or of one of its measures.
    Stufe(const Blocksicht& block, size_t feld, size_t teil, Kleinzahlen& kleinzahlen);

    size_t feld() const { return feld_; }
    size_t teil() const { return teil_; }
    // The number of distinct values; they count from 1, and 0 is the missing one.
    int anzahl() const { return int(schluessel_.size()) - 1; }
    const std::vector<int>& werte() const { return werte_; }
    std::vector<int>& werte() { return werte_; }
    // The text of a value from 1 in a measure of the stage, negative for one that measures nothing.
    int text(int wert, size_t teil) const {
        const int schluessel = schluessel_[size_t(wert)];
        return teil_ == kGanz ? vorrat_.teiltext(schluessel, teil) : schluessel;
    }
    // The greatest gain of a value, and the gain of every pair that has nothing in common.
    int bestens(int wert) const { return bestens_[size_t(wert)]; }
    int mindestens() const { return mindestens_; }

    // The stage is left out: only a value of `offen` may gain more than nothing.
    void auslassen(std::vector<bool> offen);
    // Whether a pair of values, none of them missing, is told by the join of a stage that was left out.
    bool verbunden(int a, int b) const {
        return !offen_[size_t(a)] && !offen_[size_t(b)] && gemeinsames(a, b);
    }

    // Makes the gains quick: with a table that keeps what was measured once, or by digits where all texts are
    // short.
    void vorbereiten(bool tafel);
    bool hatTafel() const { return !tafel_.empty(); }
    const qint16* tafelzeile(int wert) const { return tafel_.data() + size_t(wert) * breite_; }
    // The gain of two values, given the row of the first one in the table.
    int gewinnDerTafel(const qint16* zeile, int a, int b) const {
        const int gewinn = zeile[b];
        return gewinn == kUnbekannt ? nachtragen(a, b) : gewinn;
    }
    bool hatZiffern() const { return !ziffern_.empty(); }

    // The gain of two values, 0 when one is missing.
    int gewinn(int a, int b) const {
        if (hatTafel()) return gewinnDerTafel(tafelzeile(a), a, b);
        if (hatZiffern()) return gewinnDerZiffern(a, b);
        return a == 0 || b == 0 ? 0 : gemessen(a, b);
    }
    int gewinnDerZiffern(int a, int b) const {
        const Ziffern& x = ziffern_[size_t(a)];
        const Ziffern& y = ziffern_[size_t(b)];
        if (x.laenge == kLang || y.laenge == kLang) return a == 0 || b == 0 ? 0 : gemessen(a, b);
        if (((x.zeichen ^ y.zeichen) & 0xFF) != 0) return verschieden_[x.laenge][y.laenge];
        return gleiche_[x.laenge][y.laenge][gleicheBytes(x.zeichen ^ y.zeichen)];
    }

  private:
    // A text of at most eight characters below 256, its first one lowest; what is behind its end is 0.
    struct Ziffern {
        quint64 zeichen;
        quint8 laenge;
    };
    static constexpr qint16 kUnbekannt = std::numeric_limits<qint16>::min();
    static constexpr int kMeisteZiffern = 8;
    static constexpr quint8 kNichts = kMeisteZiffern + 1;  // measures nothing
    static constexpr quint8 kFehlt = kMeisteZiffern + 2;   // the missing value
    static constexpr quint8 kLang = kMeisteZiffern + 3;
    static constexpr int kArten = kMeisteZiffern + 3;

    static int gleicheBytes(quint64 unterschied) {
        constexpr quint64 kSieben = 0x7F7F7F7F7F7F7F7Fu;
        const quint64 gleich = ~(((unterschied & kSieben) + kSieben) | unterschied | kSieben);
        return int(((gleich >> 7) * 0x0101010101010101u) >> 56);
    }
    int gemessen(int a, int b) const;
    int nachtragen(int a, int b) const;
    bool gemeinsames(int a, int b) const;
    void ziffernAblegen();

    const Wertvorrat& vorrat_;
    const Textvorrat& texte_;
    size_t feld_;
    size_t teil_;
    int mindestens_;
    std::vector<int> werte_;       // by row, later by place
    std::vector<int> schluessel_;  // for each value its number in the store of the field, or of its text
    std::vector<int> bestens_;
    std::vector<bool> offen_;
    size_t breite_ = 0;
    mutable std::vector<qint16> tafel_;  // (values + 1) in square
    std::vector<Ziffern> ziffern_;
    qint16 gleiche_[kArten][kArten][kMeisteZiffern + 1];
    qint16 verschieden_[kArten][kArten];
};
