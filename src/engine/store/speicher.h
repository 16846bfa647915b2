// The working store: the rows of all tables in use, in a scratch file, by table number, column number and row
// id.
#pragma once

#include <limits>
#include <map>
#include <memory>
#include <vector>

#include "base/wert.h"
#include "engine/store/verbindung.h"
#include "engine/store/zellen.h"

namespace store {

// Which rows, in which order. Columns count from 0 in the order in which they were made.
struct Auswahl {
    qint64 tabelle = 0;
    Bedingung bedingung;       // empty: all rows
    std::vector<int> ordnung;  // columns to sort by, the first one counts most; then by id
    // Only among these ids.
    qint64 vonId = 1;
    qint64 bisId = std::numeric_limits<qint64>::max();
};

// Every operation raises EngineFehler: 3026 when the scratch file cannot grow, 3051 otherwise. A scratch file
// that could not grow may have cost the whole open transaction; every access then raises 3026 until
// `verwerfen`. Row ids count from 1 in the order of insertion and are never given twice, also when rows were
// removed or a transaction undone.
class Speicher {
  public:
    Speicher();
    ~Speicher();
    Speicher(const Speicher&) = delete;
    Speicher& operator=(const Speicher&) = delete;

    // A number that no table had before.
    qint64 neueNummer() { return ++letzteNummer_; }
    // Ids start at 1, also for a number that had a table which an undone transaction took away.
    void tabelleAnlegen(qint64 nummer, std::vector<Spaltenart> arten);
    void tabelleEntfernen(qint64 nummer);
    bool tabelleVorhanden(qint64 nummer) const;
    // The number of the new column, which is Null in all rows. There is no way to remove one: who no longer
    // wants a column forgets its number, and the scratch file its content when the table goes.
    int spalteAnhaengen(qint64 tabelle, Spaltenart art);
    // The id that the next row gets; 0 for a table that is not there.
    qint64 naechsteId(qint64 tabelle) const;
    // Changes with every write to the table.
    quint64 stand(qint64 tabelle) const;

    // Adds a row; columns that are not named are Null. Returns its id.
    qint64 zeileAnhaengen(qint64 tabelle, const std::vector<int>& spalten, const std::vector<Wert>& werte);
    // The named columns of a row, in the order of `spalten`; false when there is no such row.
    bool zeileLesen(qint64 tabelle, const std::vector<int>& spalten, qint64 id, std::vector<Wert>& zeile);
    // The same for up to `anzahl` rows with ids above `nachId`, in the order of the ids, one behind the
    // other. Returns the id of the last one, or `nachId` when there are no more.
    qint64 zeilenLesen(qint64 tabelle, const std::vector<int>& spalten, qint64 nachId, int anzahl,
                       std::vector<Wert>& werte);
    bool zeileAendern(qint64 tabelle, qint64 id, const std::vector<int>& spalten,
                      const std::vector<Wert>& werte);
    // All or none.
    void zeilenEntfernen(qint64 tabelle, const std::vector<qint64>& ids);

    // The ids of the rows that meet the condition, texts in the General order, Null in front. Lets the window
    // breathe. The first selection by a column of a large table, or of a large part of it, gives the table an
    // index, unless a transaction is open.
    std::vector<qint64> auswaehlen(const Auswahl& auswahl);
    // The greatest whole number of a column, 0 for an empty one.
    qint64 groessteZahl(qint64 tabelle, int spalte);
    qint64 zeilenzahl(qint64 tabelle);

    // One transaction at a time; it covers tables and columns as well as rows.
    void beginnen();
    void festschreiben();
    void verwerfen();
    bool inTransaktion() const { return gemerkt_ != nullptr; }

    // Undoes everything since its construction unless `behalten` was called; works in and outside a
    // transaction.
    class Sicherungspunkt {
      public:
        explicit Sicherungspunkt(Speicher& speicher);
        ~Sicherungspunkt();
        Sicherungspunkt(const Sicherungspunkt&) = delete;
        Sicherungspunkt& operator=(const Sicherungspunkt&) = delete;
        void behalten();

      private:
        Speicher* speicher_;
        std::map<qint64, std::vector<Spaltenart>> vorher_;
    };

    // Tests only: the scratch file may not grow beyond this many pages.
    void hoechstensSeiten(int anzahl) { verbindung_.hoechstensSeiten(anzahl); }

  private:
    // A statement of a table, and the columns that it names.
    struct Spaltenanweisung {
        std::vector<int> spalten;
        Merkstelle stelle;
    };
    struct Tabelle {
        std::vector<Spaltenart> arten;
        qint64 naechsteId = 1;
        quint64 stand = 0;
        bool vorhanden = false;  // a removed one is remembered, since a transaction may bring it back
        Spaltenanweisung anhaengen{}, lesen{}, folgeLesen{}, aendern{};
    };
    using Verzeichnis = std::map<qint64, std::vector<Spaltenart>>;

    Tabelle& tabelle(qint64 nummer);
    void geschrieben(Tabelle& tabelle) { tabelle.stand = ++letzterStand_; }
    template <typename Text>
    sqlite3_stmt* mitSpalten(Spaltenanweisung& anweisung, const std::vector<int>& spalten, Text text);
    void geordnetSammeln(sqlite3_stmt* anweisung, int spalten, std::vector<qint64>& ids);
    Verzeichnis verzeichnis() const;
    void verzeichnisSetzen(const Verzeichnis& vorher);
    void transaktionPruefen() const;
    // In builds with assertions: ends the program when the directory and the scratch file do not agree.
    void invariantenPruefen() const;
    void suchbarMachen(const Auswahl& auswahl);

    Verbindung verbindung_;
    std::vector<Tabelle> tabellen_;         // by number
    std::unique_ptr<Verzeichnis> gemerkt_;  // the tables at the start of the open transaction
    qint64 letzteNummer_ = 0;
    quint64 letzterStand_ = 0;
};

}  // namespace store
