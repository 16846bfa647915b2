// All pairs of a block at speed: the same decisions, and the same order of hits, as comparing each pair by
// the letter of the rules.
#pragma once

#include <functional>
#include <memory>
#include <optional>
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
    // Rows of a block; below it putting them in order costs more than it saves, and every pair is looked at.
    static constexpr size_t kKleinerBlock = 256;

    Schnellvergleich(const FeldZuordnungen& zuordnungen, bool differenzieren, float schwelle,
                     size_t kleinerBlock = kKleinerBlock);
    ~Schnellvergleich();

    // False when the weights or the threshold are such that bounds do not hold; then only the letter counts.
    bool moeglich() const { return moeglich_; }

    // Takes a row apart, once for all blocks that it comes in: the number by which it is added to them. None
    // for a row that has too many words to be compared here; its block is then spoilt.
    std::optional<qint32> aufnehmen(const Wert* zeile);
    // True when so many were taken that the next `leeren` forgets them.
    bool voll() const;
    // Changes when the rows taken so far were forgotten.
    quint64 runde() const { return runde_; }

    // A block: empty it, add its rows, compare them.
    void leeren();
    void anfuegen(qint32 nummer);
    bool anfuegen(const Wert* zeile);
    // False when `atempause` ended it.
    bool vergleichen(const Paarempfang& empfang);

  private:
    struct Arbeitsspeicher;
    bool moeglich_ = true;
    bool differenzieren_;
    float schwelle_;
    size_t kleinerBlock_;
    Textvorrat texte_;
    std::vector<Wertvorrat> vorraete_;  // one a field, in the order of the rule table
    // For each row taken, and for each one of the block, the number of its value in each field, 0 for a
    // missing one.
    std::vector<int> aufgenommene_;
    std::vector<int> werte_;
    qint32 anzahl_ = 0;  // rows taken
    size_t zeilen_ = 0;  // rows of the block
    quint64 runde_ = 1;
    std::unique_ptr<Arbeitsspeicher> speicher_;  // what stays allocated from block to block
};
