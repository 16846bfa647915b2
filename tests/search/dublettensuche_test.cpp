// The whole operation: passes, groups, enriched records, review, corrected table, and every way out.
#include "search/dublettensuche.h"

#include "fields/einstellungen.h"
#include "search/anreicherung.h"
#include "search/puffer.h"
#include "search/suchbank.h"

namespace {

class Suche : public Suchbank {
  protected:
    void SetUp() override {
        f().optionen.toleranz = 2;
        durchlauf(0, {0}, 2);
    }
    void mitPaar() {
        adressen({{u"Meyer", u"Hauptstr. 12", u"50667", u"Köln"},
                  {u"Anton", u"Weg 1", u"10115", u"Berlin"},
                  {u"Meyer", u"Hauptstraße 12", u"50667", u"Köln"}});
    }
    void starten() { DublettensucheStarten(quelle, ziel); }
    QStringList spalteZiel(const char16_t* feld) { return spalte(ziel, QString::fromUtf16(feld)); }
};

TEST_F(Suche, MembersAreMarkedAndAnEnrichedRecordIsProposed) {
    mitPaar();
    suchen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(2, gDublettenAnzahl);
    EXPECT_EQ(texte({u"13", u"11", u"13", u"12"}), spalteZiel(u"TEMP_DSS"));
    EXPECT_EQ(texte({u"1", u"2", u"3", u"4"}), spalteZiel(u"TEMP_DSN"));
    EXPECT_EQ(texte({u"1", u"0", u"1", u"1"}), spalteZiel(u"TEMP_BN"));
    EXPECT_EQ(texte({u"", u"", u"", u"Angereichert"}), spalteZiel(u"TEMP_AMK"));
    // The longest part of each kind: the street of the third record, the number of the first one.
    EXPECT_EQ(u"Hauptstraße 12", spalteZiel(u"Strasse").last());
    EXPECT_EQ(u"Meyer", spalteZiel(u"Firma").last());
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Auswertung der gefundenen Dubletten ...")));
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Sortiere Dubletten ...")));
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Reichere Datensätze an ...")));
}

TEST_F(Suche, AcceptedFromTheStartTheEnrichedRecordHasState21) {
    mitPaar();
    suchen(true, true);
    EXPECT_EQ(texte({u"13", u"11", u"13", u"21"}), spalteZiel(u"TEMP_DSS"));
}

TEST_F(Suche, WithoutEnrichingNoRecordIsAdded) {
    mitPaar();
    suchen(false);
    EXPECT_EQ(texte({u"13", u"11", u"13"}), spalteZiel(u"TEMP_DSS"));
}

TEST_F(Suche, NoPairLeavesEverythingAsItIs) {
    adressen({{u"Meyer", u"A 1", u"1", u"X"}, {u"Meyerhof", u"B 2", u"2", u"Y"}});
    suchen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(0, gDublettenAnzahl);
    EXPECT_EQ(texte({u"11", u"11"}), spalteZiel(u"TEMP_DSS"));
}

TEST_F(Suche, WithoutAPassNothingIsFound) {
    mitPaar();
    f().optionen.durchfuehren[0] = false;
    suchen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(0, gDublettenAnzahl);
}

TEST_F(Suche, APassWithoutAFieldIsSkipped) {
    mitPaar();
    f().optionen.suchFeld[0] = 0;
    durchlauf(1, {3}, 3);
    suchen();
    EXPECT_EQ(2, gDublettenAnzahl);
    EXPECT_TRUE(f().informationen.filter(QStringLiteral("Unter Sortierung")).size() == 1);
    EXPECT_TRUE(f().informationen.filter(QStringLiteral("\"[Ort]\"")).size() == 1);
}

TEST_F(Suche, TheFirstFieldThatIsSetMakesTheBlocks) {
    mitPaar();
    f().optionen.suchFeld[0] = 0;
    f().optionen.suchFeld[1] = 4;
    f().optionen.suchFeld[2] = 1;
    suchen();
    EXPECT_EQ(1, f().informationen.filter(QStringLiteral("\"[Ort],[Firma]\"")).size());
    EXPECT_EQ(2, gDublettenAnzahl);
}

TEST_F(Suche, TheBlockColumnIsCountedInTheSourceAndLookedUpInTheWorkTable) {
    // Sorted by town; with the ignored column in front the blocks are those of the firm.
    adressen({{u"Egal", {0, 1}}, {u"Ort", {0, 0}}, {u"Firma", {2, 1}}, {u"Rest", {0, 0}}},
             {{u"", u"Köln", u"Meyer", u""}, {u"", u"Bonn", u"Meyer", u""}, {u"", u"Köln", u"Schulz", u""}});
    durchlauf(0, {1}, 2);
    suchen(false);
    EXPECT_EQ(1, f().informationen.filter(QStringLiteral("\"[Ort]\"")).size());
    EXPECT_EQ(texte({u"13", u"13", u"11"}), spalteZiel(u"TEMP_DSS"));
}

TEST_F(Suche, NothingToCompareInALaterPassEndsTheSearchWithWhatItFound) {
    adressen({{u"Meyer", u"Lindenhof 1", u"50667", u"Köln"}, {u"Meyer", u"Lindenhof 1", u"60311", u"Köln"}});
    suchen();
    EXPECT_EQ(2, gDublettenAnzahl);
    ArbeitstabelleLoeschen();
    durchlauf(1, {2}, 5);
    f().erwarte(QStringLiteral(
        "Kein Vergleich notwendig.\r\nVersuchen sie es eventuell noch einmal mit dem Quicksuche-Modus."));
    DublettensucheStarten(quelle, QStringLiteral("Zweites Ziel"));
    EXPECT_TRUE(gAbbruch);
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(vorhanden(QStringLiteral("Zweites Ziel")));
}

TEST_F(Suche, TheSliderSetsTheThreshold) {
    const float soll[] = {0.82f, 0.73f, 0.62f, 0.5f};
    mitPaar();
    for (int toleranz = 0; toleranz < 4; ++toleranz) {
        f().optionen.toleranz = toleranz;
        f().sonst = [](const Meldung&) { return Knopf::Ja; };  // the target of the round before
        suchen();
        EXPECT_EQ(soll[toleranz], gRelevanz);
    }
}

TEST_F(Suche, QuickModeShowsThePercentageInTheResult) {
    mitPaar();
    f().optionen.quickSuche = true;
    suchen();
    EXPECT_EQ(texte({u"98%", u"", u"98%", u"Angereichert"}), spalteZiel(u"TEMP_AMK"));
}

TEST_F(Suche, SeveralContactsOfAFirmStayApart) {
    adressen({{u"Firma", {2, 1}}, {u"PLZ", {3, 4}}, {u"Name", {4, 6}}},
             {{u"Meyer", u"50667", u"Hans Schulz"}, {u"Meyer", u"50667", u"Eva Berger"}});
    suchen();
    EXPECT_EQ(0, gDublettenAnzahl);
    f().optionen.toleranz = 3;
    f().sonst = [](const Meldung&) { return Knopf::Ja; };
    gZuordnungenTabelle1[2] = {0, 0};
    suchen();
    EXPECT_EQ(2, gDublettenAnzahl);
    gZuordnungenTabelle1[2] = {4, 6};
    f().optionen.ansprechpartnerDifferenzieren = true;
    suchen();
    EXPECT_EQ(0, gDublettenAnzahl);
}

TEST_F(Suche, ALongChainIsOneGroup) {
    // Each is like the next one only: three of four words.
    std::vector<std::vector<Wert>> zeilen;
    for (int i = 0; i < 60; ++i)
        zeilen.push_back(
            {QStringLiteral("aa w%1 w%2 w%3").arg(i + 100).arg(i + 101).arg(i + 102), u"", u"", u""});
    adressen({{u"Ort", {3, 8}}, {u"B", {0, 0}}, {u"C", {0, 0}}, {u"D", {0, 0}}}, zeilen);
    suchen(false);
    EXPECT_EQ(60, gDublettenAnzahl);
    EXPECT_EQ(QStringList(60, QStringLiteral("1")), spalteZiel(u"TEMP_BN"));
}

std::vector<std::vector<Wert>> paare(int anzahl) {
    std::vector<std::vector<Wert>> zeilen;
    for (int i = 0; i < anzahl; ++i) {
        const QString ort = QStringLiteral("o%1").arg(i, 4, 10, QChar(u'0'));
        zeilen.push_back({ort, u"", u"", u""});
        zeilen.push_back({ort, u"", u"", u""});
    }
    return zeilen;
}

TEST_F(Suche, AMultipleOfAHundredIsReportedBehindTheLastGroup) {
    adressen({{u"Ort", {3, 8}}, {u"B", {0, 0}}, {u"C", {0, 0}}, {u"D", {0, 0}}}, paare(50));
    erwarteFehler(QStringLiteral("Fehler bei der Ähnlichkeitenauswertung."), Knopf::Ignorieren);
    durchlauf(0, {0}, 5);
    suchen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(100, gDublettenAnzahl);
    EXPECT_GE(spalteZiel(u"TEMP_DSS").count(QStringLiteral("12")), 50)
        << "the last batch has its enriched record";
    EXPECT_EQ(u"Angereichert", spalteZiel(u"TEMP_AMK").last());
}

TEST_F(Suche, GivingUpTheEvaluationEndsTheSearch) {
    adressen({{u"Ort", {3, 8}}, {u"B", {0, 0}}, {u"C", {0, 0}}, {u"D", {0, 0}}}, paare(50));
    erwarteFehler(QStringLiteral("Fehler bei der Ähnlichkeitenauswertung."), Knopf::Abbrechen);
    durchlauf(0, {0}, 5);
    suchen();
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(ziel));
    EXPECT_FALSE(vorhanden(arbeit));
}

