// Reads tables that are written as text: one record a line, fields between semicolons.
#pragma once

#include <QStringList>
#include <QStringView>
#include <vector>

// The records of `text`. A field in double quotes may hold semicolons and line ends, and a doubled quote for
// one. Empty lines do not count. Raises std::runtime_error when a quoted field does not end.
std::vector<QStringList> CsvLesen(QStringView text);
