// The comparison of two prepared records: one number from 0 to 1, by the rule table.
#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include "base/wert.h"
#include "fields/feldarten.h"

enum class Mass { Woerter, Nummern };

// One product of a row of the rule table: the measure of two values, taken apart by a parser or whole, times
// the weight of a kind.
struct Teilregel {
    Mass mass = Mass::Woerter;
    int parser = 0;  // the kind number of the parser, 0 for the whole values
    int feldart = 0;
    bool operator==(const Teilregel&) const = default;
};

// A row of the rule table.
struct Regelzeile {
    bool person = false;  // goes to the sums of the contact person when these are kept apart
    std::vector<Teilregel> teile;
    bool operator==(const Regelzeile&) const = default;
};

// The rows that fire for a field, in the order of the table. All of them add up.
std::vector<Regelzeile> RegelzeilenFuer(const FeldZuordnung& zuordnung);

// The sums of a comparison, in single precision.
class Vergleichssummen {
  public:
    explicit Vergleichssummen(bool differenzieren) : differenzieren_(differenzieren) {}
    void gewicht(bool person, float wert) { (getrennt(person) ? personGewicht_ : gewicht_) += wert; }
    void punkte(bool person, float wert) { (getrennt(person) ? personPunkte_ : punkte_) += wert; }
    // 0 when the persons differ or when no rule fired.
    float relevanz() const;

  private:
    bool getrennt(bool person) const { return person && differenzieren_; }

    bool differenzieren_;
    float gewicht_ = 0;
    float punkte_ = 0;
    float personGewicht_ = 0;
    float personPunkte_ = 0;
};

// A field that takes part: its rows, and where its value stands.
struct Vergleichsfeld {
    struct Zeile {
        Regelzeile regel;
        float gewicht = 0;  // of all its products
    };
    int feld = 0;    // position from 0 in the source
    int spalte = 0;  // position from 0 in the work table
    std::vector<Zeile> zeilen;
};

// The fields of an assignment that fire a row at all, with the weights as they are now. Ignored fields have
// no column.
std::vector<Vergleichsfeld> VergleichsfelderFuer(const FeldZuordnungen& zuordnungen);

// True for a value that leaves its field out of all sums.
bool ZaehltNicht(const Wert& wert);

// The measure of a product for two values.
float Teilmass(const Teilregel& teil, const Wert& a, const Wert& b);

// What becomes of a row whose measure failed.
enum class NachFehler { Wiederholen, Ignorieren, Abbrechen };
struct Vergleichsfehler {
    std::exception_ptr fehler;
    int feld;  // position from 0 in the source
    const Wert& a;
    const Wert& b;
};
using BeiVergleichsfehler = std::function<NachFehler(const Vergleichsfehler&)>;

// Compares records by the letter of the rules.
class Vergleicher {
  public:
    Vergleicher(const FeldZuordnungen& zuordnungen, bool differenzieren)
        : felder_(VergleichsfelderFuer(zuordnungen)), differenzieren_(differenzieren) {}

    // The relevance of two rows of the work table, each an array of its values. Without `beiFehler` a failure
    // of a measure goes on to the caller; with it, none comes back when the user gave up.
    std::optional<float> vergleichen(const Wert* zeile1, const Wert* zeile2,
                                     const BeiVergleichsfehler& beiFehler = {}) const;

  private:
    std::vector<Vergleichsfeld> felder_;
    bool differenzieren_;
};
