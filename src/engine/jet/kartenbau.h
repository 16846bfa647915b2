// Usage maps written: sets of pages as rows on map pages, inline or with pages of bits.
#pragma once

#include <QByteArray>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

class Seitenvergabe;

inline constexpr int kKartenkopf = 5;        // kind and first page, in front of an inline bitmap
inline constexpr int kKartenseitenkopf = 4;  // in front of the bits of a page of type 5

// Sets bit `bit` (lowest first) of a bitmap that begins at byte `ab`.
void bitSetzen(QByteArray& bytes, qsizetype ab, qsizetype bit);
// A page of type 5 without any bit.
QByteArray leereKartenseite(const Format& format);

// The row of a map of these pages (ascending). Pages of type 5, where they are needed, come from
// `vorhandene` first, then from `vergabe`, and are written at once; what is left of `vorhandene` is freed.
QByteArray kartenzeileBauen(Seitendatei& datei, Seitenvergabe& vergabe, const std::vector<quint32>& seiten,
                            std::vector<quint32> vorhandene = {});

// Writes an existing map anew, in its place.
void karteErsetzen(Seitendatei& datei, Seitenvergabe& vergabe, Zeilenort ort,
                   const std::vector<quint32>& seiten);

// The map pages of a new table: rows in the order they were added, pairs never torn over two pages.
class Kartenseiten {
  public:
    Kartenseiten(Seitendatei& datei, Seitenvergabe& vergabe) : datei_(datei), vergabe_(vergabe) {}
    // Adds the maps, which stand on one page; returns the place of the first, the others follow it.
    Zeilenort anfuegen(const std::vector<std::vector<quint32>>& karten);
    // Writes the pages.
    void abschliessen();

  private:
    Seitendatei& datei_;
    Seitenvergabe& vergabe_;
    quint32 seite_ = 0;
    std::vector<QByteArray> zeilen_;
};

}  // namespace jet
