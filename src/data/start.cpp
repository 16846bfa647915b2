// Start and end of the program.
#include "data/start.h"

#include <QCoreApplication>
#include <QDateTime>

#include "base/pfad.h"
#include "data/datenzugriff.h"
#include "data/feldvorschlag.h"
#include "data/registry.h"
#include "fields/einstellungen.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

QString ordner;  // another program folder; written by ProgrammOrdnerSetzen, empty outside tests

}  // namespace

void ProgrammStarten() {
    ZufallStarten(quint32(QDateTime::currentMSecsSinceEpoch()));
    EinstellungenLaden();
    gSystemmeldungZeigen = true;
    gArbeitsbereich = dao::DBEngine::CreateWorkspace(QString(), QStringLiteral("Admin"), QString());
    gRegistrySchluessel = QStringLiteral("Software\\Tessmark\\Lindgarn\\1.0");
    RegSchluesselAnlegen(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel);
}

void ProgrammBeenden() {
    DatenbankSchliessen(gDatenbank);
    FehlerUebergehen([] { Gesetzt(gArbeitsbereich).Close(); });
    gArbeitsbereich.reset();
}

void EinstellungenLaden() {
    const QString pfad = ProgrammDatei(QStringLiteral("Einstellungen.CFG"));
    if (!DateiVorhanden(pfad)) return EinstellungenAnwenden(std::nullopt);
    // The tables stand before the file is opened, whatever becomes of it.
    EinstellungenAnwenden(QString());
    Schritte s([] { return QStringLiteral("Fehler beim Laden der Einstellungsdatei in Zeile ."); });
    s.ablauf([&] { s.tu([&] { EinstellungenAnwenden(TextAusBytes(ProgrammdateiLesen(pfad))); }); },
             [] { gFehler = true; });
}

QString ProgrammOrdner() {
    return ordner.isEmpty() ? QCoreApplication::applicationDirPath() : ordner;
}

void ProgrammOrdnerSetzen(const QString& neuer) {
    ordner = neuer;
}

QString ProgrammDatei(const QString& name) {
    const QString daneben = ProgrammOrdner() + u'\\' + name;
    const QString installiert = ProgrammOrdner() + QStringLiteral("\\..\\share\\lindgarn\\") + name;
    return !DateiVorhanden(daneben) && DateiVorhanden(installiert) ? installiert : daneben;
}
