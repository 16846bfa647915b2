// A folder of .dbf files as the engine uses it: each file is a table.
#pragma once

#include <QString>
#include <memory>
#include <set>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "engine/dbase/tabelle.h"

namespace dbase {

// Knows the tables as they were at the start and by its own changes. Rows and changes raise kDateiGeaendert
// for a table that somebody else has changed since; other files of the folder do not matter.
class DbaseOrdner : public engine::Datenbankdatei {
  public:
    // Raises kDateiFehlt, kSchreibgeschuetzt for a folder that takes no new file, and kDateifehler, with the
    // reason, when it has .dbf files but no table among them.
    explicit DbaseOrdner(QString ordner);
    ~DbaseOrdner() override;

    engine::Katalog katalogLesen() override;
    std::unique_ptr<engine::Zeilenquelle> zeilenLesen(const QString& tabelle) override;
    // New tables are written into temporary files, read back and then put in place; the first notices are on
    // values that could not be read. Indexes of new tables are left out and named.
    engine::Hinweise anwenden(const std::vector<engine::Aenderung>& aenderungen) override;
    bool nameErlaubt(const QString& name) const override;
    // Any name that is not empty will do: what dBase does not take is changed when the table is written.
    void feldnamePruefen(const QString& name) const override;
    void feldPruefen(const engine::FeldDef& feld) const override;
    void tabellePruefen(const engine::TabellenDef& def) const override;
    // Each table has a code page of its own; a copy keeps it.
    engine::Zeichenprobe zeichenprobe(const engine::TabellenDef& def) const override;

  private:
    void tabellenSuchen();
    QString belegtGrund(const QString& name) const;

    QString ordner_;
    std::vector<Tabelle> tabellen_;  // sorted by name
    std::vector<QString> hinweise_;  // on files that are no tables, and on tables
    struct Leseliste;
    std::shared_ptr<Leseliste>
        gelesen_;  // findings of the rows read so far; shared with the rows that are being read
};

// The opener of dBase folders; there are no passwords.
std::unique_ptr<engine::Datenbankdatei> dbaseOeffnen(const QString& ordner, const QString& passwort);

}  // namespace dbase
