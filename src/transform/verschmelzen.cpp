// The operation "merge fields".
#include "transform/verschmelzen.h"

#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/zustand.h"
#include "transform/umformung.h"
#include "transform/verschmelzregel.h"

namespace {

constexpr int kLaengstesTextfeld = 255;
constexpr int kErgebnisrahmen = 42;

// The separator is not counted.
NeuesFeld neuesFeld(const QString& quelle, const Verschmelzoptionen& optionen) {
    dao::Fields& felder = gDatenbank->TableDefs().Item(quelle).Fields();
    const int groesse =
        Minimum(felder.Item(optionen.feld1).Size() + felder.Item(optionen.feld2).Size(), kLaengstesTextfeld);
    return {optionen.name, int(dao::dbText), groesse};
}

void satzVerschmelzen(Schritte& s, const Verschmelzoptionen& optionen, dao::Recordset& quelle,
                      dao::Recordset& ziel) {
    Wert erster = Wert::null();
    Wert zweiter = Wert::null();
    s.tu([&] { erster = quelle.Fields(optionen.feld1).Value(); });
    s.tu([&] { zweiter = quelle.Fields(optionen.feld2).Value(); });
    s.tu([&] { ziel.Fields(optionen.name).setValue(Verschmelzen(erster, zweiter, optionen.trennzeichen)); });
}

}  // namespace

void VerschmelzenStarten(const QString& quelle, const QString& ziel) {
    const Verschmelzoptionen optionen = fenster().verschmelzoptionen();
    Umformung umformung;
    umformung.information = QStringLiteral("Verschmelze Felder ...");
    umformung.fehler = QStringLiteral("Fehler beim Verschmelzen der Felder ");
    umformung.feld = optionen.feld1;
    umformung.neueFelder = {neuesFeld(quelle, optionen)};
    umformung.rechnen = [&optionen](Schritte& s, dao::Recordset& von, dao::Recordset& nach) {
        satzVerschmelzen(s, optionen, von, nach);
    };
    umformung.leereWeglassen = true;
    if (optionen.loeschen) umformung.alteFelder = {optionen.feld1, optionen.feld2};
    umformung.ergebnisrahmen = kErgebnisrahmen;
    UmformungStarten(quelle, ziel, umformung);
}

std::optional<QString> VerschmelzenEinwand(const QString& quelle, const QString& ziel,
                                           const Verschmelzoptionen& optionen) {
    return KopieEinwand(quelle, ziel, DatensaetzeDerTabelle(quelle), {neuesFeld(quelle, optionen)});
}
