// The entries of one index under construction: gathered in any order, then sorted.
#pragma once

#include <QByteArray>
#include <memory>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

// Key and row of each entry, one behind the other in large blocks that are never moved: besides its bytes an
// entry costs a pointer and its length.
class Indexeintraege {
  public:
    void aufnehmen(QByteArrayView schluessel, Zeilenort zeile);
    // By key, equal keys by page and row. Nothing may be added behind it.
    void sortieren();

    size_t anzahl() const { return zeiger_.size(); }
    // Key, page and row as a leaf holds them.
    QByteArrayView eintrag(size_t i) const;
    QByteArrayView schluessel(size_t i) const;
    // After `sortieren`: how many different keys there are.
    quint32 verschiedene() const;
    // After `sortieren`: whether a key other than `ausser` is there twice.
    bool hatDoppelte(QByteArrayView ausser) const;

  private:
    std::vector<std::unique_ptr<char[]>> bloecke_;
    qsizetype belegt_ = 0;  // bytes of the last block, used and left
    qsizetype frei_ = 0;
    std::vector<const char*> zeiger_;  // to the length, behind which the entry stands
};

}  // namespace jet
