// The junk run on a database in memory: marks, review, end, and every way out.
#include "junk/muellsuche.h"

#include "gemeinsam/speicherbank.h"
#include "junk/muellpruefung.h"

namespace {

class Muellsuche : public Speicherbank {
  protected:
    Muellsuche() { gRahmen = -1; }
    // Customer number, firm, e-mail.
    void adressen(const std::vector<std::vector<Wert>>& zeilen) {
        tabelleAnlegen(quelle, {{u"Nr", {}, dao::dbLong, 4}, {u"Firma"}, {u"Mail"}}, zeilen);
        bereit();
    }
    void bereit() {
        oeffnen();
        gFeldAnzahl = 3;
        gZuordnungenTabelle1 = {{1, 1}, {2, 1}, {6, 1}};
        f().muell.email = 1;
    }
    void starten() { MuellsucheStarten(quelle, ziel); }
    QStringList ergebnis(const char16_t* feld) { return spalte(ziel, QString::fromUtf16(feld)); }
    void nichtsGeblieben() {
        EXPECT_FALSE(vorhanden(ziel));
        Speicherbank::nichtsGeblieben({quelle});
    }

    const QString quelle = QStringLiteral("Adressen");
    const QString ziel = QStringLiteral("Ziel");
    const std::vector<std::vector<Wert>> gemischt{
        {1, u"Meyer", u"a@b.de"}, {Wert::null(), u"12", u"a"}, {3, Wert::null(), u"c@d.de"}};
};

TEST_F(Muellsuche, BefundeStehenInDenSteuerspalten) {
    adressen(gemischt);
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(gRahmen, 22);
        EXPECT_EQ(felder(ziel), texte({u"Nr", u"Firma", u"Mail", u"TEMP_DSS", u"TEMP_DSN", u"TEMP_AMK"}));
        EXPECT_EQ(ergebnis(u"TEMP_DSS"), texte({u"11", u"14", u"14"}));
        EXPECT_EQ(ergebnis(u"TEMP_DSN"), texte({u"1", u"2", u"3"}));
        EXPECT_EQ(ergebnis(u"TEMP_AMK"),
                  texte({u"", u"k. Index; Firmenn. unvernünftig; Emailadr. unvernünftig;", u"k. Firmenn.;"}));
    };
    starten();
    EXPECT_EQ(gMuellAnzahl, 2);
    EXPECT_EQ(gRahmen, 23);
    EXPECT_EQ(felder(ziel), felder(quelle));
    EXPECT_EQ(ergebnis(u"Nr"), texte({u"1"}));
    EXPECT_EQ(spalte(quelle, QStringLiteral("Firma")), texte({u"Meyer", u"12", u"-"}));
    EXPECT_EQ(inhalt.namen(), (QStringList{quelle, ziel}));
    EXPECT_EQ(f().datensatzText, u"3 Datensätze insgesamt");
    EXPECT_EQ(f().informationen,
              texte({u"Bereite Tabelle für den Vorgang vor und erstelle Sicherungskopie ...",
                     u"Durchsuche die Tabelle nach Mülldatensätzen ...",
                     u"Bereite Anzeige der Ergebnisse vor ..."}));
}

TEST_F(Muellsuche, WasDerBenutzerZurueckholtBleibt) {
    adressen(gemischt);
    f().beimNachbearbeiten = [this] {
        const auto satz = gDatenbank->OpenRecordset(ziel);
        satz->FindFirst(QStringLiteral("[TEMP_DSN] = 3"));
        satz->Edit();
        satz->Fields(QStringLiteral("TEMP_DSS")).setValue(23);
        satz->Update();
    };
    starten();
    EXPECT_EQ(ergebnis(u"Nr"), texte({u"1", u"3"}));
    EXPECT_EQ(gMuellAnzahl, 2);
}

TEST_F(Muellsuche, AusgenommeneTypenWerdenNieGeprueft) {
    tabelleAnlegen(quelle,
                   {{u"Nr", {}, dao::dbDate, 8},
                    {u"Firma", {}, dao::dbCurrency, 8},
                    {u"Mail", {}, dao::dbBoolean, 1},
                    {u"Zeit", {}, dao::dbTime, 8}},
                   {{Wert::null(), Wert::null(), false, Wert::null()}});
    bereit();
    gFeldAnzahl = 4;
    gZuordnungenTabelle1.push_back({1, 1});
    f().erwarte(QStringLiteral("Es wurden keine Mülldatensätze gefunden."));
    starten();
    nichtsGeblieben();
}

