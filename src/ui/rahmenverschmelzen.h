// Frame 41: the options of the merge.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <array>

#include "run/fenster.h"
#include "ui/rahmenbasis.h"

// An option button with a text box in a gap at the front of its text.
class Lueckenwahl : public QRadioButton {
  public:
    // The gap is as wide as `luecke` blanks, with which `text` begins.
    Lueckenwahl(const QString& text, QLineEdit* feld);

  protected:
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    QLineEdit* feld_;
};

class RahmenVerschmelzen : public Rahmen {
  public:
    RahmenVerschmelzen();
    void fuellen(Schritte& s) override;
    bool pruefen() override;
    Verschmelzoptionen optionen() const;

    QComboBox* cbxVerschmelzen1;
    QComboBox* cbxVerschmelzen2;
    QLineEdit* tbxVerschmolzen;
    QLineEdit* tbxTrennzeichen;
    std::array<QRadioButton*, 2> otnTrennzeichen;
    QCheckBox* chkVerschmelzenLöschen;

  private:
    void anordnen();
};
