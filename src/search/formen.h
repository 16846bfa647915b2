// Shapes: rows that can gain the same at every stage, and what two shapes can gain at most.
#pragma once

#include <functional>

#include "search/stufe.h"

class Formen {
  public:
    // Every row gets a shape. The stages are told apart one after the other, as long as the shapes stay few.
    // `weiter` is asked whenever all rows were looked at; False when it said so.
    bool bilden(const std::vector<const Stufe*>& stufen, size_t zeilen, const std::function<bool()>& weiter);

    size_t anzahl() const { return grenzen_.size(); }
    const std::vector<int>& formVon() const { return formVon_; }
    // The most that rows of two shapes gain at a stage.
    int hoechstens(size_t a, size_t b, size_t stufe) const;
    // The same at a stage that was left out: one value that may gain is enough.
    int hoechstensAusgelassen(size_t a, size_t b, size_t stufe) const;
    // True when all pairs of rows gain the same at a stage that was left out.
    bool festAusgelassen(size_t a, size_t b, size_t stufe) const;
    // True when rows of the two shapes can have a field in common.
    bool gemeinsames(size_t a, size_t b) const;

  private:
    struct Grenze {
        int bestens;  // of the rows that have a value
        bool fehlt;   // at some row
        bool gefuellt;
        int mindestens;
    };
    bool nie(size_t a, size_t b, size_t stufe) const;
    std::vector<int> formVon_;                  // by row
    std::vector<std::vector<Grenze>> grenzen_;  // by shape and stage
};
