// The open database: catalogue, rows on first use, recordsets, transactions.
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/dao/abfrage.h"
#include "engine/dao/bedingung.h"
#include "engine/dao/innen.h"

namespace dao {
namespace {

std::vector<int> ausgewaehlteFelder(const Auswahlabfrage& abfrage, const std::vector<engine::FeldDef>& alle) {
    std::vector<int> felder;
    for (const std::optional<QString>& spalte : abfrage.spalten) {
        if (spalte)
            felder.push_back(feldFuerAbfrage(alle, *spalte));
        else
            for (size_t i = 0; i < alle.size(); ++i) felder.push_back(int(i));
    }
    return felder;
}

std::vector<int> ordnungsspalten(const Auswahlabfrage& abfrage, const std::vector<engine::FeldDef>& alle,
                                 const std::vector<int>& spalten) {
    std::vector<int> ordnung;
    for (const QString& name : abfrage.ordnung)
        ordnung.push_back(spalten[size_t(feldFuerAbfrage(alle, name))]);
    return ordnung;
}

[[noreturn]] void beschaedigt(const QString& tabelle) {
    throw EngineFehler(kBeschaedigt,
                       QStringLiteral("Die Tabelle '%1' ist beschädigt: Eine Zeile hat nicht so viele Werte "
                                      "wie die Tabelle Felder.")
                           .arg(tabelle));
}

}  // namespace

Database::Database(std::unique_ptr<Zustand> zustand) : z_(std::move(zustand)) {
    z_->tabellen.datenbank_ = this;
    z_->relationen.datenbank_ = this;
    katalogUebernehmen(z_->datei->katalogLesen(), QFileInfo(z_->pfad).lastModified());
    z_->bereich->offene.push_back(this);
    if (z_->bereich->transaktion) transaktionBeginnen();
}

Database::~Database() {
    z_->kern->geschlossen = true;
    std::erase(z_->bereich->offene, this);
}

Database::Zustand& Database::offen() const {
    if (z_->kern->geschlossen) objektUngueltig(QStringLiteral("Die Datenbank"));
    return *z_;
}

std::shared_ptr<TableDef> Database::tabelleAusDatei(const engine::TabellenDef& def,
                                                    const QDateTime& dateizeit) {
    auto tabelle = std::shared_ptr<TableDef>(new TableDef(this));
    tabelle->name_ = def.name;
    tabelle->attribute_ = def.attribute;
    tabelle->geaendert_ = def.geaendert.isValid() ? def.geaendert : dateizeit;
    for (const engine::FeldDef& feld : def.felder)
        tabelle->felder_.felder_.push_back(std::make_unique<Field>(feld));
    for (const engine::IndexDef& index : def.indexe)
        if (index.fremd)
            tabelle->fremdIndexe_.push_back(index);
        else
            tabelle->indexe_.indexe_.emplace_back(index);
    tabelle->kern_->nummer = z_->kern->speicher.neueNummer();
    tabelle->inDatei_ = tabelle->definition();
    return tabelle;
}

void Database::katalogUebernehmen(const engine::Katalog& katalog, const QDateTime& dateizeit) {
    for (const engine::TabellenDef& def : katalog.tabellen) {
        z_->tabellen.tabellen_.push_back(tabelleAusDatei(def, dateizeit));
        z_->inDatei.push_back(def.name);
    }
    for (const engine::RelationDef& def : katalog.relationen) z_->relationen.relationen_.emplace_back(def);
    z_->oeffnungshinweise = katalog.hinweise;
}

const engine::Hinweise& Database::Oeffnungshinweise() const {
    return offen().oeffnungshinweise;
}

void Database::SchreibenPruefen() const {
    offen().datei->schreibenPruefen();
}

dao::TableDefs& Database::TableDefs() {
    return offen().tabellen;
}

dao::Relations& Database::Relations() {
    return offen().relationen;
}

TableDef* Database::tabelleSuchen(const QString& name) const {
    for (const auto& tabelle : offen().tabellen)
        if (namenGleich(tabelle->Name(), name)) return tabelle.get();
    return nullptr;
}

TableDef& Database::tabelleFuerAbfrage(const QString& name) const {
    TableDef* tabelle = tabelleSuchen(name);
    if (!tabelle)
        throw EngineFehler(kNichtGefunden,
                           QStringLiteral("Die Tabelle '%1' ist in der Datenbank nicht vorhanden. Prüfen "
                                          "Sie den Namen.")
                               .arg(name));
    return *tabelle;
}

void Database::namenPruefen(const QString& name, const TableDef* selbst) const {
    if (!offen().datei->nameErlaubt(name))
        throw EngineFehler(kUngueltigerName,
                           QStringLiteral("'%1' ist in dieser Datenbank kein gültiger Tabellenname. "
                                          "Wählen Sie einen anderen.")
                               .arg(name));
    const TableDef* andere = tabelleSuchen(name);
    if (andere && andere != selbst) nameVorhanden(name);
}

void Database::relationenPruefen(const QString& name) const {
    for (const Relation& relation : offen().relationen.relationen_)
        if (namenGleich(relation.Table(), name) || namenGleich(relation.ForeignTable(), name))
            relationBesteht(name);
}

void Database::bereitstellen(TableDef& tabelle) const {
    store::Speicher& speicher = offen().kern->speicher;
    if (speicher.tabelleVorhanden(tabelle.kern_->nummer)) return;
    std::vector<store::Spaltenart> arten;
    for (const auto& feld : tabelle.felder_.felder_) arten.push_back(store::spaltenartVon(feld->Type()));
    std::vector<int> spalten(arten.size());
    for (size_t i = 0; i < spalten.size(); ++i) spalten[i] = int(i);

    store::Speicher::Sicherungspunkt punkt(speicher);
    speicher.tabelleAnlegen(tabelle.kern_->nummer, std::move(arten));
    tabelle.kern_->zaehler.clear();
    tabelle.spalten_ = std::move(spalten);
    if (tabelle.inDatei_) zeilenEinlesen(tabelle);
    punkt.behalten();
}

void Database::zeilenEinlesen(TableDef& tabelle) const {
    store::Speicher& speicher = z_->kern->speicher;
    const auto quelle = z_->datei->zeilenLesen(tabelle.inDatei_->name);
    for (engine::Zeile zeile; quelle->naechste(zeile);) {
        if (zeile.size() != tabelle.spalten_.size()) beschaedigt(tabelle.Name());
        speicher.zeileAnhaengen(tabelle.kern_->nummer, tabelle.spalten_, zeile);
        Atempause();
    }
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& quelle, int) {
    if (TableDef* tabelle = tabelleSuchen(quelle)) return satzOeffnen(*tabelle, QString());
    if (!istAuswahlabfrage(quelle)) tabelleFuerAbfrage(quelle);
    return satzOeffnen(tabelleFuerAbfrage(auswahlabfrageLesen(quelle).tabelle), quelle);
}

std::unique_ptr<Recordset> Database::satzOeffnen(TableDef& tabelle, const QString& abfrage) const {
    Auswahlabfrage auswahl;
    if (abfrage.isEmpty())
        auswahl.spalten.emplace_back();
    else
        auswahl = auswahlabfrageLesen(abfrage);
    bereitstellen(tabelle);

    auto zustand = std::make_unique<Recordset::Zustand>();
    zustand->kern = z_->kern;
    zustand->stand.tabelle = tabelle.kern_;
    zustand->spalten = tabelle.spalten_;
    zustand->tabellenfelder = tabelle.definition().felder;
    zustand->platz = ausgewaehlteFelder(auswahl, zustand->tabellenfelder);
    for (int platz : zustand->platz) zustand->felder.push_back(zustand->tabellenfelder[size_t(platz)]);
    zustand->auswahl.tabelle = tabelle.kern_->nummer;
    if (auswahl.bedingung)
        zustand->auswahl.bedingung =
            speicherbedingung(*auswahl.bedingung, zustand->tabellenfelder, zustand->spalten);
    zustand->auswahl.ordnung = ordnungsspalten(auswahl, zustand->tabellenfelder, zustand->spalten);
    zustand->waehlen();
    zustand->anmelden();
    return std::unique_ptr<Recordset>(new Recordset(std::move(zustand)));
}

qint64 Database::Execute(const QString& anweisung) {
    offen();
    const Loeschabfrage loeschung = loeschabfrageLesen(anweisung);
    TableDef& tabelle = tabelleFuerAbfrage(loeschung.tabelle);
    bereitstellen(tabelle);
    store::Speicher& speicher = z_->kern->speicher;
    const qint64 nummer = tabelle.kern_->nummer;
    const std::vector<qint64> ids = speicher.auswaehlen(
        {nummer, speicherbedingung(loeschung.bedingung, tabelle.definition().felder, tabelle.spalten_), {}});
    speicher.zeilenEntfernen(nummer, ids);
    if (!ids.empty()) tabelle.kern_->geaendert = true;
    return qint64(ids.size());
}

std::unique_ptr<TableDef> Database::CreateTableDef() {
    offen();
    return std::unique_ptr<TableDef>(new TableDef(nullptr));
}

Relation Database::CreateRelation(const QString& name, const QString& tabelle, const QString& fremdtabelle,
                                  int attribute) {
    offen();
    return Relation({name, tabelle, fremdtabelle, attribute, {}});
}

void Database::Close() {
    offen().kern->geschlossen = true;
    std::erase(z_->bereich->offene, this);
    z_->datei.reset();
}

void Database::transaktionBeginnen() {
    Zustand& z = offen();
    z.kern->speicher.beginnen();
    z.vorher = tabellenstand();
    z.vorherNaechste.clear();
    for (const auto& tabelle : z.tabellen.tabellen_) {
        const qint64 naechste = z.kern->speicher.naechsteId(tabelle->kern_->nummer);
        if (naechste != 0) z.vorherNaechste[tabelle->kern_->nummer] = naechste;
    }
}

void Database::transaktionFestschreiben() {
    Zustand& z = offen();
    z.kern->speicher.festschreiben();
    z.vorher.reset();
}

void Database::transaktionVerwerfen() {
    Zustand& z = offen();
    z.kern->speicher.verwerfen();
    const Tabellenstand vorher = *std::exchange(z.vorher, std::nullopt);
    for (const auto& tabelle : z.tabellen.tabellen_) tabelle->kern_->geloescht = true;
    z.tabellen.tabellen_.clear();
    for (const auto& [tabelle, stand] : vorher.tabellen) {
        tabelle->zuruecksetzen(stand);
        tabelle->kern_->geaendert = stand.zeilenGeaendert;
        z.tabellen.tabellen_.push_back(tabelle);
    }
    z.relationen.relationen_ = vorher.relationen;
    saetzeZuruecknehmen();
}

// Open recordsets lose the records that the transaction added. A table whose rows were read during the
// transaction is read again for them.
void Database::saetzeZuruecknehmen() {
    for (Satzstand* satz : z_->kern->offene) {
        for (const auto& tabelle : z_->tabellen.tabellen_)
            if (tabelle->kern_ == satz->tabelle) bereitstellen(*tabelle);
        const qint64 nummer = satz->tabelle->nummer;
        const auto vorher = z_->vorherNaechste.find(nummer);
        const qint64 grenze =
            vorher != z_->vorherNaechste.end() ? vorher->second : z_->kern->speicher.naechsteId(nummer);
        const bool amEnde = satz->stelle == qint64(satz->schluessel.size());
        std::erase_if(satz->schluessel, [&](qint64 id) { return id >= grenze; });
        const qint64 anzahl = qint64(satz->schluessel.size());
        satz->stelle = amEnde ? anzahl : std::min(satz->stelle, anzahl);
    }
}

}  // namespace dao
