// Definitions of the database: tables, fields, indexes, relations, and their collections.
#pragma once

#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/katalog.h"

namespace dao {

class Database;
class Recordset;
class TableDef;
struct Tabellenkern;

// One field of a table definition.
class Field {
  public:
    explicit Field(engine::FeldDef def) : def_(std::move(def)) {}
    const QString& Name() const { return def_.name; }
    int Type() const { return def_.typ; }
    // Text: most characters; a Long has size 4, a memo field size 0.
    int Size() const { return def_.groesse; }
    int Attributes() const { return def_.attribute; }
    void setAttributes(int attribute) { def_.attribute = attribute; }
    bool AllowZeroLength() const { return def_.leerErlaubt; }
    void setAllowZeroLength(bool erlaubt) { def_.leerErlaubt = erlaubt; }
    const engine::FeldDef& definition() const { return def_; }

  private:
    engine::FeldDef def_;
};

// The fields of a table, by position from 0 or by name (case does not matter). Unknown ones raise 3265.
class Fields {
  public:
    explicit Fields(TableDef* tabelle) : tabelle_(tabelle) {}
    int Count() const;
    Field& Item(int position);
    Field& Item(const QString& name);
    const Field& Item(int position) const;
    // The position of a name, -1 if there is none.
    int position(const QString& name) const;
    // Appends a field; in a table that exists, its rows get Null there. Raises 3190 over 255 fields, 3010
    // for a name that exists and 3125 for an empty one, in a table that exists also for one that the format
    // does not take.
    void Append(Field feld);
    // Raises 3265 for an unknown name and 3280 when an index holds the field.
    void Delete(const QString& name);

  private:
    friend class Database;
    friend class TableDef;
    TableDef* tabelle_;
    std::vector<std::unique_ptr<Field>> felder_;
};

class Index {
  public:
    explicit Index(engine::IndexDef def) : def_(std::move(def)) {}
    const QString& Name() const { return def_.name; }
    const std::vector<engine::IndexFeld>& Fields() const { return def_.felder; }
    void setFields(std::vector<engine::IndexFeld> felder) { def_.felder = std::move(felder); }
    bool Unique() const { return def_.eindeutig; }
    void setUnique(bool eindeutig) { def_.eindeutig = eindeutig; }
    bool Primary() const { return def_.primaer; }
    void setPrimary(bool primaer) { def_.primaer = primaer; }
    const engine::IndexDef& definition() const { return def_; }

  private:
    engine::IndexDef def_;
};

// The indexes of a table; those that only serve a relation are not members.
class Indexes {
  public:
    int Count() const { return int(indexe_.size()); }
    const Index& Item(int position) const;
    void Append(Index index) { indexe_.push_back(std::move(index)); }

  private:
    friend class Database;
    friend class Fields;
    friend class TableDef;
    friend class TableDefs;
    std::vector<Index> indexe_;
};

// One table. A definition from `Database::CreateTableDef` stands alone until `TableDefs::Append`.
class TableDef {
  public:
    const QString& Name() const { return name_; }
    // Renames. For a table that exists: raises 3010 if the name is taken, 3125 if the format refuses it.
    void setName(const QString& name);
    int Attributes() const { return attribute_; }
    void setAttributes(int attribute) { attribute_ = attribute; }
    // Local time; the catalogue's date where the format keeps one, the file's time otherwise.
    QDateTime LastUpdated() const { return geaendert_; }
    dao::Fields& Fields() { return felder_; }
    const dao::Fields& Fields() const { return felder_; }
    dao::Indexes& Indexes() { return indexe_; }
    const dao::Indexes& Indexes() const { return indexe_; }
    // A field for this definition; nothing is appended. Size matters for text and binary fields only.
    Field CreateField(const QString& name, int typ, int groesse = 0) const;
    Index CreateIndex(const QString& name) const;
    // A recordset on the whole table, in natural order.
    std::unique_ptr<Recordset> OpenRecordset();
    // Raises what saving a copy called `name` would raise in the end, with these fields more and so many rows
    // (-1: not known), as far as it is known without the rows: names, number of fields, lengths, limits of
    // the format. For a table that exists.
    void KopiePruefen(const QString& name, const std::vector<Field>& neue, qint64 zeilen) const;
    // Looks for what a copy of this table could not be saved with; empty where the file takes every text. For
    // a table that exists.
    engine::Zeichenprobe Zeichenprobe() const;

