// The system tables of an empty Access 2000-2003 database.
#include "engine/jet/systemvorlage.h"

#include <algorithm>

namespace jet {
namespace {

constexpr quint32 kKartenseiteSystem = 6;
constexpr quint32 kIdContainer = 0x0F000000;
constexpr quint32 kIdDatenbanken = 0x0F000002;
constexpr quint32 kIdMSysDb = 0x10000000;
constexpr quint16 kTextlaenge = 510;
constexpr quint8 kFest = 0x13;
constexpr quint8 kVariabel = 0x12;
constexpr quint8 kKontonummer = 0x32;

struct Spaltenvorlage {
    const char16_t* name;
    quint8 typ;
    quint16 nummer;
    quint8 flags;
    quint16 fest;      // offset of a fixed column
    quint16 variabel;  // also of a fixed column: the variable columns with a smaller number
    quint16 laenge;
};

struct Indexvorlage {
    const char16_t* name;
    std::vector<quint16> spalten;
    quint8 flags;
    quint8 karte;
    quint32 wurzel;
    Indexart art;
};

struct Langwertvorlage {
    quint16 spalte;
    quint8 karte;  // the owned one; the free one follows it
};

struct Vorlage {
    quint32 seite;
    quint8 karte;  // the owned one; the free one follows it
    quint32 zeilen;
    quint16 variable;
    std::vector<Spaltenvorlage> spalten;  // by name
    std::vector<Indexvorlage> indexe;     // by real number
    std::vector<Langwertvorlage> lange;   // as the columns stand
};

Vorlage objekte() {
    return {2,
            0,
            8,
            11,
            {{u"Connect", kTypMemo, 9, kVariabel, 0, 3, 0},
             {u"Database", kTypMemo, 8, kVariabel, 0, 2, 0},
             {u"DateCreate", kTypDatum, 4, kFest, 10, 1, 8},
             {u"DateUpdate", kTypDatum, 5, kFest, 18, 1, 8},
             {u"Flags", kTypLong, 7, kFest, 26, 2, 4},
             {u"ForeignName", kTypText, 10, kVariabel, 0, 4, kTextlaenge},
             {u"Id", kTypLong, 0, kFest, 0, 0, 4},
             {u"Lv", kTypOle, 13, kVariabel, 0, 7, 0},
             {u"LvExtra", kTypOle, 16, kVariabel, 0, 10, 0},
             {u"LvModule", kTypOle, 15, kVariabel, 0, 9, 0},
             {u"LvProp", kTypOle, 14, kVariabel, 0, 8, 0},
             {u"Name", kTypText, 2, kVariabel, 0, 0, kTextlaenge},
             {u"Owner", kTypBinaer, 6, kKontonummer, 0, 1, kTextlaenge},
             {u"ParentId", kTypLong, 1, kFest, 4, 0, 4},
             {u"RmtInfoLong", kTypOle, 12, kVariabel, 0, 6, 0},
             {u"RmtInfoShort", kTypBinaer, 11, kVariabel, 0, 5, kTextlaenge},
             {u"Type", kTypInteger, 3, kFest, 8, 1, 2}},
            {{u"ParentIdName", {1, 2}, 0x81, 16, 7, kIndexPlain}, {u"Id", {0}, 0x81, 17, 8, kIndexPrimaer}},
            {{9, 4}, {8, 2}, {13, 8}, {16, 14}, {15, 12}, {14, 10}, {12, 6}}};
}

Vorlage rechte() {
    return {3,
            18,
            16,
            1,
            {{u"ACM", kTypLong, 2, kFest, 4, 1, 4},
             {u"FInheritable", kTypBoolean, 3, kFest, 0, 1, 1},
             {u"ObjectId", kTypLong, 0, kFest, 0, 0, 4},
             {u"SID", kTypBinaer, 1, kKontonummer, 0, 0, kTextlaenge}},
            {{u"ObjectId", {0}, 0x88, 20, 9, kIndexPlain}},
            {}};
}

Vorlage abfragen() {
    return {4,
            21,
            0,
            4,
            {{u"Attribute", kTypByte, 1, kFest, 4, 0, 1},
             {u"Expression", kTypMemo, 5, kVariabel, 0, 3, 0},
             {u"Flag", kTypInteger, 6, kFest, 5, 4, 2},
             {u"LvExtra", kTypLong, 7, kFest, 7, 4, 4},
             {u"Name1", kTypText, 3, kVariabel, 0, 1, kTextlaenge},
             {u"Name2", kTypText, 4, kVariabel, 0, 2, kTextlaenge},
             {u"ObjectId", kTypLong, 0, kFest, 0, 0, 4},
             {u"Order", kTypBinaer, 2, kVariabel, 0, 0, kTextlaenge}},
            {{u"ObjectIdAttribute", {0, 1, 2}, 0x81, 25, 10, kIndexPrimaer}},
            {{5, 23}}};
}

Vorlage relationen() {
    return {5,
            26,
            0,
            5,
            {{u"ccolumn", kTypLong, 2, kFest, 4, 1, 4},
             {u"grbit", kTypLong, 1, kFest, 0, 1, 4},
             {u"icolumn", kTypLong, 3, kFest, 8, 1, 4},
             {u"szColumn", kTypText, 5, kVariabel, 0, 2, kTextlaenge},
             {u"szObject", kTypText, 4, kVariabel, 0, 1, kTextlaenge},
             {u"szReferencedColumn", kTypText, 7, kVariabel, 0, 4, kTextlaenge},
             {u"szReferencedObject", kTypText, 6, kVariabel, 0, 3, kTextlaenge},
             {u"szRelationship", kTypText, 0, kVariabel, 0, 0, kTextlaenge}},
            {{u"szRelationship", {0}, 0x82, 28, 11, kIndexPlain},
             {u"szObject", {4}, 0x82, 29, 12, kIndexPlain},
             {u"szReferencedObject", {6}, 0x82, 30, 13, kIndexPlain}},
            {}};
}

Zeilenort kartenort(quint8 zeile) {
    return {kKartenseiteSystem, zeile};
}

Spalte spalteVon(const Spaltenvorlage& vorlage) {
    Spalte spalte;
    spalte.name = QString::fromUtf16(vorlage.name);
    spalte.typ = vorlage.typ;
    spalte.nummer = vorlage.nummer;
    spalte.variabel = vorlage.variabel;
    spalte.flags = vorlage.flags;
    spalte.fest = vorlage.fest;
    spalte.laenge = vorlage.laenge;
    return spalte;
}

void indexeAnlegen(const Vorlage& vorlage, Tabelle& tabelle) {
    for (const Indexvorlage& index : vorlage.indexe) {
        EchterIndex echter;
        for (const quint16 nummer : index.spalten) echter.spalten.push_back({nummer, false});
        echter.flags = index.flags;
        echter.karte = kartenort(index.karte);
        echter.wurzel = index.wurzel;
        LogischerIndex logischer;
        logischer.name = QString::fromUtf16(index.name);
        logischer.nummer = logischer.echter = quint32(tabelle.echte.size());
        logischer.art = index.art;
        tabelle.echte.push_back(echter);
        tabelle.logische.push_back(logischer);
    }
    std::sort(tabelle.logische.begin(), tabelle.logische.end(),
              [](const LogischerIndex& a, const LogischerIndex& b) { return a.name < b.name; });
}

Tabelle tabelleVon(const Vorlage& vorlage) {
    Tabelle tabelle;
    tabelle.seiten = {vorlage.seite};
    tabelle.zeilen = vorlage.zeilen;
    tabelle.art = 0x53;
    tabelle.maxSpalten = quint16(vorlage.spalten.size());
    tabelle.variable = vorlage.variable;
    tabelle.besitz = kartenort(vorlage.karte);
    tabelle.frei = kartenort(quint8(vorlage.karte + 1));
    for (const Spaltenvorlage& spalte : vorlage.spalten) tabelle.spalten.push_back(spalteVon(spalte));
    for (const Langwertvorlage& lang : vorlage.lange)
        tabelle.lange.push_back({lang.spalte, kartenort(lang.karte), kartenort(quint8(lang.karte + 1))});
    indexeAnlegen(vorlage, tabelle);
    return tabelle;
}

}  // namespace

const std::vector<Systemobjekt> kSystemobjekte{
    {quint32(kIdTabellen), kIdContainer, u"Tables", 3, Konto::Engine},
    {kIdDatenbanken, kIdContainer, u"Databases", 3, Konto::Engine},
    {quint32(kIdRelationen), kIdContainer, u"Relationships", 3, Konto::Engine},
    {kIdMSysDb, kIdDatenbanken, u"MSysDb", 2, Konto::Admin},
    {2, quint32(kIdTabellen), u"MSysObjects", 1, Konto::Engine},
    {3, quint32(kIdTabellen), u"MSysACEs", 1, Konto::Engine},
    {4, quint32(kIdTabellen), u"MSysQueries", 1, Konto::Engine},
    {5, quint32(kIdTabellen), u"MSysRelationships", 1, Konto::Engine},
};

const std::vector<Systemrecht> kSystemrechte{
    {2, Konto::Admin, 0x00060000, false},
    {3, Konto::Admin, 0x00060000, false},
    {4, Konto::Admin, 0x00060000, false},
    {5, Konto::Admin, 0x000E0000, false},
    {quint32(kIdTabellen), Konto::Ersteller, 0x000F00FE, true},
    {quint32(kIdTabellen), Konto::Admin, 0x00060001, false},
    {quint32(kIdRelationen), Konto::Ersteller, 0x000F00FE, true},
    {quint32(kIdRelationen), Konto::Admin, 0x00060001, false},
    {kIdDatenbanken, Konto::Admin, 0x00060000, false},
    {kIdMSysDb, Konto::Admin, 0x0006000E, false},
    {kIdMSysDb, Konto::Benutzer, 0x0000000E, false},
    {4, Konto::Benutzer, 0x00000014, false},
    {5, Konto::Benutzer, 0x00000014, false},
    {2, Konto::Benutzer, 0x00000014, false},
    {quint32(kIdTabellen), Konto::Benutzer, 0x000FFEFF, true},
    {quint32(kIdRelationen), Konto::Benutzer, 0x000FFFFF, true},
};

QByteArray kontoBytes(Konto konto) {
    switch (konto) {
        case Konto::Engine:
            return QByteArray::fromHex("A731");
        case Konto::Benutzer:
            return QByteArray::fromHex("A733");
        case Konto::Admin:
            return QByteArray::fromHex("A633");
        case Konto::Ersteller:
            return QByteArray::fromHex("A736");
    }
    return {};
}

std::vector<Tabelle> systemtabellen() {
    std::vector<Tabelle> tabellen;
    for (const Vorlage& vorlage : {objekte(), rechte(), abfragen(), relationen()})
        tabellen.push_back(tabelleVon(vorlage));
    return tabellen;
}

}  // namespace jet
