// What all frames have in common.
#pragma once

#include <QGroupBox>

class Schritte;

// One frame of the wizard: a titled box with controls, its filling and its check.
class Rahmen : public QGroupBox {
  public:
    // The object name is "freRahmen_<number>".
    Rahmen(int nummer, const QString& titel);
    // Prepares the controls for a user who comes from the frame before. What can fail runs as steps of `s`.
    virtual void fuellen(Schritte&) {}
    // Checks what the user entered and keeps it in the program's state; tells what is wrong and returns False
    // if the frame must stay. May raise EngineFehler.
    virtual bool pruefen() { return true; }
    // A long title does not widen the window.
    QSize minimumSizeHint() const override;
};
