// The moves of the duplicate review: one record or all of a list, each move in a transaction of its own.
#include "data/steuerfelder.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/frmdublettenbearbeiten.h"
#include "ui/nachbearbeitungsabfragen.h"

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
    neuAbfragen(rsAngereichert_);
    if (rsAngereichert_->Eof()) return;
    einenVerschieben(*rsAngereichert_, *adoAngereichert, angereichertUebernehmen);
    alleAnzeigen();
}

void FrmDublettenBearbeiten::btnAngereichert_Click() {
    neuAbfragen(rsAngereichert_);
    if (rsAngereichert_->Eof()) return;
    if (alleVerschieben(*rsAngereichert_, angereichertUebernehmen)) alleAnzeigen();
}

FrmDublettenBearbeiten::Saetze FrmDublettenBearbeiten::dublettenDerGruppe() {
    const Malpause pause(this);
    return Gesetzt(gDatenbank).OpenRecordset(AbfrageDublette(gZielTabelle, aktuelleGruppe()));
}

void FrmDublettenBearbeiten::dubletteVerschieben() {
    if (adoDublette->Eof() || adoAngereichert->Eof()) return;
    rsDublette_ = dublettenDerGruppe();
    if (rsDublette_->Eof()) return;
    einenVerschieben(*rsDublette_, *adoDublette, dubletteUebernehmen);
    dublettenUndUebernehmenAnzeigen();
}

void FrmDublettenBearbeiten::btnDublette_Click() {
    if (adoAngereichert->RecordCount() == 0) return;
    rsDublette_ = dublettenDerGruppe();
    if (rsDublette_->Eof()) return;
    if (alleVerschieben(*rsDublette_, dubletteUebernehmen)) dublettenUndUebernehmenAnzeigen();
}

void FrmDublettenBearbeiten::uebernehmenVerschieben() {
    if (adoÜbernehmen->Eof()) return;
    neuAbfragen(rsÜbernehmen_);
    if (rsÜbernehmen_->Eof()) return;
    einenVerschieben(*rsÜbernehmen_, *adoÜbernehmen, zuruecklegen);
    alleAnzeigen();
}

void FrmDublettenBearbeiten::btnÜbernehmen_Click() {
    neuAbfragen(rsÜbernehmen_);
    if (rsÜbernehmen_->Eof()) return;
    if (alleVerschieben(*rsÜbernehmen_, zuruecklegen)) alleAnzeigen();
}
