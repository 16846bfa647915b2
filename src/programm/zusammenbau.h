// Puts the pieces of the program together.
#pragma once

#include <memory>

#include "ui/fensterqt.h"
#include "ui/frmhaupt.h"

// The running program: the window, and the runs that its frames start.
class Programm {
  public:
    // Starts the program and shows the welcome page. An QApplication must exist.
    Programm();
    ~Programm();
    Programm(const Programm&) = delete;
    Programm& operator=(const Programm&) = delete;

    // Opens a database file as if the user had gone to frame 2 and named it there.
    void dateiOeffnen(const QString& pfad);

    FrmHaupt& hauptfenster() { return *haupt_; }

  private:
    std::unique_ptr<FrmHaupt> haupt_;
    std::unique_ptr<FensterQt> fenster_;
};
