// Frame 7: what each field of the table holds.
#pragma once

#include <QLabel>
#include <QListWidget>

#include "ui/feldmenue.h"
#include "ui/rahmenbasis.h"

// The list of the fields: a click with the left button, or Enter, Space and the menu key, ask for the kind of
// a line.
class Feldliste : public QListWidget {
  public:
    // `wo` is where the menu belongs, on the screen.
    std::function<void(QPoint wo)> artErfragen;

  protected:
    void mousePressEvent(QMouseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;

  private:
    void anDerZeileFragen();
};

class RahmenFelder : public Rahmen {
  public:
    RahmenFelder();
    // Proposes the kinds of the fields of `gZuordnungsTabelle`.
    void fuellen(Schritte&) override;

    Feldliste* lstFelder;
    QMenu* mnuFeldArten;

  private:
    void menueZeigen(QPoint wo);
    void artZuordnen(const Feldarten& arten);
};
