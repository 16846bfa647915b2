// The moves of the duplicate review: one record or all of a list, each move in a transaction of its own.
#include "data/steuerfelder.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/nachbearbeitungsabfragen.h"
#include "ui/frmdublettenbearbeiten.h"

namespace {

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

}  // namespace

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
