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

    // Fills in a file as if the user had typed its full path.
    void dateiEintragen(const QString& pfad);

    QLineEdit* tbxDatenbankName;
    QPushButton* btnDatenbankAuswählen;
    QLineEdit* tbxDatenbankPasswort;

  protected:
    // A file that is dropped on the frame is filled in.
    void dragEnterEvent(QDragEnterEvent* ereignis) override;
    void dropEvent(QDropEvent* ereignis) override;

  private:
    void btnDatenbankAuswählen_Click();
};
