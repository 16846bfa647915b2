// The rule table of the junk search: what is wrong with a value.
#pragma once

#include <QStringList>

#include "base/wert.h"
#include "fields/feldarten.h"
#include "run/fenster.h"

// The remarks on a value of a field of this assignment, in the order of the rules, each with its leading
// blank and its semicolon (" k. PLZ;"). At most one for each kind.
QStringList MuellAnmerkungen(const FeldZuordnung& zuordnung, const Wert& wert, const Muelloptionen& optionen);
