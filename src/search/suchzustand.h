// The state of a search: what its phases and its abort share. Set by Suchlauf, alive until the search is
// over.
#pragma once

#include <QString>
#include <memory>

#include "engine/dao/recordset.h"
#include "fields/feldarten.h"

// The control columns and the states of a record.
inline constexpr char16_t kTempDss[] = u"TEMP_DSS";  // state of the record
inline constexpr char16_t kTempDsn[] = u"TEMP_DSN";  // its number, from 1
inline constexpr char16_t kTempBn[] = u"TEMP_BN";    // its group, 0 for none
inline constexpr char16_t kTempAmk[] = u"TEMP_AMK";  // remark
inline constexpr char16_t kArbeitstabelle[] = u"TEMP_DS";

enum Satzstatus : int {
    kStatusNormal = 11,
    kStatusAngereichert = 12,
    kStatusDublette = 13,
    kStatusAngereichertBleibt = 21,
    kStatusDubletteBleibt = 22,
};

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
