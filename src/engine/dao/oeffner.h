// Which file formats the engine can open: one opener a format.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "engine/datei/datenbankdatei.h"

namespace dao {

enum class Dateiart { Access, Excel, Dbase };

// Opens a file (for dBase a folder) with a password, which may be empty and counts for Access only.
using DateiOeffner =
    std::function<std::unique_ptr<engine::Datenbankdatei>(const QString& pfad, const QString& passwort)>;

// Sets the opener of a format; an empty function takes the format out of the offer. Access has
// jet::mdbOeffnen from the start, the others have none.
void DateiOeffnerSetzen(Dateiart art, DateiOeffner oeffner);

// The format that a connect text means: ";PWD=...;" and "" are Access, "Excel 5.0;" Excel, "Dbase 5;",
// "Dbase III;" and "Dbase IV;" dBase. None for everything else.
std::optional<Dateiart> dateiartVon(const QString& verbindung);
// The password of ";PWD=...;", everything between the first "=" and the last ";". Empty for other texts.
QString passwortVon(const QString& verbindung);

// Clears what a crash left in the file's folder, then opens. Raises 3343 for a kind without an opener, and
// what the opener raises.
std::unique_ptr<engine::Datenbankdatei> dateiOeffnen(const QString& pfad, const QString& verbindung);

}  // namespace dao
