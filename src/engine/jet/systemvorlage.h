// The system tables of an empty Access 2000-2003 database: columns, indexes, rows.
#pragma once

#include <QStringView>
#include <vector>

#include "engine/jet/tdef.h"

namespace jet {

// The well-known accounts.
enum class Konto { Engine, Benutzer, Admin, Ersteller };
// An account's number as the file's date hides it (see anlegen.cpp).
QByteArray kontoBytes(Konto konto);

struct Systemobjekt {
    quint32 id;
    quint32 eltern;
    QStringView name;
    quint16 typ;
    Konto besitzer;
};
struct Systemrecht {
    quint32 objekt;
    Konto konto;
    quint32 rechte;
    bool vererbt;
};
// Rows of MSysObjects and MSysACEs, in the order of their slots.
extern const std::vector<Systemobjekt> kSystemobjekte;
extern const std::vector<Systemrecht> kSystemrechte;

// Rows of the page of maps that the four tables share.
inline constexpr size_t kSystemkarten = 31;

// MSysObjects, MSysACEs, MSysQueries, MSysRelationships, with their pages, maps, row and key counts.
std::vector<Tabelle> systemtabellen();

}  // namespace jet
