// One pass of the search: the sorted work table, its blocks, its pairs.
#include "search/suchdurchlauf.h"

#include "run/fortschritt.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/bereich.h"
#include "search/blocksuche.h"
#include "search/suchzustand.h"

namespace {

constexpr qint64 kPortion = 256;  // rows fetched at once while the blocks are counted

struct Durchgang {
    Schritte& s;
    int blockSpalte;
    int blockLaenge;
    QString sortierung;
    QString& stelle;  // what the error box says about the place
};

QString nachSortierung(const QString& sortierung) {
    return QStringLiteral(
               "Durchsuche die Tabelle nach Dubletten ... \r\nUnter Sortierung der Tabelle nach \"") +
           sortierung + u'"';
}

// A failure that a deeper handler was told to stop at; told once more here, as the failure of the pass.
void fehlerWeitergeben() {
    if (gFehler) throw EngineFehler(0, QStringLiteral("Der Vergleich wurde abgebrochen."));
}

void oeffnen(Schritte& s, const QString& sortierung) {
    fenster().information(QStringLiteral("Tabelle öffnen ..."));
    s.tu([&] { gArbeitsDaten = gDatenbank->OpenRecordset(SortierteAuswahl(gArbeitsTabelle, sortierung)); });
    s.tu([] { Gesetzt(gArbeitsDaten).MoveLast(); });
    s.tu([] { Gesetzt(gArbeitsDaten).MoveFirst(); });
    gArbeitsPosition = 1;
    s.tu([] { gZweitDaten = Gesetzt(gArbeitsDaten).OpenRecordset(); });
    s.tu([] { Gesetzt(gZweitDaten).MoveLast(); });
    s.tu([] { Gesetzt(gZweitDaten).MoveFirst(); });
    gZweitPosition = 1;
}

qint64 satzzahl(Schritte& s) {
    qint64 anzahl = 0;
    s.tu([&] { anzahl = Gesetzt(gArbeitsDaten).RecordCount(); });
    return anzahl;
}

// False when the user stopped.
bool nachbarnVergleichen(Durchgang& d) {
    fenster().information(nachSortierung(d.sortierung) + QStringLiteral(" im Quicksuch-Modus."));
    const qint64 anzahl = satzzahl(d.s);
    FortschrittLeeren();
    FortschrittStarten(anzahl - 1, 0.3);
    d.s.tu([] { Gesetzt(gArbeitsDaten).MoveFirst(); });
    Bereichsvergleich vergleich;
    while (gArbeitsPosition < anzahl) {
        d.stelle = QStringLiteral("an der Position ") + QString::number(gArbeitsPosition);
        vergleich.NachbarVergleichen(gArbeitsPosition);
        d.s.tu(fehlerWeitergeben);
        if (gAbbruch) return false;
    }
    FortschrittBeenden();
    return true;
}

// The blocks of the pass; none when the user stopped meanwhile.
std::vector<Suchblock> bloeckeSuchen(Durchgang& d) {
    fenster().information(QStringLiteral("Berechne notwendige Zeit ..."));
    FortschrittLeeren();
    Blocksuche suche(d.blockLaenge);
    d.s.tu([&] { Gesetzt(gBlockDaten).MoveFirst(); });
    d.s.tu([&] { Gesetzt(gBlockDaten).Fields(d.blockSpalte); });  // raises for a column that is not there
    for (bool ende = false; !ende;) {
        dao::Block block;
        d.s.tu([&] { block = Gesetzt(gBlockDaten).GetRows(kPortion); });
        if (d.blockSpalte >= block.spalten()) return {};
        for (int zeile = 0; zeile < block.zeilen(); ++zeile) suche.naechster(block(d.blockSpalte, zeile));
        ende = block.zeilen() == 0;
        DoEvents();
        if (Angehalten()) return {};
    }
    return suche.fertig();
}

bool nichtsZuVergleichen(const std::vector<Suchblock>& bloecke, qint64& vergleiche) {
    for (const Suchblock& block : bloecke) vergleiche += block.paare();
    if (vergleiche > 0) return false;
    HinweisZeigen(QStringLiteral(
        "Kein Vergleich notwendig.\r\nVersuchen sie es eventuell noch einmal mit dem Quicksuche-Modus."));
    gAbbruch = true;
    return true;
}

// False when the user stopped.
bool bloeckeVergleichen(Durchgang& d) {
    d.s.tu([] { gBlockDaten = Gesetzt(gArbeitsDaten).OpenRecordset(); });
    const std::vector<Suchblock> bloecke = bloeckeSuchen(d);
    qint64 vergleiche = 0;
    if (Angehalten() || nichtsZuVergleichen(bloecke, vergleiche)) return false;
    fenster().information(nachSortierung(d.sortierung) + u'.');
    FortschrittLeeren();
    FortschrittStarten(vergleiche, 0.3);
    Bereichsvergleich vergleich;
    for (const Suchblock& block : bloecke) {
        d.stelle = QStringLiteral("im Bereich ") + QString::number(block.erster) + QStringLiteral(" bis ") +
                   QString::number(block.letzter);
        vergleich.BereichVergleichen(block.erster, block.letzter);
        d.s.tu(fehlerWeitergeben);
        if (gAbbruch) return false;
    }
    FortschrittBeenden();
    d.s.tu([] { DatenSchliessen(gBlockDaten); });
    return true;
}

}  // namespace

void SuchdurchlaufAusfuehren(int blockSpalte, int blockLaenge, const QString& sortierung, bool quick) {
    QString stelle = quick ? QStringLiteral("an der Position 1") : QStringLiteral("im Bereich 0 bis 0");
    Schritte s([&] { return QStringLiteral("Fehler bei der Dublettensuche ") + stelle + u'.'; });
    Durchgang d{s, blockSpalte, blockLaenge, sortierung, stelle};
    s.ablauf(
        [&] {
            oeffnen(s, sortierung);
            if (!(quick ? nachbarnVergleichen(d) : bloeckeVergleichen(d))) return;
            s.tu([] { DatenSchliessen(gZweitDaten); });
            s.tu([] { DatenSchliessen(gArbeitsDaten); });
        },
        [] { gFehler = true; });
}
