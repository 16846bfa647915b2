// Which pairs of records are listed already, in either order.
#pragma once

#include <QtGlobal>
#include <vector>

// A set of unordered pairs of record numbers from 1.
class PaarMenge {
  public:
    bool enthaelt(qint32 a, qint32 b) const;
    // False when the pair is in the set already.
    bool einfuegen(qint32 a, qint32 b);
    size_t anzahl() const { return anzahl_; }
    void leeren();

  private:
    size_t platz(quint64 schluessel) const;
    void vergroessern();

    std::vector<quint64> plaetze_;  // a power of two of them, at most half of them taken; 0 is free
    size_t anzahl_ = 0;
};
