// The operations of the test bench by name; each topic adds its own.
#pragma once

#include <QHash>
#include <QJsonValue>
#include <QString>
#include <functional>

#include "werte.h"

using Operation = std::function<QJsonValue(const Argumente&)>;
using Operationen = QHash<QString, Operation>;

void TexteAnmelden(Operationen& operationen);         // text and path helpers
void ParserAnmelden(Operationen& operationen);        // value parsers
void FeldartenAnmelden(Operationen& operationen);     // field kinds and settings
void ZielAnmelden(Operationen& operationen);          // names of target tables, progress
void AufbereitungAnmelden(Operationen& operationen);  // preparing a record, checking it for junk
void VergleichAnmelden(Operationen& operationen);     // measures, comparisons, groups
void MischenAnmelden(Operationen& operationen);       // filling a record of a mixed table
void UmformungAnmelden(Operationen& operationen);     // split and merge
void DateienAnmelden(Operationen& operationen);       // whole files, through the engine
