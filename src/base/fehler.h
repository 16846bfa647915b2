// The one failure type of the engine: a published error number and a German description.
#pragma once

#include <QString>
#include <exception>

// Thrown by every engine operation that fails. `nummer` is the published number of the database
// engine (table below) where there is one; the description is what the error box shows as the system's own
// message.
class EngineFehler : public std::exception {
  public:
    EngineFehler(int nummer, QString beschreibung);
    int nummer() const { return nummer_; }
    const QString& beschreibung() const { return beschreibung_; }
    const char* what() const noexcept override { return bytes_.constData(); }

  private:
    int nummer_;
    QString beschreibung_;
    QByteArray bytes_;
};

// How many failures of database operations (published numbers from 2420 on) there have been since the start.
int EngineFehlerAnzahl();

// Published error numbers that the engine uses.
enum FehlerNummer : int {
    kUngueltigesArgument = 5,        // invalid procedure call or argument
    kUeberlauf = 6,                  // overflow of a small counter
    kIndexAusserhalb = 9,            // subscript out of range
    kTypenUnvertraeglich = 13,       // type mismatch
    kUngueltigeNullVerwendung = 94,  // Null where a value is needed
    kNameVorhanden = 3010,           // a table of this name exists
    kKeinDatensatz = 3021,           // no current record
    kNichtGefunden = 3011,           // object not found
    kDatentraegerVoll = 3026,        // disk full
    kSchreibgeschuetzt = 3027,       // database or object is read-only
    kPasswortFalsch = 3031,          // not a valid password
    kOhneTransaktion = 3034,         // commit or rollback without a transaction
    kAktualisierenOhneEdit = 3020,   // Update without AddNew or Edit
    kDateiNichtLesbar = 3343,        // unrecognised database format
    kNichtInListe = 3265,            // item not found in this collection
    kFeldZuKlein = 3163,             // text longer than the field
    kLeereZeichenfolge = 3315,       // zero-length text not allowed
    kUmwandlung = 3421,              // data type conversion error
    kIndexFeldLoeschen = 3280,       // field is part of an index
    kRelationBesteht = 3281,         // table takes part in a relation
    kObjektUngueltig = 3420,         // object invalid or no longer set
    kSyntaxfehler = 3075,            // syntax error in a query
    kParameterFehlt = 3061,          // unknown name in a query
    kDateiGesperrt = 3045,           // file in use elsewhere
    kDateiGeaendert = 3197,          // changed by somebody else
    kBeschaedigt = 3049,             // file damaged
    kDateiFehlt = 3024,              // file not found
    kZuVieleFelder = 3190,           // more than 255 fields
    kUngueltigerName = 3125,         // not a valid name
    kSystemgrenze = 3035,            // a limit of the format or the system
    kDateifehler = 3051,             // cannot open or write the file
};
