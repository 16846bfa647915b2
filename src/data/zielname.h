// The name of the target table: the default for a source, and what each format refuses.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

// "Adressen _#1__3_7_2001": the source's stem (no "$", nothing from " _#" on), the first counter from 1 whose
// name is not among `vorhandene` (case does not matter, ß equals SS), and the date without leading zeros.
QString ZielnameBilden(const QString& tabelle, const QStringList& vorhandene, const QDate& datum);

// A name of at most 8 letters, digits and "_" for a dBase table: "ADRESS_1"; nothing for the other formats,
// which take the default name. The counter goes past the names among `vorhandene`.
std::optional<QString> KurzerZielname(const QString& format, const QString& tabelle,
                                      const QStringList& vorhandene);

// What is told about a name, blanks around it off, that the format (`gDatenbankFormat`) cannot take; nothing
// for a good one.
std::optional<QString> ZielnamePruefen(const QString& format, const QString& name);
