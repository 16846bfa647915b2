// Tables, fields, indexes and relations of a database, and what is refused.
#include "engine/dao/werkbank.h"

namespace {

class DefinitionenTest : public Werkbank {
  protected:
    void beziehung(const char16_t* tabelle_, const char16_t* fremd) {
        inhalt.relationen.push_back({QStringLiteral("Bezug"),
                                     QString::fromUtf16(tabelle_),
                                     QString::fromUtf16(fremd),
                                     dao::dbRelationUpdateCascade,
                                     {{QStringLiteral("Nr"), QStringLiteral("A")}}});
    }
};

TEST_F(DefinitionenTest, TabellenStehenInDerOrdnungDesKatalogsNeueZuletzt) {
    oeffnen();
    anlegen(u"Anton");
    EXPECT_EQ(tabellennamen(),
              (QStringList{QStringLiteral("Kunden"), QStringLiteral("Leer"), QStringLiteral("Anton")}));
    ASSERT_EQ(db->TableDefs().Count(), 3);
    EXPECT_EQ(db->TableDefs().Item(2).Name(), u"Anton");
    EXPECT_EQ(db->TableDefs().Item(QStringLiteral("KUNDEN")).Name(), u"Kunden");
}

TEST_F(DefinitionenTest, UnbekanntesIst3265) {
    oeffnen();
    dao::TableDef& t = tabelle(u"Kunden");
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Item(2); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Item(-1); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Fehlt"); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Delete(QStringLiteral("Fehlt")); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { t.Fields().Item(4); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { t.Fields().Item(QStringLiteral("Fehlt")); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { t.Fields().Delete(QStringLiteral("Fehlt")); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { t.Indexes().Item(1); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { db->Relations().Item(0); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { db->Relations().Delete(QStringLiteral("Fehlt")); }), kNichtInListe);
}

TEST_F(DefinitionenTest, NurZumLesenGeoeffnetesLehntJedeAenderungSofortAb) {
    inhalt.nurLesbar = true;
    oeffnen();
    EXPECT_EQ(fehlerVon([&] { db->SchreibenPruefen(); }), kSystemgrenze);
    EXPECT_EQ(fehlerVon([&] { anlegen(u"Neu"); }), kSystemgrenze);
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Leer").setName(QStringLiteral("Voll")); }), kSystemgrenze);
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Delete(QStringLiteral("Leer")); }), kSystemgrenze);
    EXPECT_EQ(tabellennamen(), (QStringList{QStringLiteral("Kunden"), QStringLiteral("Leer")}));
    EXPECT_FALSE(db->ungesichert());
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 2 3 4 5");
}