TEST_F(Suche, OtherCountsEndTheEvaluationQuietly) {
    adressen({{u"Ort", {3, 8}}, {u"B", {0, 0}}, {u"C", {0, 0}}, {u"D", {0, 0}}}, paare(49));
    durchlauf(0, {0}, 5);
    suchen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(98, gDublettenAnzahl);
}

TEST_F(Suche, AGroupInTwoRunsGetsTwoEnrichedRecords) {
    adressen({{u"Ort", {3, 8}}, {u"B", {0, 0}}, {u"C", {0, 0}}, {u"D", {0, 0}}}, paare(130));
    durchlauf(0, {0}, 5);
    suchen();
    std::vector<Paar> liste;
    for (qint32 i = 0; i < 130; ++i) liste.push_back({2 * i + 1, 2 * i + 2, i + 1});
    std::vector<Dublette> dubletten = DublettenAuflisten(liste);
    DublettenSortieren(dubletten);
    int laeufe = 0;
    for (size_t i = 0; i < dubletten.size(); ++i)
        laeufe += i == 0 || dubletten[i].gruppe != dubletten[i - 1].gruppe;
    EXPECT_EQ(laeufe, spalteZiel(u"TEMP_DSS").count(QStringLiteral("12")));
    EXPECT_EQ(260, gDublettenAnzahl);
}

