// The waist of run/ on top of the real window.
#include "ui/fensterqt.h"

#include <QApplication>

#include "ui/dialoge.h"
#include "ui/frmdublettenbearbeiten.h"
#include "ui/frmhaupt.h"
#include "ui/frmmuellbearbeiten.h"

Knopf FensterQt::meldungZeigen(const Meldung& meldung) {
    return MeldungAnzeigen(meldung);
}

// The two empty frames are on show while a review is loaded, and while its decisions are carried out.
void FensterQt::rahmenSichtbar(int rahmen, bool sichtbar) {
    constexpr int kNachbearbeitungDubletten = 12;
    constexpr int kNachbearbeitungMuell = 22;
    haupt_.rahmenSichtbar(rahmen, sichtbar);
    if (rahmen == kNachbearbeitungDubletten || rahmen == kNachbearbeitungMuell) sanduhr(sichtbar);
}

void FensterQt::rahmenFuellen(int rahmen, Schritte& s) {
    if (Rahmen* f = haupt_.freRahmen(rahmen)) f->fuellen(s);
}

bool FensterQt::rahmenPruefen(int rahmen) {
    Rahmen* f = haupt_.freRahmen(rahmen);
    return !f || f->pruefen();
}

void FensterQt::zurueckSichtbar(bool sichtbar) {
    haupt_.btnZurück->setVisible(sichtbar);
}

void FensterQt::weiterSichtbar(bool sichtbar) {
    haupt_.btnWeiter->setVisible(sichtbar);
}

void FensterQt::hilfeSichtbar(bool sichtbar) {
    haupt_.btnHilfe->setVisible(sichtbar);
}

void FensterQt::zurueckText(const QString& text) {
    haupt_.btnZurück->setText(text);
}

void FensterQt::weiterText(const QString& text) {
    haupt_.btnWeiter->setText(text);
}

void FensterQt::zurueckAktiv(bool aktiv) {
    haupt_.btnZurück->setEnabled(aktiv);
}

void FensterQt::information(const QString& text) {
    haupt_.rahmenDurchfuehrung->informationZeigen(text);
}

void FensterQt::datensaetze(const QString& text) {
    haupt_.rahmenDurchfuehrung->lblDatensätze->setText(text);
}

void FensterQt::dauer(const QString& text) {
    haupt_.rahmenDurchfuehrung->lblDauer->setText(text);
}

void FensterQt::verbleibendeZeit(const QString& text) {
    haupt_.rahmenDurchfuehrung->lblVerbleibendeZeit->setText(text);
}

void FensterQt::teilFortschritt(float prozent) {
    haupt_.rahmenDurchfuehrung->fortschrittSetzen(prozent);
}

float FensterQt::teilFortschritt() const {
    return haupt_.rahmenDurchfuehrung->fortschritt();
}

void FensterQt::teilFortschrittText(const QString& text) {
    haupt_.rahmenDurchfuehrung->lblTeilFortschritt->setText(text);
}

void FensterQt::taktgeber(bool an) {
    for (QTimer* takt : {haupt_.tmrDauer, haupt_.tmrFortschritt}) an ? takt->start() : takt->stop();
    // A phase that has no share to show moves all the same.
    if (haupt_.rahmenDurchfuehrung->isVisible()) haupt_.wartenZeigen(!an);
}

void FensterQt::ereignisseVerarbeiten() {
    QCoreApplication::processEvents();
}

void FensterQt::nurZeichnen() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void FensterQt::neuZeichnen() {
    haupt_.repaint();
}

void FensterQt::sanduhr(bool an) {
    haupt_.wartenZeigen(an);
    if (an && !QApplication::overrideCursor())
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else if (!an && QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

Suchoptionen FensterQt::suchoptionen() {
    return haupt_.rahmenSuche->optionen();
}

Muelloptionen FensterQt::muelloptionen() {
    return haupt_.rahmenMuell->optionen();
}

Splittoptionen FensterQt::splittoptionen() {
    return haupt_.rahmenSplitten->optionen();
}

Verschmelzoptionen FensterQt::verschmelzoptionen() {
    return haupt_.rahmenVerschmelzen->optionen();
}

void FensterQt::dublettenBearbeiten() {
    frmDublettenBearbeitenZeigen(&haupt_);
}

void FensterQt::muellBearbeiten() {
    frmMüllBearbeitenZeigen(&haupt_);
}
