// One table under check: its definition, its maps' pages, and what its rows should leave in the indexes.
// Private to the checker.
#pragma once

#include <bitset>
#include <map>
#include <vector>

#include "engine/jet/prueflauf.h"
#include "engine/jet/zeile.h"

namespace jet::pruefung {

// Slots of one page.
using Slotmenge = std::bitset<256>;

// A set of index entries boiled down to sums, so that tables of any size are compared in little memory.
struct Eintragssumme {
    quint64 anzahl = 0;
    quint64 orte = 0;        // over the rows' places
    quint64 schluessel = 0;  // over keys and places
    void hinzufuegen(Zeilenort ort, QByteArrayView schluesselbytes);
    bool operator==(const Eintragssumme&) const = default;
};

// What the walk over the rows expects of one real index.
struct Indexerwartung {
    Eintragssumme summe;
    bool mitSchluesseln = false;  // whether keys can be made for its columns
    bool vollstaendig = true;     // false when rows could not be read
};

// The pages and slots of the table's rows: counts them, checks pages and rows, and fills the expectations
// (one per real index).
void zeilenPruefen(Lauf& lauf, const Tabelle& tabelle, const std::vector<quint32>& datenseiten,
                   std::vector<Indexerwartung>& erwartungen, bool zeilenzahlGilt);

// Slots, offsets and the counter of free bytes of a data page.
std::vector<Slot> datenseitePruefen(Lauf& lauf, quint32 nummer, const QByteArray& seite);

// The trees.
void indexPruefen(Lauf& lauf, const Tabelle& tabelle, const EchterIndex& index, size_t nummer,
                  const Indexerwartung& erwartung);

// The first row whose entry has another key than its values make. Slow: looks up every row of the index.
// Keys made by libraries that count ß as one letter are taken for right.
std::optional<Zeilenort> falschenSchluesselFinden(const Seitendatei& datei, const Tabelle& tabelle,
                                                  const EchterIndex& index);

// Long values of one table: each piece belongs to one value and lies in the column's map.
class Langwertpruefung {
  public:
    Langwertpruefung(Lauf& lauf, const Tabelle& tabelle);
    // `feld` is what the row holds. False when a deviation was found.
    bool wertPruefen(const Spalte& spalte, QByteArrayView feld, quint32 seite);

  private:
    void mapLesen(const Langwertkarten& karten);
    std::optional<QByteArrayView> stueckHolen(const Spalte& spalte, Zeilenort ort, quint32 seite);

    Lauf& lauf_;
    QByteArray seite_;                           // keeps the piece's bytes
    std::map<quint32, quint16> spalteDerSeite_;  // page to column number
    std::map<quint32, Slotmenge> vergeben_;      // pieces that a value uses
};

// Pages of a map, each taken for the table.
std::vector<quint32> karteNehmen(Lauf& lauf, Zeilenort ort, Teil teil, const QString& wessen);
// A map of pages with room: every page must be in `besitz`, which is ascending.
void freikartePruefen(Lauf& lauf, Zeilenort ort, const std::vector<quint32>& besitz, const QString& wessen);

}  // namespace jet::pruefung
