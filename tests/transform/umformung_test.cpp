// The runs of split and merge on a database in memory: fields, records, old fields, and every way out.
#include "gemeinsam/speicherbank.h"
#include "run/rahmen.h"
#include "transform/splitten.h"
#include "transform/verschmelzen.h"

namespace {

class Umformen : public Speicherbank {
  protected:
    void adressen(const std::vector<std::vector<Wert>>& zeilen,
                  const std::vector<QString>& indexfelder = {}) {
        tabelleAnlegen(
            quelle,
            {{u"Nr", {}, dao::dbLong, 4}, {u"Ort", {}, dao::dbText, 30}, {u"Name", {}, dao::dbText, 20}},
            zeilen, indexfelder);
        oeffnen();
    }
    // Postal code and town, into two new fields.
    void plzOrt() {
        f().splitten.typ = 0;
        f().splitten.feld1 = f().splitten.feld2 = QStringLiteral("Ort");
        f().splitten.namen[0] = QStringLiteral("PLZ neu");
        f().splitten.namen[1] = QStringLiteral("Ort neu");
        f().splitten.namen[2] = QStringLiteral("unbenutzt");
    }
    void ortUndName() {
        f().verschmelzen.feld1 = QStringLiteral("Ort");
        f().verschmelzen.feld2 = QStringLiteral("Name");
        f().verschmelzen.name = QStringLiteral("Beides");
    }
    void splitten() { SplittenStarten(quelle, ziel); }
    void verschmelzen() { VerschmelzenStarten(quelle, ziel); }
    int groesse(const char16_t* feld) {
        return gDatenbank->TableDefs().Item(ziel).Fields().Item(QString::fromUtf16(feld)).Size();
    }
    QStringList ergebnis(const char16_t* feld) { return spalte(ziel, QString::fromUtf16(feld)); }
    void nichtsGeblieben() {
        EXPECT_FALSE(vorhanden(ziel));
        Speicherbank::nichtsGeblieben({quelle});
    }

