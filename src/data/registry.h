// The per-user store: keys with values of type 1 (text) and 4 (32-bit number), as the registry has them.
#pragma once

#include <QString>

#include "base/wert.h"

enum class Schluesselwurzel { BenutzerAktuell };
inline constexpr int kRegText = 1;
inline constexpr int kRegZahl = 4;

void RegSchluesselAnlegen(Schluesselwurzel wurzel, const QString& schluessel);
// A missing key, or another type than 1 and 4, writes nothing.
void RegWertSchreiben(Schluesselwurzel wurzel, const QString& schluessel, const QString& name, int typ,
                      const Wert& wert);
// Empty for a missing key or value, or another type.
Wert RegWertLesen(Schluesselwurzel wurzel, const QString& schluessel, const QString& name);

// Tests only: another place for the store; empty is the user's own.
void RegAblageSetzen(const QString& datei);
