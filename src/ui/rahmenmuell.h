// Frame 21: what the junk search looks at.
#pragma once

#include <QCheckBox>

#include "run/fenster.h"
#include "ui/rahmenbasis.h"

class RahmenMuell : public Rahmen {
  public:
    RahmenMuell();
    Muelloptionen optionen() const;

    QCheckBox* chkFirmenname;
    QCheckBox* chkRechtsform;
    QCheckBox* chkBranche;
    QCheckBox* chkPostalisch;
    QCheckBox* chkHausnummer;
    QCheckBox* chkKontakt;
    QCheckBox* chkAnrede;
    QCheckBox* chkVorname;
    QCheckBox* chkNachname;
    QCheckBox* chkAbteilung;
    QCheckBox* chkTelefon;
    QCheckBox* chkFax;
    QCheckBox* chkEmail;
    QCheckBox* chkInternet;

  private:
    void anordnen();
};