TEST_F(DefinitionenTest, WasEinerKopieImWegStehtWirdVorherGesagt) {
    inhalt.meisteZeilen = 5;
    oeffnen();
    const dao::TableDef& kunden = tabelle(u"Kunden");
    const int felder = kunden.Fields().Count();
    const auto neue = [&](int anzahl, const QString& letztes) {
        std::vector<dao::Field> liste;
        for (int i = 1; i < anzahl; ++i)
            liste.push_back(kunden.CreateField(QStringLiteral("Neu%1").arg(i), dao::dbText, 20));
        liste.push_back(kunden.CreateField(letztes, dao::dbText, 20));
        return liste;
    };
    const struct {
        int anzahl;
        const char16_t* letztes;
        qint64 zeilen;
        int fehler;
    } faelle[] = {{1, u"Weg", 5, 0},
                  {1, u"We.g", 5, kUngueltigerName},
                  {1, u"Weg", 6, kSystemgrenze},
                  {1, u"Weg", -1, 0},
                  {dao::kMaxFelder - felder, u"Weg", 5, 0},
                  {dao::kMaxFelder - felder + 1, u"Weg", 5, kZuVieleFelder}};
    for (const auto& fall : faelle) {
        SCOPED_TRACE(fall.anzahl);
        EXPECT_EQ(fehlerVon([&] {
                      kunden.KopiePruefen(QStringLiteral("Kopie"),
                                          neue(fall.anzahl, QString::fromUtf16(fall.letztes)), fall.zeilen);
                  }),
                  fall.fehler);
    }
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(DefinitionenTest, EinzelheitenEinerTabelleDerDatei) {
    inhalt.tabellen[1].def.attribute = dao::dbSystemObject;
    oeffnen();
    dao::TableDef& t = tabelle(u"Kunden");
    EXPECT_EQ(t.Attributes(), 0);
    EXPECT_EQ(tabelle(u"Leer").Attributes(), dao::dbSystemObject);
    EXPECT_EQ(t.LastUpdated(), QDateTime(QDate(2001, 2, 3), QTime(4, 5, 6)));
    EXPECT_EQ(t.Fields().Count(), 4);
    EXPECT_EQ(t.Fields().Item(QStringLiteral("NAME")).Size(), 20);
    EXPECT_EQ(t.Fields().Item(0).Attributes() & dao::dbAutoIncrField, dao::dbAutoIncrField);
    ASSERT_EQ(t.Indexes().Count(), 1);
    EXPECT_EQ(t.Indexes().Item(0).Name(), u"PrimaryKey");
    EXPECT_TRUE(t.Indexes().Item(0).Unique());
    EXPECT_TRUE(t.Indexes().Item(0).Primary());
}

TEST_F(DefinitionenTest, OhneDatumImKatalogZaehltDieZeitDerDatei) {
    oeffnen();
    const QDateTime zeit = QFileInfo(ordner.filePath(QStringLiteral("test.mdb"))).lastModified();
    EXPECT_EQ(tabelle(u"Leer").LastUpdated(), zeit);
}

TEST_F(DefinitionenTest, IndexDerNurEinerRelationDientIstKeinMitglied) {
    engine::IndexDef fremd;
    fremd.name = QStringLiteral("Bezug");
    fremd.felder = {{QStringLiteral("Ort"), false}};
    fremd.fremd = true;
    inhalt.tabellen[0].def.indexe.push_back(fremd);
    oeffnen();
    EXPECT_EQ(tabelle(u"Kunden").Indexes().Count(), 1);
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Kunden").Fields().Delete(QStringLiteral("Ort")); }),
              kIndexFeldLoeschen);
}

TEST_F(DefinitionenTest, NeueTabelleGibtEsErstNachAppend) {
    oeffnen();
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Neu"));
    EXPECT_EQ(db->TableDefs().Count(), 2);
    EXPECT_EQ(fehlerVon([&] { def->OpenRecordset(); }), kObjektUngueltig);
    def->Fields().Append(def->CreateField(QStringLiteral("A"), dao::dbText, 5));
    db->TableDefs().Append(std::move(def));
    EXPECT_EQ(db->TableDefs().Count(), 3);
    EXPECT_EQ(db->OpenRecordset(QStringLiteral("Neu"))->RecordCount(), 0);
}

TEST_F(DefinitionenTest, VorhandenerNameIst3010UndDieDefinitionBleibtBeimRufer) {
    oeffnen();
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("KUNDEN"));
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kNameVorhanden);
    ASSERT_TRUE(def);
    def->setName(QStringLiteral("Andere"));
    db->TableDefs().Append(std::move(def));
    EXPECT_EQ(db->TableDefs().Count(), 3);
}

TEST_F(DefinitionenTest, NameDenDasFormatAblehntIst3125) {
    oeffnen();
    for (const QString& name : {QString(), QStringLiteral("a!b"), QString(65, u'x')}) {
        auto def = db->CreateTableDef();
        def->setName(name);
        EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kUngueltigerName);
        EXPECT_EQ(fehlerVon([&] { tabelle(u"Leer").setName(name); }), kUngueltigerName);
    }
}

