// The structural copy of a table: fields, indexes, what is asked before; and the relations of a copy.
#include "data/kopieren.h"

#include "gemeinsam/speicherbank.h"

namespace {

const QString kQuelle = QStringLiteral("Adressen");
const QString kZiel = QStringLiteral("Kopie");
const QString kFrage = QStringLiteral(
    "Sind sie sicher, dass die Tabelle \"Kopie\"\rinklusive ihrer Relationen überschrieben werden soll?");
const QString kFehler = QStringLiteral("Fehler beim Kopieren der Tabelle 'Adressen' nach 'Kopie'.");

NeuesFeld feld(const char16_t* name, int typ, int groesse) {
    return {QString::fromUtf16(name), typ, groesse};
}

class Kopieren : public Speicherbank {
  protected:
    void SetUp() override {
        tabelleAnlegen(
            kQuelle,
            {{u"Nr", {}, dao::dbLong, 4, dao::dbAutoIncrField}, {u"Ort"}, {u"Notiz", {}, dao::dbMemo, 0}},
            {{Wert(1), Wert(u"Köln"), Wert(u"n")}, {Wert(2), Wert(u"Ulm"), Wert::null()}});
        for (engine::FeldDef& def : inhalt.tabellen[0].def.felder) def.leerErlaubt = false;
        tabelleAnlegen(QStringLiteral("Orte"), {{u"Name"}}, {});
    }
    void mitZiel(const QString& name = kZiel) { tabelleAnlegen(name, {{u"Alt"}}, {{Wert(u"x")}}); }
    void mitRelation(const char16_t* name, const QString& tabelle, const QString& fremd, int attribute = 0) {
        inhalt.relationen.push_back({QString::fromUtf16(name),
                                     tabelle,
                                     fremd,
                                     attribute,
                                     {{QStringLiteral("Ort"), QStringLiteral("Name")}}});
    }
    void oeffnen(const char16_t* format = kFormatAccess) {
        Speicherbank::oeffnen();
        gDatenbankFormat = QString::fromUtf16(format);
    }
    QStringList relationen() {
        QStringList namen;
        for (int i = 0; i < gDatenbank->Relations().Count(); ++i)
            namen << gDatenbank->Relations().Item(i).Name();
        return namen;
    }
    static const dao::TableDef& tabelle(const QString& name) { return gDatenbank->TableDefs().Item(name); }
};

TEST_F(Kopieren, DieKopieHatFelderUndIndexeAberKeineSaetze) {
    engine::IndexDef eindeutig{QStringLiteral("Primär"), {{QStringLiteral("Nr"), false}}, true, true};
    engine::IndexDef einfach{QStringLiteral("Orte"),
                             {{QStringLiteral("Ort"), true}, {QStringLiteral("Nr"), false}}};
    inhalt.tabellen[0].def.indexe = {eindeutig, einfach};
    oeffnen();
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_EQ(felder(kZiel), texte({u"Nr", u"Ort", u"Notiz"}));
    for (int i = 0; i < 3; ++i) {
        const dao::Field& alt = tabelle(kQuelle).Fields().Item(i);
        const dao::Field& neu = tabelle(kZiel).Fields().Item(i);
        EXPECT_EQ(neu.Type(), alt.Type());
        EXPECT_EQ(neu.Size(), alt.Size());
        EXPECT_EQ(neu.Attributes(), alt.Attributes());
        EXPECT_TRUE(neu.AllowZeroLength());  // whatever the type, and whatever the source says
        EXPECT_FALSE(alt.AllowZeroLength());
    }
    ASSERT_EQ(tabelle(kZiel).Indexes().Count(), 2);
    for (int i = 0; i < 2; ++i) {
        const dao::Index& alt = tabelle(kQuelle).Indexes().Item(i);
        const dao::Index& neu = tabelle(kZiel).Indexes().Item(i);
        EXPECT_EQ(neu.Name(), alt.Name());
        EXPECT_EQ(neu.Fields(), alt.Fields());
        EXPECT_EQ(neu.Unique(), alt.Unique());
        EXPECT_EQ(neu.Primary(), alt.Primary());
    }
    EXPECT_EQ(spalte(kZiel, QStringLiteral("Ort")), QStringList());
    EXPECT_EQ(spalte(kQuelle, QStringLiteral("Ort")), texte({u"Köln", u"Ulm"}));
    EXPECT_TRUE(f().meldungen.empty());
}

TEST_F(Kopieren, NeueFelderStehenDirektHinterDemGenannten) {
    oeffnen();
    TabelleKopieren(kQuelle, kZiel, true, QStringLiteral("Nr"),
                    {feld(u"Eins", dao::dbText, 7), feld(u"Zwei", dao::dbLong, 4), feld(u"Drei", 10, 9)});
    EXPECT_EQ(felder(kZiel), texte({u"Nr", u"Eins", u"Zwei", u"Drei", u"Ort", u"Notiz"}));
    const dao::Field& eins = tabelle(kZiel).Fields().Item(1);
    EXPECT_EQ(eins.Type(), dao::dbText);
    EXPECT_EQ(eins.Size(), 7);
    EXPECT_EQ(eins.Attributes(), 0);
    EXPECT_FALSE(eins.AllowZeroLength());
    EXPECT_EQ(tabelle(kZiel).Fields().Item(2).Type(), dao::dbLong);
}

TEST_F(Kopieren, EinUnvollstaendigesNeuesFeldZaehltNicht) {
    oeffnen();
    NeuesFeld ohneNamen = feld(u"", dao::dbText, 5), ohneTyp = feld(u"A", 0, 5),
              ohneGroesse = feld(u"B", 10, 0);
    ohneNamen.name.reset();
    ohneTyp.typ.reset();
    ohneGroesse.groesse.reset();
    TabelleKopieren(kQuelle, kZiel, true, QStringLiteral("Ort"),
                    {ohneNamen, ohneTyp, ohneGroesse, feld(u"Neu", dao::dbText, 5)});
    EXPECT_EQ(felder(kZiel), texte({u"Nr", u"Ort", u"Neu", u"Notiz"}));
}

TEST_F(Kopieren, EinFeldnameOhneNeueFelderAendertNichts) {
    oeffnen();
    TabelleKopieren(kQuelle, kZiel, true, QStringLiteral("Ort"));
    EXPECT_EQ(felder(kZiel), felder(kQuelle));
}

TEST_F(Kopieren, OhneDenGenanntenNamenGibtEsKeineNeuenFelder) {
    oeffnen();
    TabelleKopieren(kQuelle, kZiel, true, QStringLiteral("ort"), {feld(u"Neu", dao::dbText, 5)});
    EXPECT_EQ(felder(kZiel), felder(kQuelle));
}

TEST_F(Kopieren, EinVorhandenesZielWirdErfragtUndBeiNeinBleibtEs) {
    mitZiel(QStringLiteral("KOPIE"));  // another case is the same table
    oeffnen();
    f().erwarte(kFrage, Knopf::Nein);
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_TRUE(gAbbruch);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(felder(kZiel), texte({u"Alt"}));
    EXPECT_EQ(f().meldungen[0].titel, QString());
    EXPECT_EQ(f().meldungen[0].symbol, Symbol::Ausrufezeichen);
    EXPECT_EQ(f().meldungen[0].knoepfe, Knoepfe::JaNein);
}

TEST_F(Kopieren, EinScharfesSGiltAlsDoppelS) {
    mitZiel(QStringLiteral("STRASSE"));
    oeffnen();
    f().erwarte(QStringLiteral("Sind sie sicher, dass die Tabelle \"Straße\"\r"
                               "inklusive ihrer Relationen überschrieben werden soll?"),
                Knopf::Nein);
    TabelleKopieren(kQuelle, QStringLiteral("Straße"), true);
    EXPECT_TRUE(gAbbruch);
}

TEST_F(Kopieren, BeiJaTrittDieKopieAnDieStelleDesZiels) {
    mitZiel();
    oeffnen(u";PWD=;");
    f().erwarte(kFrage, Knopf::Ja);
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(felder(kZiel), felder(kQuelle));
}

TEST_F(Kopieren, NurBeiAccessGehenDieRelationenDesZielsMit) {
    mitZiel();
    mitRelation(u"Eigene", kZiel, QStringLiteral("Orte"));
    mitRelation(u"Andere", kQuelle, QStringLiteral("Orte"));
    oeffnen();
    f().erwarte(kFrage, Knopf::Ja);
    TabelleKopieren(kQuelle, kZiel, false);
    EXPECT_EQ(relationen(), texte({u"Andere"}));
    EXPECT_EQ(felder(kZiel), felder(kQuelle));
}

TEST_F(Kopieren, EineRelationAufDasZielBleibtUndHaeltEsFest) {
    mitZiel();
    mitRelation(u"Fremde", kQuelle, kZiel);
    oeffnen();
    f().erwarte(kFrage, Knopf::Ja);
    erwarteFehler(kFehler, Knopf::Abbrechen);
    TabelleKopieren(kQuelle, kZiel, false);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(relationen(), texte({u"Fremde"}));
    EXPECT_EQ(felder(kZiel), texte({u"Alt"}));
}

// The format text of an .mdb is its password, so its relations are left alone.
TEST_F(Kopieren, BeiEinerMdbHaltenAuchDieEigenenRelationenDasZielFest) {
    mitZiel();
    mitRelation(u"Eigene", kZiel, QStringLiteral("Orte"));
    oeffnen(u";PWD=;");
    f().erwarte(kFrage, Knopf::Ja);
    erwarteFehler(kFehler, Knopf::Abbrechen);
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(relationen(), texte({u"Eigene"}));
}

TEST_F(Kopieren, WiederholenVersuchtDasLoeschenNochEinmal) {
    mitZiel();
    mitRelation(u"Eigene", kZiel, QStringLiteral("Orte"));
    oeffnen(u";PWD=;");
    f().erwarte(kFrage, Knopf::Ja);
    f().sonst = [](const Meldung&) {
        gDatenbank->Relations().Delete(QStringLiteral("Eigene"));
        return Knopf::Wiederholen;
    };
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_EQ(f().meldungen.size(), 2u);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(felder(kZiel), felder(kQuelle));
}

TEST_F(Kopieren, IgnorierenGehtBisZumNaechstenFehlerWeiter) {
    mitZiel();
    mitRelation(u"Eigene", kZiel, QStringLiteral("Orte"));
    oeffnen(u";PWD=;");
    f().erwarte(kFrage, Knopf::Ja);
    erwarteFehler(kFehler, Knopf::Ignorieren);  // the old table cannot be dropped
    erwarteFehler(kFehler, Knopf::Ignorieren);  // so the new one finds its name taken
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(felder(kZiel), texte({u"Alt"}));
}

TEST_F(Kopieren, AufSichSelbstKopiertVerschwindetDieQuelle) {
    oeffnen(u";PWD=;");
    f().erwarte(QStringLiteral("Sind sie sicher, dass die Tabelle \"Adressen\"\r"
                               "inklusive ihrer Relationen überschrieben werden soll?"),
                Knopf::Ja);
    erwarteFehler(QStringLiteral("Fehler beim Kopieren der Tabelle 'Adressen' nach 'Adressen'."),
                  Knopf::Abbrechen);
    TabelleKopieren(kQuelle, kQuelle, true);
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(kQuelle));
}

