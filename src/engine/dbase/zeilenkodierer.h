// Turns rows into records, after a first look at all of them.
#pragma once

#include <QByteArray>
#include <functional>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/dbase/schreibplan.h"

namespace dbase {

// First `pruefen` sees every row, then `festlegen` decides what depends on them, then `satz` is called for
// every row again. Everything that a row can be refused for is found by `pruefen` and `festlegen`.
class Zeilenkodierer {
  public:
    explicit Zeilenkodierer(Schreibplan& plan);

    // Raises kFeldZuKlein (a text or number that is too long) or kUmwandlung (a character that the code page
    // lacks), naming field, row (from 1) and value.
    void pruefen(const engine::Zeile& zeile);
    // Raises kFeldZuKlein for a column of numbers that need more digits than a field has, kSystemgrenze for
    // limits of the record and the file. Adds to the plan's notices.
    void festlegen();

    // Writes a row's record to `ziel`, which has room for it. `memo` takes a text's bytes and returns its
    // block number.
    using Memoablage = std::function<qint64(const QByteArray&)>;
    void satz(const engine::Zeile& zeile, char* ziel, const Memoablage& memo);

    qint64 zeilen() const { return zeilen_; }

  private:
    // What the values of a column showed.
    struct Messung {
        int vorkomma = 1;  // most characters before the point, the sign among them
        int nachkomma = 0;
        qint64 zeileVorkomma = 1;  // the row that needs them
        qint64 zeileNachkomma = 1;
        bool zuLang = false;  // a text over the width of any field
        qint64 memobloecke = 0;
        qint64 uhrzeiten = 0;
        qint64 gerundet = 0;
        qint64 endezeichen = 0;  // end marks left out of memos
    };

    void wertPruefen(const Schreibspalte& spalte, Messung& messung, const Wert& wert);
    void textPruefen(const Schreibspalte& spalte, Messung& messung, const Wert& wert);
    void zahlMessen(const Schreibspalte& spalte, Messung& messung, const Wert& wert);
    void wertSchreiben(const Schreibspalte& spalte, Messung& messung, const Wert& wert, char* ziel);
    QByteArray memobytes(const Schreibspalte& spalte, const Wert& wert) const;
    void zahlFestlegen(Schreibspalte& spalte, const Messung& messung) const;
    void hinweiseSammeln(const Schreibspalte& spalte, const Messung& messung);
    [[noreturn]] void ablehnen(int nummer, const Schreibspalte& spalte, const QString& was) const;

    Schreibplan& plan_;
    std::vector<Messung> messungen_;
    QByteArray probe_;
    Seitenschaetzer schaetzer_;
    qint64 zeilen_ = 0;
};

}  // namespace dbase
