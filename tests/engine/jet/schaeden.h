// Damages files at one place each, and holds what the check says of them against what it should say.
#pragma once

#include <functional>
#include <vector>

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/pruefer.h"
#include "proben.h"

namespace schaeden {

using jet::Seitendatei;
using jet::Zeilenort;

// Places in jet4-relationen.mdb: definition of Table2, its maps, its first index, its only data page.
constexpr quint32 kDefinition = 27;
constexpr quint32 kKarten = 30;
constexpr quint32 kIndex = 31;
constexpr quint32 kZweiterIndex = 32;
constexpr quint32 kDaten = 60;
constexpr int kEintraege = 0x1E0;
constexpr int kEintrag = 9;  // bytes of each entry of kIndex

enum Besitz : quint8 { kBesitzDaten = 0, kPlatzDaten = 1, kBesitzIndex = 2 };

template <typename T>
inline void setzen(Seitendatei& d, quint32 seite, int ab, T wert) {
    QByteArray bytes = d.seite(seite);
    jet::zahlSetzen(bytes, ab, wert);
    d.schreiben(seite, bytes);
}

inline int zeileAb(const Seitendatei& d, Zeilenort ort) {
    return jet::slotsLesen(d.format(), d.seite(ort.seite), ort.seite)[ort.zeile].ab;
}

inline int slotAb(const Seitendatei& d, int zeile) {
    return d.format().datenKopf + 2 * zeile;
}

inline quint16 slot(const Seitendatei& d, Zeilenort ort) {
    return jet::Sicht(d.seite(ort.seite), u"", ort.seite).u16(slotAb(d, ort.zeile));
}

inline void bitSetzen(Seitendatei& d, Zeilenort karte, quint32 seite, bool an) {
    const int ab = zeileAb(d, karte) + 5 + int(seite) / 8;
    const quint8 bisher = quint8(d.seite(karte.seite)[ab]);
    const quint8 bit = quint8(1 << seite % 8);
    setzen(d, karte.seite, ab, quint8(an ? bisher | bit : bisher & ~bit));
}

inline void vertauschen(Seitendatei& d, quint32 seite, int a, int b, int laenge) {
    QByteArray bytes = d.seite(seite);
    const QByteArray erste = bytes.mid(a, laenge);
    bytes.replace(a, laenge, bytes.mid(b, laenge)).replace(b, laenge, erste);
    d.schreiben(seite, bytes);
}

// A fixed Long of a row of MSysObjects.
inline void objektZahlSetzen(Seitendatei& d, const QString& objekt, QStringView spalte, qint32 wert) {
    const jet::Tabelle tabelle = jet::tdefLesen(d, jet::kSeiteObjekte);
    const jet::Spalte& s = tabelle.spalten[size_t(tabelle.spalteMitName(spalte))];
    for (const jet::Objekt& o : jet::objekteLesen(d))
        if (o.name == objekt) setzen(d, o.ort.seite, zeileAb(d, o.ort) + d.format().zeileKopf + s.fest, wert);
}

// A number in the record of a column.
inline void spalteSetzen(Seitendatei& d, const QString& tabelle, int spalte, int feld, quint16 wert) {
    const jet::Tabelle t = jet::tabelleLesen(d, tabelle);
    const qsizetype ab = d.seite(t.seite()).indexOf(t.spalten[size_t(spalte)].roh);
    ASSERT_GE(ab, 0);
    setzen(d, t.seite(), int(ab) + feld, wert);
}

struct Fall {
    const char* was;
    QString datei;
    std::function<void(Seitendatei&)> beschaedigen;
    QString erwartet;  // a line, or the part of one that names table, page and kind
};

inline const QString kBeziehungen = u"jet4-relationen.mdb"_qs;
inline const QString kLange = u"jet4-memo-ole.mdb"_qs;
inline const QString kVerschoben = u"jet4-verschobene-zeilen.mdb"_qs;
inline const QString kDreier = u"jet3-index.mdb"_qs;

inline void faellePruefen(const std::vector<Fall>& faelle) {
    for (const Fall& f : faelle) {
        SCOPED_TRACE(f.was);
        PROBE_ODER_UEBERSPRINGEN(f.datei);
        Seitendatei datei(proben::bytes(f.datei));
        ASSERT_TRUE(jet::maengelSuchen(datei).isEmpty());
        f.beschaedigen(datei);
        const QString zeilen = jet::maengelSuchen(datei).join(u'\n');
        EXPECT_TRUE(zeilen.contains(f.erwartet)) << zeilen.toStdString();
        EXPECT_EQ(fehlerVon([&] { jet::dateiPruefen(datei); }), kBeschaedigt);
    }
}

}  // namespace schaeden
