// The program. A file named on the command line is opened at once.
#include <QApplication>
#include <QTimer>

#include "programm/zusammenbau.h"

int main(int argc, char** argv) {
    QApplication anwendung(argc, argv);
    Programm programm;
    if (const QString datei = QApplication::arguments().value(1); !datei.isEmpty())
        QTimer::singleShot(0, [&programm, datei] { programm.dateiOeffnen(datei); });
    return QApplication::exec();
}
