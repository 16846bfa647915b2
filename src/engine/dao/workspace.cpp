// The engine and its workspace: opening databases, transactions.
#include "engine/dao/workspace.h"

#include <QFileInfo>
#include <algorithm>

#include "base/fehler.h"
#include "base/pfad.h"
#include "engine/dao/innen.h"
#include "engine/dao/oeffner.h"

namespace dao {
namespace {

void bereichPruefen(bool geschlossen) {
    if (geschlossen) objektUngueltig(QStringLiteral("Der Arbeitsbereich"));
}

void transaktionVerlangen(bool offen) {
    if (!offen)
        throw EngineFehler(kOhneTransaktion,
                           QStringLiteral("Es ist keine Transaktion offen, die abgeschlossen oder "
                                          "rückgängig gemacht werden könnte."));
}

}  // namespace

Workspace::Workspace(std::shared_ptr<Zustand> zustand) : z_(std::move(zustand)) {}

Workspace::~Workspace() = default;

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& name, bool, bool,
                                                  const QString& verbindung) {
    bereichPruefen(z_->geschlossen);
    const QString pfad = SystemPfad(name);
    if (!QFileInfo::exists(pfad))
        throw EngineFehler(kDateiFehlt,
                           QStringLiteral("Die Datei '%1' ist nicht vorhanden oder nicht erreichbar. Prüfen "
                                          "Sie den Namen.")
                               .arg(name));
    auto zustand = std::make_unique<Database::Zustand>();
    zustand->bereich = z_;
    zustand->pfad = pfad;
    zustand->datei = dateiOeffnen(pfad, verbindung);
    return std::unique_ptr<Database>(new Database(std::move(zustand)));
}

void Workspace::BeginTrans() {
    bereichPruefen(z_->geschlossen);
    if (z_->transaktion)
        throw EngineFehler(kSystemgrenze,
                           QStringLiteral("Es ist bereits eine Transaktion offen. Sie muss zuerst "
                                          "abgeschlossen oder rückgängig gemacht werden."));
    for (Database* datenbank : z_->offene) datenbank->transaktionBeginnen();
    z_->transaktion = true;
}

void Workspace::CommitTrans() {
    bereichPruefen(z_->geschlossen);
    transaktionVerlangen(z_->transaktion);
    for (Database* datenbank : z_->offene)
        if (datenbank->z_->vorher) datenbank->transaktionFestschreiben();
    z_->transaktion = false;
}

void Workspace::Rollback() {
    bereichPruefen(z_->geschlossen);
    transaktionVerlangen(z_->transaktion);
    z_->transaktion = false;
    for (Database* datenbank : z_->offene)
        if (datenbank->z_->vorher) datenbank->transaktionVerwerfen();
}

void Workspace::Close() {
    bereichPruefen(z_->geschlossen);
    while (!z_->offene.empty()) z_->offene.back()->Close();
    z_->transaktion = false;
    z_->geschlossen = true;
}

std::unique_ptr<Workspace> DBEngine::CreateWorkspace(const QString&, const QString&, const QString&, int) {
    return std::unique_ptr<Workspace>(new Workspace(std::make_shared<Workspace::Zustand>()));
}

int DBEngine::ErrorsCount() {
    return std::min(EngineFehlerAnzahl(), 1);
}

}  // namespace dao
