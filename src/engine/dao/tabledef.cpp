// Definitions: tables, fields, indexes, relations.
#include "engine/dao/tabledef.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/dao/innen.h"

namespace dao {
namespace {

constexpr int kVorgabeTextgroesse = 255;

// What a field of a fixed width is told to have as its size.
int festeGroesse(int typ, int groesse) {
    switch (typ) {
        case dbBoolean:
        case dbByte:
            return 1;
        case dbInteger:
            return 2;
        case dbLong:
        case dbSingle:
            return 4;
        case dbCurrency:
        case dbDouble:
        case dbDate:
        case dbTime:
        case dbBigInt:
            return 8;
        case dbGUID:
        case dbDecimal:
            return 16;
        case dbMemo:
        case dbLongBinary:
            return 0;
        case dbText:
            return groesse > 0 ? groesse : kVorgabeTextgroesse;
        default:
            return groesse;
    }
}

void felderzahlPruefen(size_t anzahl) {
    if (anzahl <= size_t(kMaxFelder)) return;
    throw EngineFehler(
        kZuVieleFelder,
        QStringLiteral("Eine Tabelle nimmt höchstens %1 Felder auf, mit den neuen wären es %2. "
                       "Entfernen Sie Felder aus der Ausgangstabelle.")
            .arg(kMaxFelder)
            .arg(anzahl));
}

bool indexHaelt(const engine::IndexDef& index, const QString& feld) {
    return std::any_of(index.felder.begin(), index.felder.end(),
                       [&](const engine::IndexFeld& f) { return namenGleich(f.name, feld); });
}

}  // namespace

bool namenGleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

void unbekannterName(const QString& name) {
    throw EngineFehler(kNichtInListe, QStringLiteral("Der Name '%1' ist nicht vorhanden.").arg(name));
}

void objektUngueltig(const QString& was) {
    throw EngineFehler(kObjektUngueltig, QStringLiteral("%1 ist nicht mehr geöffnet.").arg(was));
}

void nameVorhanden(const QString& name) {
    throw EngineFehler(
        kNameVorhanden,
        QStringLiteral("Der Name '%1' ist bereits vorhanden. Wählen Sie einen anderen.").arg(name));
}

void relationBesteht(const QString& tabelle) {
    throw EngineFehler(kRelationBesteht,
                       QStringLiteral("Die Tabelle '%1' nimmt an einer Verknüpfung teil. Entfernen Sie "
                                      "zuerst die Verknüpfung.")
                           .arg(tabelle));
}

int Fields::Count() const {
    return int(felder_.size());
}

Field& Fields::Item(int position) {
    if (position < 0 || position >= Count()) unbekannterName(QString::number(position));
    return *felder_[size_t(position)];
}

const Field& Fields::Item(int position) const {
    return const_cast<Fields*>(this)->Item(position);
}

Field& Fields::Item(const QString& name) {
    const int stelle = position(name);
    if (stelle < 0) unbekannterName(name);
    return *felder_[size_t(stelle)];
}

int Fields::position(const QString& name) const {
    const auto fund = std::find_if(felder_.begin(), felder_.end(), [&](const std::unique_ptr<Field>& f) {
        return namenGleich(f->Name(), name);
    });
    return fund == felder_.end() ? -1 : int(fund - felder_.begin());
}

void Fields::Append(Field feld) {
    if (feld.Name().isEmpty())
        throw EngineFehler(kUngueltigerName, QStringLiteral("Ein Feld braucht einen Namen."));
    if (position(feld.Name()) >= 0) nameVorhanden(feld.Name());
    felderzahlPruefen(size_t(Count()) + 1);
    if (Database* datenbank = tabelle_->datenbank_) {
        datenbank->offen().datei->feldPruefen(feld.definition());
        datenbank->bereitstellen(*tabelle_);
        store::Speicher& speicher = datenbank->offen().kern->speicher;
        tabelle_->spalten_.push_back(
            speicher.spalteAnhaengen(tabelle_->kern_->nummer, store::spaltenartVon(feld.Type())));
    }
    felder_.push_back(std::make_unique<Field>(std::move(feld)));
}

void Fields::Delete(const QString& name) {
    const int stelle = position(name);
    if (stelle < 0) unbekannterName(name);
    const auto gehalten = [&](const engine::IndexDef& index) { return indexHaelt(index, name); };
    const std::vector<Index>& eigene = tabelle_->indexe_.indexe_;
    if (std::any_of(eigene.begin(), eigene.end(), [&](const Index& i) { return gehalten(i.definition()); }) ||
        std::any_of(tabelle_->fremdIndexe_.begin(), tabelle_->fremdIndexe_.end(), gehalten))
        throw EngineFehler(kIndexFeldLoeschen,
                           QStringLiteral("Das Feld '%1' gehört zu einem Index und kann nicht "
                                          "gelöscht werden. Entfernen Sie zuerst den Index.")
                               .arg(name));
    if (Database* datenbank = tabelle_->datenbank_) {
        // The store keeps the column; nobody asks for it any more.
        datenbank->bereitstellen(*tabelle_);
        tabelle_->spalten_.erase(tabelle_->spalten_.begin() + stelle);
    }
    felder_.erase(felder_.begin() + stelle);
}

const Index& Indexes::Item(int position) const {
    if (position < 0 || position >= Count()) unbekannterName(QString::number(position));
    return indexe_[size_t(position)];
}

TableDef::TableDef(Database* datenbank)
    : datenbank_(datenbank), felder_(this), kern_(std::make_shared<Tabellenkern>()) {}

TableDef::~TableDef() = default;

void TableDef::setName(const QString& name) {
    if (datenbank_) {
        datenbank_->SchreibenPruefen();
        datenbank_->namenPruefen(name, this);
        for (Relation& relation : datenbank_->offen().relationen.relationen_)
            relation.umbenennen(name_, name);
    }
    name_ = name;
}

Field TableDef::CreateField(const QString& name, int typ, int groesse) const {
    engine::FeldDef feld;
    feld.name = name;
    feld.typ = typ;
    feld.groesse = festeGroesse(typ, groesse);
    return Field(std::move(feld));
}

Index TableDef::CreateIndex(const QString& name) const {
    engine::IndexDef index;
    index.name = name;
    return Index(std::move(index));
}

std::unique_ptr<Recordset> TableDef::OpenRecordset() {
    if (!datenbank_) objektUngueltig(QStringLiteral("Die Tabelle '%1'").arg(name_));
    return datenbank_->satzOeffnen(*this, QString());
}

void TableDef::KopiePruefen(const QString& name, const std::vector<Field>& neue, qint64 zeilen) const {
    if (!datenbank_) objektUngueltig(QStringLiteral("Die Tabelle '%1'").arg(name_));
    const engine::Datenbankdatei& datei = *datenbank_->offen().datei;
    engine::TabellenDef def = definition();
    def.name = name;
    def.zeilen = zeilen;
    for (const Field& feld : neue) {
        datei.feldnamePruefen(feld.Name());
        def.felder.push_back(feld.definition());
    }
    felderzahlPruefen(def.felder.size());
    datei.tabellePruefen(def);
}

engine::Zeichenprobe TableDef::Zeichenprobe() const {
    if (!datenbank_) objektUngueltig(QStringLiteral("Die Tabelle '%1'").arg(name_));
    return datenbank_->offen().datei->zeichenprobe(definition());
}

TableDef::Stand TableDef::merken() const {
    Stand stand{name_, attribute_, {}, indexe_.indexe_, spalten_, kern_->geaendert};
    for (const auto& feld : felder_.felder_) stand.felder.push_back(feld->definition());
    return stand;
}

void TableDef::zuruecksetzen(const Stand& stand) {
    name_ = stand.name;
    attribute_ = stand.attribute;
    indexe_.indexe_ = stand.indexe;
    spalten_ = stand.spalten;
    kern_->geloescht = false;
    felder_.felder_.clear();
    for (const engine::FeldDef& feld : stand.felder) felder_.felder_.push_back(std::make_unique<Field>(feld));
}

engine::TabellenDef TableDef::definition() const {
    engine::TabellenDef def;
    def.name = name_;
    def.attribute = attribute_;
    def.geaendert = geaendert_;
    for (const auto& feld : felder_.felder_) def.felder.push_back(feld->definition());
    for (const Index& index : indexe_.indexe_) def.indexe.push_back(index.definition());
    return def;
}

TableDef& TableDefs::Item(int position) {
    if (position < 0 || position >= Count()) unbekannterName(QString::number(position));
    return *tabellen_[size_t(position)];
}

TableDef& TableDefs::Item(const QString& name) {
    TableDef* tabelle = datenbank_->tabelleSuchen(name);
    if (!tabelle) unbekannterName(name);
    return *tabelle;
}

void TableDefs::Append(std::unique_ptr<TableDef>&& tabelle) {
    Database::Zustand& zustand = datenbank_->offen();
    datenbank_->SchreibenPruefen();
    datenbank_->namenPruefen(tabelle->name_, nullptr);
    for (const Index& index : tabelle->indexe_.indexe_)
        for (const engine::IndexFeld& feld : index.Fields()) tabelle->felder_.Item(feld.name);
    zustand.datei->tabellePruefen(tabelle->definition());
    tabelle->kern_->nummer = zustand.kern->speicher.neueNummer();
    tabelle->datenbank_ = datenbank_;
    tabelle->geaendert_ = QDateTime::currentDateTime();
    tabellen_.push_back(std::move(tabelle));
}

void TableDefs::Delete(const QString& name) {
    const Database::Zustand& zustand = datenbank_->offen();
    TableDef& tabelle = Item(name);
    datenbank_->SchreibenPruefen();
    datenbank_->relationenPruefen(tabelle.name_);
    if (!zustand.gemerkt || !zustand.gemerkt->enthaelt(tabelle)) datenbank_->zeilenLoeschen(tabelle);
    tabelle.kern_->geloescht = true;
    tabellen_.erase(std::find_if(tabellen_.begin(), tabellen_.end(),
                                 [&](const std::shared_ptr<TableDef>& t) { return t.get() == &tabelle; }));
}

void Relation::umbenennen(const QString& alt, const QString& neu) {
    if (namenGleich(def_.tabelle, alt)) def_.tabelle = neu;
    if (namenGleich(def_.fremdtabelle, alt)) def_.fremdtabelle = neu;
}

const Relation& Relations::Item(int position) const {
    if (position < 0 || position >= Count()) unbekannterName(QString::number(position));
    return relationen_[size_t(position)];
}

void Relations::Append(Relation relation) {
    datenbank_->tabelleFuerAbfrage(relation.Table());
    datenbank_->tabelleFuerAbfrage(relation.ForeignTable());
    for (const Relation& andere : relationen_)
        if (namenGleich(andere.Name(), relation.Name())) nameVorhanden(relation.Name());
    relationen_.push_back(std::move(relation));
}

void Relations::Delete(const QString& name) {
    const auto fund = std::find_if(relationen_.begin(), relationen_.end(),
                                   [&](const Relation& r) { return namenGleich(r.Name(), name); });
    if (fund == relationen_.end()) unbekannterName(name);
    relationen_.erase(fund);
}

}  // namespace dao
