// One table of the folder as it is read: its files, its fields as the engine sees them, its rows.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "engine/datei/austausch.h"
#include "engine/datei/datenbankdatei.h"
#include "engine/dbase/kopf.h"
#include "engine/dbase/memoleser.h"
#include "engine/dbase/zeichensatz.h"

namespace dbase {

struct Tabelle {
    QString name;  // the stem of the file
    QString pfad;
    engine::Dateistand stand;
    QString memopfad;  // empty when there is no memo file
    std::optional<engine::Dateistand> memostand;
    Aufbau aufbau;
    Seitenwahl seite;
    engine::TabellenDef def;
    std::vector<QString> hinweise;  // what the user should know of it, as sentences

    // Damaged: it may be read, never written over, renamed or dropped.
    bool beschaedigt() const { return !aufbau.schaeden.empty(); }
};

// The bytes of a table's files, ready to be read.
struct Tabellenquelle {
    std::shared_ptr<const Bytequelle> daten;
    std::shared_ptr<const Bytequelle> memo;  // none when there is no memo file
};

// Reads everything but the rows. `cpg` is the content of the .cpg file, empty when there is none. Raises
// kDateiNichtLesbar for what is no table.
Tabelle tabelleLesen(const QString& name, const Tabellenquelle& quelle, const QByteArray& cpg);

// What came up while a table's rows were read.
struct Befund {
    std::vector<QString> hinweise;  // sentences on values that could not be read
    bool memoBeschaedigt = false;
};
// Told at the end of a table's rows.
using Lesebericht = std::function<void(const Befund&)>;

// The live rows of a table, in the order of the file.
class Tabellenleser : public engine::Zeilenquelle {
  public:
    Tabellenleser(const Tabelle& tabelle, Tabellenquelle quelle, Lesebericht bericht);
    bool naechste(engine::Zeile& zeile) override;

    // Goes to the next record without reading its fields; false behind the last one.
    bool naechsterSatz();
    // The bytes of the record that `naechste` gave last, and of a field's memo in it.
    QByteArrayView satz() const { return satz_; }
    QByteArray memobytes(const Spalte& spalte);

  private:
    struct Zaehler {
        qint64 unlesbar = 0;
    };
    Wert feld(const Spalte& spalte, Zaehler& zaehler);
    Wert memo(const Spalte& spalte);
    bool bitGesetzt(int bit) const;
    void berichten();

    QString name_;
    Aufbau aufbau_;
    Tabellenquelle quelle_;
    Zeichensatz zeichensatz_;
    std::optional<Memoleser> memo_;
    Lesebericht bericht_;
    std::vector<const Spalte*> sichtbare_;
    std::vector<Zaehler> zaehler_;
    QByteArray block_;
    qint64 blockAb_ = 0;  // number of the first record in the block
    qint64 blockSaetze_ = 0;
    qint64 naechster_ = 0;  // number of the record to be looked at next, from 0
    QByteArrayView satz_;
};

}  // namespace dbase
