// A table's definition and maps checked.
#include "engine/jet/prueftabelle.h"

#include <algorithm>
#include <set>

#include "engine/jet/karte.h"
#include "engine/jet/schluessel.h"
#include "engine/jet/tdefbau.h"

namespace jet::pruefung {
namespace {

constexpr int kLangwertkarte = 10;  // bytes of its record
constexpr int kEndmarke = 2;
constexpr int kSeitenkopf = 8;  // bytes of each page in front of its part
constexpr int kFreieBytes = 2;  // u16 in it

qsizetype namenslaenge(const Format& f, const QString& name) {
    return f.nameLaenge + name.size() * (f.jet4 ? 2 : 1);
}

// Bytes that the definition takes when nothing lies between its parts.
qint64 sollLaenge(const Format& f, const Tabelle& t) {
    qint64 laenge = f.tdefKopf + qint64(t.echte.size()) * (f.zaehler + f.echter) +
                    qint64(t.spalten.size()) * f.spalte + qint64(t.logische.size()) * f.logischer +
                    qint64(t.lange.size()) * kLangwertkarte + kEndmarke;
    for (const Spalte& s : t.spalten) laenge += namenslaenge(f, s.name);
    for (const LogischerIndex& i : t.logische) laenge += namenslaenge(f, i.name);
    return laenge;
}

void namenPruefen(Lauf& lauf, const Tabelle& tabelle) {
    std::set<QString> namen;
    for (const Spalte& s : tabelle.spalten)
        if (!namen.insert(s.name.toCaseFolded()).second)
            lauf.melden(tabelle.seite(), u"zwei Spalten heißen »%1«"_qs.arg(s.name));
    namen.clear();
    for (const LogischerIndex& i : tabelle.logische)
        if (!namen.insert(i.name.toCaseFolded()).second)
            lauf.melden(tabelle.seite(), u"zwei Indexe heißen »%1«"_qs.arg(i.name));
}

// The fixed columns' places must not overlap; dropped ones leave gaps.
void festePruefen(Lauf& lauf, const Tabelle& tabelle) {
    std::vector<std::pair<int, int>> stellen;  // first byte, and the one behind the last
    for (const Spalte& s : tabelle.spalten)
        if (s.istFest() && s.typ != kTypBoolean) stellen.emplace_back(s.fest, s.fest + s.laenge);
    std::sort(stellen.begin(), stellen.end());
    for (size_t i = 1; i < stellen.size(); ++i)
        if (stellen[i].first < stellen[i - 1].second)
            lauf.melden(tabelle.seite(), u"zwei Spalten liegen auf denselben Bytes"_qs);
}

void variablePruefen(Lauf& lauf, const Tabelle& tabelle) {
    std::set<quint16> stellen;
    for (const Spalte& s : tabelle.spalten) {
        if (s.istFest() || s.typ == kTypBoolean) continue;
        if (!stellen.insert(s.variabel).second)
            lauf.melden(tabelle.seite(),
                        u"zwei Spalten teilen sich den variablen Wert %1"_qs.arg(s.variabel));
    }
}

// No more pages than it takes; Jet 4 notes what is left of each.
void definitionsseitenPruefen(Lauf& lauf, const Tabelle& tabelle, qint64 laenge) {
    const Format& f = lauf.format();
    if (int(tabelle.seiten.size()) != tdefSeitenzahl(f, laenge))
        lauf.melden(tabelle.seite(), u"die Definition hat %1 Seiten"_qs.arg(tabelle.seiten.size()));
    qint64 rest = laenge - kSeitenkopf;
    for (const quint32 seite : tabelle.seiten) {
        const qint64 frei = std::max<qint64>(0, f.seite - kSeitenkopf - rest - kSeitenkopf);
        const int vermerkt = Sicht(lauf.datei().seite(seite), lauf.name(), seite).u16(kFreieBytes);
        if (f.jet4 && vermerkt != frei)
            lauf.melden(seite, u"%1 freie Bytes sind vermerkt, %2 sind frei"_qs.arg(vermerkt).arg(frei));
        rest -= f.seite - kSeitenkopf;
    }
}

void definitionPruefen(Lauf& lauf, const Tabelle& tabelle) {
    const Format& f = lauf.format();
    const quint32 laenge = Sicht(tabelle.rohKopf, lauf.name(), tabelle.seite()).u32(f.tdefLaenge);
    const qint64 soll = sollLaenge(f, tabelle);
    if (laenge != soll)
        lauf.melden(tabelle.seite(),
                    u"die Definition ist als %1 Bytes lang vermerkt, sie hat %2"_qs.arg(laenge).arg(soll));
    for (const quint32 seite : tabelle.seiten) lauf.belegen(seite, Teil::Definition);
    definitionsseitenPruefen(lauf, tabelle, soll);
    namenPruefen(lauf, tabelle);
    festePruefen(lauf, tabelle);
    variablePruefen(lauf, tabelle);
}

const LogischerIndex* mitNummer(const Tabelle& tabelle, qint32 nummer) {
    for (const LogischerIndex& i : tabelle.logische)
        if (qint32(i.nummer) == nummer) return &i;
    return nullptr;
}

// The two sides of a relation name each other.
void gegenseitePruefen(Lauf& lauf, const Tabelle& tabelle, const LogischerIndex& index) {
    if (index.art != kIndexFremd || index.andereTabelle == 0) return;
    lauf.versuchen(tabelle.seite(), [&] {
        const Tabelle andere = tdefLesen(lauf.datei(), index.andereTabelle);
        const LogischerIndex* gegen = mitNummer(andere, index.andererIndex);
        if (!gegen || gegen->andereTabelle != tabelle.seite() || gegen->andererIndex != qint32(index.nummer))
            lauf.melden(tabelle.seite(), u"die Beziehung »%1« hat auf Seite %2 keine Gegenseite"_qs.arg(
                                             index.name, QString::number(index.andereTabelle)));
    });
}

void logischePruefen(Lauf& lauf, const Tabelle& tabelle) {
    std::set<quint32> nummern;
    for (const LogischerIndex& i : tabelle.logische) {
        if (!nummern.insert(i.nummer).second)
            lauf.melden(tabelle.seite(), u"zwei Indexe haben die Nummer %1"_qs.arg(i.nummer));
        gegenseitePruefen(lauf, tabelle, i);
    }
}

bool langeDoppelt(const Tabelle& tabelle, size_t ort) {
    for (size_t i = 0; i < ort; ++i)
        if (tabelle.lange[i].nummer == tabelle.lange[ort].nummer) return true;
    return false;
}

void langePruefen(Lauf& lauf, const Tabelle& tabelle) {
    for (size_t i = 0; i < tabelle.lange.size(); ++i) {
        const Spalte* s = tabelle.spalteMitNummer(tabelle.lange[i].nummer);
        if (langeDoppelt(tabelle, i) || (s && !s->istLang()))
            lauf.melden(tabelle.seite(),
                        u"falsche Langwertkarten für Spalte %1"_qs.arg(tabelle.lange[i].nummer));
    }
    for (const Spalte& s : tabelle.spalten)
        if (s.istLang() && !tabelle.langeMitNummer(s.nummer))
            lauf.melden(tabelle.seite(), u"Spalte »%1« hat keine Langwertkarten"_qs.arg(s.name));
}

// An index may still name a column that was dropped; no key can be made then.
bool schluesselBekannt(const Tabelle& tabelle, const EchterIndex& index) {
    return std::all_of(index.spalten.begin(), index.spalten.end(), [&](const IndexSpalte& s) {
        const Spalte* spalte = tabelle.spalteMitNummer(s.nummer);
        return spalte && schluesselMoeglich(*spalte);
    });
}

}  // namespace

std::vector<quint32> karteNehmen(Lauf& lauf, Zeilenort ort, Teil teil, const QString& wessen) {
    std::vector<quint32> seiten;
    if (ort.seite == 0 || !lauf.karteBelegen(ort)) return seiten;
    lauf.versuchen(ort.seite, [&] {
        const Karte karte = karteLesen(lauf.datei(), ort, wessen);
        for (const quint32 seite : karte.bitmapseiten) lauf.belegen(seite, Teil::Bits);
        for (const quint32 seite : karte.seiten)
            if (lauf.belegen(seite, teil)) seiten.push_back(seite);
        if (karte.jenseits != 0)
            lauf.melden(ort.seite, u"%1: %2 Seiten jenseits des Dateiendes"_qs.arg(
                                       wessen, QString::number(karte.jenseits)));
    });
    return seiten;
}

void freikartePruefen(Lauf& lauf, Zeilenort ort, const std::vector<quint32>& besitz, const QString& wessen) {
    if (ort.seite == 0 || !lauf.karteBelegen(ort)) return;
    lauf.versuchen(ort.seite, [&] {
        const Karte karte = karteLesen(lauf.datei(), ort, wessen);
        for (const quint32 seite : karte.bitmapseiten) lauf.belegen(seite, Teil::Bits);
        for (const quint32 seite : karte.seiten)
            if (!std::binary_search(besitz.begin(), besitz.end(), seite))
                lauf.melden(seite, u"%1: Seite mit Platz, die nicht dazugehört"_qs.arg(wessen));
    });
}

void tabellePruefen(Lauf& lauf, const Objekt& objekt) {
    lauf.beginnen(quint32(objekt.id), objekt.name);
    Tabelle tabelle;
    if (!lauf.versuchen(quint32(objekt.id), [&] { tabelle = tdefLesen(lauf.datei(), quint32(objekt.id)); }))
        return;
    tabelle.name = objekt.name;
    definitionPruefen(lauf, tabelle);
    logischePruefen(lauf, tabelle);
    langePruefen(lauf, tabelle);
    const std::vector<quint32> daten = karteNehmen(lauf, tabelle.besitz, Teil::Daten, u"Karte der Daten"_qs);
    freikartePruefen(lauf, tabelle.frei, daten, u"Karte der freien Datenseiten"_qs);
    std::vector<Indexerwartung> erwartungen(tabelle.echte.size());
    for (size_t i = 0; i < tabelle.echte.size(); ++i)
        erwartungen[i].mitSchluesseln = schluesselBekannt(tabelle, tabelle.echte[i]);
    zeilenPruefen(lauf, tabelle, daten, erwartungen, objekt.flags == 0);
    for (size_t i = 0; i < tabelle.echte.size(); ++i)
        indexPruefen(lauf, tabelle, tabelle.echte[i], i, erwartungen[i]);
}

}  // namespace jet::pruefung
