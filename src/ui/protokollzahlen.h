// The figures of the result frames.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <vector>

// What a run leaves: records of the source and of the result, and what was found.
struct Ergebniszahlen {
    qint64 gesamt = 0;
    qint64 nach = 0;
    qint64 dubletten = 0;
    qint64 angereichert = 0;  // left when the review was confirmed
    qint64 muell = 0;
};

struct Protokollzahlen {
    std::array<double, 3> anteile;  // of the bars, 1 is the full width; of nothing 0
    std::array<QString, 4> texte;   // beside the three bars and below them
};

// One result frame: its number, and how its controls are called.
struct Protokollart {
    int rahmen;
    QString stamm;         // "Dubletten" gives shpDubletten1 to 3 and lblDubletten1 to 3
    QString letztesLabel;  // below the bars
    Protokollzahlen (*zahlen)(const Ergebniszahlen& ergebnis);
};

// Frames 13, 23, 53 and 63.
const std::vector<Protokollart>& Protokollarten();
