// Frame 5: the six operations.
#pragma once

#include <QLabel>
#include <QToolButton>
#include <array>

#include "ui/rahmenbasis.h"

class RahmenVorgang : public Rahmen {
  public:
    RahmenVorgang();
    void fuellen(Schritte&) override;

    std::array<QToolButton*, 6> btnAuswahl;

  protected:
    // The arrow keys go over the pictures as they stand.
    bool eventFilter(QObject* ziel, QEvent* ereignis) override;
};
