// The two copies a search works on.
#include "search/puffer.h"

#include <optional>
#include <vector>

#include "data/kopieren.h"
#include "run/fortschritt.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/satzaufbereitung.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

namespace {

constexpr int kAnmerkungGroesse = 30;
constexpr int kStapel = 1000;  // records in one transaction

// Where a field of the source goes: positions from 0 in the two copies.
struct Spalte {
    int quelle;
    int ergebnis;
    std::optional<int> arbeit;  // none for an ignored field
};

// Where the control columns stand in one of the copies.
struct Steuerspalten {
    explicit Steuerspalten(const dao::Recordset& satz)
        : status(satz.fieldPosition(QString::fromUtf16(kTempDss))),
          nummer(satz.fieldPosition(QString::fromUtf16(kTempDsn))),
          gruppe(satz.fieldPosition(QString::fromUtf16(kTempBn))),
          anmerkung(satz.fieldPosition(QString::fromUtf16(kTempAmk))) {}
    int status, nummer, gruppe, anmerkung;
};

struct Puffer {
    dao::Recordset& quelle;
    dao::Recordset& arbeit;
    dao::Recordset& ergebnis;
    Steuerspalten inArbeit{arbeit};
    Steuerspalten inErgebnis{ergebnis};
    std::vector<Spalte> spalten{};
    std::vector<Aufbereitung> aufbereitungen = AufbereitungenFuer(gSuchZuordnung);
};

QString steuerspalte(int nummer) {
    static const char16_t* const namen[] = {kTempDss, kTempDsn, kTempBn, kTempAmk};
    return QString::fromUtf16(namen[nummer]);
}

void indexfeldMelden(const QString& feld) {
    fenster().meldungZeigen(
        {QString(),
         QStringLiteral("Bei dem Feld \"") + feld +
             QStringLiteral("\" handelt es sich vermutlich im ein Indexfeld.\r"
                            "Bitte markieren sie dieses als solches und starten sie erneut."),
         Symbol::Ausrufezeichen, Knoepfe::Ok, Knopf::Ok});
}

bool spalteLoeschen(const QString& feld) {
    try {
        gDatenbank->TableDefs().Item(gArbeitsTabelle).Fields().Delete(feld);
        return true;
    } catch (const std::exception&) {
        // Told below, outside the handler: an index holds the column.
    }
    indexfeldMelden(feld);
    return false;
}

// False when one of them could not go; `gFehler` is then set.
bool ignorierteSpaltenLoeschen(Schritte& s) {
    for (int i = 0; i < gSuchFelder; ++i) {
        if (!FeldIgnoriert(gSuchZuordnung[size_t(i)])) continue;
        QString feld;
        s.tu([&] { feld = gDatenbank->TableDefs().Item(gAusgangsTabelle).Fields().Item(i).Name(); });
        if (spalteLoeschen(feld)) continue;
        gFehler = true;
        return false;
    }
    return true;
}

void steuerspaltenAnlegen(Schritte& s, const QString& tabelle) {
    const auto felder = [&]() -> dao::Fields& { return gDatenbank->TableDefs().Item(tabelle).Fields(); };
    const auto anhaengen = [&](int nummer, int typ, int groesse = 0) {
        s.tu([&] {
            dao::TableDef& definition = gDatenbank->TableDefs().Item(tabelle);
            definition.Fields().Append(definition.CreateField(steuerspalte(nummer), typ, groesse));
        });
    };
    // They are there already when the source had them.
    for (int i = 0; i < 4; ++i) FehlerUebergehen([&] { felder().Delete(steuerspalte(i)); });
    anhaengen(0, dao::dbByte);
    anhaengen(1, dao::dbLong);
    anhaengen(2, dao::dbLong);
    anhaengen(3, dao::dbText, kAnmerkungGroesse);
}

void leereAnmerkungErlauben(Schritte& s, const QString& tabelle) {
    s.tu([&] {
        gDatenbank->TableDefs().Item(tabelle).Fields().Item(steuerspalte(3)).setAllowZeroLength(true);
    });
}

// Columns go by name, since the work table has fewer of them than the source; the names are looked up once.
std::vector<Spalte> spaltenSuchen(const dao::Recordset& arbeit, const dao::Recordset& ergebnis) {
    std::vector<Spalte> spalten;
    for (int i = 0; i < gSuchFelder; ++i) {
        const QString name = gQuellDaten->Fields(i).Name();
        Spalte spalte{i, ergebnis.fieldPosition(name), {}};
        if (!FeldIgnoriert(gSuchZuordnung[size_t(i)])) spalte.arbeit = arbeit.fieldPosition(name);
        spalten.push_back(spalte);
    }
    return spalten;
}

void werteUebernehmen(Schritte& s, Puffer& p) {
    for (const Spalte& spalte : p.spalten) {
        if (spalte.arbeit)
            s.tu([&] { p.arbeit.Fields(*spalte.arbeit).setValue(p.quelle.Fields(spalte.quelle).Value()); });
        s.tu([&] { p.ergebnis.Fields(spalte.ergebnis).setValue(p.quelle.Fields(spalte.quelle).Value()); });
    }
}

void steuerwerteSetzen(Schritte& s, dao::Recordset& satz, const Steuerspalten& spalten, qint32 nummer) {
    s.tu([&] { satz.Fields(spalten.status).setValue(int(kStatusNormal)); });
    s.tu([&] { satz.Fields(spalten.nummer).setValue(nummer); });
    s.tu([&] { satz.Fields(spalten.gruppe).setValue(0); });
    s.tu([&] { satz.Fields(spalten.anmerkung).setValue(QString()); });
}

void beiFehlerSchliessen(Schritte& s) {
    s.tu([] { gArbeitsbereich->Rollback(); });
    s.tu([] { DatenSchliessen(gArbeitsDaten); });
    s.tu([] { DatenSchliessen(gErgebnisDaten); });
}

// One record into both copies. False when the preparation ended the run.
bool satzUebernehmen(Schritte& s, Puffer& p, qint32 nummer) {
    s.tu([&] { p.arbeit.AddNew(); });
    s.tu([&] { p.ergebnis.AddNew(); });
    werteUebernehmen(s, p);
    DatensatzAufbereiten(p.arbeit, p.aufbereitungen);
    if (gFehler) {
        beiFehlerSchliessen(s);
        return false;
    }
    steuerwerteSetzen(s, p.arbeit, p.inArbeit, nummer);
    steuerwerteSetzen(s, p.ergebnis, p.inErgebnis, nummer);
    s.tu([&] { p.arbeit.Update(); });
    s.tu([&] { p.ergebnis.Update(); });
    return true;
}

// False when the run was stopped.
bool fuellen(Schritte& s) {
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    FortschrittLeeren();
    FortschrittStarten(gSuchDatensaetze, 0.1);
    s.tu([] { Gesetzt(gQuellDaten).MoveFirst(); });
    std::optional<Puffer> puffer;
    s.tu([&] {
        puffer.emplace(Puffer{Gesetzt(gQuellDaten), Gesetzt(gArbeitsDaten), Gesetzt(gErgebnisDaten)});
        puffer->spalten = spaltenSuchen(puffer->arbeit, puffer->ergebnis);
    });
    for (qint32 zaehler = 0; puffer && zaehler < gSuchDatensaetze;) {
        if (!satzUebernehmen(s, *puffer, ++zaehler)) return false;
        if (zaehler % kStapel == 0) {
            s.tu([] { gArbeitsbereich->CommitTrans(); });
            s.tu([] { gArbeitsbereich->BeginTrans(); });
        }
        s.tu([&] { puffer->quelle.MoveNext(); });
        DoEvents();
        if (gAbbruch) {
            SuchlaufAbbrechen();
            return false;
        }
        gFortschrittWert = zaehler;
    }
    return true;
}

void tabellenOeffnen(Schritte& s) {
    s.tu([] { gQuellDaten = gDatenbank->OpenRecordset(gSuchQuelle, dao::dbOpenDynaset); });
    s.tu([] { gErgebnisDaten = gDatenbank->OpenRecordset(gSuchZiel, dao::dbOpenDynaset); });
    s.tu([] { gArbeitsDaten = gDatenbank->OpenRecordset(gArbeitsTabelle, dao::dbOpenDynaset); });
}

void abschliessen(Schritte& s) {
    FortschrittBeenden();
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    s.tu([] { DatenSchliessen(gArbeitsDaten); });
    s.tu([] { DatenSchliessen(gErgebnisDaten); });
    s.tu([] { DatenSchliessen(gQuellDaten); });
    RelationenKopieren(gSuchQuelle, gSuchZiel);
}

void erstellen(Schritte& s) {
    fenster().information(
        QStringLiteral("Bereite Tabelle auf Vergleich vor und erstelle Sicherungskopie ..."));
    fenster().datensaetze(QString::number(gSuchDatensaetze) + QStringLiteral(" Datensätze insgesamt"));
    TabelleKopieren(gSuchQuelle, gArbeitsTabelle, false);
    if (Angehalten() || !ignorierteSpaltenLoeschen(s)) return;
    TabelleKopieren(gSuchQuelle, gSuchZiel, true);
    if (Angehalten()) return;
    for (const QString& tabelle : {gArbeitsTabelle, gSuchZiel}) steuerspaltenAnlegen(s, tabelle);
    for (const QString& tabelle : {gArbeitsTabelle, gSuchZiel}) leereAnmerkungErlauben(s, tabelle);
    tabellenOeffnen(s);
    if (fuellen(s)) abschliessen(s);
}

}  // namespace

void SuchpufferErstellen() {
    Schritte s([] { return QStringLiteral("Fehler beim Erstellen des Suchpuffers."); });
    s.ablauf([&] { erstellen(s); }, [] { gFehler = true; });
}

void ArbeitstabelleLoeschen() {
    FehlerUebergehen([] { gDatenbank->TableDefs().Delete(gArbeitsTabelle); });
}
