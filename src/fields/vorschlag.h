// The proposal of field kinds for one field, by its name and some of its values.
#pragma once

#include <QString>
#include <functional>

#include "fields/feldarten.h"

struct Feldvorschlag {
    FeldZuordnung zuordnung;
    QString beschriftung;  // "(Firmenname,Rechtsform)"
};

// `zufallswert` draws one value of the field as a text ("" for a Null); it is called at most 20 times.
Feldvorschlag FeldArtVorschlagen(const QString& feldname, const std::function<QString()>& zufallswert);
