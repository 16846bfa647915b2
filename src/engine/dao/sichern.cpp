// Brings the file up to date: what differs from it, as one list of changes.
#include <QFileInfo>
#include <algorithm>
#include <iterator>

#include "base/fehler.h"
#include "engine/dao/innen.h"
#include "engine/dao/umbenennung.h"

namespace dao {
namespace {

constexpr int kZeilenJeGriff = 64;

bool felderGleich(const engine::FeldDef& a, const engine::FeldDef& b) {
    return a.name == b.name && a.typ == b.typ && a.groesse == b.groesse && a.attribute == b.attribute &&
           a.leerErlaubt == b.leerErlaubt && a.erforderlich == b.erforderlich &&
           a.genauigkeit == b.genauigkeit && a.nachkommastellen == b.nachkommastellen;
}

bool indexeGleich(const engine::IndexDef& a, const engine::IndexDef& b) {
    return a.name == b.name && a.felder == b.felder && a.eindeutig == b.eindeutig && a.primaer == b.primaer;
}

// Apart from the name, which a rename takes care of.
bool aufbauGleich(const engine::TabellenDef& a, const engine::TabellenDef& b) {
    return a.attribute == b.attribute &&
           std::equal(a.felder.begin(), a.felder.end(), b.felder.begin(), b.felder.end(), felderGleich) &&
           std::equal(a.indexe.begin(), a.indexe.end(), b.indexe.begin(), b.indexe.end(), indexeGleich);
}

// An index whose keys did not allow it stands in the file as a plain one.
void indexAngleichen(Index& index, const engine::TabellenDef& inDatei) {
    for (const engine::IndexDef& vorhandener : inDatei.indexe) {
        if (!namenGleich(vorhandener.name, index.Name())) continue;
        index.setUnique(index.Unique() && vorhandener.eindeutig);
        index.setPrimary(index.Primary() && vorhandener.primaer);
    }
}

// A table's rows out of the working store, a few at a time, so that no statement stays open.
class Speicherzeilen : public engine::Zeilenquelle {
  public:
    Speicherzeilen(std::shared_ptr<Kern> kern, qint64 nummer, std::vector<int> spalten)
        : kern_(std::move(kern)), nummer_(nummer), spalten_(std::move(spalten)) {}

    bool naechste(engine::Zeile& zeile) override {
        if (stelle_ >= werte_.size() && !nachfuellen()) return false;
        const auto anfang = werte_.begin() + std::ptrdiff_t(stelle_);
        zeile.assign(std::make_move_iterator(anfang),
                     std::make_move_iterator(anfang + std::ptrdiff_t(spalten_.size())));
        stelle_ += spalten_.size();
        return true;
    }

  private:
    bool nachfuellen() {
        stelle_ = 0;
        if (!kern_->speicher.tabelleVorhanden(nummer_)) return false;
        id_ = kern_->speicher.zeilenLesen(nummer_, spalten_, id_, kZeilenJeGriff, werte_);
        return !werte_.empty();
    }

