// The published codes of the database engine: field types, recordset types, attribute bits.
#pragma once

namespace dao {

enum Feldtyp : int {
    dbBoolean = 1,
    dbByte = 2,
    dbInteger = 3,
    dbLong = 4,
    dbCurrency = 5,
    dbSingle = 6,
    dbDouble = 7,
    dbDate = 8,
    dbBinary = 9,
    dbText = 10,
    dbLongBinary = 11,
    dbMemo = 12,
    dbGUID = 15,
    dbBigInt = 16,
    dbDecimal = 20,
    dbTime = 22,
};

enum RecordsetTyp : int { dbOpenVorgabe = 0, dbOpenTable = 1, dbOpenDynaset = 2 };

// Field.Attributes
inline constexpr int dbFixedField = 1;
inline constexpr int dbVariableField = 2;
inline constexpr int dbAutoIncrField = 16;
inline constexpr int dbUpdatableField = 32;
inline constexpr int dbHyperlinkField = 32768;

// TableDef.Attributes; 0 is a plain user table.
inline constexpr int dbHiddenObject = 1;
inline constexpr int dbSystemObject = int(0x80000002u);
inline constexpr int dbAttachedTable = 1073741824;
inline constexpr int dbAttachedODBC = 536870912;

// Relation.Attributes
inline constexpr int dbRelationUnique = 1;
inline constexpr int dbRelationDontEnforce = 2;
inline constexpr int dbRelationUpdateCascade = 256;
inline constexpr int dbRelationDeleteCascade = 4096;

inline constexpr int kMaxFelder = 255;
inline constexpr int kMaxTextGroesse = 255;

}  // namespace dao
