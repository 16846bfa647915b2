// Rows of a block that are alike in the fields with few values, and the gains of these fields.
#pragma once

#include <functional>
#include <vector>

#include "search/wertvorrat.h"

// The gains of all pairs of values that a field has in the block. The values count from 1 in the block; 0 is
// the missing one, which gains nothing.
struct Gewinntafel {
    size_t feld = 0;
    int werte = 0;
    std::vector<int> imBlock;     // for a number of the store the number in the block
    std::vector<qint16> gewinne;  // (values + 1) in square
    const qint16* zeile(int wert) const { return gewinne.data() + size_t(wert) * size_t(werte + 1); }
};

// A view of the rows of a block: for each the number of its value in each field.
struct Blocksicht {
    const std::vector<Wertvorrat>& vorraete;
    const Textvorrat& texte;
    const std::vector<int>& werte;
    size_t zeilen;
    size_t felder() const { return vorraete.size(); }
    int wert(size_t zeile, size_t feld) const { return werte[zeile * felder() + feld]; }
};

// Told of the steps that were done; False to stop.
using Weiter = std::function<bool(qint64 schritte)>;

// The groups of a block. Every group has its rows in ascending order.
class Blockgruppen {
  public:
    // False when `weiter` said so.
    bool bilden(const Blocksicht& block, const Weiter& weiter);

    size_t anzahl() const { return besetzung_.size(); }
    int gruppeVon(size_t zeile) const { return gruppeVon_[zeile]; }
    // The rows of a group.
    const int* anfang(size_t gruppe) const { return zeilen_.data() + grenzen_[gruppe]; }
    const int* ende(size_t gruppe) const { return zeilen_.data() + grenzen_[gruppe + 1]; }
    // The groups with which a pair of rows may reach the threshold, as far as the fields of the groups tell.
    void partner(size_t gruppe, std::vector<int>& ergebnis) const;
    // The gains of the fields that the groups have in common.
    int gewinn(size_t a, size_t b) const;
    // The fields that are left to compare row by row, and of them the table where there is one.
    const std::vector<size_t>& uebrige() const { return uebrige_; }
    const Gewinntafel* tafel(size_t feld) const { return tafelVon_[feld]; }

  private:
    using Tafeln = std::vector<Gewinntafel>;
    bool tafelnBerechnen(const Blocksicht& block, const Weiter& weiter);
    bool felderWaehlen(const Blocksicht& block, const Weiter& weiter);
    bool einteilen(const Blocksicht& block, const Gewinntafel& tafel, int hoechstens);
    void merkmaleAblegen(const Blocksicht& block);
    void restschrankenBerechnen(const Blocksicht& block);

    Tafeln tafeln_;
    std::vector<const Gewinntafel*> tafelVon_;  // by field
    std::vector<size_t> gruppenfelder_;         // positions in tafeln_
    std::vector<size_t> uebrige_;
    std::vector<int> gruppeVon_;  // by row
    std::vector<int> zeilen_;     // by group, ascending
    std::vector<size_t> grenzen_;
    std::vector<std::vector<int>> gruppenwerte_;  // for each field of the groups the value of each group
    std::vector<quint64> besetzungen_;            // the distinct sets of filled fields
    std::vector<int> besetzung_;                  // for each group its set
    std::vector<int> restschranken_;              // for two sets the most that the other fields can gain
};
