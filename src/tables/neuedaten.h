// The operation "add the data of a second table".
#pragma once

#include <QString>

#include "fields/feldarten.h"

// The records of both tables, each address once as far as the user does not decide otherwise. Ends on frame
// 63, or on frame 3 after an abort.
void NeueDatenStarten(const QString& quelle, const QString& zweite, const QString& ziel,
                      const FeldZuordnungen& zuordnung1, const FeldZuordnungen& zuordnung2);
