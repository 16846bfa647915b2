// The search driver: the passes, the pair list, and the way out.
#include "search/suchlauf.h"

#include <algorithm>

#include "data/datenzugriff.h"
#include "run/abbruch.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/auswertung.h"
#include "search/bereich.h"
#include "search/paarmenge.h"
#include "search/puffer.h"
#include "search/suchdurchlauf.h"
#include "search/suchzustand.h"

namespace {

constexpr qint64 kListenstufe = 100;                        // the pair list grows by this
constexpr qint64 kListengrenze = qint64(kHoechstensPaare);  // from this capacity on pairs are dropped
constexpr int kDurchlaeufe = 3;
constexpr int kFelderJeDurchlauf = 3;

// The pair list of the search: written by PaarEintragen, numbered and released by DublettenAuswerten.
std::vector<Paar> gPaare;
PaarMenge bekanntePaare;
bool gZuVielePaare = false;  // the user has been told

float relevanzFuerToleranz(int toleranz) {
    constexpr float kRelevanz[] = {0.82f, 0.73f, 0.62f, 0.5f};
    return kRelevanz[std::clamp(toleranz, 0, 3)];
}

qint64 kapazitaet() {
    const qint64 stufen = (qint64(gPaare.size()) + kListenstufe - 1) / kListenstufe;
    return std::max(kListenstufe, stufen * kListenstufe);
}

Schritte schritte() {
    return Schritte([] { return QStringLiteral("Fehler beim Erstellen des Suchpuffers."); });
}

void datensaetzeDerQuelleZaehlen() {
    Schritte s = schritte();
    s.ablauf(
        [&] {
            s.tu([] { gQuellDaten = gDatenbank->OpenRecordset(gSuchQuelle); });
            s.tu([] { gSuchDatensaetze = qint32(DatensaetzeZaehlen(Gesetzt(gQuellDaten))); });
            s.tu([] { DatenSchliessen(gQuellDaten); });
        },
        [] { gFehler = true; });
}

struct Durchlauf {
    int blockSpalte = -1;  // none: the pass has no field
    int blockLaenge = 0;
    QString sortierung;
};

// The fields of a pass; the first one that is set makes the blocks.
Durchlauf durchlaufLesen(const Suchoptionen& optionen, int nummer) {
    Durchlauf durchlauf;
    Schritte s = schritte();
    s.ablauf(
        [&] {
            for (int k = 0; k < kFelderJeDurchlauf; ++k) {
                const int eintrag = optionen.suchFeld[nummer * kFelderJeDurchlauf + k];
                if (eintrag == 0) continue;
                if (durchlauf.blockSpalte == -1) {
                    durchlauf.blockSpalte = eintrag - 1;
                    durchlauf.blockLaenge = optionen.zeichenRichtig[nummer];
                }
                s.tu([&] {
                    const QString& name =
                        gDatenbank->TableDefs().Item(gSuchQuelle).Fields().Item(eintrag - 1).Name();
                    durchlauf.sortierung += u'[' + name + QStringLiteral("],");
                });
            }
        },
        [] { gFehler = true; });
    durchlauf.sortierung.chop(1);
    return durchlauf;
}

void durchlaeufeAusfuehren(const Suchoptionen& optionen) {
    Bereichsvergleich vergleich;
    for (int nummer = 0; nummer < kDurchlaeufe; ++nummer) {
        if (!optionen.durchfuehren[nummer]) continue;
        const Durchlauf durchlauf = durchlaufLesen(optionen, nummer);
        if (!Angehalten() && durchlauf.blockSpalte != -1)
            SuchdurchlaufAusfuehren(durchlauf.blockSpalte, durchlauf.blockLaenge, durchlauf.sortierung,
                                    optionen.quickSuche, vergleich);
        if (Angehalten()) return;
    }
}

void suchen() {
    datensaetzeDerQuelleZaehlen();
    if (Angehalten()) return;
    RahmenOeffnen(6, true);
    SuchpufferErstellen();
    if (Angehalten()) return;
    const Suchoptionen optionen = fenster().suchoptionen();
    gRelevanz = relevanzFuerToleranz(optionen.toleranz);
    gAnsprechpartnerDifferenzieren = optionen.ansprechpartnerDifferenzieren;
    PaareLeeren();
    durchlaeufeAusfuehren(optionen);
    if (!Angehalten()) DublettenAuswerten();
}

}  // namespace

void Suchlauf(const QString& quelle, const QString& ziel, const FeldZuordnungen& zuordnung, bool anreichern,
              bool angereichertUebernehmen) {
    gAbbruch = false;
    gFehler = false;
    gSuchQuelle = quelle;
    gSuchZiel = ziel;
    gArbeitsTabelle = QString::fromUtf16(kArbeitstabelle);
    gSuchZuordnung = zuordnung;
    gSuchFelder = qint16(zuordnung.size());
    gAnreichern = anreichern;
    gAngereichertUebernehmen = angereichertUebernehmen;
    suchen();
    if (Angehalten()) SuchlaufAbbrechen();
}

void PaarEintragen(qint32 a, qint32 b) {
    if (kapazitaet() >= kListengrenze) {
        if (gZuVielePaare) return;
        HinweisZeigen(QStringLiteral(
            "Es wurden zu viele Dubletten gefunden!\rFühren sie die Suche nach Beendigung erneut aus."));
        gZuVielePaare = true;
        return;
    }
    if (bekanntePaare.einfuegen(a, b)) gPaare.push_back({a, b, 0});
}

bool PaarBekannt(qint32 a, qint32 b) {
    return bekanntePaare.enthaelt(a, b);
}

bool PaarlisteVoll() {
    return gZuVielePaare;
}

std::vector<Paar>& Paare() {
    return gPaare;
}

void PaareLeeren() {
    gPaare = {};
    bekanntePaare.leeren();
    gZuVielePaare = false;
}

void SuchlaufAbbrechen() {
    LaufAbbrechen(QStringLiteral("Breche Suchvorgang ab ..."), [] {
        AlleDatenSchliessen();
        FehlerUebergehen([] { gDatenbank->TableDefs().Delete(gArbeitsTabelle); });
        FehlerUebergehen([] { gDatenbank->TableDefs().Delete(gSuchZiel); });
        PaareLeeren();
    });
}
