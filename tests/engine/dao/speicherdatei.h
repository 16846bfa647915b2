// A database file that lives in memory: it does what a format promises and can be made to fail.
#pragma once

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <map>
#include <optional>

#include "base/fehler.h"
#include "engine/dao/oeffner.h"
#include "engine/dao/workspace.h"
#include "gemeinsam/tabellenprobe.h"

// The content outlives the open database, as a file does.
struct Speicherinhalt {
    struct Tabelle {
        engine::TabellenDef def;
        std::vector<engine::Zeile> zeilen;
    };
    std::vector<Tabelle> tabellen;
    std::vector<engine::RelationDef> relationen;

    std::optional<EngineFehler> fehlerBeimAnwenden;  // raised once
    engine::Hinweise hinweise;                       // handed back by the next write
    engine::Hinweise oeffnungshinweise;              // told by the catalogue
    QStringList protokoll;                           // what was read and written, in order
    bool nurLesbar = false;
    qint64 meisteZeilen = -1;  // that a new table may have; -1 for any number
    QChar fehlendesZeichen;    // no table holds it; none when null
    QString passwort;          // as the opener got it
    // A new table is called so by the file, as a workbook calls a sheet "Name$"; and a second one appears
    // beside it.
    QString endungNeuer;
    QString zweiteNeue;
    QHash<QString, QString> gehtMit;  // the table that goes with a dropped one, by its name

    Tabelle* suchen(const QString& name) {
        const auto fund = std::find_if(tabellen.begin(), tabellen.end(), [&](const Tabelle& t) {
            return t.def.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        return fund == tabellen.end() ? nullptr : &*fund;
    }

    QStringList namen() const {
        QStringList liste;
        for (const Tabelle& t : tabellen) liste << t.def.name;
        return liste;
    }
};

class Speicherdatei : public engine::Datenbankdatei {
  public:
    explicit Speicherdatei(Speicherinhalt& inhalt) : inhalt_(inhalt) {}

    engine::Katalog katalogLesen() override {
        engine::Katalog katalog;
        for (const auto& t : inhalt_.tabellen) katalog.tabellen.push_back(t.def);
        katalog.relationen = inhalt_.relationen;
        katalog.hinweise = inhalt_.oeffnungshinweise;
        return katalog;
    }

    std::unique_ptr<engine::Zeilenquelle> zeilenLesen(const QString& tabelle) override {
        inhalt_.protokoll << QStringLiteral("lesen ") + tabelle;
        return std::make_unique<tabellenprobe::Zeilen>(vorhandene(inhalt_, tabelle).zeilen);
    }

    engine::Hinweise anwenden(const std::vector<engine::Aenderung>& aenderungen) override {
        if (const auto fehler = std::exchange(inhalt_.fehlerBeimAnwenden, std::nullopt))
            throw EngineFehler(*fehler);
        Speicherinhalt neu = inhalt_;
        for (const auto& aenderung : aenderungen)
            std::visit([&](const auto& schritt) { ausfuehren(neu, schritt); }, aenderung);
        inhalt_ = std::move(neu);
        return std::exchange(inhalt_.hinweise, {});
    }

    void schreibenPruefen() const override {
        if (inhalt_.nurLesbar) throw EngineFehler(kSystemgrenze, QStringLiteral("Nur zum Lesen."));
    }

    void feldnamePruefen(const QString& name) const override {
        if (name.contains(u'.')) throw EngineFehler(kUngueltigerName, QStringLiteral("Feldname mit Punkt."));
    }

    void tabellePruefen(const engine::TabellenDef& def) const override {
        Datenbankdatei::tabellePruefen(def);
        if (inhalt_.meisteZeilen >= 0 && def.zeilen > inhalt_.meisteZeilen)
            throw EngineFehler(kSystemgrenze, QStringLiteral("'%1' hat zu viele Zeilen.").arg(def.name));
    }

    bool nameErlaubt(const QString& name) const override {
        return !name.isEmpty() && name.size() <= 64 && !name.contains(u'!');
    }

    engine::Zeichenprobe zeichenprobe(const engine::TabellenDef&) const override {
        if (inhalt_.fehlendesZeichen.isNull()) return {};
        return [zeichen = inhalt_.fehlendesZeichen](QStringView text) { return text.indexOf(zeichen); };
    }

  private:
    static Speicherinhalt::Tabelle& vorhandene(Speicherinhalt& inhalt, const QString& name) {
        Speicherinhalt::Tabelle* tabelle = inhalt.suchen(name);
        if (!tabelle) throw EngineFehler(kNichtGefunden, name);
        return *tabelle;
    }

    static void frei(Speicherinhalt& inhalt, const QString& name) {
        if (inhalt.suchen(name)) throw EngineFehler(kNameVorhanden, name);
    }

    static void ausfuehren(Speicherinhalt& inhalt, const engine::TabelleLoeschen& schritt) {
        inhalt.protokoll << QStringLiteral("löschen ") + schritt.name;
        const auto* tabelle = &vorhandene(inhalt, schritt.name);
        inhalt.tabellen.erase(inhalt.tabellen.begin() + (tabelle - inhalt.tabellen.data()));
        std::erase_if(inhalt.tabellen,
                      [&](const auto& t) { return t.def.name == inhalt.gehtMit.value(schritt.name); });
    }

    static void ausfuehren(Speicherinhalt& inhalt, const engine::TabelleUmbenennen& schritt) {
        inhalt.protokoll << QStringLiteral("umbenennen ") + schritt.alt + QStringLiteral(" > ") + schritt.neu;
        Speicherinhalt::Tabelle& tabelle = vorhandene(inhalt, schritt.alt);
        if (schritt.alt.compare(schritt.neu, Qt::CaseInsensitive) != 0) frei(inhalt, schritt.neu);
        tabelle.def.name = schritt.neu;
    }

    static void ausfuehren(Speicherinhalt& inhalt, const engine::TabelleAnlegen& schritt) {
        inhalt.protokoll << QStringLiteral("anlegen ") + schritt.def.name;
        frei(inhalt, schritt.def.name);
        Speicherinhalt::Tabelle tabelle{schritt.def, {}};
        const auto quelle = schritt.zeilen();
        for (engine::Zeile zeile; quelle->naechste(zeile);) tabelle.zeilen.push_back(zeile);
        if (qint64(tabelle.zeilen.size()) != schritt.def.zeilen)
            throw EngineFehler(kBeschaedigt, QStringLiteral("Zeilenzahl"));
        if (!inhalt.zweiteNeue.isEmpty()) {
            inhalt.tabellen.insert(inhalt.tabellen.begin(), tabelle);
            inhalt.tabellen.front().def.name = inhalt.zweiteNeue;
        }
        tabelle.def.name += inhalt.endungNeuer;
        inhalt.tabellen.push_back(std::move(tabelle));
    }

    Speicherinhalt& inhalt_;
};