    const QString quelle = QStringLiteral("Adressen");
    const QString ziel = QStringLiteral("Ziel");
};

using Splitlauf = Umformen;
using Verschmelzlauf = Umformen;

TEST_F(Splitlauf, DieNeuenFelderStehenHinterDemAltenInSeinerGroesse) {
    adressen({{1, u"53111 Bonn", u"Meyer"}, {2, u"Köln", u"Schulz"}});
    plzOrt();
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(felder(ziel), texte({u"Nr", u"Ort", u"PLZ neu", u"Ort neu", u"Name"}));
    EXPECT_EQ(groesse(u"PLZ neu"), 30);
    EXPECT_EQ(groesse(u"Ort neu"), 30);
    EXPECT_EQ(ergebnis(u"Nr"), texte({u"1", u"2"}));
    EXPECT_EQ(ergebnis(u"Ort"), texte({u"53111 Bonn", u"Köln"}));
    EXPECT_EQ(ergebnis(u"PLZ neu"), texte({u"53111", u"-"}));
    EXPECT_EQ(ergebnis(u"Ort neu"), texte({u"Bonn", u"Köln"}));
    EXPECT_EQ(ergebnis(u"Name"), texte({u"Meyer", u"Schulz"}));
    EXPECT_EQ(f().informationen, texte({u"Splitte Feld(er) ...", u"Schreibe die Datei ..."}));
    EXPECT_EQ(f().datensatzText, u"2 Datensätze insgesamt");
    EXPECT_EQ(f().prozentText, u"100 %");
    EXPECT_EQ(inhalt.namen(), (QStringList{quelle, ziel}));
}

TEST_F(Splitlauf, DreiFelderAusZweien) {
    adressen({{1, u"0228/123456", u"0228/123457"},
              {2, u"123456", u"0221/124578"},
              {3, Wert::null(), u"0221/124"}});
    plzOrt();
    f().splitten.typ = 4;
    f().splitten.feld2 = QStringLiteral("Name");
    f().splitten.loeschen = true;
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(felder(ziel), texte({u"Nr", u"PLZ neu", u"Ort neu", u"unbenutzt"}));
    for (const char16_t* feld : {u"PLZ neu", u"Ort neu", u"unbenutzt"}) EXPECT_EQ(groesse(feld), 50);
    EXPECT_EQ(ergebnis(u"PLZ neu"), texte({u"0228", u"0221", u"-"}));
    EXPECT_EQ(ergebnis(u"unbenutzt"), texte({u"123457", u"124578", u"-"}));
    EXPECT_EQ(f().informationen,
              texte({u"Splitte Feld(er) ...", u"Lösche alte Felder ...", u"Schreibe die Datei ..."}));
}

TEST_F(Splitlauf, ZweiGrosseFelderGebenHoechstensZweihundertfuenfundfuenfzig) {
    tabelleAnlegen(quelle, {{u"Ort", {}, dao::dbText, 200}, {u"Name", {}, dao::dbText, 100}},
                   {{u"0228/123456", u"0228/123457"}});
    oeffnen();
    plzOrt();
    f().splitten.typ = 4;
    f().splitten.feld2 = QStringLiteral("Name");
    splitten();
    for (const char16_t* feld : {u"PLZ neu", u"Ort neu", u"unbenutzt"}) EXPECT_EQ(groesse(feld), 255);
}

// The form of address is told in full, whatever its abbreviation had room for.
TEST_F(Splitlauf, EinTeilDerNichtInsFeldPasstFuehrtZumFehlerkasten) {
    tabelleAnlegen(quelle, {{u"Ort", {}, dao::dbText, 3}}, {{u"Hr."}, {u"H. "}});
    oeffnen();
    plzOrt();
    f().splitten.typ = 2;
    erwarteFehler(QStringLiteral("Fehler beim Splitten der Felder \ran der Position: 0"), Knopf::Ignorieren);
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(ergebnis(u"Ort"), texte({u"Hr.", u"H. "}));
    EXPECT_EQ(ergebnis(u"PLZ neu"), texte({u"-", u"H."}));
}

struct Stapel {
    int saetze;
    int bleiben;  // when what is open is rolled back behind the last one
};
class SplitlaufInStapeln : public Splitlauf, public testing::WithParamInterface<Stapel> {};
INSTANTIATE_TEST_SUITE_P(Saetze, SplitlaufInStapeln, testing::Values(Stapel{500, 1}, Stapel{1500, 1001}));

TEST_P(SplitlaufInStapeln, SchonDerErsteSatzEndetEineTransaktion) {
    const int letzter = GetParam().saetze - 1;
    adressen(std::vector<std::vector<Wert>>(size_t(letzter) + 1, {1, u"53111 Bonn", u"Meyer"}));
    plzOrt();
    f().beimEreignis = [letzter] {
        if (gFortschrittWert == letzter) gArbeitsbereich->Rollback();
    };
    f().sonst = [](const Meldung&) { return Knopf::Ignorieren; };
    splitten();
    EXPECT_EQ(ergebnis(u"Nr").size(), GetParam().bleiben);
}

TEST_F(Splitlauf, EinIndexfeldBleibtUndWirdGenannt) {
    adressen({{1, u"53111 Bonn", u"Meyer"}}, {QStringLiteral("Ort")});
    plzOrt();
    f().splitten.loeschen = true;
    f().erwarte(QStringLiteral(
        "Das Feld \"Ort\" konnte nicht gelöscht werden.\rVermutlich handelt es sich um ein Indexfeld."));
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_TRUE(felder(ziel).contains(QStringLiteral("Ort")));
    EXPECT_EQ(f().meldungen[0].symbol, Symbol::Ausrufezeichen);
    EXPECT_EQ(f().meldungen[0].titel, QString());
}

TEST_F(Splitlauf, LeereTabelle) {
    adressen({});
    plzOrt();
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(ergebnis(u"Ort neu"), QStringList());
}

TEST_F(Splitlauf, EinLeererDritterTeilFuehrtZumFehlerkasten) {
    adressen({{1, u"Hans ", u"x"}, {2, u"Herr Hans Meyer", u"y"}});
    plzOrt();
    f().splitten.typ = 2;
    erwarteFehler(QStringLiteral("Fehler beim Splitten der Felder \ran der Position: 0"), Knopf::Ignorieren);
    splitten();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(ergebnis(u"Nr"), texte({u"2"}));
}

TEST_F(Splitlauf, AbbrechenImFehlerkastenLaesstNichtsZurueck) {
    adressen({{1, u"Hans ", u"x"}});
    plzOrt();
    f().splitten.typ = 2;
    erwarteFehler(QStringLiteral("Fehler beim Splitten der Felder \ran der Position: 0"), Knopf::Abbrechen);
    splitten();
    EXPECT_TRUE(gFehler);
    nichtsGeblieben();
}

TEST_F(Splitlauf, AbbruchNachVielenSaetzenLaesstNichtsZurueck) {
    std::vector<std::vector<Wert>> zeilen;
    for (int i = 0; i < 2500; ++i) zeilen.push_back({i, u"53111 Bonn", u"Meyer"});
    adressen(zeilen);
    plzOrt();
    abbrechenBei(2300);
    splitten();
    EXPECT_TRUE(gAbbruch);
    nichtsGeblieben();
}

TEST_F(Splitlauf, EinUngueltigerFeldnameWirdGleichGesagt) {
    adressen({{1, u"53111 Bonn", u"Meyer"}});
    plzOrt();
    f().splitten.namen[0] = QStringLiteral("P.L.Z.");
    erwarteFehler(QStringLiteral("Fehler beim Kopieren der Tabelle 'Adressen' nach 'Ziel'."),
                  Knopf::Abbrechen);
    splitten();
    nichtsGeblieben();
}

TEST_F(Splitlauf, NeinVorDemUeberschreibenLaesstDieAlteTabelle) {
    tabelleAnlegen(ziel, {{u"Alt"}}, {{u"bleibt"}});
    adressen({{1, u"53111 Bonn", u"Meyer"}});
    plzOrt();
    f().erwarte(
        QStringLiteral("Sind sie sicher, dass die Tabelle \"Ziel\"\rinklusive ihrer Relationen überschrieben "
                       "werden soll?"),
        Knopf::Nein);
    splitten();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(spalte(ziel, QStringLiteral("Alt")), texte({u"bleibt"}));
}

TEST_F(Splitlauf, AbbruchBringtDieUeberschriebeneTabelleZurueck) {
    tabelleAnlegen(ziel, {{u"Alt"}}, {{u"bleibt"}});
    adressen({{1, u"53111 Bonn", u"Meyer"}});
    plzOrt();
    f().erwarte(
        QStringLiteral("Sind sie sicher, dass die Tabelle \"Ziel\"\rinklusive ihrer Relationen überschrieben "
                       "werden soll?"),
        Knopf::Ja);
    abbrechenBei(1);
    splitten();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(spalte(ziel, QStringLiteral("Alt")), texte({u"bleibt"}));
}

TEST_F(Verschmelzlauf, DasNeueFeldStehtHinterDemErsten) {
    adressen({{1, u"Bonn", u"Meyer"}, {2, Wert::null(), u"Schulz"}, {3, Wert::null(), Wert::null()}});
    ortUndName();
    f().verschmelzen.trennzeichen = QStringLiteral(", ");
    verschmelzen();
    EXPECT_EQ(gRahmen, 42);
    EXPECT_EQ(felder(ziel), texte({u"Nr", u"Ort", u"Beides", u"Name"}));
    EXPECT_EQ(groesse(u"Beides"), 50);
    EXPECT_EQ(ergebnis(u"Beides"), texte({u"Bonn, Meyer", u", Schulz", u", "}));
    EXPECT_EQ(ergebnis(u"Name"), texte({u"Meyer", u"Schulz", u"-"}));
    EXPECT_EQ(f().informationen, texte({u"Verschmelze Felder ...", u"Schreibe die Datei ..."}));
    EXPECT_EQ(inhalt.namen(), (QStringList{quelle, ziel}));
}

TEST_F(Verschmelzlauf, ZweiNullOhneTrennzeichenBleibenNull) {
    adressen({{1, Wert::null(), Wert::null()}});
    ortUndName();
    verschmelzen();
    EXPECT_EQ(ergebnis(u"Beides"), texte({u"-"}));
}

TEST_F(Verschmelzlauf, ZweiLeereTexteLassenDenSatzOhneWortWeg) {
    adressen({{1, u"", u""}, {2, u"Bonn", u"Meyer"}});
    ortUndName();
    verschmelzen();
    EXPECT_EQ(gRahmen, 42);
    EXPECT_TRUE(f().meldungen.empty());
    EXPECT_EQ(ergebnis(u"Nr"), texte({u"2"}));
}

TEST_F(Verschmelzlauf, HoechstensZweihundertfuenfundfuenfzigZeichen) {
    tabelleAnlegen(quelle, {{u"Ort", {}, dao::dbText, 200}, {u"Name", {}, dao::dbText, 100}},
                   {{QString(200, u'o'), QString(100, u'n')}});
    oeffnen();
    ortUndName();
    f().verschmelzen.trennzeichen = QStringLiteral("-");
    verschmelzen();
    EXPECT_EQ(groesse(u"Beides"), 255);
    EXPECT_EQ(ergebnis(u"Beides"), QStringList{QString(200, u'o') + u'-' + QString(54, u'n')});
}

TEST_F(Verschmelzlauf, VolleFelderMitTrennzeichenFuehrenZumFehlerkasten) {
    adressen({{1, QString(30, u'o'), QString(20, u'n')}, {2, u"Bonn", u"Meyer"}});
    ortUndName();
    f().verschmelzen.trennzeichen = QStringLiteral("-");
    erwarteFehler(QStringLiteral("Fehler beim Verschmelzen der Felder \ran der Position: 0"),
                  Knopf::Ignorieren);
    verschmelzen();
    EXPECT_EQ(gRahmen, 42);
    EXPECT_EQ(ergebnis(u"Beides"), texte({u"-", u"Bonn-Meyer"}));
}

TEST_F(Verschmelzlauf, EinIndexfeldBleibtUndDasAndereGeht) {
    const std::pair<QString, QStringList> faelle[] = {
        {QStringLiteral("Ort"), texte({u"Nr", u"Ort", u"Beides"})},
        {QStringLiteral("Name"), texte({u"Nr", u"Beides", u"Name"})}};
    for (const auto& [indexfeld, felderDanach] : faelle) {
        SCOPED_TRACE(indexfeld.toStdString());
        inhalt.tabellen.clear();
        adressen({{1, u"Bonn", u"Meyer"}}, {indexfeld});
        ortUndName();
        f().verschmelzen.loeschen = true;
        f().erwarte(
            QStringLiteral("Das Feld \"%1\" konnte nicht gelöscht werden.\rVermutlich handelt es sich "
                           "um ein Indexfeld.")
                .arg(indexfeld));
        verschmelzen();
        EXPECT_EQ(gRahmen, 42);
        EXPECT_EQ(felder(ziel), felderDanach);
    }
}

TEST_F(Verschmelzlauf, AbbruchUndFehlerLassenNichtsZurueck) {
    adressen({{1, QString(30, u'o'), QString(20, u'n')}});
    ortUndName();
    f().verschmelzen.trennzeichen = QStringLiteral("-");
    erwarteFehler(QStringLiteral("Fehler beim Verschmelzen der Felder \ran der Position: 0"),
                  Knopf::Abbrechen);
    verschmelzen();
    nichtsGeblieben();
    f().verschmelzen.trennzeichen.reset();
    gRahmen = -1;
    abbrechenBei(f().ereignisse + 1);
    verschmelzen();
    EXPECT_TRUE(gAbbruch);
    nichtsGeblieben();
}

TEST_F(Verschmelzlauf, EinSchreibfehlerAmEndeLaesstSichWiederholen) {
    adressen({{1, u"Bonn", u"Meyer"}});
    ortUndName();
    inhalt.fehlerBeimAnwenden = EngineFehler(kDatentraegerVoll, QStringLiteral("Voll."));
    f().sonst = [](const Meldung&) { return Knopf::Wiederholen; };
    verschmelzen();
    EXPECT_EQ(gRahmen, 42);
    EXPECT_EQ(f().meldungen.size(), 1u);
    EXPECT_EQ(inhalt.namen(), (QStringList{quelle, ziel}));
}

}  // namespace
