// The operation "reconcile against a second table".
#pragma once

#include <QString>

#include "fields/feldarten.h"

// The source's records without those that the second table holds as well, as far as the user does not take
// them over. Ends on frame 53, or on frame 3 after an abort.
void DatenabgleichStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                          const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2);
