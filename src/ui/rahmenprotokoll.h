// Frame 13: the result of a search for duplicates.
#pragma once

#include <QLabel>

#include "ui/balken.h"
#include "ui/rahmenbasis.h"

class RahmenProtokoll : public Rahmen {
  public:
    RahmenProtokoll();
    // Counts the source and the result, and shows the run's figures.
    void fuellen() override;

    Balken* shpDubletten1;
    Balken* shpDubletten2;
    Balken* shpDubletten3;
    QLabel* lblDubletten1;
    QLabel* lblDubletten2;
    QLabel* lblDubletten3;
    QLabel* lblDublettenVerunreinigung;
};
