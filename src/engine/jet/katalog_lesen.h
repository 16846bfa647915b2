// The catalogue of an .mdb file: its objects, tables, properties and relations.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "engine/jet/tdef.h"
#include "engine/katalog.h"

namespace jet {

// A row of MSysObjects.
struct Objekt {
    qint32 id = 0;  // of a table: its definition page
    qint32 eltern = 0;
    QString name;
    qint16 typ = 0;       // Objekttyp
    quint32 flags = 0;    // 0: plain user table
    double angelegt = 0;  // days since 1899-12-30, local time
    double geaendert = 0;
    QByteArray besitzer;
    QByteArray eigenschaften;  // LvProp
    Zeilenort ort;             // where the row's slot stands
};

// A property of a table or a column, as LvProp holds it.
struct Eigenschaft {
    QString name;
    quint8 ddl = 0;
    quint8 typ = 0;   // Spaltentyp
    QByteArray wert;  // as stored
};
struct Eigenschaftsblock {
    quint16 art = 0;  // 0 the table, 1 a column
    QString name;     // the column; "" for the table
    std::vector<Eigenschaft> liste;
};

// What FeldDef::formatEigenes holds for a column of an .mdb file: how it was stored, and its properties
// except AllowZeroLength and Required (which FeldDef tells itself), GUID and NameMap (which must not be
// copied).
struct Spalteneigenes {
    bool jet4 = true;
    quint8 typ = 0;
    quint8 flags = 0;
    quint8 flags2 = 0;
    std::vector<Eigenschaft> eigenschaften;
};
QByteArray spalteneigenesSchreiben(const Spalteneigenes& eigenes);
// False when the bytes are not of this format's making.
bool spalteneigenesLesen(QByteArrayView bytes, Spalteneigenes& eigenes);

// What must hold of an opened file before anything else is read: the password; page 2 is MSysObjects.
// Raises kPasswortFalsch, kBeschaedigt, and kSystemgrenze for a code page or sort order we do not know,
// unless the file is `nurLesbar`. Order of the tests: password first.
void oeffnenPruefen(const Seitendatei& datei, const QString& passwort);

// An .accdb file whose system tables sort in another order than that of Access 2007, as those of Access 2010
// and later do (version 1 of General): its keys cannot be made, its rows can be read.
bool nurLesbar(const Seitendatei& datei);

// All rows of MSysObjects in the natural order.
std::vector<Objekt> objekteLesen(const Seitendatei& datei);

// The blocks of an LvProp value. Damaged rests are left out, nothing is raised.
std::vector<Eigenschaftsblock> eigenschaftenLesen(const Format& format, QByteArrayView bytes);

// A table by name, case ignored, with its name set; for local tables only. Raises kNichtGefunden,
// kBeschaedigt.
Tabelle tabelleLesen(const Seitendatei& datei, const QString& name);
// The same for a row of MSysObjects that is a local table.
Tabelle tabelleLesen(const Seitendatei& datei, const Objekt& objekt);

// One table's definition in the engine's terms.
engine::TabellenDef tabellenDef(const Format& format, const Objekt& objekt, const Tabelle& tabelle);

// The relations between the tables of `katalog`, in the order of their first rows; those of system tables are
// left out. A file without MSysRelationships has none.
std::vector<engine::RelationDef> relationenLesen(const Seitendatei& datei, const engine::Katalog& katalog);

// Everything. Tables stand in the order of MSysObjects. A table whose definition is damaged is listed
// without fields, so that the others can be used; reading its rows then tells what is wrong.
engine::Katalog katalogLesen(const Seitendatei& datei);

// The DAO number of a column type of the file; unknown types are Binary.
int daoTyp(quint8 spaltentyp);

}  // namespace jet
