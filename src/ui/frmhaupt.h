// The one window of the wizard.
#pragma once

#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <map>

#include "ui/rahmendatenbank.h"
#include "ui/rahmendurchfuehrung.h"
#include "ui/rahmenfelder.h"
#include "ui/rahmenmuell.h"
#include "ui/rahmenprotokoll.h"
#include "ui/rahmensicherheit.h"
#include "ui/rahmensplitten.h"
#include "ui/rahmensuche.h"
#include "ui/rahmentabelle.h"
#include "ui/rahmenverschmelzen.h"
#include "ui/rahmenvorgang.h"
#include "ui/rahmenwillkommen.h"
#include "ui/rahmenziel.h"

class FrmHaupt : public QMainWindow {
  public:
    FrmHaupt();

    // Shows a frame or, as long as none is, an empty place.
    void rahmenSichtbar(int nummer, bool sichtbar);
    Rahmen* freRahmen(int nummer) const;
    // Shows, after a moment, that the user has to wait.
    void wartenZeigen(bool an);

    RahmenDatenbank* rahmenDatenbank;
    RahmenTabelle* rahmenTabelle;
    RahmenZiel* rahmenZiel;
    RahmenVorgang* rahmenVorgang;
    RahmenDurchfuehrung* rahmenDurchfuehrung;
    RahmenFelder* rahmenFelder;
    RahmenSuche* rahmenSuche;
    RahmenMuell* rahmenMuell;
    RahmenSplitten* rahmenSplitten;
    RahmenVerschmelzen* rahmenVerschmelzen;
    QPushButton* btnHilfe;
    QPushButton* btnZurück;
    QPushButton* btnWeiter;
    QPushButton* btnBeenden;
    QProgressBar* pgbWarten;  // moves while the program works and no frame says how far it is
    QTimer* tmrDauer;
    QTimer* tmrFortschritt;

  protected:
    void closeEvent(QCloseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;

  private:
    template <typename Art>
    Art* rahmenAufnehmen(Art* rahmen);
    void rahmenAnlegen();
    QLayout* knopfleiste();
    void menueAnlegen();
    void hilfeZeigen();
    void tastenAnlegen();
    void groesseFestlegen(QWidget* inhalt);

    QStackedWidget* stapel_;
    QWidget* leereSeite_;
    QTimer* tmrWarten_;  // until pgbWarten comes, so that it does not flash
    std::map<int, Rahmen*> rahmen_;
};
