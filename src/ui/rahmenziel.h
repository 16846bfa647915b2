// Frame 4: the name of the table that the run writes.
#pragma once

#include <QLabel>
#include <QLineEdit>

#include "ui/rahmenbasis.h"

class RahmenZiel : public Rahmen {
  public:
    RahmenZiel();
    void fuellen(Schritte& s) override;
    bool pruefen() override;

    QLineEdit* tbxZielTabelle;
    QLabel* lblKurzerName;  // on show where the default name is too long
};
