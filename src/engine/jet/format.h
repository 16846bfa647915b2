// The two page formats of .mdb files as constants: where things lie, how long they are, what the codes mean.
#pragma once

#include <QtGlobal>

namespace jet {

// Offsets and sizes in which Jet 3 (Access 97) and Jet 4 (Access 2000 to 2003, and ACE) differ. Bytes,
// counted from the start of the structure. Seen in files of both; -1 = the format has no such thing.
struct Format {
    bool jet4;
    bool ace = false;  // Jet 4 with what Access 2007 changed
    int seite;         // page size

    // page 0
    int maskeLaenge;  // masked bytes from 0x18 on
    int passwortLaenge;

    // data page
    int datenSlotzahl;  // u16 number of slots
    int datenKopf;      // the first slot
    int laengsteZeile;  // bytes that we write at most

    // row
    int zeileKopf;  // bytes in front of the fixed part

    // TDEF header
    int tdefLaenge;  // u32, from the start of the definition
    int tdefZeilen;
    int tdefAutowert;
    int tdefArt;
    int tdefMaxSpalten;
    int tdefVariable;
    int tdefSpalten;
    int tdefLogische;
    int tdefEchte;
    int tdefBesitz;
    int tdefFrei;
    int tdefKopf;  // size of the header

    // TDEF records
    int zaehler;              // size of a real index' counters
    int zaehlerVerschiedene;  // u32 distinct keys in it
    int spalte;
    int spalteNummer;
    int spalteVariabel;
    int spalteOrdinal;
    int spalteSortierung;
    int spalteSortVersion;
    int spalteCodepage;
    int spalteGenauigkeit;
    int spalteFlags;
    int spalteFlags2;
    int spalteFest;
    int spalteLaenge;
    int echter;
    int echterSpalten;
    int echterKarte;
    int echterWurzel;
    int echterFlags;
    int logischer;
    int logischerNummer;  // the further fields follow at fixed distances
    int nameLaenge;       // size of the length in front of a name

    // usage map
    int karteBits;      // bytes of an inline bitmap
    int karteVerweise;  // page pointers of a referenced map
    int kartenZeile;    // size of a map's row
    int kartenJeSeite;  // map rows on one page

    // index page
    int indexVorige;
    int indexNaechste;
    int indexLetztesKind;
    int indexPraefix;
    int indexPraefixBreite;  // 1 or 2 bytes
    int indexEbene;
    int indexMaske;
    int indexMaskeLaenge;
    int indexEintraege;

    // long values: content of a full single row, of a full piece of a chain
    int langEinzeln;
    int langStueck;