TEST_F(Kopieren, NichtsWirdZurueckgesetzt) {
    oeffnen();
    gAbbruch = gFehler = true;
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_TRUE(gAbbruch && gFehler);
    EXPECT_TRUE(vorhanden(kZiel));
}

// Asking about the relations of the source.
QString relationsfrage(bool weitergegeben, bool geloescht) {
    return QStringLiteral("Es besteht eine Verknüpfung zur Tabelle 'Orte'.\r") +
           (weitergegeben ? QStringLiteral("1. Alle Änderungen der Datensätze werden weitergegeben!\r")
                          : QStringLiteral("1. Änderungen der Datensätze werden nicht weitergegeben.\r")) +
           (geloescht ? QStringLiteral("2. Verknüpfte Datensätze werden ebenfalls in 'Orte' gelöscht!\r")
                      : QStringLiteral("2. Verknüpfte Datensätze werden nicht in 'Orte' gelöscht.\r")) +
           QStringLiteral(
               "\rÄnderungen dieser Einstellungen nehmen sie bitte mit den entsprechenden Programmen vor.\r"
               "Möchten sie fortsetzen?");
}

TEST_F(Kopieren, JedeRelationDerQuelleWirdEinzelnErfragt) {
    mitRelation(u"A", kQuelle, QStringLiteral("Orte"), 0);
    mitRelation(u"B", kQuelle, QStringLiteral("Orte"), 256);
    mitRelation(u"C", QStringLiteral("Orte"), kQuelle, 0);  // not the source's own
    mitRelation(u"D", kQuelle, QStringLiteral("Orte"), 4096);
    mitRelation(u"E", kQuelle, QStringLiteral("Orte"), 256 + 4096 + 2);
    oeffnen();
    f().erwarte(relationsfrage(false, false), Knopf::Ja);
    f().erwarte(relationsfrage(true, false), Knopf::Ja);
    f().erwarte(relationsfrage(false, true), Knopf::Ja);
    f().erwarte(relationsfrage(true, true), Knopf::Ja);
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_FALSE(Angehalten());
    ASSERT_EQ(f().meldungen.size(), 4u);
    EXPECT_EQ(f().meldungen[0].titel, QString());
    EXPECT_EQ(f().meldungen[0].symbol, Symbol::Information);
    EXPECT_EQ(f().meldungen[0].knoepfe, Knoepfe::JaNein);
}

