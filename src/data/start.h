// Start and end of the program.
#pragma once

#include <QString>

// Random seed, settings, workspace, registry key.
void ProgrammStarten();
// Closes the database and the workspace; failures do not matter.
void ProgrammBeenden();

// Reads Einstellungen.CFG in the program's folder, or takes the built-in weights.
void EinstellungenLaden();

// The folder of the settings file and the help file; the folder of the program unless a test moved it.
QString ProgrammOrdner();
void ProgrammOrdnerSetzen(const QString& ordner);

// A file that comes with the program: in its folder or, when it is not there, where an installation keeps
// such files ("../share/lindgarn" seen from the program). The path in the program's folder when it is in
// neither.
QString ProgrammDatei(const QString& name);
