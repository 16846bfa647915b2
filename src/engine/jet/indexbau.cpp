// Indexes made from rows.
#include "engine/jet/indexbau.h"

#include <algorithm>
#include <set>
#include <utility>

#include "engine/jet/baumbau.h"
#include "engine/jet/bytes.h"
#include "engine/jet/indexseite.h"
#include "engine/jet/karte.h"
#include "engine/jet/kartenbau.h"
#include "engine/jet/langwert.h"
#include "engine/jet/schluessel.h"
#include "engine/jet/seitenvergabe.h"
#include "engine/jet/tdefbau.h"

namespace jet {
namespace {

constexpr quint8 kBedingungen = kIndexEindeutig | kIndexErforderlich;

// The stored bytes of a value, of a long one those that `lang` then keeps.
std::optional<QByteArrayView> gespeichert(const Seitendatei& datei, const Spalte& spalte,
                                          const Zeilenteile& teile, QByteArray& lang) {
    if (spalte.typ == kTypBoolean)
        return teile.gesetzt(spalte.nummer) ? std::optional(QByteArrayView()) : std::nullopt;
    const std::optional<QByteArrayView> roh = teile.roh(spalte);
    if (!roh || !spalte.istLang()) return roh;
    if (roh->isEmpty()) return {};
    lang = langwertLesen(datei, *roh, teile.sicht().struktur()).bytes;
    return lang;
}

const Spalte& indexspalte(const Tabelle& tabelle, const IndexSpalte& indexSpalte) {
    const Spalte* spalte = tabelle.spalteMitNummer(indexSpalte.nummer);
    if (!spalte) beschaedigt(tabelle.name, tabelle.seite());
    return *spalte;
}

// The names under which the user knows a real index.
QString indexname(const Tabelle& tabelle, size_t echter) {
    for (const LogischerIndex& logischer : tabelle.logische)
        if (logischer.echter == echter) return logischer.name;
    return tabelle.name;
}

void alsEinfachen(Tabelle& tabelle, size_t echter) {
    tabelle.echte[echter].flags &= quint8(~kBedingungen);
    for (LogischerIndex& logischer : tabelle.logische)
        if (logischer.echter == echter && logischer.art == kIndexPrimaer) logischer.art = kIndexPlain;
}

// The pages of an index that are really its own: index pages of this table, each taken once.
std::vector<quint32> eigeneSeiten(const Seitendatei& datei, const Tabelle& tabelle, const EchterIndex& index,
                                  std::set<quint32>& vergebene) {
    std::vector<quint32> seiten;
    std::vector<quint32> kandidaten = karteLesen(datei, index.karte, tabelle.name).seiten;
    kandidaten.push_back(index.wurzel);
    for (const quint32 seite : kandidaten) {
        const Sicht kopf(datei.seite(seite), tabelle.name, seite);
        const bool indexseite = kopf.u8(0) == kIndexblatt || kopf.u8(0) == kInnereIndexseite;
        if (indexseite && kopf.u32(4) == tabelle.seite() && vergebene.insert(seite).second)
            seiten.push_back(seite);
    }
    std::sort(seiten.begin(), seiten.end());
    return seiten;
}

void kartenErneuern(Seitendatei& datei, Seitenvergabe& vergabe, const EchterIndex& index,
                    const Baumseiten& seiten) {
    for (const quint32 uebrig : seiten.vorhandene) vergabe.freigeben(uebrig);
    karteErsetzen(datei, vergabe, index.karte, seiten.belegte);
}

// Jet 3 counts the entries in front of the different keys; in Jet 4 that number is 0 in most files.
void zaehlerErneuern(Seitendatei& datei, quint32 definition, size_t nummer, const Indexeintraege& eintraege) {
    const Format& format = datei.format();
    const int stelle = format.tdefKopf + int(nummer) * format.zaehler;
    const QByteArray seite = datei.seite(definition, kTdefseite, u"Tabellendefinition");
    if (!format.jet4 || Sicht(seite, u"Tabellendefinition", definition).u32(stelle) != 0)
        tdefZahlSetzen(datei, definition, stelle, quint32(eintraege.anzahl()));
    tdefZahlSetzen(datei, definition, stelle + format.zaehlerVerschiedene, eintraege.verschiedene());
}

void indexErneuern(Seitendatei& datei, Seitenvergabe& vergabe, const Tabelle& tabelle, size_t nummer,
                   std::set<quint32>& vergebene, Indexeintraege& eintraege) {
    const EchterIndex& index = tabelle.echte[nummer];
    Baumseiten seiten;
    seiten.wurzel = index.wurzel;
    seiten.vorhandene = eigeneSeiten(datei, tabelle, index, vergebene);
    const auto wurzel = std::find(seiten.vorhandene.begin(), seiten.vorhandene.end(), index.wurzel);
    if (wurzel == seiten.vorhandene.end()) beschaedigt(tabelle.name, index.wurzel);
    seiten.vorhandene.erase(wurzel);
    eintraege.sortieren();
    baumBauen(datei, vergabe, tabelle.seite(), eintraege, indexname(tabelle, nummer), seiten);
    kartenErneuern(datei, vergabe, index, seiten);
    zaehlerErneuern(datei, tabelle.seite(), nummer, eintraege);
}

}  // namespace

QByteArray zeilenSchluessel(const Seitendatei& datei, const Tabelle& tabelle, const EchterIndex& index,
                            const Zeilenteile& teile) {
    QByteArray schluessel, lang;
    for (const IndexSpalte& is : index.spalten) {
        const Spalte& spalte = indexspalte(tabelle, is);
        schluesselAnhaengen(schluessel, datei.format(), spalte, is.absteigend,
                            gespeichert(datei, spalte, teile, lang));
    }
    return schluessel;
}

bool gehoertInIndex(const EchterIndex& index, const QByteArray& schluessel) {
    return !(index.flags & kIndexOhneNull) || schluessel != nullSchluessel(index);
}

Indexbau::Indexbau(Seitendatei& datei, const Tabelle& tabelle)
    : datei_(datei), tabelle_(tabelle), sammlungen_(tabelle.echte.size()) {
    for (size_t i = 0; i < sammlungen_.size(); ++i)
        for (const IndexSpalte& is : tabelle.echte[i].spalten) {
            const Spalte& spalte = indexspalte(tabelle, is);
            sammlungen_[i].spalten.push_back(size_t(&spalte - tabelle.spalten.data()));
        }
}

void Indexbau::aufnehmen(const Rohsichten& werte, Zeilenort ort) {
    for (size_t i = 0; i < sammlungen_.size(); ++i) {
        const EchterIndex& index = tabelle_.echte[i];
        Sammlung& sammlung = sammlungen_[i];
        QByteArray schluessel;
        for (size_t s = 0; s < sammlung.spalten.size(); ++s) {
            const Spalte& spalte = tabelle_.spalten[sammlung.spalten[s]];
            const std::optional<QByteArrayView>& wert = werte[sammlung.spalten[s]];
            if (!wert && spalte.typ != kTypBoolean) sammlung.hatNull = true;
            schluesselAnhaengen(schluessel, datei_.format(), spalte, index.spalten[s].absteigend, wert);
        }
        if (gehoertInIndex(index, schluessel)) sammlung.eintraege.aufnehmen(schluessel, ort);
    }
}

void Indexbau::bedingungenPruefen(const Sammlung& sammlung, size_t nummer, Tabelle& tabelle,
                                  engine::Hinweise& hinweise) const {
    const EchterIndex& index = tabelle.echte[nummer];
    const bool doppelt =
        (index.flags & kIndexEindeutig) && sammlung.eintraege.hatDoppelte(nullSchluessel(index));
    const bool leer = (index.flags & kIndexErforderlich) && sammlung.hatNull;
    if (!doppelt && !leer) return;
    const QString was = doppelt && leer ? u"doppelte und leere"_qs : doppelt ? u"doppelte"_qs : u"leere"_qs;
    const QString ohne = (index.flags & kIndexEindeutig) ? u"Eindeutigkeit"_qs : u"diese Bedingung"_qs;
    hinweise.push_back(
        u"Der Index '%1' der Tabelle '%2' lässt %3 Schlüssel nicht zu, die Datensätze enthalten aber "
        "welche. Er wurde ohne %4 angelegt; kein Datensatz ging verloren."_qs.arg(indexname(tabelle, nummer),
                                                                                  tabelle.name, was, ohne));
    alsEinfachen(tabelle, nummer);
}

std::vector<std::vector<quint32>> Indexbau::bauen(Seitenvergabe& vergabe, Tabelle& tabelle,
                                                  engine::Hinweise& hinweise) {
    Q_ASSERT(&tabelle == &tabelle_);
    std::vector<std::vector<quint32>> alle;
    for (size_t i = 0; i < sammlungen_.size(); ++i) {
        Sammlung sammlung = std::exchange(sammlungen_[i], {});
        sammlung.eintraege.sortieren();
        bedingungenPruefen(sammlung, i, tabelle, hinweise);
        Baumseiten seiten;
        baumBauen(datei_, vergabe, tabelle.seite(), sammlung.eintraege, indexname(tabelle, i), seiten);
        tabelle.echte[i].wurzel = seiten.wurzel;
        tabelle.echte[i].eintraege = quint32(sammlung.eintraege.anzahl());
        tabelle.echte[i].verschiedene = sammlung.eintraege.verschiedene();
        alle.push_back(std::move(seiten.belegte));
    }
    return alle;
}

void indexeErneuern(Seitendatei& datei, Seitenvergabe& vergabe, const Tabelle& tabelle) {
    std::vector<Indexeintraege> eintraege(tabelle.echte.size());
    for (Tabellenleser leser(datei, tabelle, false); leser.weiter();)
        for (size_t i = 0; i < eintraege.size(); ++i) {
            const QByteArray schluessel = zeilenSchluessel(datei, tabelle, tabelle.echte[i], leser.teile());
            if (gehoertInIndex(tabelle.echte[i], schluessel)) eintraege[i].aufnehmen(schluessel, leser.ort());
        }
    std::set<quint32> vergebene;
    for (size_t i = 0; i < eintraege.size(); ++i)
        indexErneuern(datei, vergabe, tabelle, i, vergebene, eintraege[i]);
}

}  // namespace jet
