// The abort of a run.
#include "run/abbruch.h"

#include "run/fenster.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"

void LaufAbbrechen(const QString& text, const std::function<void()>& aufraeumen) {
    fenster().zurueckAktiv(false);
    fenster().information(text);
    FehlerUebergehen([] { gArbeitsbereich->Rollback(); });
    FortschrittAnhalten();
    aufraeumen();
    fenster().zurueckAktiv(true);
}

void VorgangAbbrechen(const std::function<void()>& schliessen, const std::function<void()>& danach) {
    LaufAbbrechen(QStringLiteral("Breche Vorgang ab ..."), [&] {
        schliessen();
        FehlerUebergehen([] { gDatenbank->Zuruecknehmen(); });
        danach();
        RahmenWechseln(gRahmen, 3, true, true);
    });
}