TEST_F(DefinitionenTest, FeldnameDenDasFormatAblehntIst3125) {
    oeffnen();
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Neu"));
    def->Fields().Append(def->CreateField(QStringLiteral("a.b"), dao::dbLong));
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kUngueltigerName);
    dao::TableDef& leer = tabelle(u"Leer");
    const int vorher = leer.Fields().Count();
    EXPECT_EQ(fehlerVon([&] { leer.Fields().Append(leer.CreateField(QStringLiteral("a.b"), dao::dbLong)); }),
              kUngueltigerName);
    EXPECT_EQ(leer.Fields().Count(), vorher);
}

TEST_F(DefinitionenTest, IndexUeberUnbekanntemFeldIst3265) {
    oeffnen();
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Neu"));
    def->Fields().Append(def->CreateField(QStringLiteral("A"), dao::dbLong));
    dao::Index index = def->CreateIndex(QStringLiteral("I"));
    index.setFields({{QStringLiteral("B"), false}});
    def->Indexes().Append(index);
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kNichtInListe);
    EXPECT_EQ(db->TableDefs().Count(), 2);
}

TEST_F(DefinitionenTest, GroessenNeuerFelder) {
    oeffnen();
    struct Fall {
        int typ, verlangt, groesse;
    };
    for (const Fall& fall : {Fall{dao::dbBoolean, 0, 1},
                             {dao::dbByte, 0, 1},
                             {dao::dbInteger, 0, 2},
                             {dao::dbLong, 99, 4},
                             {dao::dbCurrency, 0, 8},
                             {dao::dbSingle, 0, 4},
                             {dao::dbDouble, 0, 8},
                             {dao::dbDate, 0, 8},
                             {dao::dbTime, 0, 8},
                             {dao::dbBigInt, 0, 8},
                             {dao::dbGUID, 0, 16},
                             {dao::dbDecimal, 0, 16},
                             {dao::dbMemo, 50, 0},
                             {dao::dbLongBinary, 50, 0},
                             {dao::dbText, 30, 30},
                             {dao::dbText, 0, 255},
                             {dao::dbBinary, 12, 12}}) {
        SCOPED_TRACE(fall.typ);
        const dao::Field feld = tabelle(u"Leer").CreateField(QStringLiteral("F"), fall.typ, fall.verlangt);
        EXPECT_EQ(feld.Type(), fall.typ);
        EXPECT_EQ(feld.Size(), fall.groesse);
        EXPECT_FALSE(feld.AllowZeroLength());
        EXPECT_EQ(feld.Attributes(), 0);
    }
}

TEST_F(DefinitionenTest, NeuesFeldIstInAllenZeilenNull) {
    oeffnen();
    dao::TableDef& t = tabelle(u"Kunden");
    t.Fields().Append(t.CreateField(QStringLiteral("Neu"), dao::dbLong));
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Neu"), u"- - - - -");
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 2 3 4 5");
}

TEST_F(DefinitionenTest, GeloeschtesFeldIstWegUndDieAnderenRuecken) {
    oeffnen();
    dao::TableDef& t = tabelle(u"Kunden");
    t.Fields().Delete(QStringLiteral("NAME"));
    EXPECT_EQ(t.Fields().Count(), 3);
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Ort"), u"Bonn Ulm - Bonn Aachen");
    t.Fields().Append(t.CreateField(QStringLiteral("Name"), dao::dbText, 5));
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Name"), u"- - - - -");
}

TEST_F(DefinitionenTest, FeldImIndexIst3280) {
    oeffnen();
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Kunden").Fields().Delete(QStringLiteral("nr")); }),
              kIndexFeldLoeschen);
    EXPECT_EQ(tabelle(u"Kunden").Fields().Count(), 4);
}

