// Changes what the globals say of sheets by number: SUPBOOK, EXTERNSHEET, TABID, NAME, WINDOW1.
#pragma once

#include "engine/excel/bezuege.h"

namespace excel {

// An added sheet enters the counts and gets an entry that formulas can name it by. `vorhanden`: an
// EXTERNSHEET entry (BIFF8) that meant a deleted sheet and now means this one. Returns the entry that the
// sheet's NAME uses: in BIFF8 its position from 0, in BIFF5 from 1.
int blattVerweisen(Mappe& mappe, int blatt, int vorhanden = -1);

// The sheet `blatt` is gone (its BOUNDSHEET, too): references to it are dead, later sheets count one less.
// Names local to it become hidden dead ones.
void blattVergessen(Mappe& mappe, int blatt);

// A sheet number after the sheet `weg` went; 0xFFFF for that one, 0xFFFE and above stay.
struct Blattpaar {
    quint16 erstes;
    quint16 letztes;
};
Blattpaar nachVerlust(Blattpaar paar, int weg);

// A name over the rows and columns of a sheet from A1 on. `eintrag` as `blattVerweisen` gives it. Overwrites
// the NAME record `alt` (a dead one) or makes a new one behind the last.
void namenEintragen(Mappe& mappe, const QString& text, const Bereich& bereich, int eintrag, int alt = -1);

// Gives the NAME record another text; its formula and position stay.
void namenUmbenennen(Mappe& mappe, size_t satz, const QString& text);

// The name stays in its place, hidden from nobody, but means #REF!.
void namenToeten(Mappe& mappe, const Definition& definition);

// A name that no NAME of the workbook has: `stamm` itself or with the first number behind it that is free.
QString freierName(const Mappe& mappe, const QString& stamm);

// Windows whose active sheet is gone or hidden show a visible one. For after the last drop.
void fensterRichten(Mappe& mappe);

}  // namespace excel
