// Preparing a record, in a work table of its own.
#include <QTemporaryDir>
#include <algorithm>

#include "engine/dao/workspace.h"
#include "engine/jet/anlegen.h"
#include "operationen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/satzaufbereitung.h"
#include "search/suchzustand.h"
#include "stummesfenster.h"

namespace {

constexpr char16_t kTabelle[] = u"Arbeit";

// A database that lives as long as the tool; its file stays empty.
struct Werkstatt {
    QTemporaryDir ordner;
    std::unique_ptr<dao::Workspace> bereich =
        dao::DBEngine::CreateWorkspace(QString(), QStringLiteral("Admin"), QString());
    std::unique_ptr<dao::Database> datenbank;

    Werkstatt() {
        const QString pfad = ordner.filePath(QStringLiteral("arbeit.mdb"));
        jet::mdbAnlegen(pfad);
        datenbank = bereich->OpenDatabase(pfad, true, false, QString());
    }
};

struct Spalte {
    FeldZuordnung zuordnung;
    engine::FeldDef def;
    Wert wert;
};

std::vector<Spalte> spaltenAus(const QJsonArray& liste) {
    std::vector<Spalte> spalten;
    for (const QJsonValue& element : liste) {
        const QJsonObject feld = element.toObject();
        Spalte spalte;
        spalte.zuordnung = ZuordnungAusJson(QJsonArray{feld["Gruppe"], feld["Maske"]});
        spalte.def.name = feld["name"].toString();
        spalte.def.typ = feld["typ"].toInt();
        spalte.def.groesse = feld["groesse"].toInt();
        spalte.def.attribute = feld["attribute"].toInt();
        spalte.def.leerErlaubt = true;
        spalte.wert = WertAusJson(feld["wert"]);
        spalten.push_back(std::move(spalte));
    }
    return spalten;
}

void tabelleAnlegen(dao::Database& datenbank, const QString& name, const std::vector<Spalte>& spalten) {
    auto tabelle = datenbank.CreateTableDef();
    tabelle->setName(name);
    for (const Spalte& spalte : spalten)
        if (!FeldIgnoriert(spalte.zuordnung)) tabelle->Fields().Append(dao::Field(spalte.def));
    datenbank.TableDefs().Append(std::move(tabelle));
}

QJsonArray aufbereiten(dao::Recordset& satz, const std::vector<Spalte>& spalten) {
    satz.AddNew();
    int stelle = 0;
    for (const Spalte& spalte : spalten)
        if (!FeldIgnoriert(spalte.zuordnung)) satz.Fields(stelle++).setValue(spalte.wert);
    DatensatzAufbereiten(satz);
    if (gFehler) throw Bedienfehler(stummesFenster().meldungAbholen());
    QJsonArray werte;
    for (int i = 0; i < satz.FieldsCount(); ++i) werte += JsonAusWert(satz.Fields(i).Value());
    return werte;
}

QJsonValue datensatzAufbereiten(const Argumente& a) {
    static const Werkstatt werkstatt;
    const std::vector<Spalte> spalten = spaltenAus(a.liste(0));
    FensterSetzen(&stummesFenster());
    gFehler = false;
    gSuchZuordnung.clear();
    for (const Spalte& spalte : spalten) gSuchZuordnung.push_back(spalte.zuordnung);
    const bool leer = std::all_of(spalten.begin(), spalten.end(),
                                  [](const Spalte& s) { return FeldIgnoriert(s.zuordnung); });
    if (leer) return QJsonArray();
    const QString name = QString::fromUtf16(kTabelle);
    FehlerUebergehen([&] { werkstatt.datenbank->TableDefs().Delete(name); });
    tabelleAnlegen(*werkstatt.datenbank, name, spalten);
    return aufbereiten(*werkstatt.datenbank->OpenRecordset(name), spalten);
}

}  // namespace

void AufbereitungAnmelden(Operationen& operationen) {
    operationen["DatensatzAufbereiten"] = datensatzAufbereiten;
}
