// The operation "remove junk records".
#include "junk/muellsuche.h"

#include "data/datenzugriff.h"
#include "data/kopieren.h"
#include "data/steuerfelder.h"
#include "junk/muellpruefung.h"
#include "run/abbruch.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

constexpr qint64 kSaetzeJeTransaktion = 1000;
constexpr int kAnmerkungGroesse = 200;
constexpr const char16_t* kSteuerfelder[] = {kTempDss, kTempDsn, kTempAmk};

// The state of a run: set by MuellsucheStarten and its phases, read by the abort.
QString gMuellQuelle;
QString gMuellZiel;
std::unique_ptr<dao::Recordset> gMuellQuellSatz;
std::unique_ptr<dao::Recordset> gMuellZielSatz;
qint64 gMuellGesamt = 0;
qint64 gMuellPruefAnzahl = 0;
bool gZielAbgelehnt = false;  // the user refused to overwrite the table that stands there

QString name(const char16_t* steuerfeld) {
    return QString::fromUtf16(steuerfeld);
}

dao::TableDef& zieldefinition() {
    return gDatenbank->TableDefs().Item(gMuellZiel);
}

const dao::TableDef* vorhandenesZiel() {
    const dao::TableDef* ziel = nullptr;
    FehlerUebergehen([&] { ziel = &zieldefinition(); });
    return ziel;
}

void saetzeSchliessen() {
    FehlerUebergehen([] { Gesetzt(gMuellQuellSatz).Close(); });
    FehlerUebergehen([] { Gesetzt(gMuellZielSatz).Close(); });
    gMuellQuellSatz.reset();
    gMuellZielSatz.reset();
}

void steuerfeldAnhaengen(const char16_t* feld, int typ, int groesse) {
    dao::TableDef& definition = zieldefinition();
    definition.Fields().Append(definition.CreateField(name(feld), typ, groesse));
}

void steuerfelderAnlegen(Schritte& s) {
    // They are there when the source is a work table itself.
    for (const char16_t* feld : kSteuerfelder)
        FehlerUebergehen([&] { zieldefinition().Fields().Delete(name(feld)); });
    s.tu([] { steuerfeldAnhaengen(kTempDss, dao::dbByte, 0); });
    s.tu([] { steuerfeldAnhaengen(kTempDsn, dao::dbLong, 0); });
    s.tu([] { steuerfeldAnhaengen(kTempAmk, dao::dbText, kAnmerkungGroesse); });
    FehlerUebergehen([] { zieldefinition().Fields().Item(name(kTempAmk)).setAllowZeroLength(true); });
}

void transaktionWechseln(Schritte& s) {
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    s.tu([] { gArbeitsbereich->BeginTrans(); });
}

// Where each field of the source stands in the target.
std::vector<int> zielstellen() {
    std::vector<int> stellen;
    for (int i = 0; i < gMuellQuellSatz->FieldsCount(); ++i)
        stellen.push_back(gMuellZielSatz->fieldPosition(gMuellQuellSatz->Fields(i).Name()));
    return stellen;
}

void satzKopieren(Schritte& s, const std::vector<int>& stellen, qint64 nummer) {
    s.tu([] { gMuellZielSatz->AddNew(); });
    for (size_t i = 0; i < stellen.size(); ++i)
        s.tu([&] { gMuellZielSatz->Fields(stellen[i]).setValue(gMuellQuellSatz->Fields(int(i)).Value()); });
    s.tu([] { gMuellZielSatz->Fields(name(kTempDss)).setValue(int(kStatusNormal)); });
    s.tu([&] { gMuellZielSatz->Fields(name(kTempDsn)).setValue(nummer); });
    s.tu([] { gMuellZielSatz->Fields(name(kTempAmk)).setValue(QString()); });
    s.tu([] { gMuellZielSatz->Update(); });
}

void saetzeKopieren(Schritte& s) {
    const std::vector<int> stellen = zielstellen();
    qint64 position = 0;
    s.tu([] { gMuellQuellSatz->MoveFirst(); });
    while (position < gMuellGesamt) {
        satzKopieren(s, stellen, ++position);
        if (position % kSaetzeJeTransaktion == 0) transaktionWechseln(s);
        s.tu([] { gMuellQuellSatz->MoveNext(); });
        DoEvents();
        if (gAbbruch) return;
        gFortschrittWert = position;
    }
    FortschrittBeenden();
}

void phaseBeginnen(Schritte& s, double anteil) {
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    FortschrittLeeren();
    FortschrittStarten(gMuellGesamt, anteil);
}

Schritte vorbereitung() {
    return Schritte([] { return QStringLiteral("Fehler beim Vorbereiten der Müllsuche."); });
}

void zielFuellen() {
    Schritte s = vorbereitung();
    s.ablauf(
        [&] {
            steuerfelderAnlegen(s);
            gMuellAnzahl = 0;
            s.tu([] { gMuellQuellSatz = gDatenbank->OpenRecordset(gMuellQuelle); });
            s.tu([] { gMuellZielSatz = gDatenbank->OpenRecordset(gMuellZiel); });
            phaseBeginnen(s, 0.1);
            s.tu([&] {
                Gesetzt(gMuellQuellSatz);
                Gesetzt(gMuellZielSatz);
                saetzeKopieren(s);
            });
            if (gAbbruch) return;
            s.tu([] { gArbeitsbereich->CommitTrans(); });
            saetzeSchliessen();
            gMuellPruefAnzahl = gMuellGesamt;
        },
        [] { gFehler = true; });
}

