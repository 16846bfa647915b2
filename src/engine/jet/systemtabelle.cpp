// Catalogue tables changed row by row.
#include "engine/jet/systemtabelle.h"

#include <algorithm>

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/indexbau.h"
#include "engine/jet/karte.h"
#include "engine/jet/kartenbau.h"
#include "engine/jet/langwert.h"
#include "engine/jet/seitenbau.h"
#include "engine/jet/seitenvergabe.h"
#include "engine/jet/tdefbau.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

Rohwerte rohwerteLesen(const Tabelle& tabelle, const Zeilenteile& teile) {
    Rohwerte werte(tabelle.spalten.size());
    for (size_t i = 0; i < werte.size(); ++i) {
        const Spalte& spalte = tabelle.spalten[i];
        if (!teile.gesetzt(spalte.nummer)) continue;
        const std::optional<QByteArrayView> roh = teile.roh(spalte);
        werte[i] = roh ? roh->toByteArray() : QByteArray();
    }
    return werte;
}

}  // namespace

Systemtabelle::Systemtabelle(Seitendatei& datei, Seitenvergabe& vergabe, quint32 seite, QString name)
    : datei_(datei), vergabe_(vergabe), tabelle_(tdefLesen(datei, seite)) {
    tabelle_.name = std::move(name);
    besitz_ = karteLesen(datei, tabelle_.besitz, tabelle_.name).seiten;
    frei_ = karteLesen(datei, tabelle_.frei, tabelle_.name).seiten;
}

size_t Systemtabelle::spalte(QStringView name) const {
    const int ort = tabelle_.spalteMitName(name);
    if (ort < 0) beschaedigt(tabelle_.name, tabelle_.seite());
    return size_t(ort);
}

std::vector<Systemtabelle::Zeile> Systemtabelle::zeilen() const {
    std::vector<Zeile> alle;
    Tabellenleser leser(datei_, tabelle_);
    while (leser.weiter())
        alle.push_back({leser.ort(), leser.bytesOrt(), rohwerteLesen(tabelle_, leser.teile())});
    return alle;
}

void Systemtabelle::einfuegen(const Rohwerte& werte) {
    const QByteArray bytes = zeileBauen(datei_.format(), tabelle_, sichten(werte));
    if (bytes.size() > datei_.format().laengsteZeile) beschaedigt(tabelle_.name, tabelle_.seite());
    for (const quint32 seite : frei_) {
        const QByteArray alt = datei_.seite(seite, kDatenseite, tabelle_.name);
        if (besitzerLesen(alt) != tabelle_.seite()) continue;
        Datenseitenbau bau(datei_.format(), alt, seite);
        if (!bau.passt(bytes.size())) continue;
        bau.anfuegen(bytes);
        datei_.schreiben(seite, bau.bytes());
        return freiMerken(seite, bau);
    }
    const quint32 seite = vergabe_.belegen();
    Datenseitenbau bau(datei_.format(), tabelle_.seite());
    bau.anfuegen(bytes);
    datei_.schreiben(seite, bau.bytes());
    besitz_.insert(std::lower_bound(besitz_.begin(), besitz_.end(), seite), seite);
    freiMerken(seite, bau);
}

void Systemtabelle::loeschen(const Zeile& zeile) {
    slotLoeschen(zeile.ort);
    if (zeile.bytesOrt != zeile.ort) slotLoeschen(zeile.bytesOrt);
}

void Systemtabelle::slotLoeschen(Zeilenort ort) {
    Datenseitenbau bau(datei_.format(), datei_.seite(ort.seite, kDatenseite, tabelle_.name), ort.seite);
    bau.loeschen(ort.zeile);
    datei_.schreiben(ort.seite, bau.bytes());
    freiMerken(ort.seite, bau);
}

void Systemtabelle::ersetzen(const Zeile& zeile, const Rohwerte& werte) {
    const QByteArray bytes = zeileBauen(datei_.format(), tabelle_, sichten(werte));
    const Zeilenort ort = zeile.ort;
    Datenseitenbau bau(datei_.format(), datei_.seite(ort.seite, kDatenseite, tabelle_.name), ort.seite);
    if (zeile.bytesOrt != ort || !bau.passtStatt(ort.zeile, bytes.size())) {
        loeschen(zeile);
        return einfuegen(werte);
    }
    bau.ersetzen(ort.zeile, bytes);
    datei_.schreiben(ort.seite, bau.bytes());
    freiMerken(ort.seite, bau);
}

// Keeps the page's place among those with room right, and writes the maps.
void Systemtabelle::freiMerken(quint32 seite, const Datenseitenbau& bau) {
    const auto stelle = std::lower_bound(frei_.begin(), frei_.end(), seite);
    const bool steht = stelle != frei_.end() && *stelle == seite;
    if (bau.frei() >= kMindestplatz && !steht)
        frei_.insert(stelle, seite);
    else if (bau.frei() < kMindestplatz && steht)
        frei_.erase(stelle);
    kartenSichern();
}

Langwertbau& Systemtabelle::lange(size_t spalte) {
    std::unique_ptr<Langwertbau>& lang = lange_[spalte];
    if (!lang) {
        const Langwertkarten* karten = tabelle_.langeMitNummer(tabelle_.spalten[spalte].nummer);
        if (!karten) beschaedigt(tabelle_.name, tabelle_.seite());
        lang = std::make_unique<Langwertbau>(datei_, vergabe_,
                                             karteLesen(datei_, karten->besitz, tabelle_.name).seiten,
                                             karteLesen(datei_, karten->frei, tabelle_.name).seiten);
    }
    return *lang;
}

QByteArray Systemtabelle::langesFeld(size_t spalte, const QByteArray& inhalt) {
    Langwertbau& lang = lange(spalte);
    const QByteArray feld = lang.feld(inhalt);
    lang.abschliessen();
    kartenSichern();
    return feld;
}

void Systemtabelle::langesLoeschen(size_t spalte, const QByteArray& feld) {
    const Langwert wert = langwertLesen(datei_, feld, tabelle_.name);
    if (wert.stuecke.empty()) return;
    lange(spalte).loeschen(wert.stuecke);
    kartenSichern();
}

void Systemtabelle::kartenSichern() {
    geaendert_ = true;
    karteErsetzen(datei_, vergabe_, tabelle_.besitz, besitz_);
    karteErsetzen(datei_, vergabe_, tabelle_.frei, frei_);
    for (const auto& [spalte, lang] : lange_) {
        const Langwertkarten* karten = tabelle_.langeMitNummer(tabelle_.spalten[spalte].nummer);
        karteErsetzen(datei_, vergabe_, karten->besitz, lang->besitz());
        if (karten->frei.seite != 0) karteErsetzen(datei_, vergabe_, karten->frei, lang->frei());
    }
}

void Systemtabelle::abschliessen() {
    if (!geaendert_) return;
    geaendert_ = false;
    quint32 zeilen = 0;
    for (Tabellenleser leser(datei_, tabelle_); leser.weiter();) ++zeilen;
    tdefZahlSetzen(datei_, tabelle_.seite(), datei_.format().tdefZeilen, zeilen);
    indexeErneuern(datei_, vergabe_, tabelle_);
}

}  // namespace jet
