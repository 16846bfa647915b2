// The help window.
#pragma once

#include <QDialog>
#include <QPlainTextEdit>
#include <QPushButton>

class FrmHilfe : public QDialog {
  public:
    // Reads the help file and shows the topic of the frame on show, whose caption is `rahmentitel`.
    FrmHilfe(QWidget* eltern, const QString& rahmentitel);

    // The text of a topic of "Hilfe.HLP"; tells when the file is missing, the text is empty then.
    static QString HilfeThemaLesen(const QString& schluessel);

    QPlainTextEdit* tbxHilfe;
    QPushButton* btnHandbuch;  // hidden when the program came without a handbook
    QPushButton* Command1;
};

// Shows the help window modally. `rahmentitel` is the caption of the frame on show; the two review windows,
// whose topics are fixed, leave it out.
void HilfeZeigen(QWidget* eltern, const QString& rahmentitel = QString());
