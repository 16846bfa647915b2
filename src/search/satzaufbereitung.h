// Prepares a new record of the work table, field by field.
#pragma once

#include "engine/dao/recordset.h"

// Rewrites the record under AddNew, which holds the source's values of all columns that are not ignored
// (`gSuchZuordnung`). Failures go to the error box; Abbrechen sets `gFehler`.
void DatensatzAufbereiten(dao::Recordset& arbeit);