TEST_F(Suche, NullsAndNumbersOfAGroup) {
    adressen({{u"Ort", {3, 8}},
              {u"Zahl", {0, 0}, dao::dbLong, 4},
              {u"Datum", {0, 0}, dao::dbDate, 8},
              {u"Leer", {0, 0}},
              {u"Text", {0, 0}}},
             {{u"Köln", 7, DatumZeit{100}, Wert::null(), u"ab"},
              {u"Köln", Wert::null(), DatumZeit{200}, Wert::null(), u"cd"},
              {u"Köln", 9, Wert::null(), Wert::null(), Wert::null()}});
    suchen();
    EXPECT_EQ(u"9", spalteZiel(u"Zahl").last()) << "the greatest number";
    EXPECT_EQ(u"18.07.1900", spalteZiel(u"Datum").last()) << "the latest date";
    EXPECT_EQ(u"-", spalteZiel(u"Leer").last()) << "all Null stays Null";
    EXPECT_EQ(u"ab", spalteZiel(u"Text").last()) << "the first of equally long values";
}

TEST_F(Suche, TheCounterOfTheEnrichedRecordIsTheEngines) {
    adressen({{u"Ort", {3, 8}}, {u"Nr", {1, 1}, dao::dbLong, 4, dao::dbAutoIncrField}},
             {{u"Köln", 17}, {u"Köln", 40}});
    suchen();
    EXPECT_EQ(texte({u"17", u"40", u"41"}), spalteZiel(u"Nr"));
}

