// Reconciliation and new data on a database in memory.
#include "gemeinsam/speicherbank.h"
#include "run/schritte.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"
#include "tables/datenabgleich.h"
#include "tables/neuedaten.h"

namespace {

class Zweitabellen : public Speicherbank {
  protected:
    Zweitabellen() { gRahmen = -1; }
    ~Zweitabellen() override {
        AlleDatenSchliessen();
        PaareLeeren();
    }
    // Firm, street with number, postal code and town; the second table has its own order.
    void tabellen(const std::vector<std::vector<Wert>>& eins, const std::vector<std::vector<Wert>>& zwei) {
        tabelleAnlegen(QStringLiteral("Eins"), {{u"Firma"}, {u"Strasse"}, {u"PLZ"}, {u"Ort"}}, eins);
        tabelleAnlegen(QStringLiteral("Zwei"), {{u"Platz"}, {u"Name"}, {u"Weg"}, {u"Rest"}}, zwei);
        oeffnen();
        gAusgangsTabelle = QStringLiteral("Eins");
        gZweiteTabelle = QStringLiteral("Zwei");
        gZielTabelle = ziel;
        gZuordnungenTabelle1 = {{2, 1}, {3, 3}, {3, 4}, {3, 8}};
        gZuordnungenTabelle2 = {{3, 12}, {2, 1}, {3, 3}, {0, 1}};
        f().optionen.toleranz = 2;
        f().optionen.durchfuehren[0] = true;
        f().optionen.zeichenRichtig[0] = 2;
        f().optionen.suchFeld[0] = 1;
    }
    void beispiel() {
        tabellen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"}, {u"Anton", u"Weg 1", u"10115", u"Berlin"}},
                 {{u"50667 Köln", u"Meyer", u"Hauptstraße 12", u"x"},
                  {u"80331 München", u"Zeppelin", u"Platz 3", u"y"}});
    }
    void abgleichen() {
        DatenabgleichStarten(gAusgangsTabelle, gZweiteTabelle, gZielTabelle, gZuordnungenTabelle1,
                             gZuordnungenTabelle2);
    }
    void hinzufuegen() {
        NeueDatenStarten(gAusgangsTabelle, gZweiteTabelle, gZielTabelle, gZuordnungenTabelle1,
                         gZuordnungenTabelle2);
    }
    void statusSetzen(int alt, int neu) {
        const auto satz = gDatenbank->OpenRecordset(ziel);
        for (; !satz->Eof(); satz->MoveNext())
            if (satz->Fields(QStringLiteral("TEMP_DSS")).Value() == Wert(alt)) {
                satz->Edit();
                satz->Fields(QStringLiteral("TEMP_DSS")).setValue(neu);
                satz->Update();
            }
    }
    QStringList ergebnis(const char16_t* feld) { return spalte(ziel, QString::fromUtf16(feld)); }
    void nurDasZielKamDazu() {
        EXPECT_EQ(inhalt.namen(), (QStringList{QStringLiteral("Eins"), QStringLiteral("Zwei"), ziel}));
        EXPECT_EQ(felder(ziel), texte({u"Firma", u"Strasse", u"PLZ", u"Ort"}));
    }
    void nichtsGeblieben() {
        for (const char16_t* name : {u"TEMP_DA", u"TEMP_ND", u"TEMP_DS", u"Ziel"})
            EXPECT_FALSE(vorhanden(QString::fromUtf16(name)));
        Speicherbank::nichtsGeblieben({QStringLiteral("Eins"), QStringLiteral("Zwei")});
    }

    const QString ziel = QStringLiteral("Ziel");
};

using Datenabgleich = Zweitabellen;
using NeueDaten = Zweitabellen;

TEST_F(Datenabgleich, OhneEntscheidungVerschwindetWasDieZweiteAuchHat) {
    beispiel();
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(gRahmen, 12);
        EXPECT_EQ(ergebnis(u"TEMP_DSQ"), texte({u"1", u"1", u"2", u"2", u"2"}));
        EXPECT_EQ(ergebnis(u"TEMP_DSS"), texte({u"13", u"11", u"13", u"11", u"12"}));
    };
    abgleichen();
    EXPECT_EQ(gRahmen, 53);
    EXPECT_EQ(gDublettenAnzahl, 2);
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Anton"}));
    nurDasZielKamDazu();
}

TEST_F(Datenabgleich, WasDerBenutzerUebernimmtBleibt) {
    beispiel();
    f().beimNachbearbeiten = [this] { statusSetzen(12, 21); };
    abgleichen();
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Anton", u"Meyer"}));
    EXPECT_EQ(ergebnis(u"Strasse"), texte({u"Weg 1", u"Hauptstraße 12"}));
}

TEST_F(Datenabgleich, AuchEineDubletteDerZweitenKannBleiben) {
    beispiel();
    f().beimNachbearbeiten = [this] { statusSetzen(13, 22); };
    abgleichen();
    EXPECT_EQ(ergebnis(u"Strasse"), texte({u"Hauptstr. 12", u"Weg 1", u"Hauptstraße 12"}));
}

TEST_F(Datenabgleich, OhneGemeinsameBleibtDieErsteWieSieIst) {
    tabellen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"}},
             {{u"80331 München", u"Merz", u"Platz 3", u"y"}});
    abgleichen();
    EXPECT_EQ(gRahmen, 53);
    EXPECT_EQ(gDublettenAnzahl, 0);
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Meyer"}));
    nurDasZielKamDazu();
}

