// Going back to the tables of the start of a run.
#include "engine/dao/werkbank.h"

namespace {

class MerkenTest : public Werkbank {
  protected:
    MerkenTest() { oeffnen(); }
    void loeschen(const char16_t* name) { db->TableDefs().Delete(QString::fromUtf16(name)); }
    const QStringList anfangs{QStringLiteral("Kunden"), QStringLiteral("Leer")};
};

TEST_F(MerkenTest, UeberschriebenesZielStehtNachDemAbbruchWiederMitSeinenZeilen) {
    anlegen(u"Ziel", {1, 2, 3});
    db->Merken();
    loeschen(u"Ziel");
    anlegen(u"Ziel", {9});
    anlegen(u"TEMP_DS", {8});
    db->Zuruecknehmen();
    EXPECT_EQ(tabellennamen(), anfangs + QStringList{QStringLiteral("Ziel")});
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1 2 3");
}

TEST_F(MerkenTest, TabelleDerDateiStehtAnIhrerStelleUndDieDateiBleibtUnberuehrt) {
    db->Merken();
    loeschen(u"Kunden");
    anlegen(u"Kunden", {9});
    db->Zuruecknehmen();
    EXPECT_EQ(tabellennamen(), anfangs);
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Name"), u"Zimmer Äcker Adler adam Meyer");
    EXPECT_FALSE(db->ungesichert());
    EXPECT_EQ(inhalt.protokoll, QStringList{QStringLiteral("lesen Kunden")});
}

TEST_F(MerkenTest, GeaenderteZeilenEinerNochUngesichertenTabelleKommenMitZurueck) {
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->Edit();
    satz->Fields(1).setValue(Wert(u"Vorher"));
    satz->Update();
    satz->Close();
    db->Merken();
    loeschen(u"Kunden");
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Name"), u"Vorher Äcker Adler adam Meyer");
    EXPECT_TRUE(db->ungesichert());
}

TEST_F(MerkenTest, NamenFelderUndIndexeSindWieVorher) {
    db->Merken();
    tabelle(u"Kunden").Fields().Append(tabelle(u"Kunden").CreateField(QStringLiteral("X"), dao::dbLong));
    tabelle(u"Kunden").Fields().Delete(QStringLiteral("Ort"));
    tabelle(u"Kunden").Indexes().Append(tabelle(u"Kunden").CreateIndex(QStringLiteral("I")));
    tabelle(u"Kunden").setName(QStringLiteral("Firmen"));
    db->Zuruecknehmen();
    EXPECT_EQ(tabellennamen(), anfangs);
    EXPECT_EQ(tabelle(u"Kunden").Fields().Count(), 4);
    EXPECT_EQ(tabelle(u"Kunden").Indexes().Count(), 1);
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Ort"), u"Bonn Ulm - Bonn Aachen");
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(MerkenTest, RelationenSindWieVorher) {
    anlegen(u"Ziel");
    db->Relations().Append(
        db->CreateRelation(QStringLiteral("R"), QStringLiteral("Ziel"), QStringLiteral("Leer"), 0));
    db->Merken();
    db->Relations().Delete(QStringLiteral("R"));
    loeschen(u"Ziel");
    db->Relations().Append(
        db->CreateRelation(QStringLiteral("S"), QStringLiteral("Kunden"), QStringLiteral("Leer"), 0));
    db->Zuruecknehmen();
    ASSERT_EQ(db->Relations().Count(), 1);
    EXPECT_EQ(db->Relations().Item(0).Name(), u"R");
}

TEST_F(MerkenTest, ZeilenEinerTabelleDieImmerDaWarBleibenWieSieJetztSind) {
    anlegen(u"Ziel", {1});
    db->Merken();
    auto satz = db->OpenRecordset(QStringLiteral("Ziel"));
    satz->AddNew();
    satz->Fields(0).setValue(Wert(2));
    satz->Update();
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1 2");
    EXPECT_EQ(satz->RecordCount(), 2);
}

TEST_F(MerkenTest, GeaenderteZeilenEinerTabelleDerDateiBleibenUngesichert) {
    db->Merken();
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->Edit();
    satz->Fields(1).setValue(Wert(u"Nachher"));
    satz->Update();
    db->Zuruecknehmen();
    EXPECT_TRUE(db->ungesichert());
    EXPECT_EQ(satz->Fields(1).Value(), Wert(u"Nachher"));
}

TEST_F(MerkenTest, OhneMerkenGeschiehtNichts) {
    anlegen(u"Neu", {1});
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"1");
}

TEST_F(MerkenTest, ZuruecknehmenVergisst) {
    db->Merken();
    db->Zuruecknehmen();
    anlegen(u"Neu", {1});
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"1");
}

