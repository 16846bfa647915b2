// The junk check of a record.
#pragma once

#include "engine/dao/recordset.h"

// Examines the first `gFeldAnzahl` fields of the record under Edit by `gZuordnungenTabelle1` and the boxes of
// frame 21. A record with a finding gets its remarks and the state of a junk record, and `gMuellAnzahl`
// counts it. Failures are shown; `gFehler` tells that the user stopped.
void DatensatzEntmuellen(dao::Recordset& satz);
