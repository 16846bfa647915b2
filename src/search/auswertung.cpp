// The evaluation: groups from pairs, their members marked, one enriched record for each run of a group.
#include "search/auswertung.h"

#include "engine/typen.h"
#include "run/fortschritt.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/anreicherung.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

namespace {

constexpr qint32 kListenstufe = 100;  // the list of duplicates has room for a multiple of this

// Alive during DublettenAuswerten only.
std::vector<Dublette> dubletten;
FeldZuArt feldZuArt;
// Positions from 0 of the control columns: in the result table, and the remark in the work table.
struct {
    int status, nummer, gruppe, anmerkung, arbeitsAnmerkung;
} spalten;

// The entry at a place from 1. One place behind the last there is room left, filled with zeros, unless the
// number of duplicates fills the list to the brim: then reading there is a failure.
Dublette dublette(qint32 zeiger) {
    if (zeiger <= gDublettenAnzahl) return dubletten[size_t(zeiger) - 1];
    if (gDublettenAnzahl % kListenstufe == 0)
        throw EngineFehler(kIndexAusserhalb, QStringLiteral("Index außerhalb des gültigen Bereichs."));
    return {};
}

void gruppenErmitteln() {
    fenster().information(QStringLiteral("Auswertung der gefundenen Dubletten ..."));
    GruppenBilden(Paare());
    dubletten = DublettenAuflisten(Paare());
    gDublettenAnzahl = qint32(dubletten.size());
    PaareLeeren();
    fenster().information(QStringLiteral("Sortiere Dubletten ..."));
    DublettenSortieren(dubletten);
}

void oeffnen(Schritte& s) {
    const QString nachNummer = u'[' + QString::fromUtf16(kTempDsn) + u']';
    s.tu([&] { gErgebnisDaten = gDatenbank->OpenRecordset(SortierteAuswahl(gSuchZiel, nachNummer)); });
    s.tu([] { Gesetzt(gErgebnisDaten).MoveFirst(); });
    gErgebnisPosition = 1;
    s.tu([&] { gArbeitsDaten = gDatenbank->OpenRecordset(SortierteAuswahl(gArbeitsTabelle, nachNummer)); });
    s.tu([] { Gesetzt(gArbeitsDaten).MoveFirst(); });
    gArbeitsPosition = 1;
}

void spaltenSuchen() {
    const auto stelle = [](const std::unique_ptr<dao::Recordset>& daten, const char16_t* name) {
        return daten ? daten->fieldPosition(QString::fromUtf16(name)) : -1;
    };
    spalten = {stelle(gErgebnisDaten, kTempDss), stelle(gErgebnisDaten, kTempDsn),
               stelle(gErgebnisDaten, kTempBn), stelle(gErgebnisDaten, kTempAmk),
               stelle(gArbeitsDaten, kTempAmk)};
}

// In the order of the record numbers a record's place is its number.
void gehenZu(std::unique_ptr<dao::Recordset>& daten, qint64& position, qint64 satz) {
    Gesetzt(daten).Move(satz - position);
    position = satz;
}

void sammeln(Schritte& s, Gruppenbestes& bestes) {
    for (int c = 0; c < gSuchFelder; ++c)
        s.tu([&] {
            const dao::RecordsetField feld = Gesetzt(gErgebnisDaten).Fields(c);
            WertSammeln(bestes.ganz[size_t(c)], feld.Value(), feld.Type());
        });
    for (int art = kErsteFeldart; art <= kLetzteFeldart; ++art)
        if (const int c = feldZuArt[size_t(art)]; c != -1)
            s.tu([&] { TeilSammeln(bestes, art, Gesetzt(gErgebnisDaten).Fields(c).Value()); });
}

void kennzeichnen(Schritte& s, const Dublette& eintrag) {
    const auto setzen = [&](int spalte, const Wert& wert) {
        s.tu([&] { Gesetzt(gErgebnisDaten).Fields(spalte).setValue(wert); });
    };
    s.tu([] { Gesetzt(gErgebnisDaten).Edit(); });
    setzen(spalten.status, int(kStatusDublette));
    setzen(spalten.gruppe, eintrag.gruppe);
    s.tu([&] { gehenZu(gArbeitsDaten, gArbeitsPosition, eintrag.satz); });
    s.tu([] {
        gErgebnisDaten->Fields(spalten.anmerkung)
            .setValue(gArbeitsDaten->Fields(spalten.arbeitsAnmerkung).Value());
    });
    s.tu([] { Gesetzt(gErgebnisDaten).Update(); });
}

// Whether the batch goes on at this place. Both halves are looked at, also behind the last entry.
bool gehoertZurGruppe(Schritte& s, qint32 zeiger, qint32 gruppe) {
    bool gehoert = false;
    s.tu([&] {
        const bool gleich = dublette(zeiger).gruppe == gruppe;
        gehoert = gleich && zeiger <= gDublettenAnzahl;
    });
    return gehoert;
}

void angereichertenSchreiben(Schritte& s, const Gruppenbestes& bestes, qint32 gruppe) {
    qint64 letzteNummer = 0;
    s.tu([] { Gesetzt(gErgebnisDaten).MoveLast(); });
    s.tu([] { gErgebnisPosition = Gesetzt(gErgebnisDaten).RecordCount(); });
    s.tu([&] { letzteNummer = qint64(Gesetzt(gErgebnisDaten).Fields(spalten.nummer).Value().alsZahl()); });
    s.tu([] { Gesetzt(gErgebnisDaten).AddNew(); });
    for (int c = 0; c < gSuchFelder; ++c)
        s.tu([&] {
            dao::RecordsetField feld = Gesetzt(gErgebnisDaten).Fields(c);
            if (feld.Attributes() & dao::dbAutoIncrField) return;
            feld.setValue(AngereicherterWert(bestes, size_t(c), gSuchZuordnung[size_t(c)]));
        });
    const auto setzen = [&](int spalte, const Wert& wert) {
        s.tu([&] { Gesetzt(gErgebnisDaten).Fields(spalte).setValue(wert); });
    };
    setzen(spalten.status, int(gAngereichertUebernehmen ? kStatusAngereichertBleibt : kStatusAngereichert));
    setzen(spalten.nummer, letzteNummer + 1);
    setzen(spalten.gruppe, gruppe);
    setzen(spalten.anmerkung, QStringLiteral("Angereichert"));
    s.tu([] { Gesetzt(gErgebnisDaten).Update(); });
}

// One run of equal group numbers from `zeiger` on, which moves behind it. False when the user stopped.
bool stapelAuswerten(Schritte& s, qint32& zeiger) {
    const qint32 gruppe = dublette(zeiger).gruppe;
    Gruppenbestes bestes;
    bestes.ganz.resize(size_t(gSuchFelder));
    while (gehoertZurGruppe(s, zeiger, gruppe)) {
        const Dublette eintrag = dublette(zeiger);
        s.tu([&] { gehenZu(gErgebnisDaten, gErgebnisPosition, eintrag.satz); });
        if (gAnreichern) sammeln(s, bestes);
        kennzeichnen(s, eintrag);
        if (++zeiger <= gDublettenAnzahl) gFortschrittWert = zeiger;
        DoEvents();
        if (gAbbruch) return false;
    }
    AnredeZusammensetzen(bestes);
    if (gAnreichern) angereichertenSchreiben(s, bestes, gruppe);
    return true;
}

void auswerten(Schritte& s) {
    s.tu(gruppenErmitteln);
    fenster().information(QStringLiteral("Reichere Datensätze an ..."));
    oeffnen(s);
    spaltenSuchen();
    FortschrittLeeren();
    FortschrittStarten(gDublettenAnzahl, 0.1);
    feldZuArt = FelderZuArtenSuchen(gSuchZuordnung);
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    for (qint32 zeiger = 1; zeiger <= gDublettenAnzahl;)
        if (!stapelAuswerten(s, zeiger)) return;
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    FortschrittBeenden();
    s.tu([] { DatenSchliessen(gArbeitsDaten); });
    s.tu([] { DatenSchliessen(gErgebnisDaten); });
}

void nachFehlerAufraeumen() {
    gFehler = true;
    FehlerUebergehen([] { gArbeitsbereich->Rollback(); });
    FehlerUebergehen([] { DatenSchliessen(gArbeitsDaten); });
    FehlerUebergehen([] { DatenSchliessen(gErgebnisDaten); });
    FortschrittAnhalten();
}

}  // namespace

void DublettenAuswerten() {
    Schritte s([] { return QStringLiteral("Fehler bei der Ähnlichkeitenauswertung."); });
    s.ablauf([&] { auswerten(s); }, nachFehlerAufraeumen);
    dubletten = {};
}
