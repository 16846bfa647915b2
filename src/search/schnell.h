// All pairs of a block at speed: the same decisions, and the same order of hits, as comparing each pair by
// the letter of the rules.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "search/wertvorrat.h"

// What a comparison tells while it runs.
struct Paarempfang {
    // A pair at or above the threshold, rows from 0, in the order of slices and sweeps. False: no further
    // pair is wanted, and what is left counts as compared.
    std::function<bool(qint32 i, qint32 j)> treffer;
    // Called every few thousand steps, with the number of pairs decided since the last time. False ends all.
    std::function<bool(qint64 paare)> atempause;
    // Behind this many pairs `treffer` is certain to want no more.
    size_t hoechstens = size_t(1) << 40;
};

class Schnellvergleich {
  public:
    Schnellvergleich(const FeldZuordnungen& zuordnungen, bool differenzieren, float schwelle);
    ~Schnellvergleich();

    // False when the weights or the threshold are such that bounds do not hold; then only the letter counts.
    bool moeglich() const { return moeglich_; }

    // A block: empty it, add its rows, compare them. Adding is False for a row that has too many words to be
    // compared here; the block is then spoilt.
    void leeren();
    bool anfuegen(const Wert* zeile);
    // False when `atempause` ended it.
    bool vergleichen(const Paarempfang& empfang);

  private:
    struct Arbeitsspeicher;
    bool moeglich_ = true;
    bool differenzieren_;
    float schwelle_;
    Textvorrat texte_;
    std::vector<Wertvorrat> vorraete_;  // one a field, in the order of the rule table
    std::vector<int> werte_;  // for each row the number of its value in each field, 0 for a missing one
    size_t zeilen_ = 0;
    std::unique_ptr<Arbeitsspeicher> speicher_;  // what stays allocated from block to block
};
