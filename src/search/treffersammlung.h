// The hits of a block, found in any order and told in the order of slices and sweeps.
#pragma once

#include <QtGlobal>
#include <cstddef>
#include <limits>
#include <vector>

// Holds no more than a window of the order, so that its memory does not grow with the pairs: what lies behind
// the window is dropped, and has to be found again for the next one.
class Treffersammlung {
  public:
    // For a block of so many rows.
    Treffersammlung(size_t zeilen, size_t fenster);

    // A hit, rows from 0; kept when it lies in the window.
    void eintragen(qint32 a, qint32 b) {
        const quint64 platz = rang(quint64(a < b ? a : b), quint64(a < b ? b : a));
        if (platz < anfang_ || platz >= ende_) return;
        raenge_.push_back(platz);
        if (raenge_.size() >= 2 * fenster_) kuerzen();
    }
    // The pairs of the window have their first row from the one up to below the other.
    qint32 ersteZeile() const { return qint32(anfang_ / (breite_ * breite_) / scheiben_ * breite_); }
    qint32 zeilengrenze() const { return zeilengrenze_; }

    void ordnen();
    size_t anzahl() const { return raenge_.size(); }
    struct Treffer {
        qint32 i;
        qint32 j;
    };
    Treffer treffer(size_t nummer) const;

    // Goes on to the next window; False when nothing was dropped.
    bool weiterruecken();

  private:
    // The place of a pair in the order: slice, sweep, and within them the first and the second row.
    quint64 rang(quint64 i, quint64 j) const {
        return ((i / breite_ * scheiben_ + j / breite_) * breite_ + i % breite_) * breite_ + j % breite_;
    }
    void kuerzen();

    static constexpr quint64 kOffen = std::numeric_limits<quint64>::max();

    quint64 breite_;
    quint64 scheiben_;
    size_t fenster_;
    quint64 anfang_ = 0;  // of the window
    quint64 ende_ = kOffen;
    qint32 zeilengrenze_ = std::numeric_limits<qint32>::max();
    std::vector<quint64> raenge_;
};
