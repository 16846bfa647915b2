// MSysRelationships read: one row per pair of columns, put together to relations.
#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

struct Paar {
    QString relation;
    QString tabelle;
    QString fremdtabelle;
    engine::RelationsFeld feld;
    qint64 attribute = 0;
    qint64 platz = 0;
};

// The value in a column of that name; Null if the column is missing.
Wert wertVon(const engine::Zeile& zeile, const std::vector<QString>& namen, QStringView name) {
    for (size_t i = 0; i < namen.size(); ++i)
        if (name.compare(namen[i], Qt::CaseInsensitive) == 0) return zeile[i];
    return Wert::null();
}

Paar paarAus(const engine::Zeile& zeile, const std::vector<QString>& namen) {
    const auto text = [&](QStringView n) {
        const Wert w = wertVon(zeile, namen, n);
        return w.istText() ? w.text() : QString();
    };
    const auto zahl = [&](QStringView n) {
        const Wert w = wertVon(zeile, namen, n);
        return w.art() == Wert::Art::Ganzzahl ? w.ganzzahl() : 0;
    };
    return {text(u"szRelationship"), text(u"szReferencedObject"),
            text(u"szObject"),       {text(u"szReferencedColumn"), text(u"szColumn")},
            zahl(u"grbit"),          zahl(u"icolumn")};
}

std::vector<Paar> paareLesen(const Seitendatei& datei) {
    Tabellenleser leser(datei, tabelleLesen(datei, u"MSysRelationships"_qs));
    std::vector<QString> namen;
    for (const int ort : leser.tabelle().feldfolge())
        namen.push_back(leser.tabelle().spalten[size_t(ort)].name);
    std::vector<Paar> paare;
    engine::Zeile zeile;
    while (leser.naechste(zeile)) paare.push_back(paarAus(zeile, namen));
    return paare;
}

bool istSystemtabelle(const engine::Katalog& katalog, const QString& name) {
    for (const engine::TabellenDef& t : katalog.tabellen)
        if (name.compare(t.name, Qt::CaseInsensitive) == 0) return t.attribute & 2;
    return name.startsWith(u"MSys");
}

std::vector<engine::RelationDef> zusammenfassen(std::vector<Paar> paare, const engine::Katalog& katalog) {
    std::vector<engine::RelationDef> relationen;
    std::stable_sort(paare.begin(), paare.end(),
                     [](const Paar& a, const Paar& b) { return a.platz < b.platz; });
    for (const Paar& p : paare) {
        if (istSystemtabelle(katalog, p.tabelle) || istSystemtabelle(katalog, p.fremdtabelle)) continue;
        auto gleiche = std::find_if(relationen.begin(), relationen.end(), [&](const engine::RelationDef& r) {
            return r.name.compare(p.relation, Qt::CaseInsensitive) == 0;
        });
        if (gleiche == relationen.end())
            gleiche = relationen.insert(relationen.end(),
                                        {p.relation, p.tabelle, p.fremdtabelle, int(p.attribute), {}});
        gleiche->felder.push_back(p.feld);
    }
    return relationen;
}

}  // namespace

std::vector<engine::RelationDef> relationenLesen(const Seitendatei& datei, const engine::Katalog& katalog) {
    try {
        return zusammenfassen(paareLesen(datei), katalog);
    } catch (const EngineFehler& fehler) {
        if (fehler.nummer() != kNichtGefunden) throw;
        return {};
    }
}

}  // namespace jet
