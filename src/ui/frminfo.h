// The info box.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>

class FrmInfo : public QDialog {
  public:
    explicit FrmInfo(QWidget* eltern);

    QLabel* Image1;
    QLabel* lblTitle;
    QLabel* lblVersion;
    QLabel* lblDescription;
    QLabel* lblDisclaimer;
    QPushButton* cmdOK;
    QPushButton* cmdSysInfo;

  private:
    void anordnen();
};
