// The catalogue changed: entries of tables in MSysObjects, MSysACEs and MSysRelationships.
#pragma once

#include <QString>
#include <vector>

#include "engine/jet/katalog_lesen.h"
#include "engine/jet/systemtabelle.h"

namespace jet {

class Katalogbau {
  public:
    Katalogbau(Seitendatei& datei, Seitenvergabe& vergabe);

    // What the catalogue lists at present.
    const std::vector<Objekt>& objekte() const { return objekte_; }
    // A plain user table by name, case ignored. Raises kNichtGefunden, and kSchreibgeschuetzt for linked and
    // system tables, which are not ours to change.
    const Objekt& benutzertabelle(const QString& name) const;
    // Raises kUngueltigerName or kNameVorhanden (a table or query whose name the General order takes for the
    // same); `ausser` is passed over.
    void neuenNamenPruefen(const QString& name, const Objekt* ausser = nullptr) const;
    // Raises kRelationBesteht if the table takes part in a relation.
    void ohneRelationPruefen(const QString& name) const;

    // Rows for a new table: object, rights as its container hands them down. `eigenschaften`: LvProp.
    void eintragen(quint32 seite, const QString& name, const QByteArray& eigenschaften);
    void austragen(const Objekt& objekt);
    // Object and relations get the new name.
    void umbenennen(const Objekt& objekt, const QString& neu);
    // Indexes and row counts of the tables that were changed.
    void abschliessen();

  private:
    void rechteEintragen(qint32 id);
    void rechteAustragen(qint32 id);
    void relationenUmbenennen(const QString& alt, const QString& neu);
    Systemtabelle::Zeile zeileVon(const Objekt& objekt) const;
    QByteArray besitzer() const;
    Systemtabelle* relationen() const { return relationen_.get(); }

    Seitendatei& datei_;
    std::vector<Objekt> objekte_;
    Systemtabelle objektzeilen_;
    Systemtabelle rechte_;
    std::unique_ptr<Systemtabelle> relationen_;  // none in a file without that table
};

}  // namespace jet
