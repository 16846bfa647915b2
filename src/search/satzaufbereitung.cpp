// Prepares a new record of the work table, field by field.
#include "search/satzaufbereitung.h"

#include "run/schritte.h"
#include "run/zustand.h"
#include "search/aufbereitung.h"
#include "search/suchzustand.h"

namespace {

QString meldung(dao::Recordset& arbeit, int spalte) {
    QString erster, name, wert;
    // The message must come whatever failed.
    FehlerUebergehen([&] { erster = arbeit.Fields(0).Value().alsText(); });
    FehlerUebergehen([&] { name = arbeit.Fields(spalte).Name(); });
    FehlerUebergehen([&] { wert = arbeit.Fields(spalte).Value().alsText(); });
    return QStringLiteral("Fehler beim Aufbereiten des Datensatzes '") + erster +
           QStringLiteral("' im Feld '") + name + QStringLiteral("' mit dem Wert '") + wert +
           QStringLiteral("'.");
}

void spalteAufbereiten(Schritte& s, dao::RecordsetField feld, const FeldZuordnung& zuordnung) {
    Spaltenart art;
    s.tu([&] { art = {feld.Type(), feld.Attributes(), feld.Size()}; });
    if (!WirdAufbereitet(art)) return;
    const Aufbereitung aufbereitung = AufbereitungFuer(zuordnung);
    for (int i = 0; i < aufbereitung.anzahl; ++i)
        s.tu([&] { feld.setValue(aufbereitung.schritte[i](feld.Value(), art.groesse)); });
}

}  // namespace

void DatensatzAufbereiten(dao::Recordset& arbeit) {
    int spalte = 0;
    Schritte s([&] { return meldung(arbeit, spalte); });
    s.ablauf(
        [&] {
            for (const FeldZuordnung& zuordnung : gSuchZuordnung) {
                if (FeldIgnoriert(zuordnung)) continue;
                spalteAufbereiten(s, arbeit.Fields(spalte), zuordnung);
                ++spalte;
            }
        },
        [] { gFehler = true; });
}
