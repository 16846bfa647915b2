// A sample table: its fields as the heading of its source tells them, and its rows as values.
#pragma once

#include <QStringList>
#include <vector>

#include "base/wert.h"
#include "engine/katalog.h"

struct Beispieltabelle {
    engine::TabellenDef def;
    std::vector<std::vector<Wert>> zeilen;
};

// From the records of a source, the heading first. A heading reads "Name:Type", a text's "Name:Text:40", and
// ends in ":Schlüssel" for the primary key and in ":Index" for a plain index. Types are Long, Text, Memo,
// Datum (2001-12-31), Währung (12.50) and JaNein (0 or 1); an empty cell is Null, in JaNein it is No. Raises
// std::runtime_error with the record's number (the heading is 1) and the field.
Beispieltabelle TabelleAusCsv(const QString& name, const std::vector<QStringList>& saetze);
