// Table definitions made.
#include "engine/jet/tdefbau.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/namen.h"

namespace jet {
namespace {

constexpr quint32 kKonstante = 0x659;
constexpr quint32 kKonstanteIndex = 0x783;
constexpr quint16 kListenende = 0xFFFF;
constexpr int kIndexSpalten = 10;
constexpr int kFolgeKopf = 8;
constexpr int kHoechsteTextlaenge = 255;
constexpr int kVorgabeGenauigkeit = 18;
constexpr int kHoechsteGenauigkeit = 28;

[[noreturn]] void nichtImFormat(const engine::FeldDef& feld) {
    throw EngineFehler(kSystemgrenze,
                       u"Das Feld '%1' hat einen Datentyp oder eine Größe, die es in diesem Dateiformat "
                       "nicht gibt. Ändern Sie den Feldtyp oder die Feldgröße."_qs.arg(feld.name));
}

quint8 spaltentyp(const engine::FeldDef& feld) {
    switch (feld.typ) {
        case dao::dbTime:
            return kTypDatum;
        case dao::dbDecimal:
            return kTypDezimal;
        case dao::dbGUID:
            return kTypGuid;
        default:
            if (feld.typ < dao::dbBoolean || feld.typ > dao::dbMemo) nichtImFormat(feld);
            return quint8(feld.typ);
    }
}

quint16 spaltenlaenge(const Format& format, const engine::FeldDef& feld, quint8 typ) {
    const int breite = typ == kTypText && format.jet4 ? 2 : 1;
    const int hoechstens = typ == kTypBinaer && format.jet4 ? 2 * kHoechsteTextlaenge : kHoechsteTextlaenge;
    switch (typ) {
        case kTypBoolean:
        case kTypByte:
            return 1;
        case kTypInteger:
            return 2;
        case kTypLong:
        case kTypSingle:
            return 4;
        case kTypWaehrung:
        case kTypDouble:
        case kTypDatum:
            return 8;
        case kTypGuid:
            return 16;
        case kTypDezimal:
            return 17;
        case kTypOle:
        case kTypMemo:
            return 0;
        default:
            break;
    }
    if (feld.groesse > hoechstens) nichtImFormat(feld);
    return quint16(breite * (feld.groesse > 0 ? feld.groesse : hoechstens));
}

bool immerVariabel(quint8 typ) {
    return typ == kTypBinaer || typ == kTypText || typ == kTypOle || typ == kTypMemo || typ == kTypDezimal;
}

// What a copied column keeps of the way it was stored: fixed or not (text and Decimal), compressed or not.
void eigenesUebernehmen(const Format& format, const engine::FeldDef& feld, Spalte& spalte) {
    Spalteneigenes eigenes;
    const bool kopie = spalteneigenesLesen(feld.formatEigenes, eigenes) && eigenes.typ == spalte.typ;
    const bool fest =
        kopie && (spalte.typ == kTypText || spalte.typ == kTypDezimal) && (eigenes.flags & kSpalteFest);
    if (fest || !immerVariabel(spalte.typ)) spalte.flags |= kSpalteFest;
    if (!format.jet4 || !spalte.istText()) return;
    spalte.flags2 = kopie && eigenes.jet4 ? eigenes.flags2 & kSpalteKomprimiert : kSpalteKomprimiert;
}

Spalte spalteAnlegen(const Format& format, const engine::FeldDef& feld) {
    Spalte spalte;
    spalte.name = feld.name;
    spalte.typ = spaltentyp(feld);
    spalte.laenge = spaltenlaenge(format, feld, spalte.typ);
    eigenesUebernehmen(format, feld, spalte);
    if (spalte.typ == kTypMemo && (feld.attribute & dao::dbHyperlinkField)) spalte.flags |= kSpalteHyperlink;
    if (spalte.typ == kTypDezimal) {
        if (feld.genauigkeit > kHoechsteGenauigkeit || feld.nachkommastellen > kHoechsteGenauigkeit)
            nichtImFormat(feld);
        spalte.genauigkeit = quint8(feld.genauigkeit > 0 ? feld.genauigkeit : kVorgabeGenauigkeit);
        spalte.skala = quint8(std::max(feld.nachkommastellen, 0));
    }
    return spalte;
}

// A table has one autonumber at most; of two the first one stays one.
void autowertSetzen(const engine::FeldDef& feld, Spalte& spalte, bool& vergeben) {
    if (vergeben || !(feld.attribute & dao::dbAutoIncrField)) return;
    if (spalte.typ != kTypLong && spalte.typ != kTypGuid) return;
    spalte.flags |= spalte.typ == kTypLong ? kSpalteAutowert : kSpalteAutoGuid;
    vergeben = true;
}

QByteArray spaltenSatz(const Format& f, quint16 codepage, const Spalte& spalte) {
    QByteArray satz(f.spalte, '\0');
    u8Setzen(satz, 0, spalte.typ);
    if (f.jet4) u32Setzen(satz, 1, kKonstante);
    u16Setzen(satz, f.spalteNummer, spalte.nummer);
    u16Setzen(satz, f.spalteVariabel, spalte.variabel);
    u16Setzen(satz, f.spalteOrdinal, spalte.ordinal);
    u16Setzen(satz, f.spalteSortierung, spalte.sortierung);
    if (f.spalteCodepage >= 0) u16Setzen(satz, f.spalteCodepage, codepage);
    if (f.spalteSortVersion >= 0) u8Setzen(satz, f.spalteSortVersion, spalte.sortVersion);
    if (spalte.typ == kTypDezimal) {
        u8Setzen(satz, f.spalteGenauigkeit, spalte.genauigkeit);
        u8Setzen(satz, f.spalteGenauigkeit + 1, spalte.skala);
    }
    u8Setzen(satz, f.spalteFlags, spalte.flags);
    if (f.spalteFlags2 >= 0) u8Setzen(satz, f.spalteFlags2, spalte.flags2);
    u16Setzen(satz, f.spalteFest, spalte.fest);
    u16Setzen(satz, f.spalteLaenge, spalte.laenge);
    return satz;
}

QByteArray echterSatz(const Format& f, const EchterIndex& index) {
    QByteArray satz(f.echter, '\0');
    if (f.jet4) u32Setzen(satz, 0, kKonstanteIndex);
    for (int i = 0; i < kIndexSpalten; ++i) {
        const bool benutzt = size_t(i) < index.spalten.size();
        const int stelle = f.echterSpalten + 3 * i;
        u16Setzen(satz, stelle, benutzt ? index.spalten[size_t(i)].nummer : kListenende);
        u8Setzen(satz, stelle + 2, benutzt && !index.spalten[size_t(i)].absteigend);
    }
    u32Setzen(satz, f.echterKarte, zeilenortWert(index.karte));
    u32Setzen(satz, f.echterWurzel, index.wurzel);
    u8Setzen(satz, f.echterFlags, index.flags);
    return satz;
}

QByteArray logischerSatz(const Format& f, const LogischerIndex& index) {
    QByteArray satz(f.logischer, '\0');
    const int n = f.logischerNummer;
    if (f.jet4) u32Setzen(satz, 0, kKonstante);
    u32Setzen(satz, n, index.nummer);
    u32Setzen(satz, n + 4, index.echter);
    u8Setzen(satz, n + 8, index.beziehung);
    u32Setzen(satz, n + 9, quint32(index.andererIndex));
    u32Setzen(satz, n + 13, index.andereTabelle);
    u8Setzen(satz, n + 17, index.kaskadeAendern);
    u8Setzen(satz, n + 18, index.kaskadeLoeschen);
    u8Setzen(satz, n + 19, index.art);
    return satz;
}

QByteArray namenSatz(const Format& f, const QString& name) {
    const QByteArray bytes = namenBytes(f, name);
    QByteArray satz;
    if (f.nameLaenge == 1)
        u8Anhaengen(satz, quint8(bytes.size()));
    else
        u16Anhaengen(satz, quint16(bytes.size()));
    return satz + bytes;
}

QByteArray kopfBytes(const Format& f, const Tabelle& t) {
    QByteArray kopf(f.tdefKopf, '\0');
    u8Setzen(kopf, 0, kTdefseite);
    u8Setzen(kopf, 1, 1);
    if (f.jet4) {
        u32Setzen(kopf, 12, kKonstante);
        u32Setzen(kopf, 24, 1);
    }
    u32Setzen(kopf, f.tdefZeilen, t.zeilen);
    u32Setzen(kopf, f.tdefAutowert, t.autowert);
    u8Setzen(kopf, f.tdefArt, t.art);
    u16Setzen(kopf, f.tdefMaxSpalten, t.maxSpalten);
    u16Setzen(kopf, f.tdefVariable, t.variable);
    u16Setzen(kopf, f.tdefSpalten, quint16(t.spalten.size()));
    u32Setzen(kopf, f.tdefLogische, quint32(t.logische.size()));
    u32Setzen(kopf, f.tdefEchte, quint32(t.echte.size()));
    u32Setzen(kopf, f.tdefBesitz, zeilenortWert(t.besitz));
    u32Setzen(kopf, f.tdefFrei, zeilenortWert(t.frei));
    return kopf;
}

QByteArray zaehlerBytes(const Format& f, const Tabelle& t) {
    QByteArray bytes;
    for (const EchterIndex& index : t.echte) {
        QByteArray satz(f.zaehler, '\0');
        // Jet 3 counts the entries in front; Jet 4 leaves that number at 0.
        if (!f.jet4) u32Setzen(satz, 0, index.eintraege);
        u32Setzen(satz, f.zaehlerVerschiedene, index.verschiedene);
        bytes += satz;
    }
    return bytes;
}

QByteArray langeBytes(const Tabelle& t) {
    QByteArray bytes;
    for (const Langwertkarten& karten : t.lange) {
        u16Anhaengen(bytes, karten.nummer);
        u32Anhaengen(bytes, zeilenortWert(karten.besitz));
        u32Anhaengen(bytes, zeilenortWert(karten.frei));
    }
    u16Anhaengen(bytes, kListenende);
    return bytes;
}

void freieBytesSetzen(const Format& f, QByteArray& seite, qsizetype benutzt) {
    if (f.jet4)
        u16Setzen(seite, 2, quint16(std::max<qsizetype>(0, f.seite - benutzt - 8)));
    else
        bytesSetzen(seite, 2, QByteArrayView("VC", 2));
}

}  // namespace

void spaltenAnlegen(const Format& format, const std::vector<engine::FeldDef>& felder, Tabelle& tabelle) {
    quint16 fest = 0;
    bool autowert = false;
    for (const engine::FeldDef& feld : felder) {
        Spalte spalte = spalteAnlegen(format, feld);
        autowertSetzen(feld, spalte, autowert);
        spalte.nummer = spalte.ordinal = quint16(tabelle.spalten.size());
        spalte.variabel = tabelle.variable;
        if (!spalte.istFest()) {
            ++tabelle.variable;
        } else if (spalte.typ != kTypBoolean) {
            spalte.fest = fest;
            fest += spalte.laenge;
        }
        tabelle.spalten.push_back(std::move(spalte));
    }
    tabelle.maxSpalten = quint16(tabelle.spalten.size());
}

QByteArray tdefBytes(const Format& format, quint16 codepage, const Tabelle& tabelle) {
    QByteArray alles = kopfBytes(format, tabelle) + zaehlerBytes(format, tabelle);
    for (const Spalte& spalte : tabelle.spalten) alles += spaltenSatz(format, codepage, spalte);
    for (const Spalte& spalte : tabelle.spalten) alles += namenSatz(format, spalte.name);
    for (const EchterIndex& index : tabelle.echte) alles += echterSatz(format, index);
    for (const LogischerIndex& index : tabelle.logische) alles += logischerSatz(format, index);
    for (const LogischerIndex& index : tabelle.logische) alles += namenSatz(format, index.name);
    alles += langeBytes(tabelle);
    u32Setzen(alles, format.tdefLaenge, quint32(alles.size()));
    return alles;
}

int tdefSeitenzahl(const Format& format, qsizetype laenge) {
    const qsizetype jeSeite = format.seite - kFolgeKopf;
    return int(std::max<qsizetype>(1, (laenge - kFolgeKopf + jeSeite - 1) / jeSeite));
}

void tdefSchreiben(Seitendatei& datei, const QByteArray& definition, const std::vector<quint32>& seiten) {
    const Format& format = datei.format();
    const qsizetype jeSeite = format.seite - kFolgeKopf;
    Q_ASSERT(int(seiten.size()) == tdefSeitenzahl(format, definition.size()));
    for (size_t i = 0; i < seiten.size(); ++i) {
        const QByteArray teil = definition.mid(kFolgeKopf + qsizetype(i) * jeSeite, jeSeite);
        QByteArray seite(format.seite, '\0');
        u8Setzen(seite, 0, kTdefseite);
        u8Setzen(seite, 1, 1);
        freieBytesSetzen(format, seite, kFolgeKopf + teil.size());
        u32Setzen(seite, 4, i + 1 < seiten.size() ? seiten[i + 1] : 0);
        bytesSetzen(seite, kFolgeKopf, teil);
        datei.schreiben(seiten[i], seite);
    }
}

void tdefZahlSetzen(Seitendatei& datei, quint32 seite, int stelle, quint32 wert) {
    QByteArray bytes = datei.seite(seite, kTdefseite, u"Tabellendefinition");
    u32Setzen(bytes, stelle, wert);
    datei.schreiben(seite, bytes);
}

}  // namespace jet