TEST_F(Kopieren, EinNeinBrichtAbUndDieKopieStehtSchonDa) {
    mitRelation(u"A", kQuelle, QStringLiteral("Orte"));
    mitRelation(u"B", kQuelle, QStringLiteral("Orte"));
    oeffnen();
    f().erwarte(relationsfrage(false, false), Knopf::Nein);
    TabelleKopieren(kQuelle, kZiel, true);
    EXPECT_TRUE(gAbbruch);
    EXPECT_TRUE(vorhanden(kZiel));
}

TEST_F(Kopieren, OhneMitRelationenOderBeiEinerMdbWirdNichtGefragt) {
    mitRelation(u"A", kQuelle, QStringLiteral("Orte"));
    oeffnen();
    TabelleKopieren(kQuelle, kZiel, false);
    gDatenbankFormat = QStringLiteral(";PWD=;");
    TabelleKopieren(kQuelle, QStringLiteral("Zweite"), true);
    EXPECT_TRUE(f().meldungen.empty());
    EXPECT_TRUE(vorhanden(kZiel) && vorhanden(QStringLiteral("Zweite")));
}

// Repeating the relations on the copy.
class RelationenTest : public Kopieren {
  protected:
    void SetUp() override {
        Kopieren::SetUp();
        mitZiel();
        mitRelation(u"A", kQuelle, QStringLiteral("Orte"), 256);
        mitRelation(u"B", QStringLiteral("Orte"), kQuelle);
        mitRelation(u"C", kQuelle, QStringLiteral("Orte"));
        inhalt.relationen[0].felder.push_back({QStringLiteral("Nr"), QStringLiteral("Nummer")});
    }
    const QString kRelationsfehler = QStringLiteral("Fehler beim Erstellen der Relationen.");
};

