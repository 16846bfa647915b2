// The entries of one index under construction: gathered in any order, then sorted.
#pragma once

#include <QByteArray>

#include "engine/jet/seiten.h"
#include "engine/sort/eintragsliste.h"

namespace jet {

class Indexeintraege {
  public:
    void aufnehmen(QByteArrayView schluessel, Zeilenort zeile);
    // By key, equal keys by page and row. Nothing may be added behind it.
    void sortieren() { liste_.sortieren(); }

    size_t anzahl() const { return liste_.anzahl(); }
    // Key, page and row as a leaf holds them.
    QByteArrayView eintrag(size_t i) const { return liste_[i]; }
    QByteArrayView schluessel(size_t i) const;
    // After `sortieren`: how many different keys there are.
    quint32 verschiedene() const;
    // After `sortieren`: whether a key other than `ausser` is there twice.
    bool hatDoppelte(QByteArrayView ausser) const;

  private:
    sort::Eintragsliste liste_;
};

}  // namespace jet