    int seitenJeTyp5() const { return (seite - 4) * 8; }
};

inline constexpr Format kJet3 = {.jet4 = false,
                                 .seite = 2048,
                                 .maskeLaenge = 126,
                                 .passwortLaenge = 20,
                                 .datenSlotzahl = 8,
                                 .datenKopf = 10,
                                 .laengsteZeile = 2012,
                                 .zeileKopf = 1,
                                 .tdefLaenge = 8,
                                 .tdefZeilen = 12,
                                 .tdefAutowert = 16,
                                 .tdefArt = 20,
                                 .tdefMaxSpalten = 21,
                                 .tdefVariable = 23,
                                 .tdefSpalten = 25,
                                 .tdefLogische = 27,
                                 .tdefEchte = 31,
                                 .tdefBesitz = 35,
                                 .tdefFrei = 39,
                                 .tdefKopf = 43,
                                 .zaehler = 8,
                                 .zaehlerVerschiedene = 4,
                                 .spalte = 18,
                                 .spalteNummer = 1,
                                 .spalteVariabel = 3,
                                 .spalteOrdinal = 5,
                                 .spalteSortierung = 9,
                                 .spalteSortVersion = -1,
                                 .spalteCodepage = 11,
                                 .spalteGenauigkeit = 11,
                                 .spalteFlags = 13,
                                 .spalteFlags2 = -1,
                                 .spalteFest = 14,
                                 .spalteLaenge = 16,
                                 .echter = 39,
                                 .echterSpalten = 0,
                                 .echterKarte = 30,
                                 .echterWurzel = 34,
                                 .echterFlags = 38,
                                 .logischer = 20,
                                 .logischerNummer = 0,
                                 .nameLaenge = 1,
                                 .karteBits = 128,
                                 .karteVerweise = 33,
                                 .kartenZeile = 133,
                                 .kartenJeSeite = 15,
                                 .indexVorige = 8,
                                 .indexNaechste = 12,
                                 .indexLetztesKind = 16,
                                 .indexPraefix = 20,
                                 .indexPraefixBreite = 1,
                                 .indexEbene = 21,
                                 .indexMaske = 22,
                                 .indexMaskeLaenge = 226,
                                 .indexEintraege = 0xF8,
                                 .langEinzeln = 2032,
                                 .langStueck = 2028};

inline constexpr Format kJet4 = {.jet4 = true,
                                 .seite = 4096,
                                 .maskeLaenge = 128,
                                 .passwortLaenge = 40,
                                 .datenSlotzahl = 12,
                                 .datenKopf = 14,
                                 .laengsteZeile = 4060,
                                 .zeileKopf = 2,
                                 .tdefLaenge = 8,
                                 .tdefZeilen = 16,
                                 .tdefAutowert = 20,
                                 .tdefArt = 40,
                                 .tdefMaxSpalten = 41,
                                 .tdefVariable = 43,
                                 .tdefSpalten = 45,
                                 .tdefLogische = 47,
                                 .tdefEchte = 51,
                                 .tdefBesitz = 55,
                                 .tdefFrei = 59,
                                 .tdefKopf = 63,
                                 .zaehler = 12,
                                 .zaehlerVerschiedene = 4,
                                 .spalte = 25,
                                 .spalteNummer = 5,
                                 .spalteVariabel = 7,
                                 .spalteOrdinal = 9,
                                 .spalteSortierung = 11,
                                 .spalteSortVersion = 14,
                                 .spalteCodepage = -1,
                                 .spalteGenauigkeit = 11,
                                 .spalteFlags = 15,
                                 .spalteFlags2 = 16,
                                 .spalteFest = 21,
                                 .spalteLaenge = 23,
                                 .echter = 52,
                                 .echterSpalten = 4,
                                 .echterKarte = 34,
                                 .echterWurzel = 38,
                                 .echterFlags = 46,
                                 .logischer = 28,
                                 .logischerNummer = 4,
                                 .nameLaenge = 2,
                                 .karteBits = 64,
                                 .karteVerweise = 17,
                                 .kartenZeile = 69,
                                 .kartenJeSeite = 57,
                                 .indexVorige = 12,
                                 .indexNaechste = 16,
                                 .indexLetztesKind = 20,
                                 .indexPraefix = 24,
                                 .indexPraefixBreite = 2,
                                 .indexEbene = 26,
                                 .indexMaske = 27,
                                 .indexMaskeLaenge = 453,
                                 .indexEintraege = 0x1E0,
                                 .langEinzeln = 4076,
                                 .langStueck = 4072};

inline constexpr Format kAce = [] {
    Format format = kJet4;
    format.ace = true;
    return format;
}();

// First byte of a page.
enum Seitenart : quint8 {
    kDatenseite = 1,
    kTdefseite = 2,
    kInnereIndexseite = 3,
    kIndexblatt = 4,
    kKartenseite = 5
};

// Flags in a slot of a data page.
inline constexpr quint16 kSlotStelle = 0x1FFF;
inline constexpr quint16 kSlotGeloescht = 0x8000;
inline constexpr quint16 kSlotZeiger = 0x4000;

// Column types as they stand in a file.
enum Spaltentyp : quint8 {
    kTypBoolean = 1,
    kTypByte = 2,
    kTypInteger = 3,
    kTypLong = 4,
    kTypWaehrung = 5,
    kTypSingle = 6,
    kTypDouble = 7,
    kTypDatum = 8,
    kTypBinaer = 9,
    kTypText = 10,
    kTypOle = 11,
    kTypMemo = 12,
    kTypGuid = 15,
    kTypDezimal = 16,
    kTypKomplex = 18,
    kTypBigInt = 19,
    kTypDatumErweitert = 20
};

// Flags of a column.
inline constexpr quint8 kSpalteFest = 0x01;
inline constexpr quint8 kSpalteImmer = 0x02;
inline constexpr quint8 kSpalteAutowert = 0x04;
inline constexpr quint8 kSpalteAutoGuid = 0x40;  // counts for GUID columns only
inline constexpr quint8 kSpalteHyperlink = 0x80;
inline constexpr quint8 kSpalteKomprimiert = 0x01;  // second flag byte (Jet 4)
inline constexpr quint8 kSpalteBerechnet = 0xC0;    // second flag byte (ACE)

// Flags of a real index.
inline constexpr quint8 kIndexEindeutig = 0x01;
inline constexpr quint8 kIndexOhneNull = 0x02;
inline constexpr quint8 kIndexErforderlich = 0x08;
inline constexpr quint8 kIndexJet4 = 0x80;  // always set from Jet 4 on

// Kind of a logical index.
enum Indexart : quint8 { kIndexPlain = 0, kIndexPrimaer = 1, kIndexFremd = 2 };

// Object types of MSysObjects.
enum Objekttyp : qint16 {
    kObjektTabelle = 1,
    kObjektDatenbank = 2,
    kObjektContainer = 3,
    kObjektOdbc = 4,
    kObjektAbfrage = 5,
    kObjektVerknuepft = 6,
    kObjektRelation = 8
};
inline constexpr qint32 kIdTabellen = 0x0F000001;
inline constexpr qint32 kIdRelationen = 0x0F000003;

inline constexpr quint32 kSeiteObjekte = 2;  // definition of MSysObjects
inline constexpr quint32 kSeiteRechte = 3;   // definition of MSysACEs
inline constexpr quint16 kSortierungGeneral = 0x0409;

}  // namespace jet
