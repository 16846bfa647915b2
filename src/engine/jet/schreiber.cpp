// Tables added, dropped and renamed.
#include "engine/jet/schreiber.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/lvprop.h"
#include "engine/jet/seitenbau.h"
#include "engine/jet/tabellenbau.h"
#include "engine/jet/tabellenseiten.h"

namespace jet {
namespace {

const Seitendatei& geprueft(const Seitendatei& datei) {
    schreibbarPruefen(datei);
    return datei;
}

// A page that the map lists but that names another owner is not the table's to give away.
bool gehoertAnderen(const Seitendatei& datei, quint32 seite, quint32 besitzer) {
    const QByteArray bytes = datei.seite(seite);
    return bytes[0] != char(kDatenseite) || besitzerLesen(bytes) != besitzer;
}

// Pages of the table that may be given back to the file.
std::vector<quint32> eigeneSeiten(const Seitendatei& datei, const Tabelle& tabelle, Tabellenseiten seiten) {
    const auto streichen = [&](std::vector<quint32>& liste, quint32 besitzer) {
        liste.erase(std::remove_if(liste.begin(), liste.end(),
                                   [&](quint32 s) { return gehoertAnderen(datei, s, besitzer); }),
                    liste.end());
    };
    streichen(seiten.daten, tabelle.seite());
    streichen(seiten.lange, kBesitzerLang);
    return seiten.alle();
}

}  // namespace

void schreibbarPruefen(const Seitendatei& datei) {
    if (datei.endetAngebrochen())
        throw EngineFehler(
            kBeschaedigt,
            u"Die Datenbankdatei ist nicht vollständig und kann deshalb nicht geändert werden. "
            "Lassen Sie sie in Access komprimieren und reparieren."_qs);
}

Schreiber::Schreiber(Seitendatei& datei)
    : datei_(datei), vergabe_((geprueft(datei), datei)), katalog_(datei, vergabe_) {
    freieSeitenPruefen();
}

// Where the file calls pages free that a table still lists, or where a table cannot be read, no free page is
// trusted.
void Schreiber::freieSeitenPruefen() {
    for (const Objekt& objekt : katalog_.objekte()) {
        if (objekt.typ != kObjektTabelle) continue;
        try {
            const Tabellenseiten seiten = tabellenseitenSammeln(datei_, tabelleLesen(datei_, objekt));
            const std::vector<quint32> alle = seiten.alle();
            const bool seiteFrei =
                std::any_of(alle.begin(), alle.end(), [&](quint32 s) { return vergabe_.istFrei(s); });
            const bool karteFrei = std::any_of(seiten.karten.begin(), seiten.karten.end(),
                                               [&](Zeilenort ort) { return vergabe_.istFrei(ort.seite); });
            if (seiteFrei || karteFrei) vergabe_.nurAmEnde();
        } catch (const EngineFehler&) {
            vergabe_.nurAmEnde();
        }
    }
}

void Schreiber::anlegen(const engine::TabellenDef& def, engine::Zeilenquelle& zeilen) {
    katalog_.neuenNamenPruefen(def.name);
    tabellenDefPruefen(def);
    const QByteArray eigenschaften =
        eigenschaftenSchreiben(datei_.format(), eigenschaftenDerFelder(datei_.format(), def.felder));
    const Tabelle tabelle = tabelleBauen(datei_, vergabe_, def, zeilen, hinweise_);
    katalog_.eintragen(tabelle.seite(), def.name, eigenschaften);
}

void Schreiber::loeschen(const QString& name) {
    const Objekt objekt = katalog_.benutzertabelle(name);
    katalog_.ohneRelationPruefen(name);
    const Tabelle tabelle = tabelleLesen(datei_, objekt);
    const Tabellenseiten seiten = tabellenseitenSammeln(datei_, tabelle);
    const std::vector<quint32> eigene = eigeneSeiten(datei_, tabelle, seiten);
    katalog_.austragen(objekt);
    kartenLoeschen(seiten.karten);
    for (const quint32 seite : eigene) vergabe_.freigeben(seite);
}

// The rows of the table's maps; a map page that held nothing else goes back to the file.
void Schreiber::kartenLoeschen(const std::vector<Zeilenort>& karten) {
    for (const Zeilenort ort : karten) {
        if (vergabe_.istFrei(ort.seite)) continue;
        Datenseitenbau bau(datei_.format(), datei_.seite(ort.seite, kDatenseite, u"Seitenkarte"), ort.seite);
        bau.loeschen(ort.zeile);
        datei_.schreiben(ort.seite, bau.bytes());
        if (bau.leer()) vergabe_.freigeben(ort.seite);
    }
}

void Schreiber::umbenennen(const QString& alt, const QString& neu) {
    const Objekt& objekt = katalog_.benutzertabelle(alt);
    katalog_.neuenNamenPruefen(neu, &objekt);
    katalog_.umbenennen(objekt, neu);
}

void Schreiber::abschliessen() {
    katalog_.abschliessen();
    vergabe_.schreiben();
    datei_.leeren();
}

}  // namespace jet
