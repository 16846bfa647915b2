// An .xls workbook as the engine uses it: catalogue, rows, and one atomic change.
#pragma once

#include <QString>
#include <memory>

#include "engine/datei/austausch.h"
#include "engine/datei/datenbankdatei.h"
#include "engine/excel/arbeitsmappe.h"

namespace excel {

// Holds the workbook in memory; the file is not kept open. Rows and changes raise kDateiGeaendert once
// somebody else has changed the file.
class XlsDatei : public engine::Datenbankdatei {
  public:
    // Raises kDateiFehlt, kDateifehler, kBeschaedigt; kSystemgrenze for what is no workbook or one that is
    // encrypted, older than Excel 5, shared, without tables or too damaged to be changed safely; and for a
    // file that could not be written at the end kSchreibgeschuetzt or kDateiGesperrt.
    explicit XlsDatei(QString pfad);

    engine::Katalog katalogLesen() override;
    std::unique_ptr<engine::Zeilenquelle> zeilenLesen(const QString& tabelle) override;
    engine::Hinweise anwenden(const std::vector<engine::Aenderung>& aenderungen) override;
    bool nameErlaubt(const QString& name) const override;
    void tabellePruefen(const engine::TabellenDef& def) const override;
    void feldnamePruefen(const QString& name) const override;

  private:
    void laden();
    void unveraendertPruefen() const;

    QString pfad_;
    engine::Dateistand stand_;
    bool nurBiff8_ = true;  // false also for a file that holds the workbook in both formats
    std::shared_ptr<const Arbeitsmappe> mappe_;  // shared with the rows that are being read
    // What the rows read so far had to tell; told with the next change.
    std::shared_ptr<engine::Hinweise> gelesen_;
};

// The opener of .xls files; they have no password that would open them.
std::unique_ptr<engine::Datenbankdatei> xlsOeffnen(const QString& pfad, const QString& passwort);

}  // namespace excel
