// Definitions of the file put into the engine's terms.
#include "engine/jet/katalog_lesen.h"

#include <algorithm>
#include <cmath>

#include "base/fehler.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

constexpr quint32 kFlagSystem = 0x80000000;
constexpr quint32 kFlagAccessSystem = 0x2;
constexpr quint32 kFlagVersteckt = 0x8;
constexpr double kSpaetestes = 3000000;  // days; dates beyond are no dates

// Exactly 0 for what a user would call a table of this file.
int attribute(const Objekt& o) {
    if (o.typ == kObjektVerknuepft) return dao::dbAttachedTable;
    if (o.typ == kObjektOdbc) return dao::dbAttachedODBC;
    int attr = 0;
    if (o.flags & (kFlagSystem | kFlagAccessSystem)) attr |= dao::dbSystemObject;
    if ((o.flags & kFlagVersteckt) || o.name.startsWith(u'~')) attr |= dao::dbHiddenObject;
    return attr == 0 && o.flags != 0 ? dao::dbSystemObject : attr;
}

QDateTime zeitpunkt(double tage) {
    if (!(std::abs(tage) < kSpaetestes) || tage == 0) return {};
    const double tag = std::trunc(tage);
    const QDate datum = QDate(1899, 12, 30).addDays(qint64(tag));
    const auto ms = std::llround(std::abs(tage - tag) * 86400000.0);
    return QDateTime(datum, QTime(0, 0)).addMSecs(ms);
}

const std::vector<Eigenschaft>* eigenschaftenVon(const std::vector<Eigenschaftsblock>& bloecke,
                                                 const QString& spalte) {
    for (const Eigenschaftsblock& b : bloecke)
        if (b.art == 1 && b.name.compare(spalte, Qt::CaseInsensitive) == 0) return &b.liste;
    return nullptr;
}

bool nurImOriginal(const QString& name) {
    return name == u"GUID" || name == u"NameMap";
}

// The properties that FeldDef has members for go there, the others into `eigenes`.
void eigenschaftenVerteilen(const std::vector<Eigenschaft>& liste, engine::FeldDef& feld,
                            Spalteneigenes& eigenes) {
    for (const Eigenschaft& e : liste) {
        const bool wahr = !e.wert.isEmpty() && e.wert[0] != 0;
        if (e.name == u"AllowZeroLength")
            feld.leerErlaubt = wahr;
        else if (e.name == u"Required")
            feld.erforderlich = wahr;
        else if (!nurImOriginal(e.name))
            eigenes.eigenschaften.push_back(e);
    }
}

int feldAttribute(const Spalte& s) {
    int attr = dao::dbUpdatableField |
               (s.istFest() || s.typ == kTypBoolean ? dao::dbFixedField : dao::dbVariableField);
    if (s.typ == kTypLong && (s.flags & kSpalteAutowert)) attr |= dao::dbAutoIncrField;
    if (s.typ == kTypGuid && (s.flags & kSpalteAutoGuid)) attr |= dao::dbAutoIncrField;
    if (s.typ == kTypMemo && (s.flags & kSpalteHyperlink)) attr |= dao::dbHyperlinkField;
    return attr;
}

int feldGroesse(const Format& format, const Spalte& s) {
    if (s.istLang()) return 0;
    return s.typ == kTypText && format.jet4 ? s.laenge / 2 : s.laenge;
}

engine::FeldDef feldDef(const Format& format, const Spalte& s,
                        const std::vector<Eigenschaft>* eigenschaften) {
    engine::FeldDef feld;
    feld.name = s.name;
    feld.typ = daoTyp(s.typ);
    feld.groesse = feldGroesse(format, s);
    feld.attribute = feldAttribute(s);
    feld.genauigkeit = s.genauigkeit;
    feld.nachkommastellen = s.skala;
    Spalteneigenes eigenes{format.jet4, s.typ, s.flags, s.flags2, {}};
    if (eigenschaften) eigenschaftenVerteilen(*eigenschaften, feld, eigenes);
    feld.formatEigenes = spalteneigenesSchreiben(eigenes);
    return feld;
}

// Nothing for an index over a column that is no more.
void indexHinzufuegen(const Tabelle& tabelle, const LogischerIndex& logischer,
                      std::vector<engine::IndexDef>& ziel) {
    const EchterIndex& echter = tabelle.echte[logischer.echter];
    engine::IndexDef index;
    for (const IndexSpalte& spalte : echter.spalten) {
        const Spalte* s = tabelle.spalteMitNummer(spalte.nummer);
        if (!s) return;
        index.felder.push_back({s->name, spalte.absteigend});
    }
    index.name = logischer.name;
    index.primaer = logischer.art == kIndexPrimaer;
    index.fremd = logischer.art == kIndexFremd;
    index.eindeutig = index.primaer || (echter.flags & kIndexEindeutig);
    index.ohneNull = echter.flags & kIndexOhneNull;
    index.erforderlich = echter.flags & kIndexErforderlich;
    ziel.push_back(std::move(index));
}

engine::TabellenDef ohneDefinition(const Objekt& objekt) {
    engine::TabellenDef def;
    def.name = objekt.name;
    def.attribute = attribute(objekt);
    def.geaendert = zeitpunkt(objekt.geaendert);
    return def;
}

engine::TabellenDef defLesen(const Seitendatei& datei, const Objekt& objekt) {
    if (objekt.typ != kObjektTabelle) return ohneDefinition(objekt);
    try {
        return tabellenDef(datei.format(), objekt, tabelleLesen(datei, objekt));
    } catch (const EngineFehler& fehler) {
        if (fehler.nummer() != kBeschaedigt) throw;
        return ohneDefinition(objekt);
    }
}

bool istTabelle(const Objekt& o) {
    return o.typ == kObjektTabelle || o.typ == kObjektVerknuepft || o.typ == kObjektOdbc;
}

}  // namespace

int daoTyp(quint8 spaltentyp) {
    switch (spaltentyp) {
        case kTypDezimal:
            return dao::dbDecimal;
        case kTypGuid:
            return dao::dbGUID;
        case kTypBigInt:
            return dao::dbBigInt;
        case kTypKomplex:
            return dao::dbLong;
        default:
            if (spaltentyp >= kTypBoolean && spaltentyp <= kTypMemo) return spaltentyp;
            return dao::dbBinary;
    }
}

engine::TabellenDef tabellenDef(const Format& format, const Objekt& objekt, const Tabelle& tabelle) {
    engine::TabellenDef def = ohneDefinition(objekt);
    def.zeilen = tabelle.zeilen;
    const auto bloecke = eigenschaftenLesen(format, objekt.eigenschaften);
    for (const int ort : tabelle.feldfolge()) {
        const Spalte& s = tabelle.spalten[size_t(ort)];
        def.felder.push_back(feldDef(format, s, eigenschaftenVon(bloecke, s.name)));
    }
    for (const LogischerIndex& index : tabelle.logische) indexHinzufuegen(tabelle, index, def.indexe);
    return def;
}

engine::Katalog katalogLesen(const Seitendatei& datei) {
    engine::Katalog katalog;
    for (const Objekt& o : objekteLesen(datei))
        if (istTabelle(o)) katalog.tabellen.push_back(defLesen(datei, o));
    katalog.relationen = relationenLesen(datei, katalog);
    return katalog;
}

}  // namespace jet