TEST_F(Suche, AnEnrichedStreetColumnLosesItsNumber) {
    adressen({{u"Ort", {3, 8}}, {u"Strasse", {3, 1}}},
             {{u"Köln", u"Hauptstr. 12"}, {u"Köln", u"Hauptstr. 12"}});
    suchen();
    EXPECT_EQ(u"Hauptstr.", spalteZiel(u"Strasse").last());
}

TEST_F(Suche, TheReviewDecidesAndTheCorrectedTableHasTheSourcesColumns) {
    mitPaar();
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(12, gRahmen);
        // The user takes the enriched record and keeps one of the two.
        const auto satz = gDatenbank->OpenRecordset(ziel);
        for (; !satz->Eof(); satz->MoveNext()) {
            const int nummer = int(satz->Fields(QStringLiteral("TEMP_DSN")).Value().alsZahl());
            if (nummer != 1 && nummer != 4) continue;
            satz->Edit();
            satz->Fields(QStringLiteral("TEMP_DSS")).setValue(nummer == 1 ? 22 : 21);
            satz->Update();
        }
    };
    starten();
    EXPECT_EQ(13, gRahmen);
    EXPECT_EQ(felder(quelle), felder(ziel));
    EXPECT_EQ(texte({u"Hauptstr. 12", u"Weg 1", u"Hauptstraße 12"}), spalteZiel(u"Strasse"));
    EXPECT_FALSE(vorhanden(arbeit));
    EXPECT_EQ((QStringList{quelle, ziel}), inhalt.namen())
        << "the result is in the file, the work table is not";
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Bereite Anzeige der Ergebnisse vor ...")));
}

TEST_F(Suche, TakingNothingDeletesAllRecordsOfGroups) {
    mitPaar();
    starten();
    EXPECT_EQ(13, gRahmen);
    EXPECT_EQ(QStringList{QStringLiteral("Anton")}, spalteZiel(u"Firma"));
}

TEST_F(Suche, ACancelledReviewDropsTheTarget) {
    mitPaar();
    f().beimNachbearbeiten = [] { gAbbruch = true; };
    starten();
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(vorhanden(ziel));
    EXPECT_FALSE(vorhanden(arbeit));
    EXPECT_EQ(QStringList{quelle}, inhalt.namen());
    EXPECT_EQ(3, gDatenbank->OpenRecordset(quelle)->RecordCount());
    EXPECT_EQ(QStringLiteral("Breche Vorgang ab ..."), f().informationen.last());
    EXPECT_TRUE(f().zurueckKnopfAktiv);
}

TEST_F(Suche, FindingNothingLeavesNoTable) {
    adressen({{u"Meyer", u"A 1", u"1", u"X"}, {u"Meyerhof", u"B 2", u"2", u"Y"}});
    f().erwarte(QStringLiteral("Es wurden keine Dubletten gefunden."));
    starten();
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(vorhanden(ziel));
}

TEST_F(Suche, AFailingCorrectionTakesTheWayOut) {
    mitPaar();
    f().beimNachbearbeiten = [this] {
        gDatenbank->TableDefs().Item(ziel).Fields().Delete(QStringLiteral("TEMP_BN"));
    };
    erwarteFehler(QStringLiteral("Fehler beim Erstellen der korrigierten Tabelle."), Knopf::Abbrechen);
    starten();
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(vorhanden(ziel));
}

TEST_F(Suche, AnAbortInThePassesLeavesNoTrace) {
    mitPaar();
    f().beimEreignis = [this] {
        const bool imDurchlauf =
            !f().informationen.isEmpty() && f().informationen.last().startsWith(QStringLiteral("Durchsuche"));
        gAbbruch = gAbbruch || imDurchlauf;
    };
    starten();
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(vorhanden(ziel));
    EXPECT_FALSE(vorhanden(arbeit));
    EXPECT_FALSE(gArbeitsDaten || gZweitDaten || gBlockDaten || gErgebnisDaten || gQuellDaten);
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Breche Suchvorgang ab ...")));
}