void MuellsucheVorbereiten() {
    fenster().information(
        QStringLiteral("Bereite Tabelle für den Vorgang vor und erstelle Sicherungskopie ..."));
    fenster().datensaetze(QString::number(gMuellGesamt) + QStringLiteral(" Datensätze insgesamt"));
    const dao::TableDef* vorher = vorhandenesZiel();
    TabelleKopieren(gMuellQuelle, gMuellZiel, true);
    gZielAbgelehnt = gAbbruch && vorher && vorhandenesZiel() == vorher;
    if (Angehalten()) return;
    zielFuellen();
    if (!Angehalten()) RelationenKopieren(gMuellQuelle, gMuellZiel);
}

void saetzePruefen(Schritte& s) {
    for (qint64 position = 1; position <= gMuellPruefAnzahl; ++position) {
        s.tu([] { gMuellZielSatz->Edit(); });
        DatensatzEntmuellen(*gMuellZielSatz);
        if (gFehler) return;
        s.tu([] { gMuellZielSatz->Update(); });
        if (position % kSaetzeJeTransaktion == 0) transaktionWechseln(s);
        DoEvents();
        if (gAbbruch) return;
        gFortschrittWert = position;
        s.tu([] { gMuellZielSatz->MoveNext(); });
    }
    FortschrittBeenden();
}

void MuellsucheAusfuehren() {
    fenster().information(QStringLiteral("Durchsuche die Tabelle nach Mülldatensätzen ..."));
    Schritte s([] { return QStringLiteral("Fehler bei der Ausführung der Müllsuche."); });
    s.ablauf(
        [&] {
            s.tu([] { gMuellZielSatz = zieldefinition().OpenRecordset(); });
            s.tu([] { Gesetzt(gMuellZielSatz).MoveLast(); });
            s.tu([] { Gesetzt(gMuellZielSatz).MoveFirst(); });
            phaseBeginnen(s, 0.3);
            s.tu([&] {
                Gesetzt(gMuellZielSatz);
                saetzePruefen(s);
            });
            if (Angehalten()) return;
            s.tu([] { gArbeitsbereich->CommitTrans(); });
            saetzeSchliessen();
        },
        [] { gFehler = true; });
}

void MuellsucheBeenden() {
    Schritte s([] { return QStringLiteral("Fehler beim Beenden der Müllsuche."); });
    s.ablauf(
        [&] {
            s.tu([] { gArbeitsbereich->BeginTrans(); });
            s.tu([] {
                gDatenbank->Execute(QStringLiteral("DELETE * FROM [") + gMuellZiel +
                                    QStringLiteral("] WHERE [") + name(kTempDss) + QStringLiteral("] = ") +
                                    QString::number(kStatusMuell));
            });
            transaktionWechseln(s);
            for (const char16_t* feld : kSteuerfelder)
                s.tu([&] { zieldefinition().Fields().Delete(name(feld)); });
            s.tu([] { gArbeitsbereich->CommitTrans(); });
        },
        [] { gFehler = true; });
}

// The target goes, also one that stood there and that the user did not want to see overwritten.
void MuellsucheAbbrechen() {
    VorgangAbbrechen(saetzeSchliessen, [] {
        if (!gZielAbgelehnt) return;
        FehlerUebergehen([] { gDatenbank->TableDefs().Delete(gMuellZiel); });
        DatenbankSichern();
    });
}

void quelleZaehlen() {
    gMuellGesamt = 0;
    Schritte s = vorbereitung();
    s.ablauf([&] { s.tu([] { gMuellGesamt = DatensaetzeDerTabelle(gMuellQuelle); }); },
             [] { gFehler = true; });
}

// True when there are records to check; otherwise the user has been told.
bool etwasZuPruefen() {
    quelleZaehlen();
    if (Angehalten()) return false;
    if (gMuellGesamt > 0) return true;
    HinweisZeigen(QStringLiteral("Kein Datensatz vorhanden.\rEine Korrektur ist daher überflüssig."));
    return false;
}

bool etwasGefunden() {
    if (gMuellAnzahl > 0) return true;
    HinweisZeigen(QStringLiteral("Es wurden keine Mülldatensätze gefunden."));
    return false;
}

bool suchen() {
    RahmenWechseln(21, 6, true, true);
    MuellsucheVorbereiten();
    if (!Angehalten()) MuellsucheAusfuehren();
    return !Angehalten();
}

bool nachbearbeiten() {
    fenster().information(QStringLiteral("Bereite Anzeige der Ergebnisse vor ..."));
    RahmenWechseln(6, 22, true, true);
    fenster().muellBearbeiten();
    return !Angehalten();
}

bool abschliessen() {
    fenster().neuZeichnen();
    MuellsucheBeenden();
    return !Angehalten() && DatenbankSichern();
}

}  // namespace

void MuellsucheStarten(const QString& quelle, const QString& ziel) {
    gAbbruch = false;
    gFehler = false;
    gMuellQuelle = quelle;
    gMuellZiel = ziel;
    gZielAbgelehnt = false;
    gDatenbank->Merken();
    if (etwasZuPruefen() && suchen() && etwasGefunden() && nachbearbeiten() && abschliessen())
        RahmenWechseln(22, 23, true, true);
    else
        MuellsucheAbbrechen();
}
