// The database engine, its one workspace and the open database.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "engine/dao/recordset.h"
#include "engine/dao/tabledef.h"
#include "engine/datei/datenbankdatei.h"

namespace dao {

class Workspace;

// An open database. Its file is read when a table is first used and written by `Sichern` only.
class Database {
  public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    dao::TableDefs& TableDefs();
    dao::Relations& Relations();
    // `quelle` is a table's name or a text that begins with "SELECT". Raises 3011 for an unknown table,
    // 3061 for an unknown field, 3075 for a text that is not understood.
    std::unique_ptr<Recordset> OpenRecordset(const QString& quelle, int typ = dbOpenVorgabe);
    // "DELETE * FROM [table] WHERE [field] = number". Returns the number of records deleted.
    qint64 Execute(const QString& anweisung);
    std::unique_ptr<TableDef> CreateTableDef();
    Relation CreateRelation(const QString& name, const QString& tabelle, const QString& fremdtabelle,
                            int attribute);
    void setQueryTimeout(int sekunden) { abfrageFrist_ = sekunden; }
    // Lets go of the file and the working store; what was not saved is lost. Every later operation raises
    // 3420.
    void Close();

    // Remembers the tables as they stand now, in place of what was remembered before: their list, names,
    // attributes, fields and indexes, and the relations. Raises 3035 while a transaction is open.
    void Merken();
    // Goes back to what `Merken` remembered and forgets it; does nothing when nothing is remembered. A table
    // deleted since stands again with its rows, a table made since is gone with its rows, and names, fields
    // and indexes changed since are as they were. Rows that were added, changed or deleted in a table that
    // was there all the time stay as they are now. Neither call reads or writes the file, so that after it
    // `ungesichert` says what it said at `Merken`, unless such rows changed. Raises 3035 while a transaction
    // is open. A successful `Sichern` forgets as well.
    void Zuruecknehmen();

    // What the user should hear of the opening: files of a folder that cannot be read, and the like.
    const engine::Hinweise& Oeffnungshinweise() const;

    // Raises kSystemgrenze, with what to do, when nothing can be saved into the file; so does every attempt
    // to add, drop or rename a table.
    void SchreibenPruefen() const;

    // True when the tables differ from those in the file.
    bool ungesichert() const;
    // Brings the file up to date: all tables dropped, renamed and added since, in one atomic step. Either all
    // of it is in the file, or an EngineFehler is raised, the file is what it was, and the call can be
    // repeated. Afterwards the list of tables is the file's own. Returns what the user has to be told (an
    // index that was written plain because of equal keys). Raises 3035 while a transaction is open.
    engine::Hinweise Sichern();

  private:
    friend class Workspace;
    friend class TableDef;
    friend class TableDefs;
    friend class Fields;
    friend class Relations;
    friend class Recordset;
    struct Tabellenstand;
    struct Zustand;
    explicit Database(std::unique_ptr<Zustand> zustand);
    Zustand& offen() const;
    void katalogUebernehmen(const engine::Katalog& katalog, const QDateTime& dateizeit);
    std::shared_ptr<TableDef> tabelleAusDatei(const engine::TabellenDef& def, const QDateTime& dateizeit);
    TableDef* tabelleSuchen(const QString& name) const;
    TableDef& tabelleFuerAbfrage(const QString& name) const;
    void namenPruefen(const QString& name, const TableDef* selbst) const;
    void relationenPruefen(const QString& name) const;
    // Reads the rows into the working store unless they are there.
    void bereitstellen(TableDef& tabelle) const;
    void zeilenEinlesen(TableDef& tabelle) const;
    std::unique_ptr<Recordset> satzOeffnen(TableDef& tabelle, const QString& abfrage) const;
    void transaktionBeginnen();
    void transaktionFestschreiben();
    void transaktionVerwerfen();
    void saetzeZuruecknehmen();
    void ohneTransaktionVerlangen(const QString& was) const;
    Tabellenstand tabellenstand() const;
    void zeilenLoeschen(const TableDef& tabelle);
    void vergessen();
    std::vector<TableDef*> umzuschreibende() const;
    std::vector<engine::Aenderung> aenderungen() const;
    void gesichertMerken();
    void katalogUebernehmen();
    void austragen(const std::shared_ptr<TableDef>& tabelle);

    std::unique_ptr<Zustand> z_;
    int abfrageFrist_ = 0;
};

// Owner of all transactions. They do not nest: the program never holds more than one.
class Workspace {
  public:
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    // Opens the file for the program. `verbindung` is the connect text: ";PWD=...;", "Excel 5.0;", "Dbase 5;"
    // or "". Raises 3024 (no file), 3343 (unknown kind), 3031 (password), 3045 (open elsewhere), 3027
    // (read-only), 3049 (damaged), 3035 (an order or code page that cannot be written safely; some files open
    // for reading then, see SchreibenPruefen).
    std::unique_ptr<Database> OpenDatabase(const QString& name, bool exklusiv, bool nurLesen,
                                           const QString& verbindung);
    // A transaction covers rows as well as tables and fields that were added, dropped or renamed in it.
    // Raises 3035 when one is open already.
    void BeginTrans();
    // CommitTrans and Rollback raise 3034 when no transaction is open.
    void CommitTrans();
    void Rollback();
    void Close();

  private:
    friend class DBEngine;
    friend class Database;
    struct Zustand;
    explicit Workspace(std::shared_ptr<Zustand> zustand);
    std::shared_ptr<Zustand> z_;  // shared with the open databases
};

class DBEngine {
  public:
    static std::unique_ptr<Workspace> CreateWorkspace(const QString& name, const QString& benutzer,
                                                      const QString& passwort, int art = 2);
    // The list holds the errors of the last operation that failed and is never emptied by a success:
    // 0 before the first failure, 1 from then on.
    static int ErrorsCount();
};

}  // namespace dao
