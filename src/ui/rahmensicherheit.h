// Frame 1: what to mind before any work on a database.
#pragma once

#include "ui/rahmenbasis.h"

class RahmenSicherheit : public Rahmen {
  public:
    RahmenSicherheit();
};
