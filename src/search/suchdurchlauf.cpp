// One pass of the search: the sorted work table, its blocks, its pairs.
#include "search/suchdurchlauf.h"

#include <QHash>

#include "base/atempause.h"
#include "run/fortschritt.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "search/bereich.h"
#include "search/blocksuche.h"
#include "search/naturfolge.h"
#include "search/suchzustand.h"

namespace {

struct Durchgang {
    Schritte& s;
    int blockSpalte;
    int blockLaenge;
    QString sortierung;
    QString& stelle;  // what the error box says about the place
    Bereichsvergleich& vergleich;
};

QString nachSortierung(const QString& sortierung) {
    return QStringLiteral(
               "Durchsuche die Tabelle nach Dubletten ... \r\nUnter Sortierung der Tabelle nach \"") +
           sortierung + u'"';
}

// What the error box says about the place: a block, or where the neighbours are looked at.
QString imBereich(qint64 erster, qint64 letzter) {
    return QStringLiteral("im Bereich ") + QString::number(erster) + QStringLiteral(" bis ") +
           QString::number(letzter);
}

QString anDerPosition() {
    return QStringLiteral("an der Position ") + QString::number(gArbeitsPosition);
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
    while (gArbeitsPosition < anzahl) {
        d.vergleich.NachbarVergleichen(gArbeitsPosition);
        d.stelle = anDerPosition();
        d.s.tu(fehlerWeitergeben);
        if (gAbbruch) return false;
    }
    d.stelle = imBereich(0, 0);
    FortschrittBeenden();
    return true;
}

// The beginnings of the block column's values, by bookmark.
class Blockschluessel {
  public:
    explicit Blockschluessel(int laenge) : laenge_(laenge) {}
    void aufnehmen(qint64 merkzeichen, const Wert& wert) {
        if (size_t(merkzeichen) >= nummern_.size()) nummern_.resize(size_t(merkzeichen) + 1, 0);
        nummern_[size_t(merkzeichen)] = nummer(wert);
    }
    const Wert& von(qint64 merkzeichen) const {
        return schluessel_[size_t(merkzeichen) < nummern_.size() ? nummern_[size_t(merkzeichen)] : 0];
    }

  private:
    quint32 nummer(const Wert& wert) {
        if (wert.istNull()) return 0;
        const QString anfang = wert.alsText().left(laenge_);
        const auto fund = gefundene_.constFind(anfang);
        if (fund != gefundene_.cend()) return *fund;
        schluessel_.emplace_back(anfang);
        return gefundene_[anfang] = quint32(schluessel_.size() - 1);
    }

    int laenge_;
    std::vector<Wert> schluessel_{Wert::null()};
    QHash<QString, quint32> gefundene_;
    std::vector<quint32> nummern_;
};

// False when the user stopped.
bool schluesselLesen(Durchgang& d, Blockschluessel& schluessel) {
    return ArbeitstabelleDurchgehen(d.s, [&](dao::Recordset& saetze, const std::vector<qint64>& merkzeichen) {
        std::vector<Wert> werte;
        d.s.tu([&] { werte = saetze.GetColumn(d.blockSpalte, qint64(merkzeichen.size())); });
        for (size_t i = 0; i < werte.size(); ++i) schluessel.aufnehmen(merkzeichen[i], werte[i]);
        return werte.size() == merkzeichen.size();
    });
}

// The blocks of the pass; none when the user stopped meanwhile.
std::vector<Suchblock> bloeckeSuchen(Durchgang& d) {
    fenster().information(QStringLiteral("Berechne notwendige Zeit ..."));
    FortschrittLeeren();
    d.s.tu([&] { Gesetzt(gBlockDaten).MoveFirst(); });
    d.stelle = imBereich(1, 0);                                   // the first block, whose end is not known
    d.s.tu([&] { Gesetzt(gBlockDaten).Fields(d.blockSpalte); });  // raises for a column that is not there
    int spalten = 0;
    d.s.tu([&] { spalten = Gesetzt(gBlockDaten).FieldsCount(); });
    if (d.blockSpalte >= spalten) return {};
    Blockschluessel schluessel(d.blockLaenge);
    if (!d.vergleich.SaetzeAufnehmen(d.s) || !schluesselLesen(d, schluessel)) return {};
    std::vector<qint64> folge;
    d.s.tu([&] { folge = Gesetzt(gBlockDaten).Bookmarks(Gesetzt(gBlockDaten).RecordCount()); });
    Blocksuche suche(d.blockLaenge);
    for (const qint64 merkzeichen : folge) {
        suche.naechster(schluessel.von(merkzeichen));
        Atempause();
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
    for (const Suchblock& block : bloecke) {
        d.stelle = imBereich(block.erster, block.letzter);
        d.vergleich.BereichVergleichen(block.erster, block.letzter);
        d.s.tu(fehlerWeitergeben);
        if (gAbbruch) return false;
    }
    FortschrittBeenden();
    d.s.tu([] { DatenSchliessen(gBlockDaten); });
    return true;
}

}  // namespace

void SuchdurchlaufAusfuehren(int blockSpalte, int blockLaenge, const QString& sortierung, bool quick,
                             Bereichsvergleich& vergleich) {
    QString stelle = imBereich(0, 0);
    Schritte s([&] { return QStringLiteral("Fehler bei der Dublettensuche ") + stelle + u'.'; });
    Durchgang d{s, blockSpalte, blockLaenge, sortierung, stelle, vergleich};
    s.ablauf(
        [&] {
            oeffnen(s, sortierung);
            if (!(quick ? nachbarnVergleichen(d) : bloeckeVergleichen(d))) return;
            s.tu([] { DatenSchliessen(gZweitDaten); });
            s.tu([] { DatenSchliessen(gArbeitsDaten); });
        },
        [] { gFehler = true; });
}
