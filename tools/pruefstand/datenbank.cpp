// A database that is open for the length of one operation.
#include "datenbank.h"

#include "base/pfad.h"
#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "stummesfenster.h"

OffeneDatenbank::OffeneDatenbank(const QString& pfad, const QString& passwort) {
    FensterSetzen(&stummesFenster());
    gSystemmeldungZeigen = true;
    if (!DateiVorhanden(pfad)) throw Abgelehnt(QStringLiteral("Datei kann nicht geöffnet werden."));
    if (!gArbeitsbereich)
        gArbeitsbereich =
            dao::DBEngine::CreateWorkspace(QStringLiteral("Pruefstand"), QStringLiteral("Admin"), QString());
    DatenbankOeffnen(pfad, passwort, gDatenbank);
    if (!gFehler) return;
    gDatenbank.reset();
    throw Abgelehnt(stummesFenster().meldungAbholen());
}

OffeneDatenbank::~OffeneDatenbank() {
    FehlerUebergehen([] { gDatenbank->Close(); });
    gDatenbank.reset();
}

void OffeneDatenbank::sichern() const {
    if (!DatenbankSichern()) throw Abgelehnt(stummesFenster().meldungAbholen());
}
