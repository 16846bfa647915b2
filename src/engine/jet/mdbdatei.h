// An .mdb file as the engine uses it: catalogue, rows, and one atomic change.
#pragma once

#include <QString>
#include <memory>

#include "engine/datei/austausch.h"
#include "engine/datei/datenbankdatei.h"
#include "engine/jet/seiten.h"

namespace jet {

// Keeps the file open for reading, without a lock. Rows and changes raise kDateiGeaendert once somebody else
// has changed the file.
class MdbDatei : public engine::Datenbankdatei {
  public:
    // Raises kDateiFehlt, kDateifehler, kPasswortFalsch, kDateiNichtLesbar, kBeschaedigt; and for a file that
    // could not be written at the end kSchreibgeschuetzt, kDateiGesperrt or kSystemgrenze. A file of Access
    // 2010 or later opens for reading; its catalogue says so.
    MdbDatei(QString pfad, const QString& passwort);

    engine::Katalog katalogLesen() override;
    std::unique_ptr<engine::Zeilenquelle> zeilenLesen(const QString& tabelle) override;
    engine::Hinweise anwenden(const std::vector<engine::Aenderung>& aenderungen) override;
    void schreibenPruefen() const override;
    bool nameErlaubt(const QString& name) const override;
    void feldnamePruefen(const QString& name) const override;
    void tabellePruefen(const engine::TabellenDef& def) const override;

  private:
    void unveraendertPruefen() const;

    QString pfad_;
    engine::Dateistand stand_;
    bool nurLesbar_ = false;
    std::shared_ptr<Seitendatei> datei_;  // shared with the rows that are being read
};

// The opener of .mdb files.
std::unique_ptr<engine::Datenbankdatei> mdbOeffnen(const QString& pfad, const QString& passwort);

}  // namespace jet
