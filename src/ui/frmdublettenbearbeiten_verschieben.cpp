// The moves of the duplicate review: one record or all of a list, each move in a transaction of its own.
#include <QScopeGuard>

#include "run/schritte.h"
#include "run/zustand.h"
#include "search/suchzustand.h"
#include "ui/bausteine.h"
#include "ui/dublettenabfragen.h"
#include "ui/frmdublettenbearbeiten.h"

namespace {

QString feldname(const char16_t* name) {
    return QString::fromUtf16(name);
}

int angereichertUebernehmen(int) {
    return kStatusAngereichertBleibt;
}

int dubletteUebernehmen(int) {
    return kStatusDubletteBleibt;
}

// Back to the list that the record came from.
int zuruecklegen(int status) {
    switch (status) {
        case kStatusAngereichertBleibt:
            return kStatusAngereichert;
        case kStatusDubletteBleibt:
            return kStatusDublette;
        default:
            return status;
    }
}

// Writes the state of the current record.
void statusSchreiben(dao::Recordset& saetze, const std::function<int(int)>& regel) {
    const Wert alt = saetze.Fields(feldname(kTempDss)).Value();
    const int neu = regel(int(alt.alsZahl()));
    saetze.Edit();
    saetze.Fields(feldname(kTempDss)).setValue(neu);
    saetze.Update();
}

}  // namespace

// A failure of an action is told; what it wrote is taken back.
void FrmDublettenBearbeiten::handeln(const std::function<void()>& aktion) {
    if (handelt_ || entladen_) return;
    handelt_ = true;
    const auto fertig = qScopeGuard([this] {
        handelt_ = false;
        rsDublette_.reset();
    });
    Gesichert(aktion);
}

void FrmDublettenBearbeiten::inTransaktion(const std::function<void()>& schreiben) {
    gArbeitsbereich->BeginTrans();
    try {
        schreiben();
        // An unloaded window has rolled back already.
        if (!entladen_) gArbeitsbereich->CommitTrans();
    } catch (...) {
        FehlerUebergehen([] { gArbeitsbereich->Rollback(); });
        throw;
    }
}

void FrmDublettenBearbeiten::einenVerschieben(dao::Recordset& saetze, const Datensteuerung& daten,
                                              const Statusregel& regel) {
    inTransaktion([&] {
        saetze.FindFirst(BedingungSatz(daten.Fields(feldname(kTempDsn)).alsText()));
        if (!saetze.NoMatch()) statusSchreiben(saetze, regel);
    });
}

bool FrmDublettenBearbeiten::alleVerschieben(dao::Recordset& saetze, const Statusregel& regel) {
    verschiebeknoepfe(false);
    const auto fertig = qScopeGuard([this] { verschiebeknoepfe(true); });
    inTransaktion([&] {
        saetze.MoveFirst();
        while (!entladen_ && !saetze.Eof()) {
            statusSchreiben(saetze, regel);
            saetze.MoveNext();
            DoEvents();
        }
    });
    return !entladen_;
}

void FrmDublettenBearbeiten::verschiebeknoepfe(bool aktiv) {
    for (QPushButton* knopf : {btnFertig, btnAngereichert, btnDublette, btnÜbernehmen})
        knopf->setEnabled(aktiv);
}

void FrmDublettenBearbeiten::rechteMaustaste(Qt::MouseButton knopf,
                                             void (FrmDublettenBearbeiten::*verschieben)()) {
    if (knopf == Qt::RightButton) handeln([&] { (this->*verschieben)(); });
}

void FrmDublettenBearbeiten::angereichertVerschieben() {
    if (adoAngereichert->Eof()) return;
    Gesetzt(rsAngereichert_).Requery();
    if (rsAngereichert_->Eof()) return;
    einenVerschieben(*rsAngereichert_, *adoAngereichert, angereichertUebernehmen);
    alleAnzeigen();
}

void FrmDublettenBearbeiten::btnAngereichert_Click() {
    Gesetzt(rsAngereichert_).Requery();
    if (rsAngereichert_->Eof()) return;
    if (alleVerschieben(*rsAngereichert_, angereichertUebernehmen)) alleAnzeigen();
}

void FrmDublettenBearbeiten::dubletteVerschieben() {
    if (adoDublette->Eof() || adoAngereichert->Eof()) return;
    rsDublette_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageDublette(gZielTabelle, aktuelleGruppe()));
    if (rsDublette_->Eof()) return;
    einenVerschieben(*rsDublette_, *adoDublette, dubletteUebernehmen);
    dublettenUndUebernehmenAnzeigen();
}

void FrmDublettenBearbeiten::btnDublette_Click() {
    if (adoAngereichert->RecordCount() == 0) return;
    rsDublette_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageDublette(gZielTabelle, aktuelleGruppe()));
    if (rsDublette_->Eof()) return;
    if (alleVerschieben(*rsDublette_, dubletteUebernehmen)) dublettenUndUebernehmenAnzeigen();
}

void FrmDublettenBearbeiten::uebernehmenVerschieben() {
    if (adoÜbernehmen->Eof()) return;
    Gesetzt(rsÜbernehmen_).Requery();
    if (rsÜbernehmen_->Eof()) return;
    einenVerschieben(*rsÜbernehmen_, *adoÜbernehmen, zuruecklegen);
    alleAnzeigen();
}

void FrmDublettenBearbeiten::btnÜbernehmen_Click() {
    Gesetzt(rsÜbernehmen_).Requery();
    if (rsÜbernehmen_->Eof()) return;
    if (alleVerschieben(*rsÜbernehmen_, zuruecklegen)) alleAnzeigen();
}
