// Characters of the second table that the file of the first one lacks.
#pragma once

#include <QStringList>

#include "engine/datei/datenbankdatei.h"

// Collects them before the mix begins, since its result could not be saved with them.
class Zeichenfunde {
  public:
    explicit Zeichenfunde(engine::Zeichenprobe probe) : probe_(std::move(probe)) {}
    // Looks at the value that record `satz` (from 1) of the second table gives to a field of the first one.
    void ansehen(qint64 satz, const QString& feld, const Wert& wert);
    bool leer() const { return anzahl_ == 0; }
    // What the user is told: where they stand, and what to do.
    QString meldung(const QString& erste, const QString& zweite) const;

  private:
    engine::Zeichenprobe probe_;
    QStringList gezeigt_;
    qint64 anzahl_ = 0;
};
