// A recordset: a keyset over the working store, with a current record.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "base/wert.h"
#include "engine/katalog.h"

namespace dao {

class Database;
class Recordset;
class TableDef;

// A block of rows as `GetRows` delivers it, by column and row from 0.
class Block {
  public:
    Block() = default;
    Block(int spalten, std::vector<Wert> werte) : spalten_(spalten), werte_(std::move(werte)) {}
    int spalten() const { return spalten_; }
    int zeilen() const { return spalten_ == 0 ? 0 : int(werte_.size()) / spalten_; }
    const Wert& operator()(int spalte, int zeile) const {
        return werte_[size_t(zeile) * size_t(spalten_) + size_t(spalte)];
    }

  private:
    int spalten_ = 0;
    std::vector<Wert> werte_;
};

// One field of a recordset; reads and writes the current record (or the one under AddNew or Edit).
class RecordsetField {
  public:
    RecordsetField(Recordset* satz, int position) : satz_(satz), position_(position) {}
    const QString& Name() const;
    int Type() const;
    int Size() const;
    int Attributes() const;
    // Raises 3021 when there is no current record. Never Empty.
    const Wert& Value() const;
    // Converts to the column's type and stores. Empty becomes Null; "" in a field that is no text becomes
    // Null. Raises 3020 outside AddNew and Edit, 3163 for a text that is too long, 3421 for a value that
    // cannot be converted. A "" where it is not allowed is refused by Update.
    void setValue(const Wert& wert);

  private:
    Recordset* satz_;
    int position_;
};

// Positions in comments count from 1 (the first record). Reading or changing a record that was deleted since
// the selection ran raises 3167; it counts until Requery.
class Recordset {
  public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // The number of fields, and a field by position from 0 or by name. Unknown ones raise 3265.
    int FieldsCount() const;
    RecordsetField Fields(int position);
    RecordsetField Fields(const QString& name);
    // The position of the first field of this name, -1 if there is none.
    int fieldPosition(const QString& name) const;

    bool Eof() const;
    // Exact at any time: the number of records of the keyset.
    qint64 RecordCount() const;
    // These raise 3021 on an empty recordset, except Move(0).
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    // Relative; past the end the recordset is at EOF, in front of the first record at BOF with no current
    // record (then reading raises 3021). From EOF, Move(-1) leads to the last record. Going on from EOF, or
    // further back from BOF, raises 3021. Every move drops a pending AddNew or Edit.
    void Move(qint64 anzahl);

    // A new record, all fields Null, an auto-increment field left to the engine. Not in the table before
    // Update.
    void AddNew();
    // Raises 3021 without a current record.
    void Edit();
    // Stores the record under AddNew or Edit; a new one goes to the end of the keyset, and the current record
    // stays the one before AddNew. Raises 3020 when neither is pending, and 3315 for "" in a field that does
    // not take it; the AddNew or Edit then still stands.
    void Update();

    // At most `anzahl` rows from the current record on, none at EOF; the recordset then stands behind the
    // last one read.
    Block GetRows(qint64 anzahl);
    // The same of one field alone, by its position from 0.
    std::vector<Wert> GetColumn(int position, qint64 anzahl);
    // A number from 1 for each of at most `anzahl` records from the current record on, without a move: the
    // same for a record in all recordsets over its table, and never that of another one.
    std::vector<qint64> Bookmarks(qint64 anzahl) const;
    // The first record that meets "[field] = number"; without a match the current record stays and NoMatch is
    // True.
    void FindFirst(const QString& bedingung);
    bool NoMatch() const;
    // Runs the selection anew and goes to the first record (EOF when there is none).
    void Requery();
    // A second recordset over the same records in the same order, on its first record.
    std::unique_ptr<Recordset> OpenRecordset();
    // Drops a pending AddNew or Edit. Every later operation raises 3420; closing twice does so as well.
    void Close();

  private:
    friend class Database;
    friend class RecordsetField;
    struct Zustand;
    Zustand& offen() const;
    explicit Recordset(std::unique_ptr<Zustand> zustand);
    std::unique_ptr<Zustand> z_;
};

}  // namespace dao
