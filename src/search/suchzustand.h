// The state of a search: what its phases and its abort share. Set by Suchlauf, alive until the search is
// over.
#pragma once

#include <QString>
#include <memory>

#include "data/steuerfelder.h"
#include "engine/dao/recordset.h"
#include "fields/feldarten.h"

inline constexpr char16_t kArbeitstabelle[] = u"TEMP_DS";

extern QString gSuchQuelle;             // name of the table that is searched
extern QString gSuchZiel;               // name of the result table
extern QString gArbeitsTabelle;         // name of the work table
extern FeldZuordnungen gSuchZuordnung;  // one element per column of the source
extern qint16 gSuchFelder;              // their number
extern qint32 gSuchDatensaetze;         // records of the source
extern bool gAnreichern;                // write enriched records
extern bool gAngereichertUebernehmen;   // they are accepted from the start
extern bool gAnsprechpartnerDifferenzieren;
extern std::unique_ptr<dao::Recordset> gQuellDaten;
extern std::unique_ptr<dao::Recordset> gErgebnisDaten;
extern std::unique_ptr<dao::Recordset> gArbeitsDaten;
extern std::unique_ptr<dao::Recordset> gZweitDaten;
extern std::unique_ptr<dao::Recordset> gBlockDaten;
extern qint64 gArbeitsPosition;  // where gArbeitsDaten stands, from 1
extern qint64 gZweitPosition;
extern qint64 gErgebnisPosition;

// Closes and lets go. Raises what `Recordset::Close` raises, 3420 when none is open.
void DatenSchliessen(std::unique_ptr<dao::Recordset>& daten);
// Closes what is open of the five recordsets; failures do not matter.
void AlleDatenSchliessen();
// "SELECT * FROM [table] ORDER BY clause".
QString SortierteAuswahl(const QString& tabelle, const QString& sortierung);
