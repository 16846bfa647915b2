// The one window of the wizard.
#pragma once

#include <QMainWindow>
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
    void groesseFestlegen(QWidget* inhalt);

    QStackedWidget* stapel_;
    QWidget* leereSeite_;
    std::map<int, Rahmen*> rahmen_;
};