TEST_F(DefinitionenTest, HoechstensZweihundertfuenfundfuenfzigFelder) {
    oeffnen();
    dao::TableDef& t = tabelle(u"Leer");
    for (int i = 1; i < 255; ++i) t.Fields().Append(t.CreateField(QStringLiteral("F%1").arg(i), dao::dbLong));
    EXPECT_EQ(t.Fields().Count(), 255);
    EXPECT_EQ(fehlerVon([&] { t.Fields().Append(t.CreateField(QStringLiteral("Z"), dao::dbLong)); }),
              kZuVieleFelder);
}

TEST_F(DefinitionenTest, DoppeltesUndNamenlosesFeld) {
    oeffnen();
    dao::TableDef& t = tabelle(u"Leer");
    EXPECT_EQ(fehlerVon([&] { t.Fields().Append(t.CreateField(QStringLiteral("a"), dao::dbLong)); }),
              kNameVorhanden);
    EXPECT_EQ(fehlerVon([&] { t.Fields().Append(t.CreateField(QString(), dao::dbLong)); }), kUngueltigerName);
}

TEST_F(DefinitionenTest, UmbenennenPrueftDenNamenUndZiehtRelationenNach) {
    beziehung(u"Kunden", u"Leer");
    oeffnen();
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Kunden").setName(QStringLiteral("leer")); }), kNameVorhanden);
    tabelle(u"Kunden").setName(QStringLiteral("KUNDEN"));
    tabelle(u"Kunden").setName(QStringLiteral("Firmen"));
    EXPECT_EQ(db->Relations().Item(0).Table(), u"Firmen");
    EXPECT_EQ(spalte(QStringLiteral("Firmen"), u"Nr"), u"1 2 3 4 5");
    EXPECT_EQ(fehlerVon([&] { tabelle(u"Kunden"); }), kNichtInListe);
}

TEST_F(DefinitionenTest, TabelleMitRelationLoeschenIst3281AufBeidenSeiten) {
    beziehung(u"Kunden", u"Leer");
    oeffnen();
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Delete(QStringLiteral("Kunden")); }), kRelationBesteht);
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Delete(QStringLiteral("LEER")); }), kRelationBesteht);
    db->Relations().Delete(QStringLiteral("bezug"));
    db->TableDefs().Delete(QStringLiteral("Kunden"));
    EXPECT_EQ(tabellennamen(), QStringList{QStringLiteral("Leer")});
}

TEST_F(DefinitionenTest, RelationenAnlegenUndLesen) {
    beziehung(u"Kunden", u"Leer");
    oeffnen();
    const dao::Relation& alt = db->Relations().Item(0);
    dao::Relation neu =
        db->CreateRelation(alt.Name(), QStringLiteral("Leer"), alt.ForeignTable(), alt.Attributes());
    neu.setName(alt.Name() + QStringLiteral(" (korrigiert)"));
    for (const engine::RelationsFeld& feld : alt.Fields()) neu.FeldAnhaengen({feld.name, feld.fremdname});
    db->Relations().Append(neu);
    ASSERT_EQ(db->Relations().Count(), 2);
    EXPECT_EQ(db->Relations().Item(1).Name(), u"Bezug (korrigiert)");
    EXPECT_EQ(db->Relations().Item(1).Attributes(), dao::dbRelationUpdateCascade);
    EXPECT_EQ(db->Relations().Item(1).Fields()[0].fremdname, u"A");
}

TEST_F(DefinitionenTest, RelationMitVergebenemNamenOderOhneTabelle) {
    beziehung(u"Kunden", u"Leer");
    oeffnen();
    const auto anhaengen = [&](const char16_t* name, const char16_t* tabelle_) {
        db->Relations().Append(db->CreateRelation(QString::fromUtf16(name), QString::fromUtf16(tabelle_),
                                                  QStringLiteral("Leer"), 0));
    };
    EXPECT_EQ(fehlerVon([&] { anhaengen(u"BEZUG", u"Kunden"); }), kNameVorhanden);
    EXPECT_EQ(fehlerVon([&] { anhaengen(u"Zwei", u"Fehlt"); }), kNichtGefunden);
}

}  // namespace
