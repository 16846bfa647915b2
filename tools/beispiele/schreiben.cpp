// Makes a database file from sample tables, the way the program itself makes them.
#include "schreiben.h"

#include <QFile>

#include "engine/dao/oeffner.h"
#include "engine/dao/workspace.h"
#include "engine/jet/anlegen.h"
#include "engine/jet/mdbdatei.h"

namespace {

void tabelleAnlegen(dao::Database& datenbank, const engine::TabellenDef& def) {
    auto tabelle = datenbank.CreateTableDef();
    tabelle->setName(def.name);
    for (const engine::FeldDef& feld : def.felder) tabelle->Fields().Append(dao::Field(feld));
    for (const engine::IndexDef& index : def.indexe) tabelle->Indexes().Append(dao::Index(index));
    datenbank.TableDefs().Append(std::move(tabelle));
}

void zeilenSchreiben(dao::Recordset& satz, const std::vector<std::vector<Wert>>& zeilen) {
    for (const std::vector<Wert>& zeile : zeilen) {
        satz.AddNew();
        for (size_t i = 0; i < zeile.size(); ++i) satz.Fields(int(i)).setValue(zeile[i]);
        satz.Update();
    }
    satz.Close();
}

}  // namespace

void DatenbankSchreiben(const QString& pfad, const std::vector<Beispieltabelle>& tabellen) {
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, jet::mdbOeffnen);
    QFile::remove(pfad);
    jet::mdbAnlegen(pfad);
    const auto bereich = dao::DBEngine::CreateWorkspace(QString(), QStringLiteral("Admin"), QString());
    const auto datenbank = bereich->OpenDatabase(pfad, true, false, QString());
    for (const Beispieltabelle& tabelle : tabellen) {
        tabelleAnlegen(*datenbank, tabelle.def);
        zeilenSchreiben(*datenbank->OpenRecordset(tabelle.def.name), tabelle.zeilen);
    }
    datenbank->Sichern();
    datenbank->Close();
}
