// Changing a workbook.
#include "engine/excel/schreiber.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/excel/blattbau.h"
#include "engine/excel/blattname.h"
#include "engine/excel/bytes.h"
#include "engine/excel/formeln5.h"
#include "engine/excel/verweisbau.h"

namespace excel {
namespace {

QString ohneDollar(const QString& name) {
    return name.endsWith(u'$') ? name.chopped(1) : name;
}

[[noreturn]] void nameBelegt(const QString& name) {
    throw EngineFehler(
        kNameVorhanden,
        QStringLiteral("In der Arbeitsmappe gibt es schon ein Blatt oder einen Bereich mit dem Namen "
                       "'%1'. Wählen Sie einen anderen Namen.")
            .arg(name));
}

void nameVerlangen(const QString& name) {
    if (blattnameErlaubt(name)) return;
    throw EngineFehler(
        kUngueltigerName,
        QStringLiteral("'%1' ist kein gültiger Name für ein Tabellenblatt. Wählen Sie einen mit 1 bis 31 "
                       "Zeichen ohne : \\ / ? * [ ] und $.")
            .arg(name));
}

// The dead name of this text, whose place a new one takes; null if there is none.
const Definition* verwaister(const Mappe& mappe, const std::vector<Definition>& alle, const QString& text) {
    const auto fund = std::find_if(alle.begin(), alle.end(), [&](const Definition& d) {
        return d.blatt == 0 && d.formelort > 0 && !d.istEingebaut() && namenGleich(d.text, text) &&
               istVerwaist(mappe, d);
    });
    return fund == alle.end() ? nullptr : &*fund;
}

bool istGeschuetzt(const Mappe& mappe) {
    const size_t schutz = mappe.suchen(kProtect);
    return schutz < mappe.globale().size() && mappe.globale()[schutz].daten.size() >= 2 &&
           u16(mappe.globale()[schutz].daten, 0) != 0;
}

}  // namespace

Schreiber::Schreiber(Mappe& mappe) : mappe_(mappe), textindex_(mappe) {
    if (const QString grund = mappe.schreibhindernis(); !grund.isEmpty())
        throw EngineFehler(kSystemgrenze, grund);
    if (istGeschuetzt(mappe))
        hinweise_.push_back(
            QStringLiteral("Der Aufbau der Arbeitsmappe ist geschützt. Die Tabellenblätter wurden "
                           "trotzdem geändert; der Schutz besteht weiter."));
}

Tabellenort Schreiber::finden(const QString& name) const {
    const auto tabellen = tabellenSuchen(mappe_, Texttafel(mappe_), definitionenLesen(mappe_));
    const Tabellenort* ort = tabelleFinden(tabellen, name);
    if (!ort)
        throw EngineFehler(
            kNichtGefunden,
            QStringLiteral("Die Tabelle '%1' ist in der Arbeitsmappe nicht vorhanden.").arg(name));
    return *ort;
}

void Schreiber::blattnameFrei(const QString& name, int selbst) const {
    for (size_t i = 0; i < mappe_.blaetter().size(); ++i)
        if (int(i) != selbst && namenGleich(mappe_.blaetter()[i].name, name)) nameBelegt(name);
}

// The name for the range of a sheet: its own, as far as it is one that Excel takes; another one when a live
// name has it. `bisher` is the name that the range has now.
QString Schreiber::bereichsnameFuer(const QString& blatt, const QString& bisher) const {
    const auto alle = definitionenLesen(mappe_);
    const auto belegt = [&](const QString& text) {
        return !namenGleich(text, bisher) && std::any_of(alle.begin(), alle.end(), [&](const Definition& d) {
            return d.blatt == 0 && namenGleich(d.text, text) && !istVerwaist(mappe_, d);
        });
    };
    const QString form = bereichsname(blatt);
    if (!belegt(form)) return form;
    if (form == blatt) nameBelegt(blatt);
    for (int n = 1;; ++n)
        if (const QString text = form + QString::number(n); !belegt(text)) return text;
}

void Schreiber::hinweisenAuf(const engine::TabellenDef& def) {
    if (std::any_of(def.indexe.begin(), def.indexe.end(),
                    [](const engine::IndexDef& i) { return i.primaer; }))
        hinweise_.push_back(
            QStringLiteral("Die Tabelle '%1' wurde ohne ihren Primärschlüssel gespeichert, da "
                           "Arbeitsmappen keine Schlüssel kennen.")
                .arg(def.name));
}

void Schreiber::anlegen(const engine::TabellenDef& def, engine::Zeilenquelle& zeilen) {
    nameVerlangen(def.name);
    blattnameFrei(def.name);
    const QString bereich = bereichsnameFuer(def.name);
    Neublatt neu = blattBauen(mappe_, def, zeilen);
    texteGeaendert_ = true;
    const int blatt = int(mappe_.blaetter().size());
    mappe_.blattAnhaengen(def.name, std::move(neu.teilstrom));

    auto alle = definitionenLesen(mappe_);
    const Definition* alt = verwaister(mappe_, alle, bereich);
    // An entry of the deleted sheet: formulas that pointed to the earlier table mean the new one.
    const int eintrag =
        blattVerweisen(mappe_, blatt, alt && mappe_.biff8() && alt->formel.size() == 11 ? alt->eintrag : -1);
    alle = definitionenLesen(mappe_);
    const auto stelle = std::find_if(alle.begin(), alle.end(), [&](const Definition& d) {
        return d.blatt == 0 && !d.istEingebaut() && d.formelort > 0 && namenGleich(d.text, bereich);
    });
    namenEintragen(mappe_, bereich, {blatt, 0, neu.zeilen, 0, std::max(0, int(def.felder.size()) - 1)},
                   eintrag, stelle == alle.end() ? -1 : int(stelle->satz));
    zellen_[def.name] = neu.zellen;
    hinweisenAuf(def);
}

void Schreiber::blattLoeschen(int blatt) {
    if (mappe_.blaetter().size() < 2)
        throw EngineFehler(kSystemgrenze,
                           QStringLiteral("Das letzte Blatt einer Arbeitsmappe kann nicht gelöscht "
                                          "werden. Legen Sie in Excel zuerst ein anderes an."));
    const QString name = mappe_.blaetter()[size_t(blatt)].name;
    mappe_.blattEntfernen(size_t(blatt));
    if (!mappe_.biff8()) {
        formelnNachVerlust(mappe_, blatt);
        blattnamenErsetzen(mappe_, name, std::nullopt);
    }
    blattVergessen(mappe_, blatt);
    texteKuerzen(mappe_);
    texteGeaendert_ = blattGeloescht_ = true;
    zellen_.erase(name);
}

void Schreiber::loeschen(const QString& name) {
    const Tabellenort ort = finden(name);
    if (ort.ganzesBlatt())
        blattLoeschen(ort.blatt);
    else
        namenToeten(mappe_, definitionenLesen(mappe_)[*ort.definition]);
}

void Schreiber::umbenennen(const QString& alt, const QString& neu) {
    const Tabellenort ort = finden(alt);
    const QString name = ohneDollar(neu);
    nameVerlangen(name);
    const auto alle = definitionenLesen(mappe_);
    if (ort.ganzesBlatt()) blattnameFrei(name, ort.blatt);
    if (ort.definition) {
        const QString bereich = bereichsnameFuer(name, alle[*ort.definition].text);
        if (const Definition* tot = verwaister(mappe_, alle, bereich); tot && tot != &alle[*ort.definition])
            namenUmbenennen(mappe_, tot->satz, freierName(mappe_, QStringLiteral("_gone_1")));
        namenUmbenennen(mappe_, alle[*ort.definition].satz, bereich);
    }
    if (!ort.ganzesBlatt()) return;
    const QString blattAlt = mappe_.blaetter()[size_t(ort.blatt)].name;
    mappe_.blattBenennen(size_t(ort.blatt), name);
    if (!mappe_.biff8()) blattnamenErsetzen(mappe_, blattAlt, name);
    if (auto eintrag = zellen_.extract(blattAlt)) {
        eintrag.key() = name;
        zellen_.insert(std::move(eintrag));
    }
}

void Schreiber::abschliessen() {
    const auto& blaetter = mappe_.blaetter();
    if (std::none_of(blaetter.begin(), blaetter.end(), [](const Blatt& b) { return b.sichtbarkeit == 0; }))
        throw EngineFehler(kSystemgrenze,
                           QStringLiteral("Das letzte sichtbare Blatt einer Arbeitsmappe kann nicht "
                                          "gelöscht werden. Blenden Sie in Excel ein anderes ein."));
    if (blattGeloescht_) fensterRichten(mappe_);
    if (texteGeaendert_) textverweiseZaehlen(mappe_);
    textindex_.erneuern(mappe_, texteGeaendert_);
}

bool nameFreiNebenAnderem(const Mappe& mappe, const std::vector<Definition>& definitionen,
                          const std::vector<Tabellenort>& tabellen, const QString& name) {
    if (tabelleFinden(tabellen, name)) return true;
    for (const Blatt& blatt : mappe.blaetter())
        if (namenGleich(blatt.name, name)) return false;
    return std::none_of(definitionen.begin(), definitionen.end(), [&](const Definition& d) {
        return d.blatt == 0 && namenGleich(d.text, name) && !istVerwaist(mappe, d);
    });
}

}  // namespace excel
