// The duplicate review: the user decides record by record what stays.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <memory>

#include "engine/dao/recordset.h"
#include "ui/datengitter.h"
#include "ui/datensteuerung.h"

// Works on the state column of `gZielTabelle` in `gDatenbank`: each decision is a change of that one value,
// committed at once. Needs a table with the control columns of a search.
class FrmDublettenBearbeiten : public QDialog {
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
    QPushButton* btnFertig;
    QPushButton* btnAbbrechen;
    QPushButton* btnHilfe;
    QTimer* tmrAnsicht;
    QLabel* lblGruppe;  // "Gruppe 12 von 340"
    QLabel* lblStand;   // how many records stand where

    // Does nothing: a stray Escape must not end a run.
    void reject() override;

  protected:
    // The close button asks before it acts as btnAbbrechen.
    void closeEvent(QCloseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;

  private:
    using Statusregel = std::function<int(int)>;  // a record's new state from its old one

    void anordnen();
    void verbinden();

    void angereichertAnzeigen();
    void dubletteAnzeigen();
    void uebernehmenAnzeigen();
    void alleAnzeigen();
    void dublettenUndUebernehmenAnzeigen();
    void dubletteNachfuehren();
    void tmrAnsicht_Timer();
    QString aktuelleGruppe() const;  // TEMP_BN of the current enriched record
    void dublettenquelleSetzen();
    void auslegen(Datengitter* gitter);
    void standZeigen();

    void rechteMaustaste(Qt::MouseButton knopf, void (FrmDublettenBearbeiten::*verschieben)());
    void angereichertVerschieben();
    void dubletteVerschieben();
    void uebernehmenVerschieben();
    void btnAngereichert_Click();
    void btnDublette_Click();
    void btnÜbernehmen_Click();
    void btnFertig_Click();
    void btnAbbrechen_Click();

    // Runs a user's action unless another one is at work.
    void handeln(const std::function<void()>& aktion);
    void inTransaktion(const std::function<void()>& schreiben);
    void einenVerschieben(dao::Recordset& saetze, const Datensteuerung& daten, const Statusregel& regel);
    // False when the window was unloaded meanwhile.
    bool alleVerschieben(dao::Recordset& saetze, const Statusregel& regel);
    void verschiebeknoepfe(bool aktiv);
    void entladen();

    std::unique_ptr<dao::Recordset> rsAngereichert_;
    std::unique_ptr<dao::Recordset> rsÜbernehmen_;
    std::unique_ptr<dao::Recordset> rsDublette_;
    qint16 nTempSpalten_ = 0;
    bool handelt_ = false;
    bool entladen_ = false;
};

// Loads the window and shows it modally until the user has decided. Sets `gAbbruch` or `gFehler` when it was
// not confirmed, and `gAnzahlAngereichert` when it was.
void frmDublettenBearbeitenZeigen(QWidget* eltern);
