// Frames 32 and 42: a run without figures has ended.
#pragma once

#include "ui/rahmenbasis.h"

class RahmenFertig : public Rahmen {
  public:
    RahmenFertig(int nummer, const QString& text);
};
