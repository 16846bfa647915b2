// A database that is open for the length of one operation.
#pragma once

#include "run/zustand.h"
#include "werte.h"

// Opens as the program does on its second frame; raises Abgelehnt with the message that the user would
// read. Closes without saving.
class OffeneDatenbank {
  public:
    OffeneDatenbank(const QString& pfad, const QString& passwort);
    ~OffeneDatenbank();
    OffeneDatenbank(const OffeneDatenbank&) = delete;
    OffeneDatenbank& operator=(const OffeneDatenbank&) = delete;

    dao::Database* operator->() const { return gDatenbank.get(); }
    // Brings the file up to date; raises Abgelehnt when that does not succeed.
    void sichern() const;
};
