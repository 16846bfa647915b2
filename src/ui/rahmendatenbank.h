// Frame 2: the database file and its password.
#pragma once

#include <QLineEdit>
#include <QPushButton>

#include "ui/rahmenbasis.h"

class RahmenDatenbank : public Rahmen {
  public:
    RahmenDatenbank();
    // Opens the database.
    bool pruefen() override;

    QLineEdit* tbxDatenbankName;
    QPushButton* btnDatenbankAuswählen;
    QLineEdit* tbxDatenbankPasswort;

  private:
    void btnDatenbankAuswählen_Click();
};
