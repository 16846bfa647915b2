// The name of the target table: the default for a source, and what each format refuses.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

// "Adressen _#1__3_7_2001": the source's stem (no "$", nothing from " _#" on), the first counter from 1 whose
// name is not among `vorhandene` (case does not matter, ß equals SS), and the date without leading zeros.
QString ZielnameBilden(const QString& tabelle, const QStringList& vorhandene, const QDate& datum);

// What is told about a name, blanks around it off, that the format (`gDatenbankFormat`) cannot take; nothing
// for a good one.
std::optional<QString> ZielnamePruefen(const QString& format, const QString& name);
