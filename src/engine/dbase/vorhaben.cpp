// What a list of changes comes to.
#include "engine/dbase/vorhaben.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/dbase/namen.h"

namespace dbase {
namespace {

// A table of the list on its way: one of the folder or a new one, under the name it has by now.
struct Eintrag {
    QString name;
    const Tabelle* alt = nullptr;
    const engine::TabelleAnlegen* neu = nullptr;
};

class Planung {
  public:
    Planung(const std::vector<Tabelle>& tabellen, const std::function<QString(const QString&)>& belegt)
        : belegt_(belegt) {
        for (const Tabelle& tabelle : tabellen) eintraege_.push_back({tabelle.name, &tabelle, nullptr});
    }

    void operator()(const engine::TabelleLoeschen& a) {
        const auto eintrag = suchen(a.name);
        entfernbarVerlangen(*eintrag);
        eintraege_.erase(eintrag);
    }
    void operator()(const engine::TabelleUmbenennen& a) {
        const auto eintrag = suchen(a.alt);
        entfernbarVerlangen(*eintrag);
        freiVerlangen(a.neu, &*eintrag);
        eintrag->name = a.neu;
    }
    void operator()(const engine::TabelleAnlegen& a) {
        freiVerlangen(a.def.name, nullptr);
        eintraege_.push_back({a.def.name, nullptr, &a});
    }

    Vorhaben ergebnis(const std::vector<Tabelle>& tabellen) const {
        Vorhaben vorhaben;
        for (const Tabelle& tabelle : tabellen) {
            const auto bleibt = [&](const Eintrag& e) { return e.alt == &tabelle && e.name == tabelle.name; };
            if (std::none_of(eintraege_.begin(), eintraege_.end(), bleibt))
                vorhaben.gehende.push_back(&tabelle);
        }
        for (const Eintrag& e : eintraege_) {
            if (e.neu) vorhaben.neue.push_back(e.neu);
            if (e.alt && e.name != e.alt->name) vorhaben.umzuege.push_back({e.alt, e.name});
        }
        return vorhaben;
    }

  private:
    static bool gleich(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

    std::vector<Eintrag>::iterator suchen(const QString& name) {
        const auto fund = std::find_if(eintraege_.begin(), eintraege_.end(),
                                       [&](const Eintrag& e) { return gleich(e.name, name); });
        if (fund == eintraege_.end())
            throw EngineFehler(kNichtGefunden,
                               QStringLiteral("Die Tabelle '%1' ist im Ordner nicht vorhanden.").arg(name));
        return fund;
    }

    static void entfernbarVerlangen(const Eintrag& eintrag) {
        if (!eintrag.alt || !eintrag.alt->beschaedigt()) return;
        throw EngineFehler(
            kBeschaedigt,
            QStringLiteral("Die Datei der Tabelle '%1' ist beschädigt. Sie wird weder überschrieben "
                           "noch umbenannt oder gelöscht. Wählen Sie einen anderen Namen, oder "
                           "entfernen Sie die Datei selbst aus dem Ordner.")
                .arg(eintrag.alt->name));
    }

    void freiVerlangen(const QString& name, const Eintrag* selbst) const {
        if (!tabellennameErlaubt(name))
            throw EngineFehler(
                kUngueltigerName,
                QStringLiteral("'%1' ist kein gültiger Name für eine dBase-Tabelle. Wählen Sie einen "
                               "Namen mit höchstens %2 Zeichen ohne : / \\ * ? [ ] . \" < > |")
                    .arg(name, QString::number(kMaxTabellenname)));
        for (const Eintrag& e : eintraege_)
            if (&e != selbst && gleich(e.name, name))
                throw EngineFehler(kNameVorhanden,
                                   QStringLiteral("Die Tabelle '%1' ist bereits vorhanden.").arg(name));
        const QString grund = belegt_(name);
        if (!grund.isEmpty()) throw EngineFehler(kNameVorhanden, grund);
    }

    const std::function<QString(const QString&)>& belegt_;
    std::vector<Eintrag> eintraege_;
};

}  // namespace

Vorhaben vorhabenErmitteln(const std::vector<Tabelle>& tabellen, const std::vector<engine::Aenderung>& liste,
                           const std::function<QString(const QString&)>& belegt) {
    Planung planung(tabellen, belegt);
    for (const engine::Aenderung& aenderung : liste) std::visit(planung, aenderung);
    return planung.ergebnis(tabellen);
}

}  // namespace dbase
