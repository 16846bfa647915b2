// Frame 6: what a run shows while it works.
#pragma once

#include <QLabel>
#include <QProgressBar>

#include "ui/rahmenbasis.h"

class RahmenDurchfuehrung : public Rahmen {
  public:
    RahmenDurchfuehrung();
    void fuellen(Schritte&) override;
    // What the run is doing. Names that are wider than the page are wrapped.
    void informationZeigen(const QString& text);
    // 0 to 100. The bar keeps the exact value, also between two whole percents.
    void fortschrittSetzen(float prozent);
    float fortschritt() const { return prozent_; }

    QLabel* lblInformation;
    QProgressBar* pgbTeilFortschritt;
    QLabel* lblTeilFortschritt;
    QLabel* lblDatensätze;
    QLabel* lblDauer;
    QLabel* lblVerbleibendeZeit;

  private:
    float prozent_ = 0;
};
