// Opening databases and small questions to them.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "engine/dao/workspace.h"

// Format texts that other modules compare with `gDatenbankFormat`.
inline constexpr char16_t kFormatAccess[] = u"Access";
inline constexpr char16_t kFormatDbase3[] = u"Dbase III;";
inline constexpr char16_t kFormatDbase4[] = u"Dbase IV;";
inline constexpr char16_t kFormatDbase5[] = u"Dbase 5;";
inline constexpr char16_t kFormatExcel5[] = u"Excel 5.0;";

// Opens by the file's extension; `gFehler` tells failure, which has then been shown.
void DatenbankOeffnen(const QString& pfad, const QString& passwort,
                      std::unique_ptr<dao::Database>& datenbank);
// Saves what is still unsaved (with the error box), closes, forgets. Failures of the closing do not matter.
void DatenbankSchliessen(std::unique_ptr<dao::Database>& datenbank);
// Brings the file up to date under the error box with its three buttons; False when the user pressed
// Abbrechen. What the engine has to tell afterwards is shown as a Hinweis.
bool DatenbankSichern();

// The number of records; the recordset is then on its first one. 0 at EOF, without a move.
qint64 DatensaetzeZaehlen(dao::Recordset& satz);
// The number of records of a table; opens and closes it.
qint64 DatensaetzeDerTabelle(const QString& tabelle);
// The names of the fields of a table, in their order. Raises 3265 for an unknown table.
QStringList FeldNamen(const QString& tabelle);
// The names of the tables that are neither the system's nor linked, in the catalogue's order.
QStringList TabellenNamen();
// The position (from 0) of a table in TableDefs, -1 if there is none. Case does not matter, ß equals SS.
int TabelleVorhanden(const QString& name);
