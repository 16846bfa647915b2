// Writes the memo file of a new table.
#pragma once

#include <QByteArray>
#include <QString>

#include "engine/dbase/blockschreiber.h"

namespace dbase {

inline constexpr qint64 kMemoblock = 512;

// The blocks that a memo of so many bytes takes in a file of dBase III (`stufe` 3) or IV.
qint64 memobloecke(qint64 bytes, int stufe);

class Memoschreiber {
  public:
    Memoschreiber(const QString& pfad, const QString& name, QByteArray tabelle, int stufe);
    // Returns the number of the memo's first block.
    qint64 ablegen(const QByteArray& text);
    // Writes the header.
    void abschliessen();

  private:
    Blockschreiber datei_;
    QByteArray tabelle_;
    int stufe_;
    qint64 naechster_ = 1;
};

// The name in a memo file's header, as dBase IV keeps it: the table's name in capitals, eight bytes.
QByteArray memoKopfname(const QByteArray& tabelle);

}  // namespace dbase
