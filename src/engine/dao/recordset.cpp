// Recordsets: a keyset with a current record.
#include "engine/dao/recordset.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/dao/abfrage.h"
#include "engine/dao/bedingung.h"
#include "engine/dao/innen.h"
#include "engine/dao/umwandlung.h"

namespace dao {
namespace {

constexpr int kDatensatzGeloescht = 3167;  // record is deleted
constexpr qint64 kReihe = 256;             // records fetched at once
constexpr qint64 kWenigVoraus = 4;         // and while somebody goes from one to the next: a few at first,
constexpr qint64 kVielVoraus = 64;         // more and more when he goes on behind them

[[noreturn]] void keinDatensatz() {
    throw EngineFehler(kKeinDatensatz, QStringLiteral("Kein aktueller Datensatz."));
}

[[noreturn]] void datensatzGeloescht() {
    throw EngineFehler(kDatensatzGeloescht, QStringLiteral("Der Datensatz ist inzwischen gelöscht."));
}

bool zaehltSelbst(const engine::FeldDef& feld) {
    return (feld.attribute & dbAutoIncrField) != 0 &&
           store::spaltenartVon(feld.typ) == store::Spaltenart::Ganzzahl;
}

qint64 groessterZaehler(const engine::FeldDef& feld) {
    return feld.typ == dbBigInt ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint32>::max();
}

}  // namespace

Recordset::Zustand::~Zustand() {
    if (kern) kern->offene.erase(&stand);
}

void Recordset::Zustand::anmelden() {
    kern->offene.insert(&stand);
}

void Recordset::Zustand::waehlen() {
    stand.schluessel = kern->speicher.auswaehlen(auswahl);
    stand.stelle = 0;
}

void Recordset::Zustand::entwurfFallenlassen() {
    entwurf = Entwurf::Keiner;
}

void Recordset::Zustand::bewegen(qint64 weite) {
    if (weite != 0 && anzahl() == 0) keinDatensatz();
    if ((weite > 0 && stand.stelle >= anzahl()) || (weite < 0 && stand.stelle < 0)) keinDatensatz();
    entwurfFallenlassen();
    // Both bounds are compared as distances, so that no sum overflows.
    if (weite >= anzahl() - stand.stelle)
        stand.stelle = anzahl();
    else if (weite < -stand.stelle)
        stand.stelle = -1;
    else
        stand.stelle += weite;
}

qint64 Recordset::Zustand::aktuelleId() const {
    if (stand.stelle < 0 || stand.stelle >= anzahl()) keinDatensatz();
    return stand.schluessel[size_t(stand.stelle)];
}

std::span<const Wert> Recordset::Zustand::aktuelleZeile() {
    const qint64 id = aktuelleId();
    const quint64 jetzt = kern->speicher.stand(auswahl.tabelle);
    if (id == zeileId && jetzt == zeileStand) return zeile;
    // One step says little: two neighbours are read in many a jump from group to group.
    folge = id == zeileId + 1 && jetzt == zeileStand ? folge + 1 : 0;
    zeileId = 0;
    if (folge > 1) vorauslesen(id, jetzt);
    if (!ausVorausgelesenen(id, jetzt)) {
        if (!kern->speicher.zeileLesen(auswahl.tabelle, spalten, id, einzelne)) datensatzGeloescht();
        zeile = einzelne;
    }
    zeileId = id;
    zeileStand = jetzt;
    return zeile;
}

bool Recordset::Zustand::ausVorausgelesenen(qint64 id, quint64 jetzt) {
    const size_t breite = spalten.size();
    const qint64 stelle = id - vorausId;
    if (jetzt != vorausStand || stelle < 0 || stelle >= vorausWeite) return false;
    zeile = std::span(voraus).subspan(size_t(stelle) * breite, breite);
    return true;
}

// For who goes from record to record while nobody else writes.
void Recordset::Zustand::vorauslesen(qint64 id, quint64 jetzt) {
    const bool gelesen = jetzt == vorausStand && id >= vorausId && id < vorausId + vorausWeite;
    if (gelesen) return;
    const bool gehtWeiter = jetzt == vorausStand && id == vorausId + vorausWeite;
    const qint64 weite = gehtWeiter ? std::min(2 * vorausWeite, kVielVoraus) : kWenigVoraus;
    const qint64 ziel = std::min(stand.stelle + weite, anzahl());
    if (!inNaturfolge(ziel)) return;
    vorausStand = 0;
    if (!reiheLesen(spalten, id, int(ziel - stand.stelle), voraus)) return;
    vorausId = id;
    vorausWeite = ziel - stand.stelle;
    vorausStand = jetzt;
}

// The engine's own number is there as soon as the new record is, and counts as given out.
void Recordset::Zustand::zaehlerSetzen() {
    for (size_t i = 0; i < tabellenfelder.size(); ++i) {
        if (!zaehltSelbst(tabellenfelder[i])) continue;
        const auto [eintrag, neu] = stand.tabelle->zaehler.try_emplace(spalten[i], 0);
        if (neu) eintrag->second = kern->speicher.groessteZahl(auswahl.tabelle, spalten[i]) + 1;
        if (eintrag->second <= groessterZaehler(tabellenfelder[i])) puffer[i] = Wert(eintrag->second++);
    }
}

void Recordset::Zustand::zaehlerNachfuehren() {
    for (size_t i = 0; i < tabellenfelder.size(); ++i) {
        if (!zaehltSelbst(tabellenfelder[i]) || puffer[i].art() != Wert::Art::Ganzzahl) continue;
        qint64& naechste = stand.tabelle->zaehler[spalten[i]];
        if (puffer[i].ganzzahl() >= naechste && puffer[i].ganzzahl() < std::numeric_limits<qint64>::max())
            naechste = puffer[i].ganzzahl() + 1;
    }
}

void Recordset::Zustand::zaehlerVerlangen() const {
    for (size_t i = 0; i < tabellenfelder.size(); ++i)
        if (zaehltSelbst(tabellenfelder[i]) && puffer[i].istNull() && !beruehrt[i])
            throw EngineFehler(kSystemgrenze,
                               QStringLiteral("Für das Feld '%1' gibt es keine höhere Nummer mehr.")
                                   .arg(tabellenfelder[i].name));
}

void Recordset::Zustand::leertextePruefen() const {
    for (size_t i = 0; i < puffer.size(); ++i)
        if (beruehrt[i]) leertextPruefen(tabellenfelder[i], puffer[i]);
}

void Recordset::Zustand::neueZeileSpeichern() {
    zaehlerVerlangen();
    const quint64 vorher = kern->speicher.stand(auswahl.tabelle);
    const qint64 id = kern->speicher.zeileAnhaengen(auswahl.tabelle, spalten, puffer);
    standNachfuehren(vorher);
    zaehlerNachfuehren();
    // At EOF means behind the last record, also when there is a new one.
    if (stand.stelle == anzahl()) ++stand.stelle;
    stand.schluessel.push_back(id);
}

void Recordset::Zustand::aenderungSpeichern() {
    std::vector<int> geaenderte;
    std::vector<Wert> werte;
    for (size_t i = 0; i < puffer.size(); ++i) {
        if (!beruehrt[i]) continue;
        geaenderte.push_back(spalten[i]);
        werte.push_back(puffer[i]);
    }
    if (geaenderte.empty()) {
        aktuelleZeile();  // raises when the record is no longer there
        return;
    }
    const quint64 vorher = kern->speicher.stand(auswahl.tabelle);
    if (!kern->speicher.zeileAendern(auswahl.tabelle, aktuelleId(), geaenderte, werte)) datensatzGeloescht();
    aenderungMerken(vorher);
}

// What was read stays good for who changes record by record: nothing differs but the current one.
void Recordset::Zustand::aenderungMerken(quint64 vorher) {
    if (zeileId != aktuelleId() || zeileStand != vorher) return;
    std::move(puffer.begin(), puffer.end(), zeile.begin());
    standNachfuehren(vorher);
}

// The write that was just made did not touch what had been read.
void Recordset::Zustand::standNachfuehren(quint64 vorher) {
    const quint64 jetzt = kern->speicher.stand(auswahl.tabelle);
    if (zeileStand == vorher) zeileStand = jetzt;
    if (vorausStand == vorher) vorausStand = jetzt;
}

const QString& RecordsetField::Name() const {
    return satz_->offen().felder[size_t(position_)].name;
}

int RecordsetField::Type() const {
    return satz_->offen().felder[size_t(position_)].typ;
}

int RecordsetField::Size() const {
    return satz_->offen().felder[size_t(position_)].groesse;
}

int RecordsetField::Attributes() const {
    return satz_->offen().felder[size_t(position_)].attribute;
}

const Wert& RecordsetField::Value() const {
    Recordset::Zustand& z = satz_->offen();
    const auto platz = size_t(z.platz[size_t(position_)]);
    if (z.entwurf != Recordset::Zustand::Entwurf::Keiner) return z.puffer[platz];
    return z.aktuelleZeile()[platz];
}

void RecordsetField::setValue(const Wert& wert) {
    Recordset::Zustand& z = satz_->offen();
    const auto platz = size_t(z.platz[size_t(position_)]);
    if (z.entwurf == Recordset::Zustand::Entwurf::Keiner)
        throw EngineFehler(kAktualisierenOhneEdit,
                           QStringLiteral("Das Feld '%1' kann nur beim Anlegen oder Bearbeiten "
                                          "eines Datensatzes geändert werden.")
                               .arg(Name()));
    z.puffer[platz] = feldwertAus(z.tabellenfelder[platz], wert);
    z.beruehrt[platz] = 1;
}

Recordset::Recordset(std::unique_ptr<Zustand> zustand) : z_(std::move(zustand)) {}

Recordset::~Recordset() = default;

Recordset::Zustand& Recordset::offen() const {
    const bool ohneTabelle =
        z_->stand.tabelle->geloescht || !z_->kern->speicher.tabelleVorhanden(z_->auswahl.tabelle);
    if (z_->geschlossen || z_->kern->geschlossen || ohneTabelle)
        objektUngueltig(QStringLiteral("Die Datensatzgruppe"));
    return *z_;
}

int Recordset::FieldsCount() const {
    return int(offen().felder.size());
}

RecordsetField Recordset::Fields(int position) {
    if (position < 0 || position >= FieldsCount()) unbekannterName(QString::number(position));
    return RecordsetField(this, position);
}

RecordsetField Recordset::Fields(const QString& name) {
    const int position = fieldPosition(name);
    if (position < 0) unbekannterName(name);
    return RecordsetField(this, position);
}

int Recordset::fieldPosition(const QString& name) const {
    const std::vector<engine::FeldDef>& felder = offen().felder;
    // Nearly all callers write the name as it is, and an exact comparison is much the cheaper one.
    for (size_t i = 0; i < felder.size(); ++i)
        if (felder[i].name == name) return int(i);
    for (size_t i = 0; i < felder.size(); ++i)
        if (namenGleich(felder[i].name, name)) return int(i);
    return -1;
}

bool Recordset::Eof() const {
    const Zustand& z = offen();
    return z.stand.stelle >= z.anzahl();
}

qint64 Recordset::RecordCount() const {
    return offen().anzahl();
}

void Recordset::MoveFirst() {
    Zustand& z = offen();
    if (z.anzahl() == 0) keinDatensatz();
    z.entwurfFallenlassen();
    z.stand.stelle = 0;
}

void Recordset::MoveLast() {
    Zustand& z = offen();
    if (z.anzahl() == 0) keinDatensatz();
    z.entwurfFallenlassen();
    z.stand.stelle = z.anzahl() - 1;
}

void Recordset::MoveNext() {
    offen().bewegen(1);
}

void Recordset::Move(qint64 anzahl) {
    offen().bewegen(anzahl);
}

void Recordset::AddNew() {
    Zustand& z = offen();
    z.puffer.assign(z.tabellenfelder.size(), Wert::null());
    z.beruehrt.assign(z.tabellenfelder.size(), 0);
    z.zaehlerSetzen();
    z.entwurf = Zustand::Entwurf::Neu;
}

void Recordset::Edit() {
    Zustand& z = offen();
    z.entwurfFallenlassen();
    const std::span<const Wert> zeile = z.aktuelleZeile();
    z.puffer.assign(zeile.begin(), zeile.end());
    z.beruehrt.assign(z.puffer.size(), 0);
    z.entwurf = Zustand::Entwurf::Aenderung;
}

void Recordset::Update() {
    Zustand& z = offen();
    if (z.entwurf == Zustand::Entwurf::Keiner)
        throw EngineFehler(kAktualisierenOhneEdit,
                           QStringLiteral("Es gibt keinen neuen oder bearbeiteten Datensatz, der "
                                          "gespeichert werden könnte."));
    z.leertextePruefen();
    if (z.entwurf == Zustand::Entwurf::Neu)
        z.neueZeileSpeichern();
    else
        z.aenderungSpeichern();
    z.stand.tabelle->geaendert = true;
    z.entwurfFallenlassen();
}

qint64 Recordset::Zustand::bis(qint64 weite) const {
    if (stand.stelle < 0) keinDatensatz();
    return stand.stelle + std::clamp<qint64>(weite, 0, anzahl() - stand.stelle);
}

// Whether the records up to `ziel` stand one behind the other in the table.
bool Recordset::Zustand::inNaturfolge(qint64 ziel) const {
    const auto anfang = stand.schluessel.begin() + stand.stelle;
    const auto ende = stand.schluessel.begin() + ziel;
    return std::adjacent_find(anfang, ende, [](qint64 a, qint64 b) { return b != a + 1; }) == ende;
}

// The rows `erste`, `erste` + 1 and so on. False when one of them is no longer there.
bool Recordset::Zustand::reiheLesen(const std::vector<int>& gefragte, qint64 erste, int anzahl,
                                    std::vector<Wert>& werte) const {
    const qint64 letzte = kern->speicher.zeilenLesen(auswahl.tabelle, gefragte, erste - 1, anzahl, werte);
    return letzte == erste + anzahl - 1 && werte.size() == size_t(anzahl) * gefragte.size();
}

std::vector<Wert> Recordset::Zustand::einzelnAbholen(qint64 ziel, const std::vector<int>& gefragte) const {
    std::vector<Wert> werte;
    werte.reserve(size_t(ziel - stand.stelle) * gefragte.size());
    std::vector<Wert> teil;
    for (qint64 stelle = stand.stelle; stelle < ziel; ++stelle) {
        if (!kern->speicher.zeileLesen(auswahl.tabelle, gefragte, stand.schluessel[size_t(stelle)], teil))
            datensatzGeloescht();
        std::move(teil.begin(), teil.end(), std::back_inserter(werte));
        Atempause();
    }
    return werte;
}

std::vector<Wert> Recordset::Zustand::reiheAbholen(qint64 ziel, const std::vector<int>& gefragte) const {
    std::vector<Wert> werte;
    werte.reserve(size_t(ziel - stand.stelle) * gefragte.size());
    std::vector<Wert> teil;
    for (qint64 stelle = stand.stelle; stelle < ziel;) {
        const qint64 erste = stand.schluessel[size_t(stelle)];
        const int anzahl = int(std::min(ziel - stelle, kReihe));
        if (!reiheLesen(gefragte, erste, anzahl, teil)) datensatzGeloescht();
        std::move(teil.begin(), teil.end(), std::back_inserter(werte));
        stelle += anzahl;
        Atempause();
    }
    return werte;
}

std::vector<Wert> Recordset::Zustand::abholen(qint64 weite, const std::vector<int>& gefragte) {
    const qint64 ziel = bis(weite);
    entwurfFallenlassen();
    std::vector<Wert> werte =
        inNaturfolge(ziel) ? reiheAbholen(ziel, gefragte) : einzelnAbholen(ziel, gefragte);
    stand.stelle = ziel;
    return werte;
}

Block Recordset::GetRows(qint64 anzahl) {
    Zustand& z = offen();
    std::vector<int> gefragte;
    for (const int platz : z.platz) gefragte.push_back(z.spalten[size_t(platz)]);
    return Block(int(z.felder.size()), z.abholen(anzahl, gefragte));
}

std::vector<Wert> Recordset::GetColumn(int position, qint64 anzahl) {
    Zustand& z = offen();
    if (position < 0 || position >= FieldsCount()) unbekannterName(QString::number(position));
    return z.abholen(anzahl, {z.spalten[size_t(z.platz[size_t(position)])]});
}

std::vector<qint64> Recordset::Bookmarks(qint64 anzahl) const {
    const Zustand& z = offen();
    const auto anfang = z.stand.schluessel.begin();
    return {anfang + z.stand.stelle, anfang + z.bis(anzahl)};
}

void Recordset::FindFirst(const QString& bedingung) {
    Zustand& z = offen();
    z.entwurfFallenlassen();
    const store::Bedingung gesucht =
        speicherbedingung(bedingungLesen(bedingung), z.tabellenfelder, z.spalten);
    if (z.anzahl() == 0) {
        z.keinTreffer = true;
        return;
    }
    const auto [erste, letzte] = std::minmax_element(z.stand.schluessel.begin(), z.stand.schluessel.end());
    const std::vector<qint64> treffer =
        z.kern->speicher.auswaehlen({z.auswahl.tabelle, gesucht, {}, *erste, *letzte});
    const auto fund = std::find_if(z.stand.schluessel.begin(), z.stand.schluessel.end(), [&](qint64 id) {
        return std::binary_search(treffer.begin(), treffer.end(), id);
    });
    z.keinTreffer = fund == z.stand.schluessel.end();
    if (!z.keinTreffer) z.stand.stelle = fund - z.stand.schluessel.begin();
}

bool Recordset::NoMatch() const {
    return offen().keinTreffer;
}

void Recordset::Requery() {
    Zustand& z = offen();
    z.entwurfFallenlassen();
    z.waehlen();
}

std::unique_ptr<Recordset> Recordset::OpenRecordset() {
    const Zustand& z = offen();
    auto zweiter = std::make_unique<Zustand>();
    zweiter->kern = z.kern;
    zweiter->stand = {z.stand.tabelle, z.stand.schluessel, 0};
    zweiter->auswahl = z.auswahl;
    zweiter->felder = z.felder;
    zweiter->platz = z.platz;
    zweiter->tabellenfelder = z.tabellenfelder;
    zweiter->spalten = z.spalten;
    zweiter->anmelden();
    return std::unique_ptr<Recordset>(new Recordset(std::move(zweiter)));
}

void Recordset::Close() {
    Zustand& z = offen();
    z.entwurfFallenlassen();
    z.geschlossen = true;
    z.stand.schluessel = {};
}

}  // namespace dao
