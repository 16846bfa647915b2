// The program's state: the globals that all floors from here on up share.
#include "run/zustand.h"

// Written and read as zustand.h says. The workspace stands in front of the database, so that it outlives it.
quint8 gVorgang = 0;
qint16 gRahmen = -1;
bool gAbbruch = false;
bool gFehler = false;
bool gSystemmeldungZeigen = true;
std::unique_ptr<dao::Workspace> gArbeitsbereich;
std::unique_ptr<dao::Database> gDatenbank;
QString gDatenbankFormat;
QString gDatenbankPfad;
QString gDatenbankName;
QString gDatenbankPasswort;
QString gVerbindungstext;
QString gAusgangsTabelle;
QString gZweiteTabelle;
QString gZielTabelle;
QString gZuordnungsTabelle;
quint8 gZuordnungsSchritt = 0;
FeldZuordnungen gFeldZuordnungen;
qint16 gFeldAnzahl = 0;
FeldZuordnungen gZuordnungenTabelle1;
FeldZuordnungen gZuordnungenTabelle2;
QString gRegistrySchluessel;
qint32 gDublettenAnzahl = 0;
qint32 gMuellAnzahl = 0;
qint32 gAnzahlAngereichert = 0;
qint64 gFortschrittWert = 0;
qint64 gFortschrittMax = 0;
qint32 gLaufzeitMs = 0;
float gFortschrittAnteil = 0;

void ZustandZuruecksetzen() {
    gDatenbank.reset();
    gArbeitsbereich.reset();
    gVorgang = gZuordnungsSchritt = 0;
    gRahmen = -1;
    gAbbruch = gFehler = false;
    gSystemmeldungZeigen = true;
    for (QString* text :
         {&gDatenbankFormat, &gDatenbankPfad, &gDatenbankName, &gDatenbankPasswort, &gVerbindungstext,
          &gAusgangsTabelle, &gZweiteTabelle, &gZielTabelle, &gZuordnungsTabelle, &gRegistrySchluessel})
        text->clear();
    for (FeldZuordnungen* liste : {&gFeldZuordnungen, &gZuordnungenTabelle1, &gZuordnungenTabelle2})
        liste->clear();
    gFeldAnzahl = 0;
    gDublettenAnzahl = gMuellAnzahl = gAnzahlAngereichert = gLaufzeitMs = 0;
    gFortschrittWert = gFortschrittMax = 0;
    gFortschrittAnteil = 0;
}