TEST_F(Muellsuche, OhneDatensatz) {
    adressen({});
    f().erwarte(QStringLiteral("Kein Datensatz vorhanden.\rEine Korrektur ist daher überflüssig."));
    starten();
    EXPECT_EQ(f().meldungen[0].titel, u" Hinweis");
    nichtsGeblieben();
}

TEST_F(Muellsuche, EineQuelleDieSichNichtOeffnenLaesst) {
    adressen(gemischt);
    erwarteFehler(QStringLiteral("Fehler beim Vorbereiten der Müllsuche."), Knopf::Abbrechen);
    MuellsucheStarten(QStringLiteral("fehlt"), ziel);
    EXPECT_TRUE(gFehler);
    nichtsGeblieben();
}

TEST_F(Muellsuche, OhneBefund) {
    adressen({{1, u"Meyer", u"a@b.de"}});
    f().erwarte(QStringLiteral("Es wurden keine Mülldatensätze gefunden."));
    starten();
    EXPECT_EQ(f().meldungen[0].titel, u" Hinweis");
    nichtsGeblieben();
}

TEST_F(Muellsuche, SteuerspaltenDerQuelleWerdenErsetzt) {
    tabelleAnlegen(quelle,
                   {{u"TEMP_AMK"},
                    {u"Firma"},
                    {u"Mail"},
                    {u"TEMP_DSS", {}, dao::dbLong, 4},
                    {u"TEMP_DSN", {}, dao::dbLong, 4}},
                   {{u"alt", Wert::null(), u"a@b", 99, 99}, {u"alt", u"x", u"y@z", 99, 99}});
    bereit();
    gZuordnungenTabelle1 = {{0, 1}, {2, 1}, {6, 1}};
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(felder(ziel), texte({u"Firma", u"Mail", u"TEMP_DSS", u"TEMP_DSN", u"TEMP_AMK"}));
        EXPECT_EQ(ergebnis(u"TEMP_DSN"), texte({u"1", u"2"}));
    };
    starten();
    EXPECT_EQ(gRahmen, 23);
    EXPECT_EQ(spalte(quelle, QStringLiteral("TEMP_AMK")), texte({u"alt", u"alt"}));
}

TEST_F(Muellsuche, EinSatzDerSichNichtPruefenLaesst) {
    adressen(gemischt);
    f().beimEreignis = [this] {
        if (f().informationen.last().startsWith(QStringLiteral("Durchsuche")))
            gDatenbank->Execute(QStringLiteral("DELETE * FROM [Ziel] WHERE [TEMP_DSN] = 2"));
    };
    erwarteFehler(QStringLiteral("Fehler bei der Ausführung der Müllsuche."), Knopf::Abbrechen);
    starten();
    EXPECT_TRUE(gFehler);
    nichtsGeblieben();
}

TEST_F(Muellsuche, EinEndeDasNichtGelingt) {
    adressen(gemischt);
    f().beimNachbearbeiten = [this] {
        gDatenbank->TableDefs().Item(ziel).Fields().Delete(QStringLiteral("TEMP_DSN"));
    };
    erwarteFehler(QStringLiteral("Fehler beim Beenden der Müllsuche."), Knopf::Abbrechen);
    starten();
    EXPECT_TRUE(gFehler);
    nichtsGeblieben();
}

class MuellsucheAnDerGrenze : public Muellsuche, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Saetze, MuellsucheAnDerGrenze, testing::Values(999, 1000, 1001, 2000));

// The last record is the junk one: it counts on both sides of a batch's end.
TEST_P(MuellsucheAnDerGrenze, DerLetzteSatzZaehlt) {
    const int anzahl = GetParam();
    std::vector<std::vector<Wert>> zeilen;
    for (int i = 1; i <= anzahl; ++i)
        zeilen.push_back({i, i == anzahl ? Wert::null() : Wert(u"Meyer"), u"a@b.de"});
    adressen(zeilen);
    starten();
    EXPECT_EQ(gMuellAnzahl, 1);
    EXPECT_EQ(ergebnis(u"Nr").size(), anzahl - 1);
    EXPECT_EQ(ergebnis(u"Nr").last(), QString::number(anzahl - 1));
}

