// What the two review windows have in common: their ways in and out, and the moves of records.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <memory>

#include "engine/dao/recordset.h"
#include "ui/datengitter.h"
#include "ui/datensteuerung.h"

// Works on the state column of `gZielTabelle` in `gDatenbank`: each decision is a change of that one value,
// committed at once.
class Nachbearbeitungsfenster : public QDialog {
  public:
    Nachbearbeitungsfenster(const QString& name, const QString& titel, QWidget* eltern);

    QPushButton* btnFertig;
    QPushButton* btnAbbrechen;
    QPushButton* btnHilfe;
    QLabel* lblStand;  // how many records stand where, or how far a move of many has come

    // Shows the loaded window until the user has decided.
    void entscheidenLassen();
    // Does nothing: a stray Escape must not end a run.
    void reject() override;

  protected:
    using Statusregel = std::function<int(int)>;  // a record's new state from its old one
    using Saetze = std::unique_ptr<dao::Recordset>;

    // What a window adds.
    virtual void btnFertig_Click() = 0;
    virtual QList<QPushButton*> verschiebeknoepfe() const = 0;  // disabled while all records of a list move
    virtual void saetzeSchliessen() = 0;                        // all recordsets, without a failure

    // The close button asks before it acts as btnAbbrechen.
    void closeEvent(QCloseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;

    // Takes the grids, each with a heading, a note beside it or none, and its button, and the closing row.
    struct Liste {
        QLabel* titel;
        QWidget* notiz;
        Datengitter* gitter;
        QPushButton* knopf;
    };
    void anordnen(const QList<Liste>& listen, const QList<QLabel*>& darunter);
    void groesseWaehlen(int zeilen);

    static Datengitter* gitterMit(const QString& name, const QString& zweck, Datensteuerung* daten);
    static QPushButton* bildknopf(const QString& name, const QString& bild, const QString& zweck,
                                  const QString& kuerzel);
    static QLabel* ueberschrift(const QString& name, const QString& text, QWidget* gitter);

    // Runs a user's action unless another one is at work.
    void handeln(const std::function<void()>& aktion);
    virtual void handlungBeendet() {}
    bool handelt() const { return handelt_; }
    bool entladen() const { return entladen_; }
    void neuAbfragen(Saetze& saetze);
    // Moves the record of the grid's current row.
    void einenVerschieben(dao::Recordset& saetze, const Datensteuerung& daten, const Statusregel& regel);
    // Within an action, whose end enables the buttons again. False when the window was unloaded meanwhile.
    bool alleVerschieben(dao::Recordset& saetze, const Statusregel& regel);
    void fensterEntladen();
    static void schliessen(Saetze& saetze);

  private:
    void btnAbbrechen_Click();
    void inTransaktion(const std::function<void()>& schreiben);
    void knoepfeSchalten(bool aktiv);

    bool handelt_ = false;
    bool entladen_ = false;
};
