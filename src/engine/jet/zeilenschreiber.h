// The rows of a new table written to data pages, with their long values.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/jet/langwertbau.h"
#include "engine/jet/seitenbau.h"
#include "engine/jet/tdef.h"
#include "engine/jet/zeilenbau.h"

namespace jet {

class Seitenvergabe;

// One for each new table. Pages are taken in ascending order, so that the order of the rows is the table's
// natural order. The table must outlive it and keep its columns.
class Zeilenschreiber {
  public:
    // `tabelle` needs its columns, its name (for messages) and its first page.
    Zeilenschreiber(Seitendatei& datei, Seitenvergabe& vergabe, const Tabelle& tabelle);

    // Writes a row with one value for each column, in column order (Null and Empty are Null), and returns its
    // place. Raises kSystemgrenze for a row that no page can hold, and what wertAnhaengen raises.
    Zeilenort schreiben(const engine::Zeile& zeile);
    // The stored values of that row, of a Memo or OLE column its content.
    const Rohsichten& inhalte() const { return inhalte_; }
    // Writes the pages under construction.
    void abschliessen();

    quint32 anzahl() const { return anzahl_; }
    // Largest value of the autonumber column so far; 0 without one.
    quint32 autowert() const { return autowert_; }
    const std::vector<quint32>& besitz() const { return besitz_; }
    // Pages with room for a row.
    std::vector<quint32> frei() const;
    // Of a Memo or OLE column (place in Tabelle::spalten).
    const Langwertbau& lange(size_t spalte) const { return *lange_[spalte]; }

  private:
    void inhalteBilden(const engine::Zeile& zeile);
    const Rohsichten& mitLangen();
    int inlineGrenze() const;
    void autowertMerken(const engine::Zeile& zeile);
    [[noreturn]] void zeileZuLang() const;

    Seitendatei& datei_;
    Seitenvergabe& vergabe_;
    const Tabelle& tabelle_;
    std::vector<std::unique_ptr<Langwertbau>> lange_;  // by column, none for other types
    std::vector<QByteArray> puffer_;                   // by column: the bytes that inhalte_ looks at
    std::vector<QByteArray> felder_;                   // the same of long values, for werte_
    Rohsichten inhalte_;
    Rohsichten werte_;
    std::vector<quint32> besitz_;
    std::optional<Datenseitenbau> bau_;  // the last page of besitz_
    quint32 anzahl_ = 0;
    quint32 autowert_ = 0;
};

}  // namespace jet
