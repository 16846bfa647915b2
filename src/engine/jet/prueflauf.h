// What the parts of the check share: the deviations so far and who owns which page. Private to the checker.
#pragma once

#include <set>
#include <vector>

#include "base/fehler.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/pruefer.h"

namespace jet::pruefung {

// What a page is used for.
enum class Teil : quint8 { Keiner, Kopf, Karten, Bits, Definition, Daten, Lang, Index };

class Lauf {
  public:
    explicit Lauf(const Seitendatei& datei);

    const Seitendatei& datei() const { return datei_; }
    const Format& format() const { return datei_.format(); }

    // Which table what follows is about; page 0 is the file itself.
    void beginnen(quint32 tabelle, const QString& name);
    const QString& name() const { return name_; }
    // Notes a deviation; only the first dozens of each table are kept.
    void melden(quint32 seite, const QString& was);
    // Runs a part of the check; a kBeschaedigt of the readers becomes a deviation. False when there was one.
    template <typename F>
    bool versuchen(quint32 seite, F tun) {
        try {
            tun();
            return true;
        } catch (const EngineFehler& fehler) {
            if (fehler.nummer() != kBeschaedigt) throw;
            melden(seite, ohneRat(fehler.beschreibung()));
            return false;
        }
    }

    // Takes a page for the present table. False, with a deviation, when it is free, is somebody's already or
    // lies outside the file. Map pages may be taken several times.
    bool belegen(quint32 seite, Teil teil);
    // Takes the row of a map; false when it is somebody's already.
    bool karteBelegen(Zeilenort ort);
    bool belegtVonTabelle(quint32 seite, Teil teil) const;
    // The definition page of the table that took this page first; 0 if none did.
    quint32 besitzer(quint32 seite) const { return besitzer_[seite]; }
    void freiSetzen(quint32 seite) { frei_[seite] = true; }

    std::vector<Mangel> ergebnis() { return std::move(maengel_); }

  private:
    static QString ohneRat(const QString& beschreibung);

    const Seitendatei& datei_;
    std::vector<Mangel> maengel_;
    int anzahl_ = 0;  // deviations of the present table
    quint32 tabelle_ = 0;
    QString name_;
    std::vector<bool> frei_;         // by page
    std::vector<quint32> besitzer_;  // by page
    std::vector<Teil> teil_;         // by page
    std::set<Zeilenort> kartenzeilen_;
};

// The map of the whole file on page 1.
void gesamtkartePruefen(Lauf& lauf);
// The rows of MSysObjects, compared with each other and with the definitions they name; returns those of
// the tables in this file whose definitions can be read, each page once.
std::vector<Objekt> katalogPruefen(Lauf& lauf);
// One table: definition, maps, rows, long values, indexes.
void tabellePruefen(Lauf& lauf, const Objekt& objekt);

}  // namespace jet::pruefung
