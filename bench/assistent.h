// Leads the real program through its wizard, as a user who takes what it proposes.
#pragma once

#include <QTimer>
#include <memory>

#include "laufuhr.h"
#include "programm/zusammenbau.h"

// The operations that can be measured.
enum class Vorgang { Dubletten, Muell, Splitten, Verschmelzen, Abgleich };

// Needs a QApplication. What the program does not do as expected ends the process with a message.
class Assistent {
  public:
    explicit Assistent(Laufuhr& uhr);
    ~Assistent();

    // From the welcome page to the list of tables, with "Adressen" selected.
    void oeffnen(const QString& datei);
    // From there to the result frame: takes over what the review proposes, and waits until the file is
    // written. `toleranz` as on the slider.
    void ausfuehren(Vorgang vorgang, int toleranz = 1);
    // That the review showed.
    qint64 gruppen() const { return gruppen_; }

  private:
    void klicken(const char* name);
    void waehlen(const char* name, const QString& eintrag);
    void schreiben(const char* name, const QString& text);
    template <typename Art>
    Art& element(const char* name);
    void zuordnen();
    void zielBestaetigen();
    void vorbereiten(Vorgang vorgang);
    void fensterBedienen();
    void reviewBedienen(QWidget& review);

    Laufuhr& uhr_;
    Programm programm_;
    std::unique_ptr<FensterQt> fenster_;
    QTimer bediener_;
    bool alleVerschoben_ = false;
    bool geklickt_ = false;  // a button of the review is at work
    qint64 gruppen_ = 0;
};