TEST_F(Datenabgleich, GleicheTabellenLassenNurWasUebernommenWird) {
    tabellen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"}},
             {{u"50667 Köln", u"Meyer", u"Hauptstr. 12", u"x"}});
    abgleichen();
    EXPECT_EQ(ergebnis(u"Firma"), QStringList());
}

TEST_F(Datenabgleich, EinFehlerAmEndeHatSeinenEigenenSatz) {
    beispiel();
    f().beimNachbearbeiten = [] {
        FehlerUebergehen([] {
            gDatenbank->TableDefs().Item(QStringLiteral("Ziel")).Fields().Delete(QStringLiteral("TEMP_DSQ"));
        });
    };
    f().sonst = [](const Meldung& meldung) {
        EXPECT_TRUE(
            meldung.text.startsWith(u"Fehler beim Erstellen der Tabelle mit abgeglichenen Datensätzen."));
        return Knopf::Abbrechen;
    };
    abgleichen();
    EXPECT_FALSE(f().meldungen.empty());
    nichtsGeblieben();
}

TEST_F(NeueDaten, EinGemeinsamerSatzStehtEinmalDa) {
    beispiel();
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(ergebnis(u"TEMP_DSS"), texte({u"13", u"11", u"13", u"11", u"21"}));
    };
    hinzufuegen();
    EXPECT_EQ(gRahmen, 63);
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Anton", u"Zeppelin", u"Meyer"}));
    EXPECT_EQ(ergebnis(u"PLZ"), texte({u"10115", u"80331", u"50667"}));
    nurDasZielKamDazu();
}

TEST_F(NeueDaten, OhneGemeinsameHatDasErgebnisAlle) {
    tabellen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"}},
             {{u"80331 München", u"Merz", u"Platz 3", u"y"}});
    hinzufuegen();
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Meyer", u"Merz"}));
    EXPECT_EQ(ergebnis(u"Ort"), texte({u"Köln", u"München"}));
}

TEST_F(NeueDaten, GleicheTabellenGebenSoVieleWieDieErste) {
    tabellen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"}, {u"Anton", u"Weg 1", u"10115", u"Berlin"}},
             {{u"50667 Köln", u"Meyer", u"Hauptstr. 12", u"x"}, {u"10115 Berlin", u"Anton", u"Weg 1", u"x"}});
    hinzufuegen();
    EXPECT_EQ(ergebnis(u"Firma").size(), 2);
}

TEST_F(NeueDaten, ZurueckgelegtVerschwindetDasPaar) {
    beispiel();
    f().beimNachbearbeiten = [this] { statusSetzen(21, 12); };
    hinzufuegen();
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Anton", u"Zeppelin"}));
}

TEST_F(NeueDaten, MitgliederLassenSichBehalten) {
    beispiel();
    f().beimNachbearbeiten = [this] {
        statusSetzen(21, 12);
        statusSetzen(13, 22);
    };
    hinzufuegen();
    EXPECT_EQ(ergebnis(u"Firma"), texte({u"Meyer", u"Anton", u"Meyer", u"Zeppelin"}));
}

TEST_F(NeueDaten, EinFehlerAmEndeHatSeinenEigenenSatz) {
    beispiel();
    f().beimNachbearbeiten = [] {
        FehlerUebergehen([] {
            gDatenbank->TableDefs().Item(QStringLiteral("Ziel")).Fields().Delete(QStringLiteral("TEMP_BN"));
        });
    };
    f().sonst = [](const Meldung& meldung) {
        EXPECT_TRUE(meldung.text.startsWith(u"Fehler beim Erstellen der Tabelle mit neuen Datensätzen."));
        return Knopf::Abbrechen;
    };
    hinzufuegen();
    EXPECT_EQ(f().meldungen.size(), 1u);
    nichtsGeblieben();
}

TEST_F(Zweitabellen, AbbruchInJederPhaseLaesstNichtsZurueck) {
    beispiel();
    // While mixing, while the buffer is filled, and in the review.
    for (const int ereignis : {1, 3, 6}) {
        SCOPED_TRACE(ereignis);
        gRahmen = -1;
        const int bei = f().ereignisse + ereignis;
        f().beimEreignis = [this, bei] { gAbbruch = gAbbruch || f().ereignisse == bei; };
        ereignis == 3 ? hinzufuegen() : abgleichen();
        EXPECT_TRUE(gAbbruch);
        nichtsGeblieben();
    }
    f().beimEreignis = nullptr;
    f().beimNachbearbeiten = [] { gAbbruch = true; };
    for (const bool neu : {false, true}) {
        gRahmen = -1;
        neu ? hinzufuegen() : abgleichen();
        nichtsGeblieben();
    }
}

TEST_F(Zweitabellen, EinSchreibfehlerLaesstSichAbbrechen) {
    beispiel();
    inhalt.fehlerBeimAnwenden = EngineFehler(kDatentraegerVoll, QStringLiteral("Voll."));
    f().sonst = [](const Meldung&) { return Knopf::Abbrechen; };
    abgleichen();
    EXPECT_EQ(f().meldungen.size(), 1u);
    nichtsGeblieben();
}

}  // namespace
