// Frame 11: the options of the search.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QSlider>
#include <array>

#include "run/fenster.h"
#include "ui/rahmenbasis.h"

class RahmenSuche : public Rahmen {
  public:
    RahmenSuche();
    // Lists the fields of `gAusgangsTabelle` and chooses by their kinds.
    void fuellen(Schritte& s) override;
    bool pruefen() override;
    Suchoptionen optionen() const;

    std::array<QCheckBox*, 3> chkSucheDurchführen;
    std::array<QComboBox*, 9> cbxSuchFeld;
    std::array<QSlider*, 3> sdrZeichenRichtig;
    QSlider* sdrToleranz;
    QCheckBox* chkQuickSuche;
    QCheckBox* chkAnsprechpartnerDifferenzieren;

  private:
    QLayout* suchenBauen();
    QLayout* toleranzBauen();
    void chkSucheDurchführen_Click(int suche);
};
