// A small database in memory behind the program's state.
#include "search/suchbank.h"

#include <QFile>

#include "data/kopieren.h"
#include "search/puffer.h"

Suchbank::Suchbank() {
    ZustandZuruecksetzen();
    EinstellungenAnwenden({});
    attrappe.emplace();
    gSystemmeldungZeigen = false;
    gRahmen = 6;
    gArbeitsbereich = dao::DBEngine::CreateWorkspace({}, QStringLiteral("Admin"), {}, 2);
}

Suchbank::~Suchbank() {
    AlleDatenSchliessen();
    PaareLeeren();
    attrappe.reset();
    ZustandZuruecksetzen();
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, nullptr);
}

void Suchbank::adressen(const std::vector<Spaltenvorgabe>& spalten,
                        const std::vector<std::vector<Wert>>& zeilen,
                        const std::vector<QString>& indexfelder) {
    engine::TabellenDef def;
    def.name = quelle;
    gZuordnungenTabelle1.clear();
    for (const Spaltenvorgabe& spalte : spalten) {
        engine::FeldDef feld;
        feld.name = QString::fromUtf16(spalte.name);
        feld.typ = spalte.typ;
        feld.groesse = spalte.groesse;
        feld.attribute = spalte.attribute;
        feld.leerErlaubt = true;
        def.felder.push_back(feld);
        gZuordnungenTabelle1.push_back(spalte.zuordnung);
    }
    if (!indexfelder.empty()) {
        engine::IndexDef index;
        index.name = QStringLiteral("Index");
        for (const QString& feld : indexfelder) index.felder.push_back({feld, false});
        def.indexe.push_back(index);
    }
    inhalt.tabellen.push_back({def, {zeilen.begin(), zeilen.end()}});
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, [this](const QString&, const QString&) {
        return std::make_unique<Speicherdatei>(inhalt);
    });
    const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::WriteOnly));
    datei.close();
    gDatenbank = gArbeitsbereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
    gDatenbankFormat = QString::fromUtf16(kFormatAccess);
    gAusgangsTabelle = quelle;
    gZielTabelle = ziel;
}

void Suchbank::adressen(const std::vector<std::vector<Wert>>& zeilen) {
    adressen({{u"Firma", {2, 1}}, {u"Strasse", {3, 3}}, {u"PLZ", {3, 4}}, {u"Ort", {3, 8}}}, zeilen);
}

void Suchbank::durchlauf(int nummer, const std::vector<int>& felder, int laenge) {
    f().optionen.durchfuehren[nummer] = true;
    f().optionen.zeichenRichtig[nummer] = laenge;
    for (size_t k = 0; k < felder.size(); ++k) f().optionen.suchFeld[nummer * 3 + int(k)] = felder[k] + 1;
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

QStringList Suchbank::spalte(const QString& abfrage, const QString& feld) {
    QStringList texte;
    const auto satz = gDatenbank->OpenRecordset(abfrage);
    for (; !satz->Eof(); satz->MoveNext()) {
        const Wert& wert = satz->Fields(feld).Value();
        texte << (wert.istNull() ? QStringLiteral("-") : wert.alsText());
    }
    return texte;
}

QStringList Suchbank::felder(const QString& tabelle) {
    QStringList namen;
    dao::Fields& alle = gDatenbank->TableDefs().Item(tabelle).Fields();
    for (int i = 0; i < alle.Count(); ++i) namen << alle.Item(i).Name();
    return namen;
}
