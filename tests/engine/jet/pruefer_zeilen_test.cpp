// Damage of pages, rows and long values, each told by name.
#include "engine/jet/langwert.h"
#include "engine/jet/zeile.h"
#include "schaeden.h"

using namespace schaeden;

namespace {

// The first long value of a form in the file: where its field stands and its pieces.
struct Fundort {
    quint32 seite = 0;
    int feldAb = 0;
    jet::Langwert wert;
    quint16 spalte = 0;
    jet::Tabelle tabelle;
};

bool inZeile(const Seitendatei& d, const jet::Tabellenleser& leser, jet::Langform form, Fundort& fund) {
    const jet::Zeilenteile teile = leser.teile();
    for (const jet::Spalte& s : leser.tabelle().spalten) {
        const auto roh = s.istLang() ? teile.roh(s) : std::nullopt;
        if (!roh || roh->isEmpty()) continue;
        fund.wert = jet::langwertLesen(d, *roh, u"Probe");
        if (fund.wert.form != form) continue;
        fund.seite = leser.bytesOrt().seite;
        fund.feldAb = zeileAb(d, leser.bytesOrt()) + int(roh->data() - leser.bytes().data());
        fund.spalte = s.nummer;
        fund.tabelle = leser.tabelle();
        return true;
    }
    return false;
}

Fundort langwertFinden(const Seitendatei& d, jet::Langform form) {
    Fundort fund;
    for (const jet::Objekt& o : jet::objekteLesen(d)) {
        if (o.typ != jet::kObjektTabelle || o.flags != 0) continue;
        jet::Tabellenleser leser(d, jet::tabelleLesen(d, o));
        while (leser.weiter())
            if (inZeile(d, leser, form, fund)) return fund;
    }
    ADD_FAILURE() << "no such long value";
    return fund;
}

// Places of the pointer rows of the first user table with any.
std::vector<Zeilenort> zeigerFinden(const Seitendatei& d) {
    std::vector<Zeilenort> zeiger;
    for (const jet::Objekt& o : jet::objekteLesen(d)) {
        if (o.typ != jet::kObjektTabelle || o.flags != 0) continue;
        jet::Tabellenleser leser(d, jet::tabelleLesen(d, o));
        while (leser.weiter())
            if (leser.ort() != leser.bytesOrt()) zeiger.push_back(leser.ort());
        if (!zeiger.empty()) break;
    }
    return zeiger;
}

std::vector<Fall> seitenfaelle() {
    return {
        {"used page marked as free", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {1, 0}, kDaten, true);
         },
         u"Table2, Seite 60: Datenseite ist als frei vermerkt"_qs},
        {"header marked as free", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {1, 0}, 0, true);
         },
         u"Gesamtkarte, Seite 0: der Kopf der Datei ist als frei vermerkt"_qs},
        {"global map of an unknown kind", kBeziehungen,
         [](auto& d) {
             setzen(d, 1, zeileAb(d, {1, 0}), quint8(7));
         },
         u"Gesamtkarte, Seite 1: nicht lesbar"_qs},
        {"pages behind the end that are not free", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {1, 0}, 500, false);
         },
         u"Gesamtkarte, Seite 1: Seiten hinter dem Dateiende sind nicht als frei vermerkt"_qs},
        {"global map shorter than the file", kBeziehungen,
         [](auto& d) {
             while (d.seitenzahl() < 513) d.anhaengen();
         },
         u"Gesamtkarte, Seite 1: die Karte reicht nur bis Seite 511"_qs},
        {"page in two maps", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kBesitzIndex}, kDaten, true);
         },
         u"Table2, Seite 60: Indexseite ist schon vergeben (Datenseite, Tabelle auf Seite 27)"_qs},
        {"page of another table", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kBesitzDaten}, jet::kSeiteObjekte, true);
         },
         u"Table2, Seite 2: Datenseite ist schon vergeben (Definition, Tabelle auf Seite 2)"_qs},
        {"page beyond the end", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kBesitzDaten}, 100, true);
         },
         u"Table2, Seite 30: Karte der Daten: 1 Seiten jenseits des Dateiendes"_qs},
        {"page with room of somebody else", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kPlatzDaten}, kIndex, true);
         },
         u"Table2, Seite 31: Karte der freien Datenseiten: Seite mit Platz, die nicht dazugehört"_qs},
        {"one map for two purposes", kBeziehungen,
         [](auto& d) { setzen(d, kDefinition, d.format().tdefFrei, quint32(kKarten << 8)); },
         u"Table2, Seite 30: Karte 0 ist schon vergeben"_qs},
        {"definition among the map pages", kBeziehungen,
         [](auto& d) { setzen(d, kDefinition, d.format().tdefFrei, quint32(kDefinition << 8)); },
         u"Table2, Seite 27: Seite mit Karten ist schon vergeben"_qs},
        {"data page missing in the map", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kBesitzDaten}, kDaten, false);
         },
         u"Table2, Seite 27: die Zeilenzahl ist 3, gezählt wurden 0"_qs},
    };
}

