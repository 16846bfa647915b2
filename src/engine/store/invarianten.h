// What must hold between the working store's directory and its scratch file; looked at in builds with
// assertions.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <map>

namespace store {

// What the directory says of a table.
struct Tabellenbild {
    int spalten = 0;        // without the row id
    qint64 naechsteId = 1;  // above every id in the table
};

// The first thing that does not hold, in words for a developer; empty when all is well. Wants every statement
// at rest, just the tables of the directory (`t` and its number) in the file, each with its columns, and no
// row whose id is still to be given.
QByteArray unstimmigkeit(sqlite3* datenbank, const std::map<qint64, Tabellenbild>& verzeichnis);

}  // namespace store
