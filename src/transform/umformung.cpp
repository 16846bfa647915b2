// The run that split and merge have in common.
#include "transform/umformung.h"

#include "data/datenzugriff.h"
#include "run/abbruch.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/zustand.h"

namespace {

constexpr qint64 kSaetzeJeTransaktion = 1000;

// The state of a run: set by UmformungStarten and its steps, read by the abort.
QString quellTabelle;
QString zielTabelle;
std::unique_ptr<dao::Recordset> quellDaten;
std::unique_ptr<dao::Recordset> zielDaten;
qint64 position = 0;

Schritte schritte(const Umformung& umformung) {
    return Schritte([&umformung] {
        return umformung.fehler + QStringLiteral("\ran der Position: ") + QString::number(position);
    });
}

void tabellenOeffnen(Schritte& s) {
    s.tu([] { quellDaten = gDatenbank->OpenRecordset(quellTabelle); });
    s.tu([] { zielDaten = gDatenbank->OpenRecordset(zielTabelle); });
    qint64 anzahl = 0;
    s.tu([&] { anzahl = DatensaetzeZaehlen(Gesetzt(quellDaten)); });
    fenster().datensaetze(QString::number(anzahl) + QStringLiteral(" Datensätze insgesamt"));
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    FortschrittLeeren();
    FortschrittStarten(anzahl, 0.3);
    position = 0;
}

void alteFelderKopieren(Schritte& s, const Umformung& umformung) {
    int zielFeld = 0;
    for (int feld = 0; feld < quellDaten->FieldsCount(); ++feld, ++zielFeld) {
        s.tu([&] { zielDaten->Fields(zielFeld).setValue(quellDaten->Fields(feld).Value()); });
        if (quellDaten->Fields(feld).Name() == umformung.feld) zielFeld += int(umformung.neueFelder.size());
    }
}

void satzSchreiben(const Umformung& umformung) {
    try {
        zielDaten->Update();
    } catch (const EngineFehler& fehler) {
        if (!umformung.leereWeglassen || fehler.nummer() != kLeereZeichenfolge) throw;
    }
}

void satzUmformen(Schritte& s, const Umformung& umformung) {
    s.tu([] { zielDaten->AddNew(); });
    alteFelderKopieren(s, umformung);
    umformung.rechnen(s, *quellDaten, *zielDaten);
    s.tu([&] { satzSchreiben(umformung); });
    if (position % kSaetzeJeTransaktion == 0) {
        s.tu([] { gArbeitsbereich->CommitTrans(); });
        s.tu([] { gArbeitsbereich->BeginTrans(); });
    }
    s.tu([] { quellDaten->MoveNext(); });
}

// Stops where the user asks for it.
void saetzeUmformen(Schritte& s, const Umformung& umformung) {
    Gesetzt(zielDaten);
    while (!Gesetzt(quellDaten).Eof()) {
        satzUmformen(s, umformung);
        DoEvents();
        if (gAbbruch) return;
        gFortschrittWert = ++position;
    }
    FortschrittBeenden();
}

void tabellenSchliessen(Schritte& s) {
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    s.tu([] { Gesetzt(quellDaten).Close(); });
    s.tu([] { Gesetzt(zielDaten).Close(); });
    quellDaten.reset();
    zielDaten.reset();
}

void altesFeldLoeschen(const QString& name) {
    try {
        gDatenbank->TableDefs().Item(zielTabelle).Fields().Delete(name);
    } catch (const EngineFehler&) {
        fenster().meldungZeigen({QString(),
                                 QStringLiteral("Das Feld \"%1\" konnte nicht gelöscht werden.\r"
                                                "Vermutlich handelt es sich um ein Indexfeld.")
                                     .arg(name),
                                 Symbol::Ausrufezeichen, Knoepfe::Ok, Knopf::Ok});
    }
}

void alteFelderLoeschen(Schritte& s, const Umformung& umformung) {
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    if (!umformung.alteFelder.isEmpty()) fenster().information(QStringLiteral("Lösche alte Felder ..."));
    for (const QString& name : umformung.alteFelder) altesFeldLoeschen(name);
    s.tu([] { gArbeitsbereich->CommitTrans(); });
}

void datenUmformen(const Umformung& umformung) {
    Schritte s = schritte(umformung);
    s.ablauf(
        [&] {
            tabellenOeffnen(s);
            s.tu([&] { saetzeUmformen(s, umformung); });
            if (gAbbruch) return;
            tabellenSchliessen(s);
            alteFelderLoeschen(s, umformung);
        },
        [] { gFehler = true; });
}

bool durchfuehren(const Umformung& umformung) {
    TabelleKopieren(quellTabelle, zielTabelle, true, umformung.feld, umformung.neueFelder);
    if (Angehalten()) return false;
    datenUmformen(umformung);
    if (Angehalten()) return false;
    RelationenKopieren(quellTabelle, zielTabelle);
    return !Angehalten() && DatenbankSichern();
}

void saetzeSchliessen() {
    FehlerUebergehen([] { Gesetzt(quellDaten).Close(); });
    FehlerUebergehen([] { Gesetzt(zielDaten).Close(); });
    quellDaten.reset();
    zielDaten.reset();
}

}  // namespace

void UmformungStarten(const QString& quelle, const QString& ziel, const Umformung& umformung) {
    gAbbruch = false;
    gFehler = false;
    quellTabelle = quelle;
    zielTabelle = ziel;
    position = 0;
    gDatenbank->Merken();
    RahmenOeffnen(6, true);
    fenster().information(umformung.information);
    if (durchfuehren(umformung))
        RahmenWechseln(6, umformung.ergebnisrahmen, true, true);
    else
        VorgangAbbrechen(saetzeSchliessen);
}
