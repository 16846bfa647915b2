// Prepared address rows drawn at random, alike enough that many pairs come near a threshold.
#pragma once

#include <random>
#include <vector>

#include "base/wert.h"
#include "fields/feldarten.h"

using Zeile = std::vector<Wert>;

// Assignments that between them reach every row of the rule table.
const std::vector<FeldZuordnungen>& Zufallszuordnungen();

class Zufallsadressen {
  public:
    // `vielfalt` is about the number of different values of a field.
    Zufallsadressen(quint32 anfang, int vielfalt) : zufall_(anfang), vielfalt_(vielfalt) {}
    Zeile zeile(const FeldZuordnungen& zuordnungen);
    std::vector<Zeile> zeilen(const FeldZuordnungen& zuordnungen, int anzahl);
    int zahl(int kleinste, int groesste) {
        return std::uniform_int_distribution<int>(kleinste, groesste)(zufall_);
    }

  private:
    Wert wert(const FeldZuordnung& zuordnung);
    QString name();
    QString ziffern(int laenge);

    std::mt19937 zufall_;
    int vielfalt_;
};
