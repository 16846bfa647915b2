// The rows of a block in the order in which they are compared: stages, shapes and ranges of rows alike.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "search/formen.h"
#include "search/stufe.h"
#include "search/wortverbund.h"

// Rows that stand together, by place.
struct Bereich {
    int von;
    int bis;
    qint64 zeilen() const { return bis - von; }
};

// A stage that was left out, and the pairs that have something in common there.
struct Verbund {
    Stufe stufe;
    std::vector<std::pair<int, int>> paare;  // of values
};

class Blockordnung {
  public:
    // Told of the steps that were done; False to stop.
    using Weiter = std::function<bool(qint64 schritte)>;

    // False when `weiter` said so.
    bool bilden(const Blocksicht& block, Kleinzahlen& kleinzahlen, const Weiter& weiter);

    // In the order in which they are gone through; their values by place.
    const std::vector<Stufe>& stufen() const { return stufen_; }
    const std::vector<Verbund>& verbuende() const { return verbuende_; }
    // They know the stages first, then those that were left out.
    const Formen& formen() const { return formen_; }
    // For each place its row.
    const std::vector<int>& zeilen() const { return zeilen_; }
    // The places of each shape.
    const std::vector<Bereich>& formbereiche() const { return formbereiche_; }
    // For each stage and place where the range ends of the places that are alike up to this stage.
    const std::vector<std::vector<int>>& ende() const { return ende_; }

  private:
    // Some pairs of rows: what they could still gain at most, and what each stage takes from that.
    struct Probe {
        std::vector<int> rest;
        std::vector<std::vector<int>> verluste;  // by stage
    };

    bool stufenBilden();
    bool tafelLohnt(const Stufe& stufe) const;
    bool stufeAufnehmen(Stufe stufe);
    std::optional<Wortverbund> verbundVon(const Stufe& stufe);
    bool probeZiehen(Probe& probe);
    bool stufenOrdnen();
    bool formenBilden();
    bool zeilenOrdnen();
    bool bereicheFinden();
    bool ganzDurchgegangen() const;
    void nachWerten(const std::vector<int>& werte, int anzahl, std::vector<int>& puffer);
    void nachPlatz(std::vector<int>& werte, std::vector<int>& puffer);

    const Blocksicht* block_ = nullptr;
    Kleinzahlen* kleinzahlen_ = nullptr;
    const Weiter* weiter_ = nullptr;
    std::vector<Stufe> stufen_;
    std::vector<Verbund> verbuende_;
    Formen formen_;
    std::vector<int> zeilen_;
    std::vector<Bereich> formbereiche_;
    std::vector<std::vector<int>> ende_;
};