    std::shared_ptr<Kern> kern_;
    qint64 nummer_;
    std::vector<int> spalten_;
    qint64 id_ = 0;
    std::vector<Wert> werte_;
    size_t stelle_ = 0;
};

}  // namespace

// Tables of the file whose rows or structure are no longer what the file has: they leave it and enter it
// anew.
std::vector<TableDef*> Database::umzuschreibende() const {
    std::vector<TableDef*> tabellen;
    for (const auto& tabelle : z_->tabellen.tabellen_)
        if (tabelle->inDatei_ &&
            (tabelle->kern_->geaendert || !aufbauGleich(tabelle->definition(), *tabelle->inDatei_)))
            tabellen.push_back(tabelle.get());
    return tabellen;
}

std::vector<engine::Aenderung> Database::aenderungen() const {
    const std::vector<TableDef*> umzuschreiben = umzuschreibende();
    const auto wirdUmgeschrieben = [&](const TableDef* tabelle) {
        return std::find(umzuschreiben.begin(), umzuschreiben.end(), tabelle) != umzuschreiben.end();
    };
    std::vector<engine::Aenderung> liste;
    std::vector<engine::TabelleUmbenennen> umbenennungen;
    std::vector<QString> bleibende;
    for (const QString& name : z_->inDatei) {
        const auto& tabellen = z_->tabellen.tabellen_;
        const auto fund = std::find_if(
            tabellen.begin(), tabellen.end(),
            [&](const std::shared_ptr<TableDef>& t) { return t->inDatei_ && t->inDatei_->name == name; });
        if (fund == tabellen.end() || wirdUmgeschrieben(fund->get())) {
            liste.emplace_back(engine::TabelleLoeschen{name});
            continue;
        }
        bleibende.push_back(name);
        if ((*fund)->name_ != name) umbenennungen.push_back({name, (*fund)->name_});
    }
    const auto erlaubt = [&](const QString& name) { return z_->datei->nameErlaubt(name); };
    for (auto& schritt : umbenennungenOrdnen(std::move(umbenennungen), std::move(bleibende), erlaubt))
        liste.emplace_back(std::move(schritt));
    for (const auto& tabelle : z_->tabellen.tabellen_) {
        if (tabelle->inDatei_ && !wirdUmgeschrieben(tabelle.get())) continue;
        const auto zeilen = [kern = z_->kern, nummer = tabelle->kern_->nummer, spalten = tabelle->spalten_] {
            return std::make_unique<Speicherzeilen>(kern, nummer, spalten);
        };
        engine::TabellenDef def = tabelle->definition();
        def.zeilen = z_->kern->speicher.tabelleVorhanden(tabelle->kern_->nummer)
                         ? z_->kern->speicher.zeilenzahl(tabelle->kern_->nummer)
                         : 0;
        liste.emplace_back(engine::TabelleAnlegen{std::move(def), zeilen});
    }
    return liste;
}

bool Database::ungesichert() const {
    offen();
    return !aenderungen().empty();
}

engine::Hinweise Database::Sichern() {
    Zustand& z = offen();
    ohneTransaktionVerlangen(QStringLiteral("Die Datei kann nicht geschrieben werden"));
    for (TableDef* tabelle : umzuschreibende()) {
        relationenPruefen(tabelle->inDatei_->name);
        bereitstellen(*tabelle);
    }
    const std::vector<engine::Aenderung> liste = aenderungen();
    engine::Hinweise hinweise;
    if (!liste.empty()) {
        hinweise = z.datei->anwenden(liste);
        gesichertMerken();
    }
    vergessen();
    return hinweise;
}

// The session's definitions are now the file's; order, dates and indexes are as the file has them.
void Database::gesichertMerken() {
    Zustand& z = *z_;
    for (const auto& tabelle : z.tabellen.tabellen_) {
        tabelle->inDatei_ = tabelle->definition();
        tabelle->kern_->geaendert = false;
    }
    z.inDatei.clear();
    for (const auto& tabelle : z.tabellen.tabellen_) z.inDatei.push_back(tabelle->name_);
    katalogUebernehmen();
}

// Tables that the file names otherwise than the session (a workbook lists a sheet without a range as
// "Name$"), or that went with another one, leave the list; what the file has beyond it enters in the file's
// order.
void Database::katalogUebernehmen() {
    engine::Katalog katalog;
    try {
        katalog = z_->datei->katalogLesen();
    } catch (const EngineFehler&) {
        // The file holds the result and was checked; without its order ours stands.
        return;
    }
    const QDateTime dateizeit = QFileInfo(z_->pfad).lastModified();
    auto& tabellen = z_->tabellen.tabellen_;
    size_t ziel = 0;
    for (const engine::TabellenDef& def : katalog.tabellen) {
        const auto ab = tabellen.begin() + std::ptrdiff_t(ziel);
        const auto fund = std::find_if(ab, tabellen.end(), [&](const std::shared_ptr<TableDef>& t) {
            return namenGleich(t->name_, def.name);
        });
        if (fund == tabellen.end()) {
            tabellen.insert(ab, tabelleAusDatei(def, dateizeit));
        } else {
            (*fund)->geaendert_ = def.geaendert.isValid() ? def.geaendert : dateizeit;
            for (Index& index : (*fund)->indexe_.indexe_) indexAngleichen(index, def);
            (*fund)->inDatei_ = (*fund)->definition();
            std::rotate(ab, fund, fund + 1);
        }
        ++ziel;
    }
    while (tabellen.size() > ziel) austragen(tabellen.back());
    z_->inDatei.clear();
    for (const auto& tabelle : tabellen) z_->inDatei.push_back(tabelle->name_);
}

// Who still holds the definition, or records of it, finds them empty rather than gone.
void Database::austragen(const std::shared_ptr<TableDef>& tabelle) {
    z_->ausgetragene.push_back(tabelle);
    if (!z_->gemerkt || !z_->gemerkt->enthaelt(*tabelle)) zeilenLoeschen(*tabelle);
    tabelle->kern_->geloescht = true;
    std::erase(z_->tabellen.tabellen_, z_->ausgetragene.back());
}

}  // namespace dao
