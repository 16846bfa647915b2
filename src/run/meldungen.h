// The message boxes of the program.
#pragma once

#include <QString>
#include <exception>

#include "run/fenster.h"

void HinweisZeigen(const QString& text);  // title " Hinweis", information, OK
void AchtungZeigen(const QString& text);  // title " Achtung!", exclamation, OK
void KastenZeigen(const QString& text);   // a plain box: the program's name, no icon, OK

// Title " Fehler!", critical; Abbrechen, Wiederholen, Ignorieren, the third one preselected. Appends the
// description of the failure being handled (`FehlerMerken`) when `gSystemmeldungZeigen` is set; that failure
// is then done with, so that a later box does not tell it again.
Knopf FehlerZeigen(const QString& text);

// Takes the failure that a handler caught as the present one: its number and description feed `FehlerZeigen`.
// Call inside a catch block. A failure that is no EngineFehler counts as number 0 with its what() text.
void FehlerMerken();
void FehlerVergessen();
int FehlerNummerGemerkt();
QString FehlerBeschreibung();

// Runs a user's action; a failure that nothing else has caught is told in a box.
template <typename Aktion>
void Gesichert(Aktion&& aktion) {
    try {
        aktion();
        return;
    } catch (...) {
        FehlerMerken();
    }
    const QString beschreibung = FehlerBeschreibung();
    FehlerVergessen();
    AchtungZeigen(beschreibung);
}

// A plain box with Yes and No and an empty title; True on Yes.
bool FrageStellen(const QString& text, Symbol symbol, Knopf vorwahl);
