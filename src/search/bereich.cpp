// Compares the records of a pass.
#include "search/bereich.h"

#include <algorithm>

#include "run/fenster.h"
#include "run/zustand.h"
#include "search/blocksuche.h"
#include "search/naturfolge.h"
#include "search/paarfolge.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

namespace {

constexpr qint64 kPortion = 256;  // rows fetched at once

// TEMP_DSN is the second of the four control columns at the end of a row.
qint32 satznummer(const dao::Block& block, int zeile) {
    return qint32(block(block.spalten() - 3, zeile).alsZahl());
}

const Wert* zeileVon(const dao::Block& block, int zeile) {
    return &block(0, zeile);
}

QString vergleichsmeldung(const Wert& erster, const Wert& zweiter, const Vergleichsfehler& fehler) {
    return QStringLiteral("Fehler beim Vergleichen der Datensätze '") + erster.alsText() +
           QStringLiteral("' und '") + zweiter.alsText() + QStringLiteral("' im Feld ") +
           QString::number(fehler.feld + 1) + QStringLiteral(" mit den Werten '") + fehler.a.alsText() +
           QStringLiteral("' und '") + fehler.b.alsText() + QStringLiteral("'.");
}

NachFehler fehlerMelden(const Wert& erster, const Wert& zweiter, const Vergleichsfehler& fehler) {
    try {
        std::rethrow_exception(fehler.fehler);
    } catch (...) {
        FehlerMerken();
    }
    switch (FehlerZeigen(vergleichsmeldung(erster, zweiter, fehler))) {
        case Knopf::Wiederholen:
            return NachFehler::Wiederholen;
        case Knopf::Ignorieren:
            return NachFehler::Ignorieren;
        default:
            gFehler = true;
            return NachFehler::Abbrechen;
    }
}

void gehenZu(Schritte& s, std::unique_ptr<dao::Recordset>& daten, qint64& position, qint64 ziel) {
    s.tu([&] { Gesetzt(daten).Move(ziel - position); });
    position = ziel;
}

dao::Block zeilenHolen(Schritte& s, std::unique_ptr<dao::Recordset>& daten, qint64& position, qint64 anzahl) {
    dao::Block block;
    s.tu([&] { block = Gesetzt(daten).GetRows(anzahl); });
    position += anzahl;
    return block;
}

// A remark goes to the record in front of which `GetRows` has left the recordset.
void prozentVermerken(Schritte& s, std::unique_ptr<dao::Recordset>& daten, const QString& prozent) {
    s.tu([&] { Gesetzt(daten).Move(-1); });
    s.tu([&] { Gesetzt(daten).Edit(); });
    s.tu([&] { Gesetzt(daten).Fields(QString::fromUtf16(kTempAmk)).setValue(prozent); });
    s.tu([&] { Gesetzt(daten).Update(); });
    s.tu([&] { Gesetzt(daten).Move(1); });
}

}  // namespace

Bereichsvergleich::Bereichsvergleich()
    : vergleicher_(gSuchZuordnung, gAnsprechpartnerDifferenzieren),
      schnell_(gSuchZuordnung, gAnsprechpartnerDifferenzieren, gRelevanz) {}

std::optional<float> Bereichsvergleich::datensatzVergleichen(const dao::Block& block1,
                                                             const dao::Block& block2, int zeile1,
                                                             int zeile2) {
    return vergleicher_.vergleichen(zeileVon(block1, zeile1), zeileVon(block2, zeile2),
                                    [&](const Vergleichsfehler& fehler) {
                                        return fehlerMelden(block1(0, zeile1), block2(0, zeile2), fehler);
                                    });
}