    TableDef(const TableDef&) = delete;
    TableDef& operator=(const TableDef&) = delete;
    ~TableDef();

  private:
    friend class Database;
    friend class Fields;
    friend class TableDefs;
    friend class Recordset;
    // A definition at one moment, to put it back.
    struct Stand;
    explicit TableDef(Database* datenbank);
    Stand merken() const;
    void zuruecksetzen(const Stand& stand);
    engine::TabellenDef definition() const;

    Database* datenbank_;  // the owner; none before Append
    QString name_;
    int attribute_ = 0;
    QDateTime geaendert_;
    dao::Fields felder_;
    dao::Indexes indexe_;
    std::vector<engine::IndexDef> fremdIndexe_;   // those that only serve a relation
    std::optional<engine::TabellenDef> inDatei_;  // as the file holds it; none for a table that is not there
    std::shared_ptr<Tabellenkern> kern_;          // its rows in the working store
    std::vector<int> spalten_;  // the store's column of each field; empty while no row was read
};

// The tables of a database in the file's catalogue order, new ones last.
class TableDefs {
  public:
    explicit TableDefs(Database* datenbank) : datenbank_(datenbank) {}
    int Count() const { return int(tabellen_.size()); }
    TableDef& Item(int position);
    // Case does not matter; raises 3265.
    TableDef& Item(const QString& name);
    // Raises 3010 when the name exists, 3125 for a name that the format refuses, 3265 when an index names
    // an unknown field; the caller then still holds the definition and can try again.
    void Append(std::unique_ptr<TableDef>&& tabelle);
    // Raises 3265 for an unknown table, 3281 when it takes part in a relation.
    void Delete(const QString& name);

    auto begin() const { return tabellen_.begin(); }
    auto end() const { return tabellen_.end(); }

  private:
    friend class Database;
    Database* datenbank_;
    std::vector<std::shared_ptr<TableDef>> tabellen_;
};

class Relation {
  public:
    explicit Relation(engine::RelationDef def) : def_(std::move(def)) {}
    const QString& Name() const { return def_.name; }
    void setName(const QString& name) { def_.name = name; }
    const QString& Table() const { return def_.tabelle; }
    const QString& ForeignTable() const { return def_.fremdtabelle; }
    int Attributes() const { return def_.attribute; }
    const std::vector<engine::RelationsFeld>& Fields() const { return def_.felder; }
    // A field pair: `CreateField` with the name, then its `ForeignName`, then `Fields.Append`, in one.
    void FeldAnhaengen(const engine::RelationsFeld& feld) { def_.felder.push_back(feld); }
    const engine::RelationDef& definition() const { return def_; }

  private:
    friend class TableDef;
    // Takes over a table's new name on either side.
    void umbenennen(const QString& alt, const QString& neu);

    engine::RelationDef def_;
};

class Relations {
  public:
    explicit Relations(Database* datenbank) : datenbank_(datenbank) {}
    int Count() const { return int(relationen_.size()); }
    const Relation& Item(int position) const;
    // New relations are kept for the session; no offered format has a use for them yet. Raises 3010 when the
    // name exists and 3011 for an unknown table.
    void Append(Relation relation);
    // Raises 3265 for an unknown name.
    void Delete(const QString& name);

  private:
    friend class Database;
    friend class TableDef;
    Database* datenbank_;
    std::vector<Relation> relationen_;
};

}  // namespace dao
