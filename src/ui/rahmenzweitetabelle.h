// Frames 51 and 61: the second table.
#pragma once

#include <QComboBox>
#include <QStringList>

#include "ui/rahmenbasis.h"

class RahmenZweiteTabelle : public Rahmen {
  public:
    // The list stands between the two parts of a sentence; the notes stand below.
    RahmenZweiteTabelle(int nummer, const QString& titel, const QString& davor, const QString& liste,
                        const QString& danach, const QStringList& hinweise);
    void fuellen(Schritte& s) override;
    bool pruefen() override;

  private:
    QComboBox* tabellen_;
};

RahmenZweiteTabelle* RahmenDatenabgleich();
RahmenZweiteTabelle* RahmenNeueDaten();
