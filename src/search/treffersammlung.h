// The hits of a block, found in any order and told in the order of slices and sweeps.
#pragma once

#include <QtGlobal>
#include <cstddef>
#include <vector>

class Treffersammlung {
  public:
    // For a block of so many rows; only the first `hoechstens` pairs of the order are ever wanted.
    Treffersammlung(size_t zeilen, size_t hoechstens);

    // A hit, rows from 0.
    void eintragen(qint32 a, qint32 b) {
        const quint64 platz = rang(quint64(a < b ? a : b), quint64(a < b ? b : a));
        if (platz >= grenze_) return;
        raenge_.push_back(platz);
        if (raenge_.size() >= voll_) kuerzen();
    }
    // No pair whose first row is this one or a later one is still wanted.
    qint32 erstezeileGrenze() const { return zeilengrenze_; }

    void ordnen();
    size_t anzahl() const { return raenge_.size(); }
    struct Treffer {
        qint32 i;
        qint32 j;
    };
    Treffer treffer(size_t nummer) const;

  private:
    // The place of a pair in the order: slice, sweep, and within them the first and the second row.
    quint64 rang(quint64 i, quint64 j) const {
        return ((i / breite_ * scheiben_ + j / breite_) * breite_ + i % breite_) * breite_ + j % breite_;
    }
    void kuerzen();

    quint64 breite_;
    quint64 scheiben_;
    size_t hoechstens_;
    size_t voll_;
    quint64 grenze_ = ~quint64(0);
    qint32 zeilengrenze_;
    std::vector<quint64> raenge_;
};
