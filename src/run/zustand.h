// The program's state: one set of globals, alive from start to end, saved nowhere.
#pragma once

#include <QString>
#include <memory>

#include "engine/dao/workspace.h"
#include "fields/feldarten.h"

extern quint8 gVorgang;            // 1 to 6, 0 = none; btnAuswahl_Click, frames 3 and 5
extern qint16 gRahmen;             // frame on show; -1 between two frames
extern bool gAbbruch;              // the user asked the run to stop
extern bool gFehler;               // a step failed and the user stopped it
extern bool gSystemmeldungZeigen;  // the error box appends the system's own text; Ctrl+F
extern std::unique_ptr<dao::Workspace> gArbeitsbereich;
extern std::unique_ptr<dao::Database> gDatenbank;
extern QString gDatenbankFormat;  // connect text of the open file
extern QString gDatenbankPfad;    // as handed to DatenbankOeffnen
extern QString gDatenbankName;    // as handed to OpenDatabase: the file, or the folder
extern QString gDatenbankPasswort;
extern QString gVerbindungstext;  // connection text of the review grids
extern QString gAusgangsTabelle;  // the "1. Tabelle"
extern QString gZweiteTabelle;
extern QString gZielTabelle;              // the table that a run writes
extern QString gZuordnungsTabelle;        // the table that frame 7 shows
extern quint8 gZuordnungsSchritt;         // 1: first table, 2: second table
extern FeldZuordnungen gFeldZuordnungen;  // being edited in frame 7
extern qint16 gFeldAnzahl;                // fields of the table of frame 7
extern FeldZuordnungen gZuordnungenTabelle1;
extern FeldZuordnungen gZuordnungenTabelle2;
extern QString gRegistrySchluessel;
extern qint32 gDublettenAnzahl;     // records found as duplicates
extern qint32 gMuellAnzahl;         // junk records found
extern qint32 gAnzahlAngereichert;  // enriched records left when the review was confirmed
extern qint64 gFortschrittWert;     // position of the current phase; written by the loops
extern qint64 gFortschrittMax;      // its total
extern qint32 gLaufzeitMs;          // milliseconds since the phase began, by the timer's ticks
extern float gFortschrittAnteil;    // kept, never read

// True when the run is to stop: looked at behind every yield and after every step of a run.
inline bool Angehalten() {
    return gAbbruch || gFehler;
}

// Tests only: everything as before ProgrammStarten.
void ZustandZuruecksetzen();