std::vector<Fall> datenfaelle() {
    return {
        {"row count", kBeziehungen,
         [](auto& d) { setzen(d, kDefinition, d.format().tdefZeilen, quint32(4)); },
         u"Table2, Seite 27: die Zeilenzahl ist 4, gezählt wurden 3"_qs},
        {"slot in front of the rows", kBeziehungen,
         [](auto& d) { setzen(d, kDaten, slotAb(d, 1), quint16(5)); },
         u"Table2, Seite 60: nicht lesbar: Datenseite, Seite 60, Stelle 16"_qs},
        {"slots overlap", kBeziehungen,
         [](auto& d) {
             setzen(d, kDaten, slotAb(d, 2), quint16(slot(d, {kDaten, 1}) + 1));
         },
         u"Table2, Seite 60: nicht lesbar: Datenseite, Seite 60, Stelle 18"_qs},
        {"more slots than the page holds", kBeziehungen,
         [](auto& d) { setzen(d, kDaten, d.format().datenSlotzahl, quint16(3000)); },
         u"Table2, Seite 60: nicht lesbar: Datenseite"_qs},
        {"free bytes of a data page", kBeziehungen, [](auto& d) { setzen(d, kDaten, 2, quint16(4000)); },
         u"Table2, Seite 60: 4000 freie Bytes sind vermerkt, 4019 sind frei"_qs},
        {"deleted row that the counters know", kBeziehungen,
         [](auto& d) {
             setzen(d, kDaten, slotAb(d, 1), quint16(slot(d, {kDaten, 1}) | jet::kSlotGeloescht));
         },
         u"Table2, Seite 31: Index »id«: 3 Einträge für 2 Zeilen"_qs},
        {"data page of another owner", kBeziehungen, [](auto& d) { setzen(d, kDaten, 4, quint32(24)); },
         u"Table2, Seite 60: Seite der Karte ist keine Datenseite der Tabelle"_qs},
        {"data page of another kind", kBeziehungen, [](auto& d) { setzen(d, kDaten, 0, quint8(9)); },
         u"Table2, Seite 60: Seite der Karte ist keine Datenseite der Tabelle"_qs},
        {"row with more columns than the table", kBeziehungen,
         [](auto& d) {
             setzen(d, kDaten, zeileAb(d, {kDaten, 0}), quint16(3));
         },
         u"Table2, Seite 60: Zeile 0 hat 3 Spalten"_qs},
        {"text longer than its field", kBeziehungen,
         [](auto& d) { spalteSetzen(d, u"Table2"_qs, 1, d.format().spalteLaenge, 4); },
         u"Table2, Seite 60: Zeile 0: der Wert in »data« ist länger als das Feld"_qs},
        {"Null where an index asks for values", kBeziehungen,
         [](auto& d) {
             setzen(d, kDaten, zeileAb(d, {kDaten, 0}) + 18, quint8(2));
         },
         u"Table2, Seite 60: Zeile 0 ist leer, wo ein Index Werte verlangt"_qs},
        {"row whose values leave it", kBeziehungen,
         [](auto& d) {
             setzen(d, kDaten, zeileAb(d, {kDaten, 0}) + 12, quint16(500));
         },
         u"Table2, Seite 60: nicht lesbar: Table2, Seite 60"_qs},
    };
}

