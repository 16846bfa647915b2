// One connection to the scratch database: prepared statements, failures, breathing.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <exception>
#include <string>
#include <unordered_map>

namespace store {

// Where somebody keeps a statement that runs again and again, so that its text is not put together anew.
class Merkstelle {
    friend class Verbindung;
    sqlite3_stmt* anweisung_ = nullptr;
    quint64 runde_ = 0;
};

class Verbindung {
  public:
    // Opens a scratch file that has no name and belongs to this process alone; it is gone with the
    // connection.
    Verbindung();
    ~Verbindung();
    Verbindung(const Verbindung&) = delete;
    Verbindung& operator=(const Verbindung&) = delete;

    // A prepared statement for the text; kept for the next call with the same text.
    sqlite3_stmt* vorbereitet(const QByteArray& text);
    // The statement of the place; `text()` gives its text when the place has none.
    template <typename Text>
    sqlite3_stmt* vorbereitet(Merkstelle& stelle, Text text) {
        freiVerlangen();
        if (stelle.runde_ != runde_) {
            stelle.anweisung_ = vorbereitet(text());
            stelle.runde_ = runde_;
        }
        return stelle.anweisung_;
    }
    // Runs a text without results.
    void ausfuehren(const QByteArray& text);
    // One step; true while there is a row. Raises EngineFehler.
    bool schritt(sqlite3_stmt* anweisung);
    // Raises EngineFehler unless the code says that all went well.
    void pruefen(int code);
    // While one lives, the store sorts in pieces that take no longer than a breath, at the price of its
    // cache.
    class Haeppchenweise {
      public:
        explicit Haeppchenweise(Verbindung& verbindung);
        ~Haeppchenweise();
        Haeppchenweise(const Haeppchenweise&) = delete;
        Haeppchenweise& operator=(const Haeppchenweise&) = delete;

      private:
        Verbindung& verbindung_;
    };
    // While one lives, long statements let the window breathe. Only around statements that read, or outside a
    // transaction: one that writes would take the whole transaction with it when it is interrupted.
    class Atmend {
      public:
        explicit Atmend(Verbindung& verbindung);
        ~Atmend();
        Atmend(const Atmend&) = delete;
        Atmend& operator=(const Atmend&) = delete;

      private:
        Verbindung& verbindung_;
    };

    // As long as it lives nobody else gets at the store, as in the pauses of a query.
    class Gesperrt {
      public:
        explicit Gesperrt(Verbindung& verbindung) : verbindung_(verbindung) {
            verbindung_.inDerPause_ = true;
        }
        ~Gesperrt() { verbindung_.inDerPause_ = false; }
        Gesperrt(const Gesperrt&) = delete;
        Gesperrt& operator=(const Gesperrt&) = delete;

      private:
        Verbindung& verbindung_;
    };

    bool inTransaktion() const { return sqlite3_get_autocommit(datenbank_) == 0; }
    qint64 geaenderteZeilen() const { return sqlite3_changes64(datenbank_); }

    // For the check of the invariants, which must not be seen among the prepared statements.
    sqlite3* datenbank() const { return datenbank_; }

    // Tests only: no more than this many pages from now on.
    void hoechstensSeiten(int anzahl);

  private:
    static int atmen(void* selbst);
    [[noreturn]] void melden(int code);
    void freiVerlangen() const;
    void anweisungenVergessen();

    sqlite3* datenbank_ = nullptr;
    std::unordered_map<std::string, sqlite3_stmt*> anweisungen_;
    quint64 runde_ = 1;               // of the statements: another one once they were forgotten
    std::exception_ptr ausDerPause_;  // what the hook threw; it must not cross the store's own frames
    bool inDerPause_ = false;
};

// Resets a statement when the block is left, whatever happens.
class Zuruecksetzer {
  public:
    explicit Zuruecksetzer(sqlite3_stmt* anweisung) : anweisung_(anweisung) {}
    ~Zuruecksetzer() { sqlite3_reset(anweisung_); }
    Zuruecksetzer(const Zuruecksetzer&) = delete;
    Zuruecksetzer& operator=(const Zuruecksetzer&) = delete;

  private:
    sqlite3_stmt* anweisung_;
};

}  // namespace store
