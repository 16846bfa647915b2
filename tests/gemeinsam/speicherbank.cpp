// A small database in memory behind the program's state.
#include "gemeinsam/speicherbank.h"

#include <QFile>

#include "fields/einstellungen.h"

QStringList texte(std::initializer_list<const char16_t*> liste) {
    QStringList ergebnis;
    for (const char16_t* text : liste) ergebnis << QString::fromUtf16(text);
    return ergebnis;
}

Speicherbank::Speicherbank() {
    ZustandZuruecksetzen();
    EinstellungenAnwenden({});
    attrappe.emplace();
    gSystemmeldungZeigen = false;
    gRahmen = 6;
    gArbeitsbereich = dao::DBEngine::CreateWorkspace({}, QStringLiteral("Admin"), {}, 2);
}

Speicherbank::~Speicherbank() {
    attrappe.reset();
    ZustandZuruecksetzen();
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, nullptr);
}

void Speicherbank::tabelleAnlegen(const QString& name, const std::vector<Spaltenvorgabe>& spalten,
                                  const std::vector<std::vector<Wert>>& zeilen,
                                  const std::vector<QString>& indexfelder) {
    engine::TabellenDef def;
    def.name = name;
    for (const Spaltenvorgabe& spalte : spalten) {
        engine::FeldDef feld;
        feld.name = QString::fromUtf16(spalte.name);
        feld.typ = spalte.typ;
        feld.groesse = spalte.groesse;
        feld.attribute = spalte.attribute;
        feld.leerErlaubt = true;
        def.felder.push_back(feld);
    }
    if (!indexfelder.empty()) {
        engine::IndexDef index;
        index.name = QStringLiteral("Index");
        for (const QString& feld : indexfelder) index.felder.push_back({feld, false});
        def.indexe.push_back(index);
    }
    inhalt.tabellen.push_back({def, {zeilen.begin(), zeilen.end()}});
}

void Speicherbank::oeffnen() {
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, [this](const QString&, const QString&) {
        return std::make_unique<Speicherdatei>(inhalt);
    });
    const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::WriteOnly));
    datei.close();
    gDatenbank = gArbeitsbereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
    gDatenbankFormat = QString::fromUtf16(kFormatAccess);
}

QStringList Speicherbank::spalte(const QString& tabelle, const QString& feld) {
    QStringList werte;
    const auto satz = gDatenbank->OpenRecordset(tabelle);
    for (; !satz->Eof(); satz->MoveNext()) {
        const Wert& wert = satz->Fields(feld).Value();
        werte << (wert.istNull() ? QStringLiteral("-") : wert.alsText());
    }
    return werte;
}

QStringList Speicherbank::felder(const QString& tabelle) {
    return FeldNamen(tabelle);
}

void Speicherbank::abbrechenBei(int n) {
    f().beimEreignis = [this, n] {
        if (f().ereignisse == n) gAbbruch = true;
    };
}

void Speicherbank::nichtsGeblieben(const QStringList& tabellen) {
    EXPECT_EQ(inhalt.namen(), tabellen);
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(f().informationen.last(), u"Breche Vorgang ab ...");
    EXPECT_TRUE(f().zurueckKnopfAktiv);
    EXPECT_FALSE(f().takt);
}
