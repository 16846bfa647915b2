// Prepares a new record of the work table, field by field.
#include "search/satzaufbereitung.h"

#include "run/schritte.h"
#include "run/zustand.h"

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

void spalteAufbereiten(Schritte& s, dao::RecordsetField feld, const Aufbereitung& aufbereitung) {
    Spaltenart art;
    s.tu([&] { art = {feld.Type(), feld.Attributes(), feld.Size()}; });
    if (!WirdAufbereitet(art)) return;
    for (int i = 0; i < aufbereitung.anzahl; ++i)
        s.tu([&] { feld.setValue(aufbereitung.schritte[i](feld.Value(), art.groesse)); });
}

}  // namespace

std::vector<Aufbereitung> AufbereitungenFuer(const FeldZuordnungen& zuordnungen) {
    std::vector<Aufbereitung> aufbereitungen;
    for (const FeldZuordnung& zuordnung : zuordnungen)
        if (!FeldIgnoriert(zuordnung)) aufbereitungen.push_back(AufbereitungFuer(zuordnung));
    return aufbereitungen;
}

void DatensatzAufbereiten(dao::Recordset& arbeit, const std::vector<Aufbereitung>& aufbereitungen) {
    int spalte = 0;
    Schritte s([&] { return meldung(arbeit, spalte); });
    s.ablauf(
        [&] {
            for (const Aufbereitung& aufbereitung : aufbereitungen) {
                spalteAufbereiten(s, arbeit.Fields(spalte), aufbereitung);
                ++spalte;
            }
        },
        [] { gFehler = true; });
}
