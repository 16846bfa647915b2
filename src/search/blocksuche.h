// Cuts the sorted table into blocks: runs of records whose block column begins alike.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "base/wert.h"

// A run of records that are compared with each other; positions from 1.
struct Suchblock {
    qint64 erster = 0;
    qint64 letzter = 0;
    // The number of pairs in it.
    qint64 paare() const { return (letzter - erster) * (letzter - erster + 1) / 2; }
    bool operator==(const Suchblock&) const = default;
};

// Fed with the block column of one record after the other. A key counts by its first characters, exactly; a
// number by its text. Records with an empty key make a run that does not count. A Null is never different: it
// stays in the run it meets, and a run that begins with a Null never ends and does not count.
class Blocksuche {
  public:
    explicit Blocksuche(int laenge) : laenge_(laenge) {}
    void naechster(const Wert& wert);
    // Ends the last run. The blocks that count, in order.
    const std::vector<Suchblock>& fertig();

  private:
    void beginnen(const Wert& wert);
    void beenden();

    int laenge_;
    qint64 position_ = 0;
    qint64 erster_ = 0;                  // of the present run; 0 before the first record
    std::optional<QString> schluessel_;  // of the present run; none for a Null
    std::vector<Suchblock> bloecke_;
};
