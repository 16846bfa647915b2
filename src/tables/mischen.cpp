// Mixing two tables into one that has the structure of the first.
#include "tables/mischen.h"

#include <array>

#include "data/datenzugriff.h"
#include "data/kopieren.h"
#include "data/steuerfelder.h"
#include "run/abbruch.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "tables/mischregel.h"
#include "tables/zeichenfunde.h"

namespace {

constexpr qint64 kSaetzeJeTransaktion = 1000;
constexpr FeldZuordnung kHerkunftsfeld{0, 2};
constexpr int kErsteTabelle = 1;
constexpr int kZweiteTabelle = 2;

// Positions in the second table by kind number, -1 for none.
using Artstellen = std::array<int, kLetzteFeldart + 1>;

// The state of a mix: set by TabellenMischen and its steps, read by the abort.
QString gMischTabelle1;
QString gMischTabelle2;
QString gMischZiel;
std::unique_ptr<dao::Recordset> gMischSatz1;
std::unique_ptr<dao::Recordset> gMischSatz2;
std::unique_ptr<dao::Recordset> gMischZielSatz;
qint64 gMischAnzahl1 = 0;
qint64 gMischAnzahl2 = 0;
FeldZuordnungen gMischZuordnung1;
FeldZuordnungen gMischZuordnung2;
Artstellen gMischArten;

QString herkunft() {
    return QString::fromUtf16(kTempDsq);
}

Artstellen artstellenVon(const FeldZuordnungen& zuordnung) {
    Artstellen stellen;
    for (int art = 0; art <= kLetzteFeldart; ++art)
        stellen[size_t(art)] = art == 0 ? -1 : FeldMitArtFinden(zuordnung, art);
    return stellen;
}

void schliessen(std::unique_ptr<dao::Recordset>& satz) {
    FehlerUebergehen([&] { Gesetzt(satz).Close(); });
    satz.reset();
}

void herkunftsfeldAnlegen(Schritte& s) {
    const auto definition = []() -> dao::TableDef& { return gDatenbank->TableDefs().Item(gMischZiel); };
    // It is there when the first table is a result of the same kind.
    FehlerUebergehen([&] { definition().Fields().Delete(herkunft()); });
    s.tu([&] { definition().Fields().Append(definition().CreateField(herkunft(), dao::dbByte)); });
}

void satzAbschliessen(Schritte& s, int tabelle, qint64 position) {
    s.tu([&] { gMischZielSatz->Fields(herkunft()).setValue(tabelle); });
    s.tu([] { gMischZielSatz->Update(); });
    if (position % kSaetzeJeTransaktion != 0) return;
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    s.tu([] { gArbeitsbereich->BeginTrans(); });
}

// Where each field of the first table stands in the mix; -1 for a counter, which keeps its own numbers.
std::vector<int> zielstellen() {
    std::vector<int> stellen;
    for (int i = 0; i < int(gMischZuordnung1.size()); ++i) {
        const dao::RecordsetField feld = gMischSatz1->Fields(i);
        const bool zaehler = feld.Attributes() & dao::dbAutoIncrField;
        stellen.push_back(zaehler ? -1 : gMischZielSatz->fieldPosition(feld.Name()));
    }
    return stellen;
}

void ersteTabelleUebernehmen(Schritte& s) {
    const std::vector<int> stellen = zielstellen();
    s.tu([] { gMischSatz1->MoveFirst(); });
    for (qint64 position = 1; position <= gMischAnzahl1; ++position) {
        s.tu([] { gMischZielSatz->AddNew(); });
        for (size_t i = 0; i < stellen.size(); ++i)
            if (stellen[i] >= 0)
                s.tu([&] {
                    gMischZielSatz->Fields(stellen[i]).setValue(gMischSatz1->Fields(int(i)).Value());
                });
        satzAbschliessen(s, kErsteTabelle, position);
        s.tu([] { gMischSatz1->MoveNext(); });
        DoEvents();
        if (gAbbruch) return;
        gFortschrittWert = position;
    }
}

// The field of the second table that the present record holds for a kind.
Artquelle artquelle(dao::Recordset& zweitSatz, const Artstellen& arten) {
    return [satz = &zweitSatz, stellen = &arten](int art) -> const Wert* {
        const int stelle = (*stellen)[size_t(art)];
        return stelle < 0 ? nullptr : &satz->Fields(stelle).Value();
    };
}

void datensatzErgaenzen(dao::Recordset& mischSatz, dao::Recordset& zweitSatz,
                        const FeldZuordnungen& zuordnung1, const Artstellen& arten) {
    int feld = 0;
    Schritte s([&] {
        QString erster;
        FehlerUebergehen([&] { erster = zweitSatz.Fields(0).Value().alsText(); });
        return QStringLiteral("Fehler beim Ergänzen des Datensatzes '%1' im Feld '%2'.")
            .arg(erster, mischSatz.Fields(feld).Name());
    });
    const Artquelle quelle = artquelle(zweitSatz, arten);
    s.ablauf(
        [&] {
            for (; feld < int(zuordnung1.size()); ++feld) {
                dao::RecordsetField ziel = mischSatz.Fields(feld);
                if (MischfeldAusgelassen(ziel.Type(), ziel.Attributes())) continue;
                s.tu([&] { ziel.setValue(MischWert(zuordnung1[size_t(feld)], quelle)); });
            }
        },
        [] { gFehler = true; });
}

void zweiteTabelleErgaenzen(Schritte& s) {
    s.tu([] { gMischSatz2->MoveFirst(); });
    for (qint64 position = 1; position <= gMischAnzahl2; ++position) {
        s.tu([] { gMischZielSatz->AddNew(); });
        datensatzErgaenzen(*gMischZielSatz, *gMischSatz2, gMischZuordnung1, gMischArten);
        if (gFehler) return;
        satzAbschliessen(s, kZweiteTabelle, position);
        s.tu([] { gMischSatz2->MoveNext(); });
        DoEvents();
        if (gAbbruch) return;
        gFortschrittWert = gMischAnzahl1 + position;
    }
}

// Raises 3420 when an opening was passed over.
void geoeffnetPruefen(const std::unique_ptr<dao::Recordset>& satz) {
    Gesetzt(satz);
    Gesetzt(gMischZielSatz);
}

void tabellenUebernehmen(Schritte& s) {
    s.tu([] { gMischSatz1 = gDatenbank->OpenRecordset(gMischTabelle1); });
    s.tu([] { gMischZielSatz = gDatenbank->OpenRecordset(gMischZiel); });
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    FortschrittLeeren();
    FortschrittStarten(gMischAnzahl1 + gMischAnzahl2, 0.1);
    s.tu([&] {
        geoeffnetPruefen(gMischSatz1);
        ersteTabelleUebernehmen(s);
    });
    if (gAbbruch) return;
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    schliessen(gMischSatz1);
    fenster().information(
        QStringLiteral("Mische '%1' mit Tabelle '%2' ...").arg(gMischTabelle1, gMischTabelle2));
    s.tu([] { gMischSatz2 = gDatenbank->OpenRecordset(gMischTabelle2); });
    s.tu([] { gArbeitsbereich->BeginTrans(); });
    s.tu([&] {
        geoeffnetPruefen(gMischSatz2);
        zweiteTabelleErgaenzen(s);
    });
    if (Angehalten()) return;
    s.tu([] { gArbeitsbereich->CommitTrans(); });
    schliessen(gMischSatz2);
    FortschrittBeenden();
    schliessen(gMischZielSatz);
}

void zeichenDerZweitenAnsehen(Zeichenfunde& funde) {
    const QStringList felder = FeldNamen(gMischTabelle1);
    const Artquelle quelle = artquelle(*gMischSatz2, gMischArten);
    for (qint64 position = 1; !gMischSatz2->Eof(); gMischSatz2->MoveNext(), ++position) {
        for (size_t feld = 0; feld < gMischZuordnung1.size(); ++feld)
            funde.ansehen(position, felder[qsizetype(feld)], MischWert(gMischZuordnung1[feld], quelle));
        DoEvents();
        if (gAbbruch) return;
    }
}

// What could not be saved in the end is told before anything is done.
void zeichenPruefen(Schritte& s) {
    engine::Zeichenprobe probe;
    s.tu([&] { probe = gDatenbank->TableDefs().Item(gMischTabelle1).Zeichenprobe(); });
    if (!probe) return;
    Zeichenfunde funde(std::move(probe));
    s.tu([] { gMischSatz2 = gDatenbank->OpenRecordset(gMischTabelle2); });
    s.tu([&] {
        Gesetzt(gMischSatz2);
        zeichenDerZweitenAnsehen(funde);
    });
    schliessen(gMischSatz2);
    if (gAbbruch || funde.leer()) return;
    AchtungZeigen(funde.meldung(gMischTabelle1, gMischTabelle2));
    gFehler = true;
}

Schritte schritte() {
    return Schritte([] { return QStringLiteral("Fehler beim Erstellen der gemischten Tabelle."); });
}

void tabellenZaehlen() {
    Schritte s = schritte();
    s.ablauf(
        [&] {
            s.tu([] { gMischAnzahl1 = DatensaetzeDerTabelle(gMischTabelle1); });
            s.tu([] { gMischAnzahl2 = DatensaetzeDerTabelle(gMischTabelle2); });
        },
        [] { gFehler = true; });
}

void MischenAusfuehren() {
    fenster().information(QStringLiteral("Bereite Tabelle '%1' vor ...").arg(gMischTabelle1));
    fenster().datensaetze(QString::number(gMischAnzahl1 + gMischAnzahl2) +
                          QStringLiteral(" Datensätze insgesamt"));
    gMischArten = artstellenVon(gMischZuordnung2);
    Schritte s = schritte();
    s.ablauf([&] { zeichenPruefen(s); }, [] { gFehler = true; });
    if (Angehalten()) return;
    TabelleKopieren(gMischTabelle1, gMischZiel, false);
    if (Angehalten()) return;
    s.ablauf(
        [&] {
            herkunftsfeldAnlegen(s);
            tabellenUebernehmen(s);
        },
        [] { gFehler = true; });
}

void MischenAbbrechen() {
    LaufAbbrechen(QStringLiteral("Breche Mischvorgang ab ..."), [] {
        for (auto* satz : {&gMischSatz1, &gMischSatz2, &gMischZielSatz}) schliessen(*satz);
        FehlerUebergehen([] { gDatenbank->TableDefs().Delete(gMischZiel); });
    });
}

}  // namespace

void TabellenMischen(const QString& tabelle1, const QString& tabelle2, const QString& misch,
                     const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2,
                     FeldZuordnungen& ergebnis) {
    gAbbruch = false;
    gFehler = false;
    gMischTabelle1 = tabelle1;
    gMischTabelle2 = tabelle2;
    gMischZiel = misch;
    gMischZuordnung1 = zuordnung1;
    gMischZuordnung2 = zuordnung2;
    gMischAnzahl1 = gMischAnzahl2 = 0;
    tabellenZaehlen();
    RahmenOeffnen(6, true);
    if (!Angehalten()) MischenAusfuehren();
    if (Angehalten()) return MischenAbbrechen();
    ergebnis = gMischZuordnung1;
    ergebnis.push_back(kHerkunftsfeld);
}

void DatensatzErgaenzen(dao::Recordset& mischSatz, dao::Recordset& zweitSatz,
                        const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2) {
    datensatzErgaenzen(mischSatz, zweitSatz, zuordnung1, artstellenVon(zuordnung2));
}
