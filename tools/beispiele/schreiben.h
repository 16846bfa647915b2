// Makes a database file from sample tables.
#pragma once

#include <QString>
#include <vector>

#include "tabelle.h"

// A new file at `pfad` with these tables; one that is there is replaced. Raises EngineFehler.
void DatenbankSchreiben(const QString& pfad, const std::vector<Beispieltabelle>& tabellen);