TEST_F(MerkenTest, NeuesMerkenErsetztDasAlte) {
    anlegen(u"Ziel", {1});
    db->Merken();
    loeschen(u"Ziel");
    db->Merken();
    anlegen(u"Neu");
    db->Zuruecknehmen();
    EXPECT_EQ(tabellennamen(), anfangs);
}

TEST_F(MerkenTest, SichernVergisst) {
    anlegen(u"Ziel", {1});
    db->Merken();
    loeschen(u"Ziel");
    anlegen(u"Ziel", {9});
    db->Sichern();
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"9");
    EXPECT_EQ(inhalt.suchen(QStringLiteral("Ziel"))->zeilen, (std::vector<engine::Zeile>{{Wert(9)}}));
}

TEST_F(MerkenTest, SichernOhneAenderungVergisstAuch) {
    db->Merken();
    db->Sichern();
    anlegen(u"Neu", {1});
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"1");
}

TEST_F(MerkenTest, GescheitertesSichernVergisstNicht) {
    anlegen(u"Ziel", {1});
    db->Merken();
    loeschen(u"Ziel");
    inhalt.fehlerBeimAnwenden.emplace(kDatentraegerVoll, QStringLiteral("voll"));
    anlegen(u"Ziel", {9});
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kDatentraegerVoll);
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1");
}

TEST_F(MerkenTest, LoeschenInEinerFestgeschriebenenTransaktionKommtZurueck) {
    anlegen(u"Ziel", {1, 2});
    db->Merken();
    bereich->BeginTrans();
    loeschen(u"Ziel");
    bereich->CommitTrans();
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1 2");
}

TEST_F(MerkenTest, LoeschenInEinerVerworfenenTransaktionKommtZurueck) {
    anlegen(u"Ziel", {1, 2});
    db->Merken();
    bereich->BeginTrans();
    loeschen(u"Ziel");
    bereich->Rollback();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1 2");
    db->Zuruecknehmen();
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), u"Z"), u"1 2");
}

TEST_F(MerkenTest, InEinerTransaktionIstBeides3035) {
    bereich->BeginTrans();
    EXPECT_EQ(fehlerVon([&] { db->Merken(); }), kSystemgrenze);
    EXPECT_EQ(fehlerVon([&] { db->Zuruecknehmen(); }), kSystemgrenze);
    bereich->Rollback();
}

TEST_F(MerkenTest, SaetzeGeloeschterTabellenSind3420SolangeSieGeloeschtSind) {
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    db->Merken();
    anlegen(u"Neu", {1});
    auto neuer = db->OpenRecordset(QStringLiteral("Neu"));
    loeschen(u"Kunden");
    EXPECT_EQ(fehlerVon([&] { satz->RecordCount(); }), kObjektUngueltig);
    db->Zuruecknehmen();
    EXPECT_EQ(satz->RecordCount(), 5);
    EXPECT_EQ(fehlerVon([&] { neuer->RecordCount(); }), kObjektUngueltig);
}

TEST_F(MerkenTest, GeschlosseneDatenbankIst3420) {
    db->Close();
    EXPECT_EQ(fehlerVon([&] { db->Merken(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->Zuruecknehmen(); }), kObjektUngueltig);
}

}  // namespace
