// What a table's header says, checked against the file: fields, records, and what is wrong with them.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "engine/dbase/quelle.h"

namespace dbase {

enum class Memoart : quint8 { Keine, DbtDrei, DbtVier, Fpt };

// How the bytes of a field are read.
enum class Feldform : quint8 {
    Text,
    Zahl,
    Wahrheit,
    Datum,
    Memo,        // block number in digits
    MemoBinaer,  // block number in four bytes
    Ganzzahl,    // the rest is written by Visual FoxPro
    Waehrung,
    Zeitpunkt,
    Doppelt,
    TextVariabel,
    Unlesbar,  // shown as a column without values
    Verborgen,
};

struct Spalte {
    QByteArray rohname;  // as in the descriptor, without what follows its zero byte
    QString name;        // as the user sees it; different for each field of the table
    char art = 'C';      // the type letter
    Feldform form = Feldform::Text;
    int ab = 0;  // place in the record; the deletion mark stands at 0
    int laenge = 0;
    int stellen = 0;
    quint8 schalter = 0;  // Visual FoxPro only
    int nullbit = -1;     // bits of the column of Null flags, -1 for none
    int laengenbit = -1;
};

struct Aufbau {
    quint8 version = 0;
    Memoart memoart = Memoart::Keine;
    quint8 sprachbyte = 0;
    bool indexVermerk = false;
    quint32 saetzeImKopf = 0;
    qint64 saetze = 0;  // whole records that are there, deleted ones included
    qint64 satzanfang = 0;
    int satzlaenge = 0;
    int nullbitsAb = -1;  // place of Visual FoxPro's Null flags in the record
    std::vector<Spalte> spalten;
    // What is wrong with the file, as sentences for the user. A table with any is never written over.
    std::vector<QString> schaeden;

    bool foxpro() const { return version == 0xF5 || visualFoxpro(); }
    bool visualFoxpro() const { return version >= 0x30 && version <= 0x32; }
    bool hatMemo() const;
    // dBase III: 3; everything else: 4.
    int stufe() const { return version == 0x83 || version == 0xFB ? 3 : 4; }
};

// Reads and checks a header. Raises kDateiNichtLesbar, with what is wrong, for what is no table of dBase III,
// IV, 5 or FoxPro. Names are still as raw as in the file.
Aufbau kopfLesen(const Bytequelle& datei);

}  // namespace dbase
