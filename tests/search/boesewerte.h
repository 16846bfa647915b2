// Prepared values that a measure may stumble over, drawn at random whatever the kind of the field.
#pragma once

#include <random>
#include <vector>

#include "base/wert.h"
#include "fields/feldarten.h"

class BoeseWerte {
  public:
    explicit BoeseWerte(quint32 samen) : zufall_(samen) {}
    // Rows for the columns that an assignment has. Some fields of a block have few values, some a new one in
    // nearly every row, and every third row is another one with some fields changed.
    std::vector<std::vector<Wert>> zeilen(const FeldZuordnungen& zuordnungen, int anzahl);
    // An assignment of up to twelve columns.
    FeldZuordnungen zuordnung();
    int zahl(int kleinste, int groesste) {
        return std::uniform_int_distribution<int>(kleinste, groesste)(zufall_);
    }

  private:
    Wert wert(int vielfalt);
    QString wort();
    QString ziffern(int laenge);

    std::mt19937 zufall_;
};
