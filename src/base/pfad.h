// Path helpers. The backslash is a separator everywhere, the system's own separator counts as well.
#pragma once

#include <QString>

#include "base/wert.h"

// The text behind the last separator, trimmed; the whole text, trimmed, if there is none.
QString DateinameAusPfad(const QString& pfad);

// The path cut from the right by the length of `DateinameAusPfad`; keeps the trailing separator.
QString VerzeichnisAusPfad(const QString& pfad);

// The text behind the last ".", trimmed; Empty when there is no "." anywhere, also not in a folder's name.
Wert DateiEndung(const QString& pfad);

// True when it is a regular file that can be opened for reading.
bool DateiVorhanden(const QString& pfad);

// The content of a file of the program's own. Raises kDateifehler when it cannot be read or has more
// than 1 MB, which none of them has.
QByteArray ProgrammdateiLesen(const QString& pfad);

// The path with every backslash as the system's own separator, ready for the file system.
QString SystemPfad(const QString& pfad);
