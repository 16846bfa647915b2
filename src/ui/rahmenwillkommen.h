// Frame 0: the welcome page.
#pragma once

#include <QLabel>

#include "ui/rahmenbasis.h"

class RahmenWillkommen : public Rahmen {
  public:
    RahmenWillkommen();

    QWidget* Image1;
};