TEST_F(Muellsuche, VolleFelderMitDenVorgabenGebenKeineAnmerkung) {
    adressen({{1, u"Meyer GmbH", u"kein Klammeraffe"}, {Wert::null(), u"Meyer", u"a@b.de"}});
    f().muell = {};
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(ergebnis(u"TEMP_DSS"), texte({u"11", u"14"}));
        EXPECT_EQ(ergebnis(u"TEMP_AMK")[0], QString());
    };
    starten();
    EXPECT_EQ(gMuellAnzahl, 1);
}

TEST_F(Muellsuche, AbbruchInJederPhaseLaesstNichtsZurueck) {
    std::vector<std::vector<Wert>> zeilen(1500, {1, Wert::null(), u"a@b.de"});
    adressen(zeilen);
    for (const int ereignis : {1, 1200, 1502, 2900}) {
        SCOPED_TRACE(ereignis);
        gRahmen = -1;
        abbrechenBei(f().ereignisse + ereignis);
        starten();
        EXPECT_TRUE(gAbbruch);
        nichtsGeblieben();
    }
    f().beimEreignis = nullptr;
    f().beimNachbearbeiten = [] { gAbbruch = true; };
    gRahmen = -1;
    starten();
    nichtsGeblieben();
}

TEST_F(Muellsuche, DasAbgelehnteZielVerschwindetBeimAbbruch) {
    tabelleAnlegen(ziel, {{u"Alt"}}, {{u"x"}});
    adressen(gemischt);
    f().erwarte(
        QStringLiteral("Sind sie sicher, dass die Tabelle \"Ziel\"\rinklusive ihrer Relationen überschrieben "
                       "werden soll?"),
        Knopf::Nein);
    starten();
    nichtsGeblieben();
}

TEST_F(Muellsuche, DasUeberschriebeneZielKommtBeimAbbruchZurueck) {
    tabelleAnlegen(ziel, {{u"Alt"}}, {{u"bleibt"}});
    adressen(gemischt);
    f().erwarte(
        QStringLiteral("Sind sie sicher, dass die Tabelle \"Ziel\"\rinklusive ihrer Relationen überschrieben "
                       "werden soll?"),
        Knopf::Ja);
    f().beimNachbearbeiten = [] { gAbbruch = true; };
    starten();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(spalte(ziel, QStringLiteral("Alt")), texte({u"bleibt"}));
}

// Eleven fields with the longest remark go beyond the 200 characters of the column.
TEST_F(Muellsuche, ZuVieleAnmerkungenFuehrenZumFehlerkasten) {
    std::vector<Spaltenvorgabe> spalten;
    static const char16_t* const namen[] = {u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H", u"I", u"J"};
    for (const char16_t* name : namen) spalten.push_back({name});
    tabelleAnlegen(quelle, spalten, {std::vector<Wert>(10, Wert(u"x"))});
    bereit();
    gFeldAnzahl = 10;
    gZuordnungenTabelle1 = FeldZuordnungen(10, FeldZuordnung{6, 1});
    // Eight remarks of 24 characters, the leading blank of the first one included, fit into 200.
    for (const char16_t* name : {u"I", u"J"})
        erwarteFehler(
            QStringLiteral("Fehler beim Entmüllen des Datensatzes 'x' im Feld '%1' mit dem Wert 'x'.")
                .arg(QString::fromUtf16(name)),
            Knopf::Ignorieren);
    f().beimNachbearbeiten = [this] {
        EXPECT_EQ(ergebnis(u"TEMP_AMK")[0].size(), 8 * 24 - 1);
        EXPECT_EQ(ergebnis(u"TEMP_DSS"), texte({u"14"}));
    };
    starten();
    EXPECT_EQ(gRahmen, 23);
}

TEST_F(Muellsuche, AbbrechenImFehlerkastenLaesstNichtsZurueck) {
    tabelleAnlegen(quelle, {{u"A"}}, {{u"12"}});
    bereit();
    gFeldAnzahl = 1;
    gZuordnungenTabelle1 = {{2, 1}};
    f().sonst = [](const Meldung&) { return Knopf::Abbrechen; };
    inhalt.fehlerBeimAnwenden = EngineFehler(kDatentraegerVoll, QStringLiteral("Voll."));
    starten();
    EXPECT_EQ(f().meldungen.size(), 1u);
    EXPECT_EQ(f().meldungen[0].titel, u" Fehler!");
    nichtsGeblieben();
}

}  // namespace
