// An empty database: header, the four system tables with their rows, maps and indexes. Layout and contents as
// the engine's own empty files have them (seen in two of them, and in the system tables of 63 others).
#include "engine/jet/anlegen.h"

#include <QFile>
#include <QFileInfo>

#include "base/fehler.h"
#include "base/pfad.h"
#include "engine/jet/bytes.h"
#include "engine/jet/indexbau.h"
#include "engine/jet/indexseite.h"
#include "engine/jet/kartenbau.h"
#include "engine/jet/kopf.h"
#include "engine/jet/seitenbau.h"
#include "engine/jet/seitenvergabe.h"
#include "engine/jet/systemvorlage.h"
#include "engine/jet/tdefbau.h"
#include "engine/jet/wertbau.h"
#include "engine/jet/zeilenbau.h"

namespace jet {
namespace {

constexpr quint32 kSeiten = 16;
constexpr quint32 kGlobalkarte = 1;
constexpr quint32 kKarten = 6;
constexpr quint32 kDatenObjekte = 14;
constexpr quint32 kDatenRechte = 15;

QByteArray langBytes(quint32 wert) {
    QByteArray bytes;
    u32Anhaengen(bytes, wert);
    return bytes;
}

QByteArray kopfseite() {
    // The engine hides account numbers with a stream that depends on this date, and the way from the one to
    // the other is not known. So it is a constant whose stream is known; users see the objects' own dates.
    static const QByteArray datum = QByteArray::fromHex("BC721F7DF19FE240");
    static const QByteArray passwortmuster = QByteArray::fromHex("FF940000").repeated(10);
    constexpr quint16 kFassung = 4518;

    QByteArray seite(kJet4.seite, '\0');
    bytesSetzen(seite, 0, QByteArray::fromHex("00010000"));
    bytesSetzen(seite, 4, QByteArrayView("Standard Jet DB", 15));
    u32Setzen(seite, 0x14, 1);
    u32Setzen(seite, 0x18, zeilenortWert({kGlobalkarte, 0}));
    u32Setzen(seite, 0x1C, zeilenortWert({kGlobalkarte, 1}));
    for (quint32 i = 0; i < 4; ++i) u32Setzen(seite, 0x20 + 4 * i, kSeiteObjekte + i);
    u16Setzen(seite, 0x3C, 1252);
    bytesSetzen(seite, 0x42, passwortmuster);
    u16Setzen(seite, 0x6A, kFassung);
    u16Setzen(seite, 0x6E, kSortierungGeneral);
    bytesSetzen(seite, 0x72, datum);
    bytesSetzen(seite, 0, kopfEntmaskieren(kJet4, seite));
    u32Setzen(seite, 0x98, 0x654);
    bytesSetzen(seite, 0x9C, QByteArrayView("4.0", 3));
    // Commit counters.
    u16Setzen(seite, 0xE00, 0x0101);
    for (int i = 1; i < 256; ++i) u16Setzen(seite, 0xE00 + 2 * i, 0x0100);
    return seite;
}

QByteArray inlineKarte(const std::vector<quint32>& seiten) {
    QByteArray zeile(kJet4.kartenZeile, '\0');
    for (const quint32 seite : seiten) bitSetzen(zeile, kKartenkopf, seite);
    return zeile;
}

// All pages from the end of the file on are free; the second map of the page is always empty.
QByteArray globalkarte() {
    std::vector<quint32> frei;
    for (quint32 seite = kSeiten; seite < quint32(kJet4.karteBits) * 8; ++seite) frei.push_back(seite);
    Datenseitenbau bau(kJet4, kGlobalkarte);
    bau.anfuegen(inlineKarte(frei));
    bau.anfuegen(inlineKarte({}));
    return bau.bytes();
}

// Both maps of the tables with rows, and the roots of the indexes; everything else is empty.
QByteArray kartenseite(const std::vector<Tabelle>& tabellen) {
    std::vector<QByteArray> karten(kSystemkarten, inlineKarte({}));
    const auto setzen = [&](Zeilenort ort, quint32 seite) { karten.at(ort.zeile) = inlineKarte({seite}); };
    for (const Zeilenort ort : {tabellen[0].besitz, tabellen[0].frei}) setzen(ort, kDatenObjekte);
    for (const Zeilenort ort : {tabellen[1].besitz, tabellen[1].frei}) setzen(ort, kDatenRechte);
    for (const Tabelle& tabelle : tabellen)
        for (const EchterIndex& index : tabelle.echte) setzen(index.karte, index.wurzel);
    Datenseitenbau bau(kJet4, 0);
    for (const QByteArray& karte : karten) bau.anfuegen(karte);
    return bau.bytes();
}

void wertSetzen(const Tabelle& tabelle, Rohwerte& zeile, QStringView spalte, const QByteArray& bytes) {
    zeile[size_t(tabelle.spalteMitName(spalte))] = bytes;
}

QByteArray objektseite(const Tabelle& tabelle) {
    const QByteArray heute = jetztBytes();
    Datenseitenbau bau(kJet4, tabelle.seite());
    for (const Systemobjekt& objekt : kSystemobjekte) {
        Rohwerte zeile(tabelle.spalten.size());
        wertSetzen(tabelle, zeile, u"Id", langBytes(objekt.id));
        wertSetzen(tabelle, zeile, u"ParentId", langBytes(objekt.eltern));
        wertSetzen(tabelle, zeile, u"Name", textBytes4(objekt.name, false));
        wertSetzen(tabelle, zeile, u"Type", langBytes(objekt.typ).left(2));
        wertSetzen(tabelle, zeile, u"DateCreate", heute);
        wertSetzen(tabelle, zeile, u"DateUpdate", heute);
        wertSetzen(tabelle, zeile, u"Owner", kontoBytes(objekt.besitzer));
        wertSetzen(tabelle, zeile, u"Flags", langBytes(0x80000000u));
        bau.anfuegen(zeileBauen(kJet4, tabelle, sichten(zeile)));
    }
    return bau.bytes();
}

QByteArray rechteseite(const Tabelle& tabelle) {
    Datenseitenbau bau(kJet4, tabelle.seite());
    for (const Systemrecht& recht : kSystemrechte) {
        Rohwerte zeile(tabelle.spalten.size());
        wertSetzen(tabelle, zeile, u"ObjectId", langBytes(recht.objekt));
        wertSetzen(tabelle, zeile, u"ACM", langBytes(recht.rechte));
        wertSetzen(tabelle, zeile, u"SID", kontoBytes(recht.konto));
        if (recht.vererbt) wertSetzen(tabelle, zeile, u"FInheritable", QByteArray());
        bau.anfuegen(zeileBauen(kJet4, tabelle, sichten(zeile)));
    }
    return bau.bytes();
}

QByteArray leeresBlatt(quint32 besitzer) {
    Indexseitenkopf kopf;
    kopf.besitzer = besitzer;
    return indexseiteBauen(kJet4, kopf, {}, 0);
}

// Everything but the definitions and the entries of the indexes.
QByteArray grundgeruest(const std::vector<Tabelle>& tabellen) {
    std::vector<QByteArray> seiten(kSeiten, QByteArray(kJet4.seite, '\0'));
    seiten[0] = kopfseite();
    seiten[kGlobalkarte] = globalkarte();
    seiten[kKarten] = kartenseite(tabellen);
    seiten[kDatenObjekte] = objektseite(tabellen[0]);
    seiten[kDatenRechte] = rechteseite(tabellen[1]);
    for (const Tabelle& tabelle : tabellen) {
        // Only the page's kind, so that the file can be opened to write the definition into it.
        u8Setzen(seiten[tabelle.seite()], 0, kTdefseite);
        u8Setzen(seiten[tabelle.seite()], 1, 1);
        for (const EchterIndex& index : tabelle.echte) seiten[index.wurzel] = leeresBlatt(tabelle.seite());
    }
    QByteArray datei;
    for (const QByteArray& seite : seiten) datei += seite;
    return datei;
}

QByteArray leereDatenbank() {
    const std::vector<Tabelle> tabellen = systemtabellen();
    Seitendatei datei(grundgeruest(tabellen));
    for (const Tabelle& tabelle : tabellen)
        tdefSchreiben(datei, tdefBytes(kJet4, datei.kopf().codepage, tabelle), tabelle.seiten);
    Seitenvergabe vergabe(datei);
    for (const quint32 seite : {tabellen[0].seite(), tabellen[1].seite()}) {
        Tabelle tabelle = tdefLesen(datei, seite);
        indexeErneuern(datei, vergabe, tabelle);
    }
    vergabe.schreiben();
    datei.leeren();
    return datei.bytes();
}

}  // namespace

void mdbAnlegen(const QString& pfad) {
    const QByteArray bytes = leereDatenbank();
    QFile datei(SystemPfad(pfad));
    const QString name = QFileInfo(datei).fileName();
    if (datei.exists())
        throw EngineFehler(kNameVorhanden,
                           u"Die Datei '%1' gibt es bereits. Wählen Sie einen anderen Namen."_qs.arg(name));
    if (!datei.open(QIODevice::WriteOnly | QIODevice::NewOnly) || datei.write(bytes) != bytes.size() ||
        !datei.flush()) {
        const QString grund = datei.errorString();
        if (datei.isOpen()) datei.remove();
        throw EngineFehler(kDateifehler,
                           u"Die Datei '%1' kann nicht angelegt werden: %2"_qs.arg(name, grund));
    }
}

}  // namespace jet
