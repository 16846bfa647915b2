// Remembering the tables at the start of a run and going back to them when it is given up.
#include <algorithm>
#include <numeric>
#include <utility>

#include "base/fehler.h"
#include "engine/dao/innen.h"

namespace dao {

bool Database::Tabellenstand::enthaelt(const TableDef& tabelle) const {
    return std::any_of(tabellen.begin(), tabellen.end(),
                       [&](const auto& eintrag) { return eintrag.first.get() == &tabelle; });
}

Database::Tabellenstand Database::tabellenstand() const {
    Tabellenstand stand;
    for (const auto& tabelle : z_->tabellen.tabellen_)
        stand.tabellen.emplace_back(tabelle, tabelle->merken());
    stand.relationen = z_->relationen.relationen_;
    return stand;
}

void Database::ohneTransaktionVerlangen(const QString& was) const {
    if (offen().vorher)
        throw EngineFehler(kSystemgrenze, was + QStringLiteral(", solange eine Transaktion offen ist."));
}

void Database::zeilenLoeschen(const TableDef& tabelle) {
    store::Speicher& speicher = z_->kern->speicher;
    if (speicher.tabelleVorhanden(tabelle.kern_->nummer)) speicher.tabelleEntfernen(tabelle.kern_->nummer);
}

// The rows of deleted tables were kept for their sake only.
void Database::vergessen() {
    const std::optional<Tabellenstand> gemerkt = std::exchange(z_->gemerkt, std::nullopt);
    if (!gemerkt) return;
    for (const auto& [tabelle, stand] : gemerkt->tabellen)
        if (tabelle->kern_->geloescht) zeilenLoeschen(*tabelle);
}

void Database::Merken() {
    ohneTransaktionVerlangen(QStringLiteral("Die Tabellen können nicht gemerkt werden"));
    vergessen();
    z_->gemerkt = tabellenstand();
}

void Database::Zuruecknehmen() {
    ohneTransaktionVerlangen(QStringLiteral("Die Tabellen können nicht zurückgenommen werden"));
    const std::optional<Tabellenstand> gemerkt = std::exchange(z_->gemerkt, std::nullopt);
    if (!gemerkt) return;
    const auto bisher = std::exchange(z_->tabellen.tabellen_, {});
    for (const auto& tabelle : bisher) tabelle->kern_->geloescht = true;
    for (const auto& [tabelle, stand] : gemerkt->tabellen) {
        tabelle->zuruecksetzen(stand);
        // Rows that were read since were read by the fields of that time.
        if (stand.spalten.empty() && z_->kern->speicher.tabelleVorhanden(tabelle->kern_->nummer)) {
            tabelle->spalten_.resize(stand.felder.size());
            std::iota(tabelle->spalten_.begin(), tabelle->spalten_.end(), 0);
        }
        z_->tabellen.tabellen_.push_back(tabelle);
    }
    z_->relationen.relationen_ = gemerkt->relationen;
    for (const auto& tabelle : bisher)
        if (tabelle->kern_->geloescht) zeilenLoeschen(*tabelle);
}

}  // namespace dao
