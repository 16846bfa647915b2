// The distinct values of one field, taken apart once for all measures that the rule table asks of them.
#pragma once

#include <vector>

#include "search/textindex.h"
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
    // The greatest gain that a value can have with any other one, and the gain of values that have nothing in
    // common.
    int bestens(int nummer) const { return bestens_[size_t(nummer)]; }
    int mindestens() const { return ohne_; }
    // The gain of two values from 1.
    int gewinn(int a, int b, const Textvorrat& texte) const;

    // The same for one measure of the field alone, of those that weigh something; the gains of all of them
    // together are those of the field.
    size_t teile() const { return masse_.size(); }
    bool teilZaehlt(size_t teil) const { return masse_[teil].hoechstens > 0; }
    Mass teilmass(size_t teil) const { return masse_[teil].mass; }
    // The text that is measured, negative for a value that measures 0.
    int teiltext(int nummer, size_t teil) const { return teile_[size_t(nummer) * masse_.size() + teil]; }
    // The measure of two such texts.
    float textmass(size_t teil, int textA, int textB, const Textvorrat& texte) const;
    int teilgewinn(size_t teil, double mass) const {
        return gerundet((mass - schwelle_) * masse_[teil].hoechstens, 0);
    }
    int teilgewinn(size_t teil, int textA, int textB, const Textvorrat& texte) const;
    int teilBestens(size_t teil, int text) const { return teilgewinn(teil, text < 0 ? 0 : 1); }
    int teilMindestens(size_t teil) const { return masse_[teil].ohne; }

    // Adds the rows of the field to the sums, exactly as the rules do.
    void summieren(Vergleichssummen& summen, int a, int b, const Textvorrat& texte) const;

  private:
    // A measure of the field: what it measures, what a full agreement gives to the score, and the gain of
    // texts that have nothing in common.
    struct Teil {
        Mass mass;
        int parser;
        double hoechstens;
        int ohne = 0;
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
    int gerundet(double punkte) const { return gerundet(punkte, gewicht_); }
    int gerundet(double punkte, double gewicht) const;
    int neu(const Wert& wert, Textvorrat& texte);

    Vergleichsfeld feld_;
    double gewicht_ = 0;
    double schwelle_;
    double einheit_;
    int ohne_ = 0;
    std::vector<Teil> masse_;
    std::vector<Zeile> zeilen_;

    Textindex nummern_;              // of the values from 0
    std::vector<char16_t> zeichen_;  // the texts of all values, one behind the other
    std::vector<size_t> ende_;       // for each value where its text ends, 0 in front
    std::vector<Wert::Art> arten_;   // for each value its kind
    std::vector<int> teile_;         // for each value its texts, -1 for what measures 0
    std::vector<int> bestens_;
};
