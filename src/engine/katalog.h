// Table definitions as plain data: what a file's catalogue says, and what a new table is made from.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <vector>

#include "engine/typen.h"

namespace engine {

struct FeldDef {
    QString name;
    int typ = dao::dbText;      // dao::Feldtyp
    int groesse = 0;            // Text: UTF-16 units; Binary: bytes; others the fixed width; Memo, OLE: 0
    int attribute = 0;          // dao::dbAutoIncrField and the like
    bool leerErlaubt = false;   // zero-length text allowed
    bool erforderlich = false;  // Null not allowed
    int genauigkeit = 0;        // Decimal: digits in all
    int nachkommastellen = 0;   // Decimal: digits behind the comma
    // What the format keeps of the column beyond this (code page, field letter, ...); travels with a copy.
    QByteArray formatEigenes;
};

struct IndexFeld {
    QString name;
    bool absteigend = false;
    bool operator==(const IndexFeld&) const = default;
};

struct IndexDef {
    QString name;
    std::vector<IndexFeld> felder;
    bool eindeutig = false;
    bool primaer = false;
    bool ohneNull = false;      // rows whose key is Null are left out
    bool erforderlich = false;  // Null keys are refused
    bool fremd = false;         // belongs to a relation; not a member of TableDef.Indexes
};

struct TabellenDef {
    QString name;
    int attribute = 0;    // 0: plain user table
    QDateTime geaendert;  // local time, invalid if the file does not tell
    qint64 zeilen = -1;   // as the catalogue says; -1 if it does not
    std::vector<FeldDef> felder;
    std::vector<IndexDef> indexe;
};

struct RelationsFeld {
    QString name;       // field of `tabelle`
    QString fremdname;  // field of `fremdtabelle`
};

struct RelationDef {
    QString name;
    QString tabelle;
    QString fremdtabelle;
    int attribute = 0;  // dao::dbRelation... bits
    std::vector<RelationsFeld> felder;
};

struct Katalog {
    std::vector<TabellenDef> tabellen;  // in the file's catalogue order, system and linked ones included
    std::vector<RelationDef> relationen;
    // What the user should hear when the database is opened: what could not be read, and why.
    std::vector<QString> hinweise;
};

}  // namespace engine