void Bereichsvergleich::NachbarVergleichen(qint64 position) {
    Schritte s([] {
        return QStringLiteral("Fehler bei der Dublettensuche (Quickmodus) an der Stelle ") +
               QString::number(gArbeitsPosition) + u'.';
    });
    s.ablauf(
        [&] {
            gehenZu(s, gArbeitsDaten, gArbeitsPosition, position);
            gehenZu(s, gZweitDaten, gZweitPosition, position + 1);
            const dao::Block block1 = zeilenHolen(s, gArbeitsDaten, gArbeitsPosition, 1);
            const dao::Block block2 = zeilenHolen(s, gZweitDaten, gZweitPosition, 1);
            if (block1.zeilen() == 1 && block2.zeilen() == 1) {
                const std::optional<float> relevanz = datensatzVergleichen(block1, block2, 0, 0);
                if (relevanz && *relevanz >= gRelevanz) {
                    PaarEintragen(satznummer(block1, 0), satznummer(block2, 0));
                    // A single product: at some relevances it lands on the whole number that a double would
                    // miss.
                    const QString prozent = QString::number(int(*relevanz * 100.0f)) + u'%';
                    prozentVermerken(s, gArbeitsDaten, prozent);
                    prozentVermerken(s, gZweitDaten, prozent);
                }
            }
            ++gFortschrittWert;
            DoEvents();
        },
        [] { gFehler = true; });
}

void Bereichsvergleich::BereichVergleichen(qint64 erster, qint64 letzter) {
    Schritte s([&] {
        return QStringLiteral("Fehler bei der Dublettensuche im Bereich ") + QString::number(erster) +
               QStringLiteral(" bis ") + QString::number(letzter) + QStringLiteral("\ran der Stelle ") +
               QString::number(gArbeitsPosition) + u'.';
    });
    const qint64 paare = Suchblock{erster, letzter}.paare();
    if (paare == 0 || PaarlisteVoll()) {
        gFortschrittWert += paare;
        DoEvents();
        return;
    }
    s.ablauf(
        [&] {
            const bool geladen = schnell_.moeglich() && zeilenLaden(s, erster, letzter);
            if (Angehalten()) return;
            if (geladen)
                schnellVergleichen();
            else
                woertlichVergleichen(s, erster, letzter);
        },
        [] { gFehler = true; });
}

// What it leaves out for some reason is taken in when a block needs it.
bool Bereichsvergleich::SaetzeAufnehmen(Schritte& s) {
    if (aufgenommen_ || !schnell_.moeglich()) return true;
    aufgenommen_ = true;
    rundeBeginnen();
    return ArbeitstabelleDurchgehen(s, [&](dao::Recordset& saetze, const std::vector<qint64>& merkzeichen) {
        dao::Block block;
        s.tu([&] { block = saetze.GetRows(qint64(merkzeichen.size())); });
        if (size_t(block.zeilen()) != merkzeichen.size()) return false;
        for (int zeile = 0; zeile < block.zeilen(); ++zeile)
            if (!satzAufnehmen(block, zeile, merkzeichen[size_t(zeile)])) return false;
        return !schnell_.voll();
    });
}

// Empties the block, and with it what was taken in when it has become too much.
void Bereichsvergleich::rundeBeginnen() {
    schnell_.leeren();
    if (runde_ == schnell_.runde()) return;
    aufgenommene_.clear();
    satznummern_.clear();
    runde_ = schnell_.runde();
}

std::optional<qint32> Bereichsvergleich::satzAufnehmen(const dao::Block& block, int zeile,
                                                       qint64 merkzeichen) {
    const std::optional<qint32> nummer = schnell_.aufnehmen(zeileVon(block, zeile));
    if (!nummer) return {};
    if (size_t(merkzeichen) >= aufgenommene_.size()) aufgenommene_.resize(size_t(merkzeichen) + 1, -1);
    aufgenommene_[size_t(merkzeichen)] = *nummer;
    satznummern_.push_back(satznummer(block, zeile));
    return nummer;
}

// False when the user stopped, or when the block has to be compared by the letter.
bool Bereichsvergleich::zeilenLaden(Schritte& s, qint64 erster, qint64 letzter) {
    rundeBeginnen();
    block_.clear();
    gehenZu(s, gArbeitsDaten, gArbeitsPosition, erster);
    while (gArbeitsPosition <= letzter) {
        if (!portionLaden(s, std::min(kPortion, letzter - gArbeitsPosition + 1))) return false;
        DoEvents();
        if (gAbbruch) return false;
    }
    return true;
}

