// The duplicate review: the user decides record by record what stays.
#pragma once

#include <QTimer>

#include "ui/herkunft.h"
#include "ui/nachbearbeitungsfenster.h"

// Needs a table with the control columns of a search.
class FrmDublettenBearbeiten : public Nachbearbeitungsfenster {
  public:
    explicit FrmDublettenBearbeiten(QWidget* eltern = nullptr);

    // Opens the records and fills the grids. False when a step failed and the user stopped; `gFehler` is then
    // set and the window is not to be shown.
    bool laden();

    Datensteuerung* adoAngereichert;
    Datensteuerung* adoDublette;
    Datensteuerung* adoÜbernehmen;
    Datengitter* dgdAngereichert;
    Datengitter* dgdDublette;
    Datengitter* dgdÜbernehmen;
    QPushButton* btnAngereichert;
    QPushButton* btnDublette;
    QPushButton* btnÜbernehmen;
    QTimer* tmrAnsicht;
    QLabel* lblGruppe;  // "Gruppe 12 von 340"

  protected:
    void btnFertig_Click() override;
    QList<QPushButton*> verschiebeknoepfe() const override;
    void saetzeSchliessen() override;
    void handlungBeendet() override { rsDublette_.reset(); }

  private:
    void verbinden();

    void AngereichertAnzeigen();
    void DubletteAnzeigen();
    void UebernehmenAnzeigen();
    void alleAnzeigen();
    void dublettenUndUebernehmenAnzeigen();
    void DubletteNachfuehren();
    void tmrAnsicht_Timer();
    QString aktuelleGruppe() const;  // TEMP_BN of the current enriched record
    void dublettenquelleSetzen();
    void erneuern(Datengitter* gitter);
    Saetze dublettenDerGruppe();
    void auslegen(Datengitter* gitter);
    QString herkunft(const Datensteuerung& daten, int zeile, int spalte);
    void standZeigen();

    void rechteMaustaste(Qt::MouseButton knopf, void (FrmDublettenBearbeiten::*verschieben)());
    void angereichertVerschieben();
    void dubletteVerschieben();
    void uebernehmenVerschieben();
    void btnAngereichert_Click();
    void btnDublette_Click();
    void btnÜbernehmen_Click();

    Gruppenmitglieder mitglieder_;
    Saetze rsAngereichert_;
    Saetze rsÜbernehmen_;
    Saetze rsDublette_;
    qint16 nTempSpalten_ = 0;
};

// Loads the window and shows it modally until the user has decided. Sets `gAbbruch` or `gFehler` when it was
// not confirmed, and `gAnzahlAngereichert` when it was.
void frmDublettenBearbeitenZeigen(QWidget* eltern);
