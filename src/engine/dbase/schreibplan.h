// What a new table looks like in the file: code page, level, and one field for each column.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/dbase/zeichensatz.h"

namespace dbase {

// How a column's values become bytes. The last three are decided when all values have been seen.
enum class Schreibart : quint8 {
    Text,
    Zahl,
    Wahrheit,
    Datum,
    Memo,
    GemesseneZahl,   // width and decimals by the values
    GemessenerText,  // C(254), or a memo when one is longer
    Zeitpunkt,       // a date, or a text when one has a time of day
};

struct Schreibspalte {
    QString name;        // as the engine calls it
    QByteArray rohname;  // as the file will
    Schreibart schreibart = Schreibart::Text;
    char art = 'C';
    int laenge = 0;
    int stellen = 0;
    int ab = 0;  // place in the record
};

struct Schreibplan {
    QString tabelle;
    int stufe = 4;
    Zeichensatz zeichensatz{kSeite850};
    quint8 sprachbyte = 0;
    bool ausSchaetzung = false;  // the source told no page: neither does the copy, if that is safe
    QByteArray cpg;              // content of the .cpg file, empty for none
    std::vector<Schreibspalte> spalten;
    engine::Hinweise hinweise;

    bool hatMemo() const;
    int satzlaenge() const;
    // 0x03, 0x83 or 0x8B.
    quint8 version() const;
    int maxZahlbreite() const { return stufe == 3 ? 19 : 20; }
};

// Raises kSystemgrenze or kFeldZuKlein, with what to do, for a column that no dBase table can hold.
void feldPlanbar(const engine::FeldDef& feld);

// The code page in which a table of this definition is written.
Zeichensatz zeichensatzFuer(const engine::TabellenDef& def);

// Raises what a table of this definition would raise whatever its rows are.
void tabellePlanbar(const engine::TabellenDef& def);

// Raises what `feldPlanbar` raises, kZuVieleFelder, and kSystemgrenze.
Schreibplan schreibplanErstellen(const engine::TabellenDef& def);

// Gives the fields their places and raises kSystemgrenze for too long a record.
void spaltenAnordnen(Schreibplan& plan);

}  // namespace dbase
