// The operation "find duplicates": search, review, corrected table.
#include "search/dublettensuche.h"

#include "data/datenzugriff.h"
#include "run/abbruch.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/puffer.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

namespace {

// Names of this run: set by DublettensucheStarten, read by its end and its abort.
QString zielTabelle;

void statusLoeschen(Schritte& s, int status) {
    s.tu([&] {
        gDatenbank->Execute(QStringLiteral("DELETE * FROM [") + zielTabelle + QStringLiteral("] WHERE [") +
                            QString::fromUtf16(kTempDss) + QStringLiteral("] = ") + QString::number(status));
    });
}

void spalteLoeschen(Schritte& s, const char16_t* name) {
    s.tu([&] { gDatenbank->TableDefs().Item(zielTabelle).Fields().Delete(QString::fromUtf16(name)); });
}

// What the user did not take or keep goes, and then the control columns.
void KorrigierteTabelleErstellen() {
    Schritte s([] { return QStringLiteral("Fehler beim Erstellen der korrigierten Tabelle."); });
    s.ablauf(
        [&] {
            s.tu([] { gArbeitsbereich->BeginTrans(); });
            statusLoeschen(s, kStatusAngereichert);
            statusLoeschen(s, kStatusDublette);
            s.tu([] { gArbeitsbereich->CommitTrans(); });
            s.tu([] { gArbeitsbereich->BeginTrans(); });
            for (const char16_t* name : {kTempDss, kTempDsn, kTempBn, kTempAmk}) spalteLoeschen(s, name);
            s.tu([] { gArbeitsbereich->CommitTrans(); });
        },
        [] { gFehler = true; });
}

// True when there is something to review; otherwise the user has been told.
bool etwasGefunden() {
    if (gDublettenAnzahl > 0) return true;
    HinweisZeigen(QStringLiteral("Es wurden keine Dubletten gefunden."));
    return false;
}

bool nachbearbeiten() {
    fenster().information(QStringLiteral("Bereite Anzeige der Ergebnisse vor ..."));
    RahmenWechseln(6, 12, true, true);
    fenster().dublettenBearbeiten();
    return !Angehalten();
}

bool abschliessen() {
    fenster().neuZeichnen();
    KorrigierteTabelleErstellen();
    if (Angehalten()) return false;
    ArbeitstabelleLoeschen();
    return !Angehalten() && DatenbankSichern();
}

bool durchfuehren(const QString& quelle) {
    Suchlauf(quelle, zielTabelle, gZuordnungenTabelle1, true, false);
    return !Angehalten() && etwasGefunden() && nachbearbeiten() && abschliessen();
}

}  // namespace

void DublettensucheStarten(const QString& quelle, const QString& ziel) {
    gAbbruch = false;
    gFehler = false;
    zielTabelle = ziel;
    gDatenbank->Merken();
    if (durchfuehren(quelle))
        RahmenWechseln(12, 13, true, true);
    else
        VorgangAbbrechen();
}
