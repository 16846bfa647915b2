// An empty Access 2000-2003 database made from nothing.
#pragma once

#include <QString>

namespace jet {

// Writes a new .mdb (Jet 4, sort order General, no password) without any user table. Raises kNameVorhanden
// when there is a file of this name, kDateifehler or kDatentraegerVoll when it cannot be written.
void mdbAnlegen(const QString& pfad);

}  // namespace jet
