// What needs a record of a table: preparing it, and checking it for junk.
#include <QTemporaryDir>

#include "data/steuerfelder.h"
#include "engine/dao/workspace.h"
#include "engine/jet/anlegen.h"
#include "junk/muellpruefung.h"
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
    for (const QJsonValue element : liste) {
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

dao::Database& datenbank() {
    static const Werkstatt werkstatt;
    return *werkstatt.datenbank;
}

// A table with these fields in the place of the last one.
std::unique_ptr<dao::Recordset> tabelleAnlegen(const std::vector<engine::FeldDef>& felder) {
    const QString name = QString::fromUtf16(kTabelle);
    FehlerUebergehen([&] { datenbank().TableDefs().Delete(name); });
    auto tabelle = datenbank().CreateTableDef();
    tabelle->setName(name);
    for (const engine::FeldDef& feld : felder) tabelle->Fields().Append(dao::Field(feld));
    datenbank().TableDefs().Append(std::move(tabelle));
    return datenbank().OpenRecordset(name);
}

QJsonArray aufbereiten(dao::Recordset& satz, const std::vector<Spalte>& spalten) {
    satz.AddNew();
    int stelle = 0;
    for (const Spalte& spalte : spalten)
        if (!FeldIgnoriert(spalte.zuordnung)) satz.Fields(stelle++).setValue(spalte.wert);
    DatensatzAufbereiten(satz, AufbereitungenFuer(gSuchZuordnung));
    if (gFehler) throw Abgelehnt(stummesFenster().meldungAbholen());
    QJsonArray werte;
    for (int i = 0; i < satz.FieldsCount(); ++i) werte += JsonAusWert(satz.Fields(i).Value());
    return werte;
}

QJsonValue datensatzAufbereiten(const Argumente& a) {
    const std::vector<Spalte> spalten = spaltenAus(a.liste(0));
    FensterSetzen(&stummesFenster());
    gFehler = false;
    gSuchZuordnung.clear();
    std::vector<engine::FeldDef> felder;
    for (const Spalte& spalte : spalten) {
        gSuchZuordnung.push_back(spalte.zuordnung);
        if (!FeldIgnoriert(spalte.zuordnung)) felder.push_back(spalte.def);
    }
    return felder.empty() ? QJsonArray() : aufbereiten(*tabelleAnlegen(felder), spalten);
}

engine::FeldDef steuerfeld(const char16_t* name, int typ, int groesse) {
    engine::FeldDef feld;
    feld.name = QString::fromUtf16(name);
    feld.typ = typ;
    feld.groesse = groesse;
    feld.leerErlaubt = true;
    return feld;
}

Muelloptionen muelloptionenAus(const QJsonObject& kaestchen) {
    const auto wert = [&](const char* name) { return kaestchen[QLatin1String(name)].toInt(); };
    return {wert("chkFirmenname"), wert("chkRechtsform"), wert("chkBranche"), wert("chkPostalisch"),
            wert("chkHausnummer"), wert("chkKontakt"),    wert("chkAnrede"),  wert("chkVorname"),
            wert("chkNachname"),   wert("chkAbteilung"),  wert("chkTelefon"), wert("chkFax"),
            wert("chkEmail"),      wert("chkInternet")};
}

QJsonValue datensatzEntmuellen(const Argumente& a) {
    const std::vector<Spalte> spalten = spaltenAus(a.liste(0));
    FensterSetzen(&stummesFenster());
    stummesFenster().muelloptionenSetzen(muelloptionenAus(a.objekt(1)));
    gFehler = false;
    gZuordnungenTabelle1.clear();
    std::vector<engine::FeldDef> felder;
    for (const Spalte& spalte : spalten) {
        gZuordnungenTabelle1.push_back(spalte.zuordnung);
        felder.push_back(spalte.def);
    }
    gFeldAnzahl = qint16(spalten.size());
    felder.push_back(steuerfeld(kTempDss, dao::dbByte, 1));
    felder.push_back(steuerfeld(kTempAmk, dao::dbText, 200));
    const auto satz = tabelleAnlegen(felder);
    satz->AddNew();
    for (size_t i = 0; i < spalten.size(); ++i) satz->Fields(int(i)).setValue(spalten[i].wert);
    satz->Fields(QString::fromUtf16(kTempDss)).setValue(int(kStatusNormal));
    satz->Fields(QString::fromUtf16(kTempAmk)).setValue(QString());
    DatensatzEntmuellen(*satz);
    if (gFehler) throw Abgelehnt(stummesFenster().meldungAbholen());
    return QJsonObject{{"TEMP_DSS", JsonAusWert(satz->Fields(QString::fromUtf16(kTempDss)).Value())},
                       {"TEMP_AMK", JsonAusWert(satz->Fields(QString::fromUtf16(kTempAmk)).Value())}};
}

}  // namespace

void AufbereitungAnmelden(Operationen& operationen) {
    operationen["DatensatzAufbereiten"] = datensatzAufbereiten;
    operationen["DatensatzEntmuellen"] = datensatzEntmuellen;
}
