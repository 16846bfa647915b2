// Prepares a new record of the work table, field by field.
#pragma once

#include <vector>

#include "engine/dao/recordset.h"
#include "search/aufbereitung.h"

// What becomes of each column of the work table, which has those of the source that are not ignored.
std::vector<Aufbereitung> AufbereitungenFuer(const FeldZuordnungen& zuordnungen);

// Rewrites the record under AddNew, which holds the source's values. Failures go to the error box; Abbrechen
// sets `gFehler`.
void DatensatzAufbereiten(dao::Recordset& arbeit, const std::vector<Aufbereitung>& aufbereitungen);
