// The state of a search.
#include "search/suchzustand.h"

#include "run/schritte.h"

// Written by Suchlauf, read by all phases.
QString gSuchQuelle;
QString gSuchZiel;
QString gArbeitsTabelle = QString::fromUtf16(kArbeitstabelle);
FeldZuordnungen gSuchZuordnung;
qint16 gSuchFelder = 0;
qint32 gSuchDatensaetze = 0;
bool gAnreichern = true;
bool gAngereichertUebernehmen = false;
bool gAnsprechpartnerDifferenzieren = false;
// Opened and closed by the phase that works on them; the abort closes what is left.
std::unique_ptr<dao::Recordset> gQuellDaten;
std::unique_ptr<dao::Recordset> gErgebnisDaten;
std::unique_ptr<dao::Recordset> gArbeitsDaten;
std::unique_ptr<dao::Recordset> gZweitDaten;
std::unique_ptr<dao::Recordset> gBlockDaten;
qint64 gArbeitsPosition = 0;
qint64 gZweitPosition = 0;
qint64 gErgebnisPosition = 0;

void DatenSchliessen(std::unique_ptr<dao::Recordset>& daten) {
    Gesetzt(daten).Close();
    daten.reset();
}

void AlleDatenSchliessen() {
    for (auto* daten : {&gQuellDaten, &gErgebnisDaten, &gArbeitsDaten, &gZweitDaten, &gBlockDaten}) {
        FehlerUebergehen([&] { DatenSchliessen(*daten); });
        daten->reset();
    }
}

QString SortierteAuswahl(const QString& tabelle, const QString& sortierung) {
    return QStringLiteral("SELECT * FROM [") + tabelle + QStringLiteral("] ORDER BY ") + sortierung;
}