// Every row of the table that composes an enriched record.
TEST(Anreicherung, EveryRowOfTheTable) {
    EinstellungenAnwenden({});
    Gruppenbestes bestes;
    bestes.ganz = {Wert(u"ganz")};
    for (int art = kErsteFeldart; art <= kLetzteFeldart; ++art)
        bestes.teil[size_t(art)] = QStringLiteral("p%1").arg(art);
    const std::vector<std::pair<FeldZuordnung, const char16_t*>> faelle{
        {{0, 0}, u"ganz"},        {{0, 1}, u"ganz"},     {{1, 1}, u"ganz"},      {{2, 4}, u"p23"},
        {{2, 1}, u"ganz"},        {{2, 2}, u"ganz"},     {{2, 3}, u"ganz"},      {{3, 1}, u"p31"},
        {{3, 2}, u"ganz"},        {{3, 32}, u"p32"},     {{3, 3}, u"p31 p32"},   {{3, 4}, u"p33"},
        {{3, 8}, u"p34"},         {{3, 12}, u"p33 p34"}, {{3, 5}, u"ganz"},      {{4, 1}, u"p41"},
        {{4, 2}, u"p42"},         {{4, 4}, u"p43"},      {{4, 6}, u"p42 p43"},   {{4, 5}, u"p41 p43"},
        {{4, 7}, u"p41 p42 p43"}, {{4, 3}, u"ganz"},     {{4, 8}, u"p44"},       {{5, 1}, u"p51"},
        {{5, 2}, u"p52"},         {{5, 4}, u"p53"},      {{5, 3}, u"p51 / p52"}, {{5, 5}, u"p51 / p53"},
        {{5, 7}, u"ganz"},        {{6, 1}, u"p61"},      {{6, 2}, u"p62"},       {{6, 3}, u"ganz"},
    };
    for (const auto& [zuordnung, soll] : faelle) {
        SCOPED_TRACE(std::to_string(zuordnung.Gruppe) + "/" + std::to_string(zuordnung.Maske));
        EXPECT_EQ(Wert(soll), AngereicherterWert(bestes, 0, zuordnung));
    }
}

TEST(Anreicherung, OnlyEmptyAndNullFallBackToTheWholeValue) {
    EinstellungenAnwenden({});
    Gruppenbestes bestes;
    bestes.ganz = {Wert(u"ganz")};
    EXPECT_EQ(Wert(u"ganz"), AngereicherterWert(bestes, 0, {3, 8}));
    bestes.teil[kOrt] = Wert::null();
    EXPECT_EQ(Wert(u"ganz"), AngereicherterWert(bestes, 0, {3, 8}));
    EXPECT_EQ(Wert(u""), AngereicherterWert(bestes, 0, {3, 3})) << "two missing parts join to a text";
    EXPECT_EQ(Wert(u"/"), AngereicherterWert(bestes, 0, {5, 3}));
}

TEST(Anreicherung, WithoutFormAndTitleTheAddressIsAnEmptyText) {
    EinstellungenAnwenden({});
    Gruppenbestes bestes;
    bestes.ganz = {Wert(u"Firma")};
    TeilSammeln(bestes, kAnrede, u"Firma");
    AnredeZusammensetzen(bestes);
    EXPECT_EQ(Wert(u""), AngereicherterWert(bestes, 0, {4, 1}));
}

TEST(Anreicherung, FormOfAddressAndTitlesAreCollectedApart) {
    EinstellungenAnwenden({});
    Gruppenbestes bestes;
    TeilSammeln(bestes, kAnrede, u"Herrn Dr. Meyer");
    TeilSammeln(bestes, kAnrede, u"Frau");
    TeilSammeln(bestes, kAnrede, u"Prof. Dr.");
    TeilSammeln(bestes, kNachname, u"Hans Meyer");
    TeilSammeln(bestes, kNachname, u"Hans Meier");
    AnredeZusammensetzen(bestes);
    EXPECT_EQ(Wert(u"Frau Prof. Dr."), bestes.teil[kAnrede]);
    EXPECT_EQ(Wert(u"Meyer"), bestes.teil[kNachname]);
}

}  // namespace
