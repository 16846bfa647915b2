// A new table built bottom-up: rows and long values, indexes, maps, and the definition that names them all.
#include "engine/jet/tabellenbau.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/indexbau.h"
#include "engine/jet/kartenbau.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/namen.h"
#include "engine/jet/seitenvergabe.h"
#include "engine/jet/tdefbau.h"
#include "engine/jet/zeilenschreiber.h"

namespace jet {
namespace {

constexpr size_t kMaxIndexe = 32;
constexpr size_t kMaxIndexfelder = 10;

[[noreturn]] void grenze(const QString& text) {
    throw EngineFehler(kSystemgrenze, text);
}

[[noreturn]] void ungueltig(const QString& was, const QString& name) {
    throw EngineFehler(
        kUngueltigerName,
        u"Der %1 '%2' kann nicht verwendet werden. Wählen Sie einen Namen aus 1 bis 64 "
        "Zeichen ohne ! . [ ] `, ohne Steuerzeichen und ohne Leerzeichen am Anfang."_qs.arg(was, name));
}

void namenPruefen(const QString& was, const QString& name, const std::vector<QString>& vorher) {
    if (!feldNameErlaubt(name)) ungueltig(was, name);
    for (const QString& v : vorher)
        if (v.compare(name, Qt::CaseInsensitive) == 0)
            throw EngineFehler(
                kUngueltigerName,
                u"Der %1 '%2' kommt zweimal vor. Benennen Sie einen der beiden um."_qs.arg(was, name));
}

// Values of a calculated column are kept in a form of their own, and its expression stays with its table.
void berechneteAblehnen(const engine::FeldDef& feld) {
    Spalteneigenes eigenes;
    if (!spalteneigenesLesen(feld.formatEigenes, eigenes) || !(eigenes.flags2 & kSpalteBerechnet)) return;
    grenze(
        u"Das Feld '%1' wird von Access berechnet; die Tabelle kann deshalb nicht kopiert werden. Machen Sie "
        u"in "
        "Access mit einer Tabellenerstellungsabfrage eine Tabelle mit seinen Werten, und verwenden Sie diese."_qs
            .arg(feld.name));
}

void felderPruefen(const engine::TabellenDef& def) {
    if (def.felder.empty() || def.felder.size() > size_t(dao::kMaxFelder))
        throw EngineFehler(kZuVieleFelder,
                           u"Die Tabelle '%1' hat %2 Felder. Erlaubt sind 1 bis 255; entfernen Sie die "
                           "überzähligen."_qs.arg(def.name, QString::number(def.felder.size())));
    std::vector<QString> namen;
    for (const engine::FeldDef& feld : def.felder) {
        namenPruefen(u"Feldname"_qs, feld.name, namen);
        namen.push_back(feld.name);
        berechneteAblehnen(feld);
    }
}

bool hatFeld(const engine::TabellenDef& def, const QString& name) {
    return std::any_of(def.felder.begin(), def.felder.end(), [&](const engine::FeldDef& f) {
        return f.name.compare(name, Qt::CaseInsensitive) == 0;
    });
}

void indexPruefen(const engine::TabellenDef& def, const engine::IndexDef& index) {
    if (index.felder.empty() || index.felder.size() > kMaxIndexfelder)
        grenze(
            u"Der Index '%1' der Tabelle '%2' hat %3 Felder; erlaubt sind 1 bis 10. Ändern Sie den Index in Access."_qs
                .arg(index.name, def.name, QString::number(index.felder.size())));
    for (const engine::IndexFeld& feld : index.felder)
        if (!hatFeld(def, feld.name))
            throw EngineFehler(
                kNichtInListe,
                u"Das Feld '%1' des Index '%2' ist in der Tabelle '%3' nicht vorhanden."_qs.arg(
                    feld.name, index.name, def.name));
}

std::vector<engine::IndexDef> eigeneIndexe(const engine::TabellenDef& def) {
    std::vector<engine::IndexDef> indexe;
    std::copy_if(def.indexe.begin(), def.indexe.end(), std::back_inserter(indexe),
                 [](const engine::IndexDef& index) { return !index.fremd; });
    return indexe;
}

EchterIndex echterIndex(const Format& format, const Tabelle& tabelle, const engine::IndexDef& index) {
    EchterIndex echter;
    for (const engine::IndexFeld& feld : index.felder)
        echter.spalten.push_back(
            {tabelle.spalten[size_t(tabelle.spalteMitName(feld.name))].nummer, feld.absteigend});
    if (index.eindeutig || index.primaer) echter.flags |= kIndexEindeutig;
    if (index.erforderlich || index.primaer) echter.flags |= kIndexErforderlich;
    if (index.ohneNull) echter.flags |= kIndexOhneNull;
    if (format.jet4) echter.flags |= kIndexJet4;
    return echter;
}

// Records stand in name order, their numbers in the order of creation.
void indexeEntwerfen(const Format& format, const engine::TabellenDef& def, Tabelle& tabelle) {
    for (const engine::IndexDef& index : eigeneIndexe(def)) {
        LogischerIndex logischer;
        logischer.name = index.name;
        logischer.nummer = logischer.echter = quint32(tabelle.echte.size());
        logischer.art = index.primaer ? kIndexPrimaer : kIndexPlain;
        tabelle.logische.push_back(logischer);
        tabelle.echte.push_back(echterIndex(format, tabelle, index));
    }
    std::sort(tabelle.logische.begin(), tabelle.logische.end(),
              [](const LogischerIndex& a, const LogischerIndex& b) {
                  return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
              });
}

Tabelle entwerfen(const Format& format, const engine::TabellenDef& def) {
    Tabelle tabelle;
    tabelle.name = def.name;
    spaltenAnlegen(format, def.felder, tabelle);
    for (const Spalte& spalte : tabelle.spalten)
        if (spalte.istLang()) tabelle.lange.push_back({spalte.nummer, {}, {}});
    indexeEntwerfen(format, def, tabelle);
    if (festerTeil(tabelle) > format.laengsteZeile)
        grenze(
            u"Die Felder der Tabelle '%1' passen nicht in einen Datensatz von %2 Bytes. Entfernen Sie Felder."_qs
                .arg(def.name, QString::number(format.laengsteZeile)));
    return tabelle;
}

void definitionsseitenBelegen(const Seitendatei& datei, Seitenvergabe& vergabe, Tabelle& tabelle) {
    const qsizetype laenge = tdefBytes(datei.format(), datei.kopf().codepage, tabelle).size();
    const int anzahl = tdefSeitenzahl(datei.format(), laenge);
    for (int i = 0; i < anzahl; ++i) tabelle.seiten.push_back(vergabe.belegen());
}

Zeilenort folgender(Zeilenort ort) {
    return {ort.seite, quint8(ort.zeile + 1)};
}

// The maps of a table: owned and free, the pairs of its long value columns, one for each index.
void kartenAnlegen(Seitendatei& datei, Seitenvergabe& vergabe, const Zeilenschreiber& zeilen,
                   const std::vector<std::vector<quint32>>& indexseiten, Tabelle& tabelle) {
    Kartenseiten karten(datei, vergabe);
    tabelle.besitz = karten.anfuegen({zeilen.besitz(), zeilen.frei()});
    tabelle.frei = folgender(tabelle.besitz);
    for (Langwertkarten& paar : tabelle.lange) {
        const Langwertbau& lange = zeilen.lange(paar.nummer);
        paar.besitz = karten.anfuegen({lange.besitz(), lange.frei()});
        paar.frei = folgender(paar.besitz);
    }
    for (size_t i = 0; i < tabelle.echte.size(); ++i)
        tabelle.echte[i].karte = karten.anfuegen({indexseiten[i]});
    karten.abschliessen();
}

}  // namespace

void feldnamePruefen(const QString& name) {
    namenPruefen(u"Feldname"_qs, name, {});
}

void tabellenDefPruefen(const engine::TabellenDef& def) {
    felderPruefen(def);
    const std::vector<engine::IndexDef> indexe = eigeneIndexe(def);
    if (indexe.size() > kMaxIndexe)
        grenze(
            u"Die Tabelle '%1' hat %2 Indizes; erlaubt sind höchstens 32. Löschen Sie Indizes in Access."_qs
                .arg(def.name, QString::number(indexe.size())));
    std::vector<QString> namen;
    for (const engine::IndexDef& index : indexe) {
        namenPruefen(u"Indexname"_qs, index.name, namen);
        namen.push_back(index.name);
        indexPruefen(def, index);
    }
}

Tabelle tabelleBauen(Seitendatei& datei, Seitenvergabe& vergabe, const engine::TabellenDef& def,
                     engine::Zeilenquelle& zeilen, engine::Hinweise& hinweise) {
    Tabelle tabelle = entwerfen(datei.format(), def);
    definitionsseitenBelegen(datei, vergabe, tabelle);
    Zeilenschreiber schreiber(datei, vergabe, tabelle);
    Indexbau indexbau(datei, tabelle);
    for (engine::Zeile zeile; zeilen.naechste(zeile);) {
        const Zeilenort ort = schreiber.schreiben(zeile);
        indexbau.aufnehmen(schreiber.inhalte(), ort);
    }
    schreiber.abschliessen();
    const auto indexseiten = indexbau.bauen(vergabe, tabelle, hinweise);
    kartenAnlegen(datei, vergabe, schreiber, indexseiten, tabelle);
    tabelle.zeilen = schreiber.anzahl();
    tabelle.autowert = schreiber.autowert();
    tdefSchreiben(datei, tdefBytes(datei.format(), datei.kopf().codepage, tabelle), tabelle.seiten);
    return tabelle;
}

}  // namespace jet
