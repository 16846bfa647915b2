// Transactions: what Rollback takes back, what CommitTrans keeps.
#include "engine/dao/werkbank.h"

namespace {

class TransaktionTest : public Werkbank {
  protected:
    TransaktionTest() { oeffnen(); }
    void hinzu(const char16_t* quelle, int zahl) {
        const auto satz = db->OpenRecordset(QString::fromUtf16(quelle));
        satz->AddNew();
        satz->Fields(0).setValue(Wert(zahl));
        satz->Update();
    }
    QString nummern() { return spalte(QStringLiteral("Kunden"), u"Nr"); }
};

TEST_F(TransaktionTest, RollbackNimmtNurDenOffenenStapelZurueck) {
    bereich->BeginTrans();
    hinzu(u"Kunden", 6);
    bereich->CommitTrans();
    bereich->BeginTrans();
    hinzu(u"Kunden", 7);
    db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 1"));
    EXPECT_EQ(nummern(), u"2 3 4 5 6 7");
    bereich->Rollback();
    EXPECT_EQ(nummern(), u"1 2 3 4 5 6");
}

TEST_F(TransaktionTest, RollbackNimmtAenderungenEinesSatzesZurueck) {
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    bereich->BeginTrans();
    satz->Edit();
    satz->Fields(1).setValue(Wert(u"Anders"));
    satz->Update();
    EXPECT_EQ(satz->Fields(1).Value(), Wert(u"Anders"));
    bereich->Rollback();
    EXPECT_EQ(satz->Fields(1).Value(), Wert(u"Zimmer"));
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(TransaktionTest, RollbackUmfasstTabellenUndFelder) {
    bereich->BeginTrans();
    anlegen(u"Neu", {1});
    tabelle(u"Leer").setName(QStringLiteral("Voll"));
    tabelle(u"Kunden").Fields().Delete(QStringLiteral("Ort"));
    tabelle(u"Kunden").Fields().Append(tabelle(u"Kunden").CreateField(QStringLiteral("X"), dao::dbLong));
    bereich->Rollback();
    EXPECT_EQ(tabellennamen(), (QStringList{QStringLiteral("Kunden"), QStringLiteral("Leer")}));
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Ort"), u"Bonn Ulm - Bonn Aachen");
    EXPECT_EQ(tabelle(u"Kunden").Fields().position(QStringLiteral("X")), -1);
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(TransaktionTest, RollbackBringtEineGeloeschteTabelleMitIhrenZeilenZurueck) {
    hinzu(u"Kunden", 6);
    bereich->BeginTrans();
    db->TableDefs().Delete(QStringLiteral("Kunden"));
    bereich->Rollback();
    EXPECT_EQ(nummern(), u"1 2 3 4 5 6");
    EXPECT_EQ(db->TableDefs().Item(0).Name(), u"Kunden");
}

TEST_F(TransaktionTest, CommitBehaeltTabellenUndFelder) {
    bereich->BeginTrans();
    anlegen(u"Neu", {1, 2});
    tabelle(u"Kunden").Fields().Delete(QStringLiteral("Ort"));
    bereich->CommitTrans();
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"1 2");
    EXPECT_EQ(tabelle(u"Kunden").Fields().Count(), 3);
}

TEST_F(TransaktionTest, OffenerSatzVerliertBeimRollbackDieNeuenSaetze) {
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->MoveLast();
    bereich->BeginTrans();
    satz->AddNew();
    satz->Update();
    satz->MoveLast();
    EXPECT_EQ(satz->RecordCount(), 6);
    bereich->Rollback();
    EXPECT_EQ(satz->RecordCount(), 5);
    EXPECT_TRUE(satz->Eof());
    satz->MoveLast();
    EXPECT_EQ(satz->Fields(0).Value(), Wert(5));
}

TEST_F(TransaktionTest, NummerEinesZurueckgenommenenSatzesWirdNieEinAnderer) {
    auto satz = db->OpenRecordset(QStringLiteral("Leer"));
    bereich->BeginTrans();
    satz->AddNew();
    satz->Fields(0).setValue(Wert(u"weg"));
    satz->Update();
    bereich->Rollback();
    auto anderer = db->OpenRecordset(QStringLiteral("Leer"));
    anderer->AddNew();
    anderer->Fields(0).setValue(Wert(u"neu"));
    anderer->Update();
    EXPECT_EQ(satz->RecordCount(), 0);
    EXPECT_EQ(spalte(QStringLiteral("Leer"), u"A"), u"neu");
}

TEST_F(TransaktionTest, TabelleDieErstInDerTransaktionGelesenWurdeBleibtNachRollbackLesbar) {
    bereich->BeginTrans();
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->AddNew();
    satz->Update();
    bereich->Rollback();
    EXPECT_EQ(spalte(*satz, u"Nr"), u"1 2 3 4 5");
    EXPECT_EQ(nummern(), u"1 2 3 4 5");
}

TEST_F(TransaktionTest, SatzEinerZurueckgenommenenTabelleIst3420) {
    bereich->BeginTrans();
    anlegen(u"Neu", {1});
    auto satz = db->OpenRecordset(QStringLiteral("Neu"));
    bereich->Rollback();
    EXPECT_EQ(fehlerVon([&] { satz->RecordCount(); }), kObjektUngueltig);
    anlegen(u"Neu", {2});
    EXPECT_EQ(fehlerVon([&] { satz->RecordCount(); }), kObjektUngueltig);
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"2");
}

TEST_F(TransaktionTest, OhneTransaktionIst3034) {
    EXPECT_EQ(fehlerVon([&] { bereich->CommitTrans(); }), kOhneTransaktion);
    EXPECT_EQ(fehlerVon([&] { bereich->Rollback(); }), kOhneTransaktion);
    bereich->BeginTrans();
    bereich->CommitTrans();
    EXPECT_EQ(fehlerVon([&] { bereich->Rollback(); }), kOhneTransaktion);
}

TEST_F(TransaktionTest, ZweiteTransaktionIst3035UndDieErsteGeht) {
    bereich->BeginTrans();
    hinzu(u"Kunden", 6);
    EXPECT_EQ(fehlerVon([&] { bereich->BeginTrans(); }), kSystemgrenze);
    bereich->Rollback();
    EXPECT_EQ(nummern(), u"1 2 3 4 5");
}

TEST_F(TransaktionTest, DatenbankDieInDerTransaktionGeoeffnetWirdGehoertDazu) {
    db->Close();
    bereich->BeginTrans();
    oeffnen();
    hinzu(u"Kunden", 6);
    bereich->Rollback();
    EXPECT_EQ(nummern(), u"1 2 3 4 5");
}

TEST_F(TransaktionTest, GeschlosseneDatenbankStoertDieTransaktionNicht) {
    bereich->BeginTrans();
    db->Close();
    bereich->CommitTrans();
    bereich->BeginTrans();
    bereich->Rollback();
}

TEST_F(TransaktionTest, TausendSaetzeJeStapel) {
    auto satz = db->OpenRecordset(QStringLiteral("Leer"));
    bereich->BeginTrans();
    for (int i = 1; i <= 2500; ++i) {
        satz->AddNew();
        satz->Fields(0).setValue(Wert(i));
        satz->Update();
        if (i % 1000 == 0) {
            bereich->CommitTrans();
            bereich->BeginTrans();
        }
    }
    bereich->Rollback();
    EXPECT_EQ(db->OpenRecordset(QStringLiteral("Leer"))->RecordCount(), 2000);
}

}  // namespace
