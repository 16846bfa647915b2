// Carries out a plan on the files of the folder.
#pragma once

#include <memory>
#include <vector>

#include "engine/datei/dateigruppe.h"
#include "engine/dbase/ordner.h"
#include "engine/dbase/tabellenschreiber.h"
#include "engine/dbase/vorhaben.h"

namespace dbase {

class Ausfuehrung {
  public:
    // Checks everything that can be known before the first byte: the state of the files concerned, and all
    // rows of the new tables. Raises kDateiGeaendert, kDateiGesperrt, kSchreibgeschuetzt and as
    // Tabellenschreiber.
    Ausfuehrung(const QString& ordner, const Vorhaben& vorhaben);

    // Writes, reads back, and exchanges the files. Returns the tables that came in, as they will be read.
    std::vector<Tabelle> durchfuehren();

    const engine::Hinweise& hinweise() const { return hinweise_; }

  private:
    struct Altdatei {
        QString pfad;
        engine::Dateistand stand;
    };
    struct Endungen {
        QString daten;
        QString dbt;
        QString cpg;
    };
    void altdateienSammeln();
    void altdateienPruefen() const;
    void begleiterNennen(const Tabelle& tabelle);
    Endungen endungenFuer(const QString& vorbild) const;
    QString zielFuer(const QString& name, const QString& endung) const;
    std::optional<engine::Dateistand> standVonAlter(const QString& pfad) const;
    void vormerken(const QString& ziel, engine::Beiname neu);
    void cpgVormerken(const QString& ziel, const QByteArray& inhalt);
    Tabelle umziehen(const Vorhaben::Umzug& umzug);
    Tabelle anlegen(Tabellenschreiber& schreiber, const engine::TabelleAnlegen& neu);
    void loeschungenVormerken();

    Ordner ordner_;
    const Vorhaben& vorhaben_;
    std::vector<Altdatei> alte_;  // all files of the tables that go, each .dbf before its companions
    std::vector<std::unique_ptr<Tabellenschreiber>> schreiber_;
    std::vector<engine::Gruppenschritt> schritte_;
    engine::Hinweise hinweise_;
};

}  // namespace dbase
