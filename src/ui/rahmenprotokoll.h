// Frames 13, 23, 53 and 63: the result of a run in bars and figures.
#pragma once

#include <QLabel>
#include <array>

#include "ui/balken.h"
#include "ui/protokollzahlen.h"
#include "ui/rahmenbasis.h"

class RahmenProtokoll : public Rahmen {
  public:
    explicit RahmenProtokoll(const Protokollart& art);
    // Counts the source and the result, and shows the run's figures.
    void fuellen(Schritte& s) override;

  private:
    const Protokollart& art_;
    std::array<Balken*, 3> balken_;
    std::array<QLabel*, 4> texte_;
};
