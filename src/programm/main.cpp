// The program.
#include <QApplication>

#include "programm/zusammenbau.h"

int main(int argc, char** argv) {
    QApplication anwendung(argc, argv);
    Programm programm;
    return QApplication::exec();
}
