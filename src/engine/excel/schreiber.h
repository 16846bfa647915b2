// Adds, drops and renames tables in a workbook in memory.
#pragma once

#include <map>

#include "engine/datei/datenbankdatei.h"
#include "engine/excel/tabellenorte.h"
#include "engine/excel/textbau.h"

namespace excel {

// An exception leaves the workbook in memory of no use; it is then to be thrown away.
class Schreiber {
  public:
    explicit Schreiber(Mappe& mappe);

    // A sheet of the name, and a name for all of its cells. Raises kNameVorhanden when a sheet or a live name
    // of the workbook is called so, kUngueltigerName, and kSystemgrenze for what does not fit.
    void anlegen(const engine::TabellenDef& def, engine::Zeilenquelle& zeilen);
    // The sheet, with the name that covers it left dead; of a range only the name, its cells stay. Raises
    // kNichtGefunden, and kSystemgrenze for the last sheet of a workbook.
    void loeschen(const QString& name);
    // Sheet and name. A "$" at the end of the new name is not part of it. Raises like the others.
    void umbenennen(const QString& alt, const QString& neu);
    // For after the last change. Raises kSystemgrenze when no visible sheet is left.
    void abschliessen();

    // The cells that each added table has, by the name of its sheet now.
    const std::map<QString, int>& zellen() const { return zellen_; }
    const engine::Hinweise& hinweise() const { return hinweise_; }

  private:
    Tabellenort finden(const QString& name) const;
    void blattnameFrei(const QString& name, int selbst = -1) const;
    QString bereichsnameFuer(const QString& blatt, const QString& bisher = {}) const;
    void blattLoeschen(int blatt);
    void hinweisenAuf(const engine::TabellenDef& def);

    Mappe& mappe_;
    Textindex textindex_;
    bool texteGeaendert_ = false;
    bool blattGeloescht_ = false;
    std::map<QString, int> zellen_;
    engine::Hinweise hinweise_;
};

// Whether a new table could be called so beside what is no table in the workbook: other sheets, and names
// that mean something else.
bool nameFreiNebenAnderem(const Mappe& mappe, const std::vector<Definition>& definitionen,
                          const std::vector<Tabellenort>& tabellen, const QString& name);

}  // namespace excel
