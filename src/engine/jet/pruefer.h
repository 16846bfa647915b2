// The strict check of a whole .mdb file: what is not as sound files have it, told in German.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

// One deviation.
struct Mangel {
    quint32 tabelle = 0;  // definition page of the table; 0: the file itself
    quint32 seite = 0;    // where it shows
    QString was;          // does not name the table, which may have got another name meanwhile
    QString name;         // of the table, or what else it belongs to

    // "Kunden, Seite 60: die Zeilenzahl ist 4, gezählt wurden 3"
    QString zeile() const;
    // The same deviation, whatever the table is called now.
    bool gleich(const Mangel& anderer) const;
};

// Every deviation, at most some dozens for each table. Reads the file page by page and keeps no more than
// some bytes for each page. Raises EngineFehler only when pages cannot be read at all. What healthy files are
// known to have is none: pages that belong to nobody, wrong row counts of system tables, counters of distinct
// keys that are off, inner index pages of level 0 and keys in which ß counts as one letter (both as other
// libraries write them).
std::vector<Mangel> maengelFinden(const Seitendatei& datei);
// The same as lines for people.
QStringList maengelSuchen(const Seitendatei& datei);

// Raises kBeschaedigt naming the first deviation that is not among `bekannte` (those from before a change: a
// file that was slightly off may be changed all the same). They are asked for only when there is a deviation.
void dateiPruefen(const Seitendatei& datei, const std::function<std::vector<Mangel>()>& bekannte = {});

}  // namespace jet
