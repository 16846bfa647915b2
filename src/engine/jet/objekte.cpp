// MSysObjects read: what there is in a file, and whether the file may be opened at all.
#include "base/fehler.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

// The columns of MSysObjects that are wanted, found by name.
struct Orte {
    explicit Orte(const Tabelle& t)
        : id(an(t, u"Id")),
          eltern(an(t, u"ParentId")),
          name(an(t, u"Name")),
          typ(an(t, u"Type")),
          flags(an(t, u"Flags")),
          angelegt(an(t, u"DateCreate")),
          geaendert(an(t, u"DateUpdate")),
          besitzer(an(t, u"Owner")),
          eigenschaften(an(t, u"LvProp")) {}
    static const Spalte& an(const Tabelle& t, QStringView name) {
        const int ort = t.spalteMitName(name);
        if (ort < 0) beschaedigt(u"MSysObjects", t.seite());
        return t.spalten[size_t(ort)];
    }
    const Spalte& id;
    const Spalte& eltern;
    const Spalte& name;
    const Spalte& typ;
    const Spalte& flags;
    const Spalte& angelegt;
    const Spalte& geaendert;
    const Spalte& besitzer;
    const Spalte& eigenschaften;
};

qint64 zahl(const Wert& w) {
    return w.art() == Wert::Art::Ganzzahl ? w.ganzzahl() : 0;
}
double tage(const Wert& w) {
    return w.art() == Wert::Art::DatumZeit ? w.datumZeit().tage : 0;
}
QByteArray bytes(const Wert& w) {
    return w.art() == Wert::Art::Bytes ? w.bytes() : QByteArray();
}

// A table must be readable even if its captions are not.
QByteArray eigenschaftenHolen(const Seitendatei& datei, const Spalte& spalte, const Zeilenteile& teile) {
    try {
        return bytes(wertLesen(datei, spalte, teile));
    } catch (const EngineFehler&) {
        return {};
    }
}

Objekt objektLesen(const Seitendatei& datei, const Orte& orte, const Tabellenleser& leser,
                   bool mitEigenschaften) {
    const Zeilenteile teile = leser.teile();
    const auto wert = [&](const Spalte& s) { return wertLesen(datei, s, teile); };
    Objekt o;
    o.id = qint32(zahl(wert(orte.id)));
    o.eltern = qint32(zahl(wert(orte.eltern)));
    if (const Wert name = wert(orte.name); name.istText()) o.name = name.text();
    o.typ = qint16(zahl(wert(orte.typ)));
    o.flags = quint32(zahl(wert(orte.flags)));
    o.angelegt = tage(wert(orte.angelegt));
    o.geaendert = tage(wert(orte.geaendert));
    o.besitzer = bytes(wert(orte.besitzer));
    if (o.typ == kObjektTabelle && mitEigenschaften)
        o.eigenschaften = eigenschaftenHolen(datei, orte.eigenschaften, teile);
    o.ort = leser.ort();
    return o;
}

void codepagePruefen(const Seitendatei& datei) {
    if (datei.format().jet4 || datei.kopf().codepage == 1252) return;
    throw EngineFehler(
        kSystemgrenze,
        u"Die Datenbank verwendet den Zeichensatz %1, der nicht unterstützt wird. Speichern Sie sie "
        u"in Access im Format Access 2002-2003."_qs.arg(datei.kopf().codepage));
}

// The order of the system tables' keys is the one that we can make.
bool allgemeinSortiert(const Seitendatei& datei) {
    const Tabelle objekte = tdefLesen(datei, kSeiteObjekte);
    const Spalte& name = Orte::an(objekte, u"Name");
    return name.sortierung == kSortierungGeneral && name.sortVersion == 0;
}

void sortierungPruefen(const Seitendatei& datei) {
    if (datei.format().ace || allgemeinSortiert(datei)) return;
    throw EngineFehler(
        kSystemgrenze,
        u"Die Datenbank verwendet eine Sortierreihenfolge, die nicht unterstützt wird. Stellen Sie in "
        u"Access die Sortierreihenfolge \"Allgemein - Legacy\" (früher \"Allgemein\") ein und "
        u"komprimieren Sie die Datei."_qs);
}

}  // namespace

bool nurLesbar(const Seitendatei& datei) {
    return datei.format().ace && !allgemeinSortiert(datei);
}

void oeffnenPruefen(const Seitendatei& datei, const QString& passwort) {
    passwortPruefen(datei.kopf(), passwort);
    codepagePruefen(datei);
    sortierungPruefen(datei);
}

std::vector<Objekt> objekteLesen(const Seitendatei& datei) {
    Tabelle tabelle = tdefLesen(datei, kSeiteObjekte);
    tabelle.name = u"MSysObjects"_qs;
    const Orte orte(tabelle);
    Tabellenleser leser(datei, tabelle);
    std::vector<Objekt> objekte;
    // In a sound file no two rows share a long value: beyond the file's size they are made up.
    qint64 rest = qint64(datei.seitenzahl()) * datei.format().seite;
    while (leser.weiter()) {
        objekte.push_back(objektLesen(datei, orte, leser, rest > 0));
        rest -= objekte.back().eigenschaften.size();
    }
    return objekte;
}

Tabelle tabelleLesen(const Seitendatei& datei, const QString& name) {
    for (const Objekt& o : objekteLesen(datei)) {
        if (o.typ != kObjektTabelle || name.compare(o.name, Qt::CaseInsensitive) != 0) continue;
        return tabelleLesen(datei, o);
    }
    throw EngineFehler(kNichtGefunden,
                       u"Die Tabelle \"%1\" ist nicht in der Datenbank. Prüfen Sie den Namen."_qs.arg(name));
}

Tabelle tabelleLesen(const Seitendatei& datei, const Objekt& objekt) {
    try {
        Tabelle tabelle = tdefLesen(datei, quint32(objekt.id));
        tabelle.name = objekt.name;
        return tabelle;
    } catch (const EngineFehler& fehler) {
        throw EngineFehler(fehler.nummer(), u"Tabelle \"%1\": %2"_qs.arg(objekt.name, fehler.beschreibung()));
    }
}

}  // namespace jet
