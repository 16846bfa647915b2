// Frame 31: the options of the split.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>

#include "run/fenster.h"
#include "ui/rahmenbasis.h"

class RahmenSplitten : public Rahmen {
  public:
    RahmenSplitten();
    void fuellen(Schritte& s) override;
    bool pruefen() override;
    Splittoptionen optionen() const;

    QLabel* lblSplitten1;
    QComboBox* cbxSplitten1;
    QLabel* lblSplitten3;
    QComboBox* cbxSplitten2;
    QLabel* lblSplitten2;
    QComboBox* cbxSplittenTypus;
    QFrame* shpSplitten_Verdeutlichung;
    QLabel* lblSplitten4;
    QLineEdit* tbxSplitten_Trennzeichen;
    QLineEdit* tbxSplitten1;
    QLineEdit* tbxSplitten2;
    QLineEdit* tbxSplitten3;
    QCheckBox* chkSplittenLöschen;

  private:
    void anordnen();
    void cbxSplittenTypus_Click();
};
