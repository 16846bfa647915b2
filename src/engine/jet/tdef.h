// A table's definition (TDEF) as the file holds it: everything that is needed to write it again.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

struct Spalte {
    QString name;
    quint8 typ = kTypText;  // Spaltentyp
    quint16 nummer = 0;     // bit in the null mask, name in index records
    quint16 variabel = 0;   // place among the variable values (not for fixed columns)
    quint16 ordinal = 0;    // place in the order of display
    quint16 sortierung = kSortierungGeneral;
    quint8 sortVersion = 0;
    quint8 genauigkeit = 0;  // Decimal
    quint8 skala = 0;        // Decimal
    quint8 flags = kSpalteImmer;
    quint8 flags2 = 0;   // Jet 4
    quint16 fest = 0;    // offset in the fixed part (fixed columns)
    quint16 laenge = 0;  // bytes: Jet 4 Text 2 * characters
    QByteArray roh;      // the record as it stands; empty for a new column

    bool istFest() const { return flags & kSpalteFest; }
    bool istLang() const { return typ == kTypMemo || typ == kTypOle; }
    bool istText() const { return typ == kTypText || typ == kTypMemo; }
};

struct IndexSpalte {
    quint16 nummer = 0;  // Spalte::nummer
    bool absteigend = false;
    bool operator==(const IndexSpalte&) const = default;
};

// A tree with its entries. Several logical indexes may share one.
struct EchterIndex {
    quint32 eintraege = 0;     // for the counter of a new index in Jet 3; not read
    quint32 verschiedene = 0;  // distinct keys, as the counter says
    std::vector<IndexSpalte> spalten;
    Zeilenort karte;  // map of its pages
    quint32 wurzel = 0;
    quint8 flags = 0;  // kIndexEindeutig and the like
    QByteArray roh;    // the record as it stands; empty for a new index
    QByteArray rohZaehler;
};

// An index as the user sees it, or one side of a relation.
struct LogischerIndex {
    QString name;
    quint32 nummer = 0;
    quint32 echter = 0;         // place in Tabelle::echte
    quint8 beziehung = 0;       // 1 primary side, 2 foreign side of a relation
    qint32 andererIndex = -1;   // number on the other side
    quint32 andereTabelle = 0;  // definition page of the other table
    quint8 kaskadeAendern = 4;
    quint8 kaskadeLoeschen = 4;
    quint8 art = kIndexPlain;  // Indexart
    QByteArray roh;            // the record as it stands; empty for a new index
};

// The two maps of a Memo or OLE column.
struct Langwertkarten {
    quint16 nummer = 0;  // Spalte::nummer
    Zeilenort besitz;
    Zeilenort frei;
};

struct Tabelle {
    QString name;                 // set by the reader of the catalogue; "" straight from tdefLesen
    std::vector<quint32> seiten;  // the pages of the definition, the first one is its number
    QByteArray rohKopf;           // the header as it stands (from the first byte of the page)
    quint32 zeilen = 0;           // as the header says: never to be trusted
    quint32 autowert = 0;         // last one given out
    quint8 art = 0x4E;            // 'N' user table, 'S' system table
    quint16 maxSpalten = 0;       // columns ever created
    quint16 variable = 0;         // variable columns ever created
    Zeilenort besitz;             // map of the data pages
    Zeilenort frei;
    std::vector<Spalte> spalten;  // in record order
    std::vector<EchterIndex> echte;
    std::vector<LogischerIndex> logische;  // in record order
    std::vector<Langwertkarten> lange;

    quint32 seite() const { return seiten.empty() ? 0 : seiten.front(); }
    // Column by number; nullptr if there is none.
    const Spalte* spalteMitNummer(quint16 nummer) const;
    // Place in `spalten` by name, case ignored; -1 if there is none.
    int spalteMitName(QStringView name_) const;
    // Places in `spalten` in the order of display: this is the order of the fields everywhere outside.
    std::vector<int> feldfolge() const;
    const Langwertkarten* langeMitNummer(quint16 nummer) const;
};

// Reads the definition that begins on page `seite`. Every count, name and record is checked. Raises
// kBeschaedigt. Indexes and maps are named, not followed.
Tabelle tdefLesen(const Seitendatei& datei, quint32 seite);

}  // namespace jet
