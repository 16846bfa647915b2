// The operation "split fields".
#include "transform/splitten.h"

#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/zustand.h"
#include "transform/splittregel.h"
#include "transform/umformung.h"

namespace {

constexpr int kLaengstesTextfeld = 255;
constexpr int kErgebnisrahmen = 32;

bool mitZweitemFeld(Splittart art) {
    return art == Splittart::VorwahlTelefonTelefax;
}

int groesseVon(const QString& tabelle, const QString& feld) {
    return gDatenbank->TableDefs().Item(tabelle).Fields().Item(feld).Size();
}

int groesseDerNeuen(const QString& quelle, const Splittoptionen& optionen) {
    const int erste = groesseVon(quelle, optionen.feld1);
    if (!mitZweitemFeld(Splittart(optionen.typ))) return erste;
    return Minimum(erste + groesseVon(quelle, optionen.feld2), kLaengstesTextfeld);
}

std::vector<NeuesFeld> neueFelder(const QString& quelle, const Splittoptionen& optionen) {
    std::vector<NeuesFeld> felder;
    const int groesse = groesseDerNeuen(quelle, optionen);
    const int anzahl = NeueFelder(Splittart(optionen.typ));
    felder.reserve(size_t(anzahl));
    for (int i = 0; i < anzahl; ++i) felder.push_back({optionen.namen[i], int(dao::dbText), groesse});
    return felder;
}

// Reads the sources of a record and writes its parts.
void satzSplitten(Schritte& s, const Splittoptionen& optionen, dao::Recordset& quelle, dao::Recordset& ziel) {
    const auto art = Splittart(optionen.typ);
    Wert erster = Wert::null();
    Wert zweiter = Wert::null();
    s.tu([&] { erster = quelle.Fields(optionen.feld1).Value(); });
    if (mitZweitemFeld(art)) s.tu([&] { zweiter = quelle.Fields(optionen.feld2).Value(); });
    const std::array<Wert, 3> teile = Splitten(art, erster, zweiter, optionen.trennzeichen);
    for (int i = 0; i < NeueFelder(art); ++i)
        s.tu([&] { ziel.Fields(optionen.namen[i]).setValue(teile[size_t(i)]); });
}

}  // namespace

void SplittenStarten(const QString& quelle, const QString& ziel) {
    const Splittoptionen optionen = fenster().splittoptionen();
    Umformung umformung;
    umformung.information = QStringLiteral("Splitte Feld(er) ...");
    umformung.fehler = QStringLiteral("Fehler beim Splitten der Felder ");
    umformung.feld = optionen.feld1;
    umformung.neueFelder = neueFelder(quelle, optionen);
    umformung.rechnen = [&optionen](Schritte& s, dao::Recordset& von, dao::Recordset& nach) {
        satzSplitten(s, optionen, von, nach);
    };
    if (optionen.loeschen) umformung.alteFelder << optionen.feld1;
    if (optionen.loeschen && mitZweitemFeld(Splittart(optionen.typ))) umformung.alteFelder << optionen.feld2;
    umformung.ergebnisrahmen = kErgebnisrahmen;
    UmformungStarten(quelle, ziel, umformung);
}

std::optional<QString> SplittenEinwand(const QString& quelle, const QString& ziel,
                                       const Splittoptionen& optionen) {
    return KopieEinwand(quelle, ziel, DatensaetzeDerTabelle(quelle), neueFelder(quelle, optionen));
}
