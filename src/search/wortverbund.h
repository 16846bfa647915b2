// A join of texts: all pairs of which one has a word that stands in the other one.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "search/textvorrat.h"

// A text of a block, and how many of its rows have it.
struct Verbundtext {
    int text;
    int zeilen;
};

struct Wortverbund {
    // By position in the texts, the smaller one first, each once; a text goes with itself when two rows have
    // it.
    std::vector<std::pair<int, int>> paare;
    // For each text whether it has a word that is too frequent to be followed; such texts are in no pair.
    std::vector<bool> haeufig;
};

// Nothing when the join is not worth it: when it would give more than `hoechstens` pairs of rows, or when too
// many rows have a frequent word. `weiter` is told of the steps that were done; nothing as well when it says
// False.
std::optional<Wortverbund> TexteVerbinden(
    const Textvorrat& vorrat, const std::vector<Verbundtext>& texte, qint64 hoechstens,
    const std::function<bool(qint64)>& weiter = [](qint64) { return true; });
