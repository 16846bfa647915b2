// The rows of MSysObjects checked against each other and against the definitions they name.
#include <algorithm>
#include <set>

#include "engine/jet/prueflauf.h"

namespace jet::pruefung {
namespace {

// A chain of parents cannot be deeper than there are objects; sound files have a depth of three.
constexpr int kTiefste = 16;

class Verzeichnis {
  public:
    explicit Verzeichnis(const std::vector<Objekt>& objekte);
    void pruefen(Lauf& lauf, const Objekt& objekt);

  private:
    void namePruefen(Lauf& lauf, const Objekt& objekt);
    void elternPruefen(Lauf& lauf, const Objekt& objekt) const;

    std::vector<std::pair<qint32, qint32>> eltern_;  // id and its parent's, by id
    std::set<qint32> ids_;
    std::set<std::pair<qint32, QString>> namen_;
};

Verzeichnis::Verzeichnis(const std::vector<Objekt>& objekte) {
    for (const Objekt& o : objekte) eltern_.emplace_back(o.id, o.eltern);
    std::sort(eltern_.begin(), eltern_.end());
}

void Verzeichnis::namePruefen(Lauf& lauf, const Objekt& objekt) {
    if (!namen_.emplace(objekt.eltern, objekt.name.toCaseFolded()).second)
        lauf.melden(objekt.ort.seite, u"zwei Objekte heißen »%1«"_qs.arg(objekt.name));
}

void Verzeichnis::elternPruefen(Lauf& lauf, const Objekt& objekt) const {
    qint32 id = objekt.eltern;
    for (int tiefe = 0; tiefe < kTiefste; ++tiefe) {
        const auto ort = std::lower_bound(eltern_.begin(), eltern_.end(), std::pair(id, INT_MIN));
        // The topmost container has a row in some files and none in others.
        if (ort == eltern_.end() || ort->first != id) {
            if (tiefe == 0 && objekt.typ != kObjektContainer && objekt.typ != kObjektDatenbank)
                lauf.melden(objekt.ort.seite,
                            u"»%1« liegt in einem Behälter, den es nicht gibt"_qs.arg(objekt.name));
            return;
        }
        if (ort->second == id) return;
        id = ort->second;
    }
    lauf.melden(objekt.ort.seite, u"die Behälter von »%1« enden nicht"_qs.arg(objekt.name));
}

void Verzeichnis::pruefen(Lauf& lauf, const Objekt& objekt) {
    if (!ids_.insert(objekt.id).second)
        lauf.melden(objekt.ort.seite, u"»%1« hat die Nummer %2 eines anderen Objekts"_qs.arg(
                                          objekt.name, QString::number(objekt.id)));
    namePruefen(lauf, objekt);
    elternPruefen(lauf, objekt);
}

}  // namespace

std::vector<Objekt> katalogPruefen(Lauf& lauf) {
    std::vector<Objekt> objekte;
    lauf.beginnen(kSeiteObjekte, u"MSysObjects"_qs);
    lauf.versuchen(kSeiteObjekte, [&] { objekte = objekteLesen(lauf.datei()); });
    Verzeichnis verzeichnis(objekte);
    std::vector<Objekt> tabellen;
    std::set<qint32> gesehen;
    for (const Objekt& o : objekte) {
        verzeichnis.pruefen(lauf, o);
        if (o.typ != kObjektTabelle || !gesehen.insert(o.id).second) continue;
        if (lauf.versuchen(o.ort.seite, [&] { tabelleLesen(lauf.datei(), o); })) tabellen.push_back(o);
    }
    if (!gesehen.contains(qint32(kSeiteObjekte)))
        lauf.melden(kSeiteObjekte, u"MSysObjects steht nicht im Verzeichnis"_qs);
    return tabellen;
}

}  // namespace jet::pruefung