std::vector<Fall> zeigerfaelle() {
    const auto zielSetzen = [](Seitendatei& d, size_t zeiger, quint32 ziel) {
        const Zeilenort ort = zeigerFinden(d).at(zeiger);
        setzen(d, ort.seite, zeileAb(d, ort), ziel);
    };
    const auto zielVon = [](const Seitendatei& d, size_t zeiger) {
        const Zeilenort ort = zeigerFinden(d).at(zeiger);
        return jet::Sicht(d.seite(ort.seite), u"", ort.seite).u32(zeileAb(d, ort));
    };
    return {
        {"moved row to a page beyond the end", kVerschoben, [=](auto& d) { zielSetzen(d, 0, 0x00FFFF00); },
         u"nicht lesbar: Table1, Seite 65535"_qs},
        {"moved row to a slot that is not there", kVerschoben,
         [=](auto& d) { zielSetzen(d, 0, (zielVon(d, 0) & ~0xFFu) | 200); }, u"nicht lesbar: Table1"_qs},
        {"moved row to a row of its own right", kVerschoben,
         [=](auto& d) { zielSetzen(d, 0, zeigerFinden(d)[0].seite << 8); },
         u"Zeile 0 ist kein Ziel einer verschobenen Zeile"_qs},
        {"two pointers to one row", kVerschoben, [=](auto& d) { zielSetzen(d, 1, zielVon(d, 0)); },
         u"zwei verschobene Zeilen führen zu Zeile"_qs},
        {"moved row on a page of another table", kVerschoben, [=](auto& d) { zielSetzen(d, 0, 1 << 8); },
         u"Table1, Seite 1: verschobene Zeile 0 liegt auf einer fremden Seite"_qs},
        {"pointer to itself", kVerschoben,
         [=](auto& d) { zielSetzen(d, 0, jet::zeilenortWert(zeigerFinden(d)[0])); },
         u"ist kein Ziel einer verschobenen Zeile"_qs},
    };
}

std::vector<Fall> langfaelle() {
    using jet::Langform;
    const auto naechstesStueck = [](Seitendatei& d, quint32 ziel) {
        const Zeilenort ort = langwertFinden(d, Langform::Kette).wert.stuecke.front();
        setzen(d, ort.seite, zeileAb(d, ort), ziel);
    };
    return {
        {"chain cut", kLange, [=](auto& d) { naechstesStueck(d, 0); }, u" Bytes statt "_qs},
        {"chain in a ring", kLange,
         [=](auto& d) {
             naechstesStueck(d, jet::zeilenortWert(langwertFinden(d, Langform::Kette).wert.stuecke.front()));
         },
         u"benutzt ein vergebenes Stück auf Seite"_qs},
        {"chain into a page of rows", kLange,
         [=](auto& d) { naechstesStueck(d, langwertFinden(d, Langform::Kette).seite << 8); },
         u"liegt auf der fremden Seite"_qs},
        {"single value longer than its row", kLange,
         [](auto& d) {
             const Fundort f = langwertFinden(d, Langform::Einzeln);
             setzen(d, f.seite, f.feldAb, (f.wert.angekuendigt + 1) | 0x40000000);
         },
         u" Bytes statt "_qs},
        {"inline value longer than its row", kLange,
         [](auto& d) {
             const Fundort f = langwertFinden(d, Langform::Inline);
             setzen(d, f.seite, f.feldAb, (f.wert.angekuendigt + 1) | 0x80000000);
         },
         u" Bytes statt "_qs},
        {"piece deleted", kLange,
         [](auto& d) {
             const Zeilenort ort = langwertFinden(d, Langform::Einzeln).wert.stuecke.front();
             setzen(d, ort.seite, slotAb(d, ort.zeile), quint16(slot(d, ort) | jet::kSlotGeloescht));
         },
         u"gelöscht"_qs},
        {"page missing in the column's map", kLange,
         [](auto& d) {
             const Fundort f = langwertFinden(d, Langform::Einzeln);
             const Zeilenort karte = f.tabelle.langeMitNummer(f.spalte)->besitz;
             bitSetzen(d, karte, f.wert.stuecke.front().seite, false);
         },
         u"liegt auf der fremden Seite"_qs},
        {"page of long values with another owner", kLange,
         [](auto& d) { setzen(d, langwertFinden(d, Langform::Einzeln).wert.stuecke.front().seite, 4, 27); },
         u"Seite ist keine Langwertseite"_qs},
        {"free bytes of a page of long values", kLange,
         [](auto& d) {
             setzen(d, langwertFinden(d, Langform::Kette).wert.stuecke.front().seite, 2, quint16(4090));
         },
         u"4090 freie Bytes sind vermerkt"_qs},
    };
}

}  // namespace

TEST(JetPruefer, MeldetJedenSchadenAnDenSeiten) {
    faellePruefen(seitenfaelle());
}

TEST(JetPruefer, MeldetJedenSchadenAnDenZeilen) {
    faellePruefen(datenfaelle());
}

TEST(JetPruefer, MeldetJedenSchadenAnVerschobenenZeilen) {
    faellePruefen(zeigerfaelle());
}

TEST(JetPruefer, MeldetJedenSchadenAnLangenWerten) {
    faellePruefen(langfaelle());
}
