// The distinct values of one field, taken apart once for all measures that the rule table asks of them.
#pragma once

#include <utility>
#include <vector>

#include "search/textvorrat.h"
#include "search/vergleich.h"

// Gains are whole numbers: a field's score less the threshold times its weight, as a share of the weight of
// all fields, rounded up. A pair reaches the threshold only if its gains do not sum below 0.
inline constexpr int kGewinneinheit = 1 << 14;

class Wertvorrat {
  public:
    // `gesamtgewicht` is the weight of all fields, above 0.
    Wertvorrat(Vergleichsfeld feld, bool differenzieren, float schwelle, double gesamtgewicht);

    // The number of the value from 1, added when it is new; 0 for one that leaves the field out.
    int nummer(const Wert& wert, Textvorrat& texte);
    int anzahl() const { return int(bestens_.size()) - 1; }
    void leeren();

    int spalte() const { return feld_.spalte; }
    // The weight in the sums that make the relevance; 0 for a field that only tells persons apart.
    double gewicht() const { return gewicht_; }
    // The greatest gain that a value can have with any other one.
    int bestens(int nummer) const { return bestens_[size_t(nummer)]; }
    // The gain of two values from 1.
    int gewinn(int a, int b, const Textvorrat& texte) const;
    // Adds the rows of the field to the sums, exactly as the rules do.
    void summieren(Vergleichssummen& summen, int a, int b, const Textvorrat& texte) const;

  private:
    // A measure of the field: what it measures, and what a full agreement gives to the score.
    struct Teil {
        Mass mass;
        int parser;
        double hoechstens;
    };
    struct Produkt {
        size_t teil;
        float gewicht;
    };
    struct Zeile {
        bool person;
        float gewicht;
        std::vector<Produkt> produkte;
    };
    size_t teilSuchen(const Teilregel& regel);
    int teilVon(const Teil& teil, const Wert& wert, Textvorrat& texte) const;
    float mass(size_t teil, int a, int b, const Textvorrat& texte) const;
    int gerundet(double punkte) const;

    Vergleichsfeld feld_;
    double gewicht_ = 0;
    double schwelle_;
    double einheit_;
    std::vector<Teil> masse_;
    std::vector<Zeile> zeilen_;
    QHash<std::pair<int, QString>, int> nummern_;  // by kind of value and text
    std::vector<int> teile_;                       // for each value its texts, -1 for what measures 0
    std::vector<int> bestens_;
};