bool Bereichsvergleich::portionLaden(Schritte& s, qint64 anzahl) {
    std::vector<qint64> merkzeichen;
    s.tu([&] { merkzeichen = Gesetzt(gArbeitsDaten).Bookmarks(anzahl); });
    if (!bekanntePortion(merkzeichen)) return neuePortion(s, anzahl, merkzeichen);
    gehenZu(s, gArbeitsDaten, gArbeitsPosition, gArbeitsPosition + anzahl);
    return true;
}

// The rows from an earlier block or pass. False when one of them has not been met before.
bool Bereichsvergleich::bekanntePortion(const std::vector<qint64>& merkzeichen) {
    for (const qint64 m : merkzeichen)
        if (size_t(m) >= aufgenommene_.size() || aufgenommene_[size_t(m)] < 0) return false;
    for (const qint64 m : merkzeichen) {
        const qint32 nummer = aufgenommene_[size_t(m)];
        schnell_.anfuegen(nummer);
        block_.push_back(satznummern_[size_t(nummer)]);
    }
    return !merkzeichen.empty();
}

bool Bereichsvergleich::neuePortion(Schritte& s, qint64 anzahl, const std::vector<qint64>& merkzeichen) {
    const dao::Block block = zeilenHolen(s, gArbeitsDaten, gArbeitsPosition, anzahl);
    if (size_t(block.zeilen()) != merkzeichen.size()) return false;
    for (int zeile = 0; zeile < block.zeilen(); ++zeile) {
        const std::optional<qint32> nummer = satzAufnehmen(block, zeile, merkzeichen[size_t(zeile)]);
        if (!nummer) return false;
        schnell_.anfuegen(*nummer);
        block_.push_back(satznummern_.back());
    }
    return true;
}

void Bereichsvergleich::schnellVergleichen() {
    Paarempfang empfang;
    empfang.hoechstens = kHoechstensPaare + 1;
    empfang.treffer = [this](qint32 i, qint32 j) {
        PaarEintragen(block_[size_t(i)], block_[size_t(j)]);
        return !PaarlisteVoll();
    };
    empfang.atempause = [](qint64 paare) {
        gFortschrittWert += paare;
        DoEvents();
        return !Angehalten();
    };
    schnell_.vergleichen(empfang);
}

void Bereichsvergleich::woertlichVergleichen(Schritte& s, qint64 erster, qint64 letzter) {
    gehenZu(s, gArbeitsDaten, gArbeitsPosition, erster);
    const qint64 breite = Scheibenbreite(letzter - erster + 1);
    while (gArbeitsPosition <= letzter && !Angehalten()) {
        const qint64 anfang = gArbeitsPosition;
        const dao::Block scheibe =
            zeilenHolen(s, gArbeitsDaten, gArbeitsPosition, std::min(breite, letzter - anfang + 1));
        scheibeVergleichen(s, scheibe, anfang, letzter, breite);
    }
}

void Bereichsvergleich::scheibeVergleichen(Schritte& s, const dao::Block& scheibe, qint64 anfang,
                                           qint64 letzter, qint64 breite) {
    gehenZu(s, gZweitDaten, gZweitPosition, anfang);
    for (bool ersterLauf = true; gZweitPosition <= letzter && !Angehalten(); ersterLauf = false) {
        const dao::Block zweite =
            zeilenHolen(s, gZweitDaten, gZweitPosition, std::min(breite, letzter - gZweitPosition + 1));
        paareDerScheibe(scheibe, zweite, ersterLauf);
        DoEvents();
    }
}

// A slice with itself is a triangle, with any other one a rectangle.
void Bereichsvergleich::paareDerScheibe(const dao::Block& block1, const dao::Block& block2, bool ersterLauf) {
    for (int i = 0; i < block1.zeilen(); ++i)
        for (int j = ersterLauf ? i + 1 : 0; j < block2.zeilen(); ++j) {
            const std::optional<float> relevanz = datensatzVergleichen(block1, block2, i, j);
            if (!relevanz) return;
            if (*relevanz >= gRelevanz) PaarEintragen(satznummer(block1, i), satznummer(block2, j));
            ++gFortschrittWert;
        }
}
