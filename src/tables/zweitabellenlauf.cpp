// The run that reconciliation and new data have in common.
#include "tables/zweitabellenlauf.h"

#include "data/datenzugriff.h"
#include "data/steuerfelder.h"
#include "run/abbruch.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/puffer.h"
#include "search/suchlauf.h"
#include "tables/mischen.h"

namespace {

constexpr const char16_t* kSteuerfelder[] = {kTempDsq, kTempDss, kTempDsn, kTempBn, kTempAmk};

void saetzeLoeschen(Schritte& s, const QString& ziel, const QStringList& bedingungen) {
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    for (const QString& bedingung : bedingungen)
        s.tu([&] {
            gDatenbank->Execute(QStringLiteral("DELETE * FROM [") + ziel + QStringLiteral("] ") + bedingung);
        });
    s.tu([] { gArbeitsbereich->CommitTrans(); });
}

void steuerfelderLoeschen(Schritte& s, const QString& ziel) {
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    for (const char16_t* feld : kSteuerfelder)
        s.tu([&] { gDatenbank->TableDefs().Item(ziel).Fields().Delete(QString::fromUtf16(feld)); });
    s.tu([] { gArbeitsbereich->CommitTrans(); });
}

void beenden(const QString& ziel, const Zweitabellenlauf& lauf) {
    Schritte s([&] { return lauf.fehler; });
    s.ablauf(
        [&] {
            saetzeLoeschen(s, ziel, lauf.loeschbedingungen);
            steuerfelderLoeschen(s, ziel);
        },
        [] { gFehler = true; });
}

void aufraeumen(const QString& mischtabelle) {
    FehlerUebergehen([&] { gDatenbank->TableDefs().Delete(mischtabelle); });
}

void nachbearbeiten() {
    fenster().information(QStringLiteral("Bereite Anzeige der Ergebnisse vor ..."));
    RahmenWechseln(6, 12, true, true);
    fenster().dublettenBearbeiten();
}

bool abschliessen(const QString& ziel, const Zweitabellenlauf& lauf) {
    fenster().neuZeichnen();
    beenden(ziel, lauf);
    if (Angehalten()) return false;
    aufraeumen(lauf.mischtabelle);
    ArbeitstabelleLoeschen();
    return !Angehalten() && DatenbankSichern();
}

}  // namespace

void ZweitabellenlaufStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                             const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2,
                             const Zweitabellenlauf& lauf) {
    gAbbruch = false;
    gFehler = false;
    gDatenbank->Merken();
    FeldZuordnungen gemischte;
    TabellenMischen(quelle, zweite, lauf.mischtabelle, zuordnung1, zuordnung2, gemischte);
    if (!Angehalten()) Suchlauf(lauf.mischtabelle, ziel, gemischte, true, lauf.angereichertUebernehmen);
    if (!Angehalten()) nachbearbeiten();
    if (!Angehalten() && abschliessen(ziel, lauf))
        RahmenWechseln(12, lauf.ergebnisrahmen, true, true);
    else
        VorgangAbbrechen();
}

QString StatusBedingung(int status) {
    return QStringLiteral("WHERE [") + QString::fromUtf16(kTempDss) + QStringLiteral("] = ") +
           QString::number(status);
}
