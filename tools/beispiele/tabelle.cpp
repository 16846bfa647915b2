// A sample table from its source.
#include "tabelle.h"

#include <QDate>
#include <stdexcept>

namespace {

struct Typname {
    const char16_t* name;
    int typ;
};
constexpr Typname kTypen[] = {
    {u"Long", dao::dbLong},  {u"Text", dao::dbText},        {u"Memo", dao::dbMemo},
    {u"Datum", dao::dbDate}, {u"Währung", dao::dbCurrency}, {u"JaNein", dao::dbBoolean},
};

[[noreturn]] void ablehnen(size_t satz, const QString& was) {
    throw std::runtime_error(QStringLiteral("Satz %1: %2").arg(satz).arg(was).toStdString());
}

int typVon(const QString& text, const QString& kopf) {
    for (const Typname& t : kTypen)
        if (text == QStringView(t.name)) return t.typ;
    ablehnen(1, QStringLiteral("unbekannter Typ in '%1'").arg(kopf));
}

engine::IndexDef indexAuf(const QString& feld, bool primaer) {
    engine::IndexDef index;
    index.name = primaer ? QStringLiteral("PrimaryKey") : feld;
    index.felder = {{feld, false}};
    index.eindeutig = index.primaer = index.erforderlich = primaer;
    return index;
}

void feldAnfuegen(engine::TabellenDef& def, const QString& kopf) {
    QStringList teile = kopf.split(u':');
    engine::FeldDef feld;
    feld.name = teile.takeFirst();
    const QString typ = teile.isEmpty() ? QString() : teile.takeFirst();
    feld.typ = typVon(typ, kopf);
    feld.leerErlaubt = feld.typ == dao::dbText || feld.typ == dao::dbMemo;
    if (feld.typ == dao::dbText) feld.groesse = teile.isEmpty() ? 0 : teile.takeFirst().toInt();
    if (feld.typ == dao::dbText && (feld.groesse < 1 || feld.groesse > dao::kMaxTextGroesse))
        ablehnen(1, QStringLiteral("keine Größe in '%1'").arg(kopf));
    def.felder.push_back(feld);
    for (const QString& zusatz : teile) {
        if (zusatz != u"Schlüssel" && zusatz != u"Index")
            ablehnen(1, QStringLiteral("unbekannter Zusatz in '%1'").arg(kopf));
        def.indexe.push_back(indexAuf(feld.name, zusatz == u"Schlüssel"));
    }
}

Wert datum(const QString& zelle, bool& gut) {
    const QDate tag = QDate::fromString(zelle, Qt::ISODate);
    gut = tag.isValid();
    return Wert(DatumZeit{double(QDate(1899, 12, 30).daysTo(tag))});
}

Wert waehrung(const QString& zelle, bool& gut) {
    constexpr double kTeile = 10000;
    return Wert(Waehrung{qRound64(zelle.toDouble(&gut) * kTeile)});
}

Wert wertAus(const QString& zelle, int typ, bool& gut) {
    if (typ == dao::dbBoolean) return Wert(zelle == u"1");
    if (zelle.isEmpty()) return Wert::null();
    switch (typ) {
        case dao::dbLong:
            return Wert(zelle.toInt(&gut));
        case dao::dbDate:
            return datum(zelle, gut);
        case dao::dbCurrency:
            return waehrung(zelle, gut);
        default:
            return Wert(zelle);
    }
}

std::vector<Wert> zeileAus(const QStringList& satz, const engine::TabellenDef& def, size_t nummer) {
    if (size_t(satz.size()) != def.felder.size())
        ablehnen(nummer, QStringLiteral("falsche Zahl von Feldern"));
    std::vector<Wert> zeile;
    for (size_t i = 0; i < def.felder.size(); ++i) {
        bool gut = true;
        zeile.push_back(wertAus(satz[qsizetype(i)], def.felder[i].typ, gut));
        if (!gut) ablehnen(nummer, def.felder[i].name);
    }
    return zeile;
}

}  // namespace

Beispieltabelle TabelleAusCsv(const QString& name, const std::vector<QStringList>& saetze) {
    if (saetze.empty()) throw std::runtime_error("Die Kopfzeile fehlt.");
    Beispieltabelle tabelle;
    tabelle.def.name = name;
    for (const QString& kopf : saetze.front()) feldAnfuegen(tabelle.def, kopf);
    for (size_t i = 1; i < saetze.size(); ++i)
        tabelle.zeilen.push_back(zeileAus(saetze[i], tabelle.def, i + 1));
    return tabelle;
}
