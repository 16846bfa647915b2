// Writes a new table into files of its own and reads them back.
#pragma once

#include <QString>

#include "engine/datei/datenbankdatei.h"
#include "engine/dbase/schreibplan.h"
#include "engine/dbase/tabelle.h"
#include "engine/dbase/zeilenkodierer.h"

namespace dbase {

class Tabellenschreiber {
  public:
    // Plans the table and looks at all rows; nothing is written. Raises as schreibplanErstellen and
    // Zeilenkodierer.
    explicit Tabellenschreiber(const engine::TabelleAnlegen& neu);
    Tabellenschreiber(const Tabellenschreiber&) = delete;
    Tabellenschreiber& operator=(const Tabellenschreiber&) = delete;

    bool hatMemo() const { return plan_.hatMemo(); }
    const QByteArray& cpg() const { return plan_.cpg; }
    const engine::Hinweise& hinweise() const { return plan_.hinweise; }

    // Writes the rows into two empty files (`memo` only for a table that has one) and brings them to the
    // disk. `name` and `memoname` are what messages call them. Raises kBeschaedigt when the rows are others
    // than at first, kDatentraegerVoll and the like.
    void schreiben(const QString& datei, const QString& name, const QString& memo, const QString& memoname);

    // Reads the files with the program's own reader: same fields, same records, byte for byte. Returns what
    // it read (paths are left open). Raises kBeschaedigt.
    Tabelle zurueckgelesen(const QString& datei, const QString& memo) const;

  private:
    QByteArray kopf() const;

    const engine::TabelleAnlegen& neu_;
    Schreibplan plan_;
    Zeilenkodierer kodierer_;
    quint64 pruefsumme_ = 0;
};

}  // namespace dbase
