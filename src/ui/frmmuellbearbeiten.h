// The junk review: the user takes single records back.
#pragma once

#include "ui/nachbearbeitungsfenster.h"

// Needs a table with the control columns of a junk search.
class FrmMüllBearbeiten : public Nachbearbeitungsfenster {
  public:
    explicit FrmMüllBearbeiten(QWidget* eltern = nullptr);

    // Opens the records and fills the grids. False when a step failed and the user stopped; `gFehler` is then
    // set and the window is not to be shown.
    bool laden();

    Datensteuerung* adoMüll;
    Datensteuerung* adoÜbernehmen;
    Datengitter* dgdMüll;
    Datengitter* dgdÜbernehmen;
    QPushButton* btnMüll;
    QPushButton* btnÜbernehmen;

  protected:
    void btnFertig_Click() override;
    QList<QPushButton*> verschiebeknoepfe() const override { return {btnMüll, btnÜbernehmen}; }
    void saetzeSchliessen() override;

  private:
    void verbinden();
    void MuellAnzeigen();
    void UebernehmenAnzeigen();
    void alleAnzeigen();
    void auslegen(Datengitter* gitter);
    // The current record of the grid, or all of the list, when there are any.
    void einen(Datensteuerung& daten, Saetze& saetze, const Statusregel& regel);
    void alle(Saetze& saetze, const Statusregel& regel);

    Saetze rsMüll_;
    Saetze rsÜbernehmen_;
};

// Loads the window and shows it modally until the user has decided. Sets `gAbbruch` or `gFehler` when it was
// not confirmed.
void frmMüllBearbeitenZeigen(QWidget* eltern);