TEST_F(RelationenTest, DieDerQuelleStehenNocheinmalFuerDasZiel) {
    oeffnen();
    RelationenKopieren(kQuelle, kZiel);
    EXPECT_EQ(relationen(), texte({u"A", u"B", u"C", u"A (korrigiert)", u"C (korrigiert)"}));
    const dao::Relation& neu = gDatenbank->Relations().Item(3);
    EXPECT_EQ(neu.Table(), kZiel);
    EXPECT_EQ(neu.ForeignTable(), u"Orte");
    EXPECT_EQ(neu.Attributes(), 256);
    ASSERT_EQ(neu.Fields().size(), 2u);
    EXPECT_EQ(neu.Fields()[0].name, u"Ort");
    EXPECT_EQ(neu.Fields()[0].fremdname, u"Name");
    EXPECT_EQ(neu.Fields()[1].name, u"Nr");
    EXPECT_EQ(neu.Fields()[1].fremdname, u"Nummer");
}

TEST_F(RelationenTest, NeuGemachteWerdenNichtNocheinmalBesucht) {
    oeffnen();
    RelationenKopieren(kQuelle, kQuelle);  // the copies are the source's own as well
    EXPECT_EQ(relationen(), texte({u"A", u"B", u"C", u"A (korrigiert)", u"C (korrigiert)"}));
}

TEST_F(RelationenTest, AndereFormateLassenSieWieSieSind) {
    for (const char16_t* format : {u";PWD=;", u"", u"access", u"Dbase 5;", u"Excel 5.0;"}) {
        Speicherinhalt wieVorher = inhalt;
        oeffnen(format);
        RelationenKopieren(kQuelle, kZiel);
        EXPECT_EQ(gDatenbank->Relations().Count(), 3);
        gDatenbank.reset();
        inhalt = wieVorher;
    }
}

TEST_F(RelationenTest, EinVergebenerNameLaesstSichUebergehenOderAbbrechen) {
    inhalt.relationen[1].name = QStringLiteral("A (korrigiert)");
    oeffnen();
    erwarteFehler(kRelationsfehler, Knopf::Ignorieren);
    RelationenKopieren(kQuelle, kZiel);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(relationen(), texte({u"A", u"A (korrigiert)", u"C", u"C (korrigiert)"}));
    gDatenbank->Relations().Delete(QStringLiteral("C (korrigiert)"));
    erwarteFehler(kRelationsfehler, Knopf::Abbrechen);
    RelationenKopieren(kQuelle, kZiel);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(gDatenbank->Relations().Count(), 3);
    EXPECT_TRUE(vorhanden(kZiel));
}

}  // namespace
