// The remote control: runs the real program and drives its window by commands on standard input.
#include <QApplication>

#include "befehle.h"
#include "data/registry.h"
#include "data/start.h"
#include "programm/zusammenbau.h"
#include "steuerung.h"

namespace {

// The program's own window, which also tells when it holds the user's input back.
class FernesFenster : public FensterQt {
  public:
    using FensterQt::FensterQt;
    void nurZeichnen() override {
        gEingabenGesperrt = true;
        FensterQt::nurZeichnen();
        gEingabenGesperrt = false;
    }
};

Befehle alleBefehle() {
    Befehle befehle;
    EingabenAnmelden(befehle);
    MenuesAnmelden(befehle);
    AnzeigenAnmelden(befehle);
    KaestenAnmelden(befehle);
    ZustaendeAnmelden(befehle);
    return befehle;
}

void ohneAnzeige() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(name)) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

// Where a test wants the program's folder and the user's store.
void orteSetzen() {
    if (const QString ordner = qEnvironmentVariable("LINDGARN_ORDNER"); !ordner.isEmpty())
        ProgrammOrdnerSetzen(ordner);
    if (const QString ablage = qEnvironmentVariable("LINDGARN_ABLAGE"); !ablage.isEmpty())
        RegAblageSetzen(ablage);
}

}  // namespace

int main(int argc, char** argv) {
    ohneAnzeige();
    QApplication anwendung(argc, argv);
    orteSetzen();
    Programm programm;
    FernesFenster fenster(programm.hauptfenster());
    FensterSetzen(&fenster);
    Steuerung steuerung(alleBefehle());
    QApplication::exec();
    steuerung.abschliessen();
    return 0;
}
