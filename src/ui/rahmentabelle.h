// Frame 3: the tables of the database, with details, deleting and renaming.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "ui/rahmenbasis.h"

class RahmenTabelle : public Rahmen {
  public:
    RahmenTabelle();
    void fuellen(Schritte& s) override;
    bool pruefen() override;

    QListWidget* lstTabellen;
    QLabel* lblGröße;
    QLabel* lblGeändert;
    QPushButton* cmdTabelleLöschen;
    QPushButton* cmdTabelleUmbenennen;

  protected:
    // The first arrow key chooses the row on which the focus stands.
    bool eventFilter(QObject* ziel, QEvent* ereignis) override;

  private:
    // The chosen table; nothing when there is none.
    QListWidgetItem* gewaehlt() const;
    void tabellenAuflisten();
    void lstTabellen_Click();
    void cmdTabelleLöschen_Click();
    void cmdTabelleUmbenennen_Click();
};
