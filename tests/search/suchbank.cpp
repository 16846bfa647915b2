// A database in memory with one table of addresses.
#include "search/suchbank.h"

#include "search/puffer.h"

Suchbank::~Suchbank() {
    AlleDatenSchliessen();
    PaareLeeren();
}

void Suchbank::adressen(const std::vector<Spaltenvorgabe>& spalten,
                        const std::vector<std::vector<Wert>>& zeilen,
                        const std::vector<QString>& indexfelder) {
    tabelleAnlegen(quelle, spalten, zeilen, indexfelder);
    gZuordnungenTabelle1.clear();
    for (const Spaltenvorgabe& spalte : spalten) gZuordnungenTabelle1.push_back(spalte.zuordnung);
    oeffnen();
    gAusgangsTabelle = quelle;
    gZielTabelle = ziel;
}

void Suchbank::adressen(const std::vector<std::vector<Wert>>& zeilen) {
    adressen({{u"Firma", {2, 1}}, {u"Strasse", {3, 3}}, {u"PLZ", {3, 4}}, {u"Ort", {3, 8}}}, zeilen);
}

void Suchbank::durchlauf(int nummer, const std::vector<int>& spalten, int laenge) {
    f().optionen.durchfuehren[nummer] = true;
    f().optionen.zeichenRichtig[nummer] = laenge;
    for (size_t k = 0; k < spalten.size(); ++k) f().optionen.suchFeld[nummer * 3 + int(k)] = spalten[k] + 1;
}

void Suchbank::pufferFuellen() {
    gSuchQuelle = quelle;
    gSuchZiel = ziel;
    gSuchZuordnung = gZuordnungenTabelle1;
    gSuchFelder = qint16(gSuchZuordnung.size());
    gSuchDatensaetze = qint32(gDatenbank->OpenRecordset(quelle)->RecordCount());
    SuchpufferErstellen();
}

void Suchbank::suchen(bool anreichern, bool uebernehmen) {
    Suchlauf(quelle, ziel, gZuordnungenTabelle1, anreichern, uebernehmen);
}
