// Bringing the file up to date: which changes it gets, and what holds when that fails.
#include "engine/dao/umbenennung.h"
#include "engine/dao/werkbank.h"

namespace {

class SichernTest : public Werkbank {
  protected:
    SichernTest() { oeffnen(); }
    // What the file was asked to do, without the reading.
    QStringList schritte() const {
        return inhalt.protokoll.filter(QRegularExpression(QStringLiteral("^(?!lesen)")));
    }
    std::vector<engine::Zeile>& dateizeilen(const char16_t* name) {
        return inhalt.suchen(QString::fromUtf16(name))->zeilen;
    }
};

TEST_F(SichernTest, OhneAenderungSchreibtEsNicht) {
    spalte(QStringLiteral("Kunden"), u"Nr");
    EXPECT_FALSE(db->ungesichert());
    inhalt.fehlerBeimAnwenden.emplace(kDateifehler, QStringLiteral("darf nicht kommen"));
    EXPECT_TRUE(db->Sichern().empty());
}

TEST_F(SichernTest, NeueTabelleKommtMitZeilenInDieDatei) {
    anlegen(u"Neu", {3, 1, 2});
    EXPECT_TRUE(db->ungesichert());
    db->Sichern();
    EXPECT_FALSE(db->ungesichert());
    EXPECT_EQ(inhalt.namen(),
              (QStringList{QStringLiteral("Kunden"), QStringLiteral("Leer"), QStringLiteral("Neu")}));
    EXPECT_EQ(dateizeilen(u"Neu"), (std::vector<engine::Zeile>{{Wert(3)}, {Wert(1)}, {Wert(2)}}));
    EXPECT_EQ(schritte(), QStringList{QStringLiteral("anlegen Neu")});
}

TEST_F(SichernTest, NieGebrauchteNeueTabelleKommtLeerInDieDatei) {
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Neu"));
    def->Fields().Append(def->CreateField(QStringLiteral("A"), dao::dbText, 3));
    db->TableDefs().Append(std::move(def));
    db->Sichern();
    EXPECT_TRUE(dateizeilen(u"Neu").empty());
    EXPECT_EQ(inhalt.suchen(QStringLiteral("Neu"))->def.felder[0].groesse, 3);
}

TEST_F(SichernTest, ArbeitstabelleDieWiederWegIstErreichtDieDateiNie) {
    anlegen(u"TEMP_DS", {1});
    db->TableDefs().Delete(QStringLiteral("TEMP_DS"));
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(SichernTest, GeloeschteTabelleVerschwindetAusDerDatei) {
    db->TableDefs().Delete(QStringLiteral("Leer"));
    db->Sichern();
    EXPECT_EQ(inhalt.namen(), QStringList{QStringLiteral("Kunden")});
    EXPECT_EQ(schritte(), QStringList{QStringLiteral("löschen Leer")});
}

TEST_F(SichernTest, UmbenannteTabelleWirdNurUmbenanntAuchUngelesen) {
    tabelle(u"Kunden").setName(QStringLiteral("Firmen"));
    db->Sichern();
    EXPECT_EQ(inhalt.protokoll, QStringList{QStringLiteral("umbenennen Kunden > Firmen")});
    EXPECT_EQ(spalte(QStringLiteral("Firmen"), u"Nr"), u"1 2 3 4 5");
    EXPECT_EQ(inhalt.protokoll.last(), u"lesen Firmen");
}

TEST_F(SichernTest, UngesichertUmbenannteTabelleWirdUnterIhremNamenInDerDateiGelesen) {
    tabelle(u"Kunden").setName(QStringLiteral("Firmen"));
    EXPECT_EQ(spalte(QStringLiteral("Firmen"), u"Nr"), u"1 2 3 4 5");
    EXPECT_EQ(inhalt.protokoll, QStringList{QStringLiteral("lesen Kunden")});
}

TEST_F(SichernTest, UeberschriebenesZielWirdGeloeschtUndAngelegt) {
    db->TableDefs().Delete(QStringLiteral("Leer"));
    anlegen(u"LEER", {5});
    db->Sichern();
    EXPECT_EQ(schritte(), (QStringList{QStringLiteral("löschen Leer"), QStringLiteral("anlegen LEER")}));
    EXPECT_EQ(inhalt.namen(), (QStringList{QStringLiteral("Kunden"), QStringLiteral("LEER")}));
}

TEST_F(SichernTest, TabelleMitGeaendertenZeilenWirdUmgeschrieben) {
    auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->Edit();
    satz->Fields(1).setValue(Wert(u"Neuer"));
    satz->Update();
    satz->AddNew();
    satz->Update();
    db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 2"));
    db->Sichern();
    ASSERT_EQ(dateizeilen(u"Kunden").size(), 5u);
    EXPECT_EQ(dateizeilen(u"Kunden")[0][1], Wert(u"Neuer"));
    EXPECT_EQ(dateizeilen(u"Kunden")[1][0], Wert(3));
    EXPECT_EQ(dateizeilen(u"Kunden")[4][0], Wert(6));
    EXPECT_EQ(inhalt.suchen(QStringLiteral("Kunden"))->def.indexe.size(), 1u);
}

TEST_F(SichernTest, LoeschenOhneTrefferSchreibtNicht) {
    db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 77"));
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(SichernTest, GeloeschtesFeldFehltInDerDatei) {
    tabelle(u"Kunden").Fields().Delete(QStringLiteral("Name"));
    db->Sichern();
    EXPECT_EQ(inhalt.suchen(QStringLiteral("Kunden"))->def.felder.size(), 3u);
    EXPECT_EQ(dateizeilen(u"Kunden")[1], (engine::Zeile{Wert(2), Wert(u"Ulm"), Wert(Waehrung{20000})}));
}

TEST_F(SichernTest, GeaendertesAttributWirdGesichert) {
    tabelle(u"Leer").Fields().Item(0).setAllowZeroLength(true);
    EXPECT_TRUE(db->ungesichert());
    db->Sichern();
    EXPECT_TRUE(inhalt.suchen(QStringLiteral("Leer"))->def.felder[0].leerErlaubt);
}

TEST_F(SichernTest, ScheiternLaesstAllesWieEsWarUndWiederholenGelingt) {
    anlegen(u"Neu", {1});
    db->TableDefs().Delete(QStringLiteral("Leer"));
    const QStringList vorher = inhalt.namen();
    inhalt.fehlerBeimAnwenden.emplace(kDatentraegerVoll, QStringLiteral("voll"));
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kDatentraegerVoll);
    EXPECT_EQ(inhalt.namen(), vorher);
    EXPECT_TRUE(db->ungesichert());
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"1");
    db->Sichern();
    EXPECT_EQ(inhalt.namen(), (QStringList{QStringLiteral("Kunden"), QStringLiteral("Neu")}));
}

TEST_F(SichernTest, HinweiseDesFormatsKommenBeimRuferAn) {
    anlegen(u"Neu");
    inhalt.hinweise = {QStringLiteral("Der Index 'A' wurde ohne Eindeutigkeit geschrieben.")};
    EXPECT_EQ(db->Sichern(),
              (engine::Hinweise{QStringLiteral("Der Index 'A' wurde ohne Eindeutigkeit geschrieben.")}));
}

TEST_F(SichernTest, InEinerTransaktionIst3035) {
    anlegen(u"Neu");
    bereich->BeginTrans();
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kSystemgrenze);
    bereich->CommitTrans();
    db->Sichern();
}

TEST_F(SichernTest, TabelleMitRelationWirdNichtUmgeschrieben) {
    db.reset();
    inhalt.relationen = {{QStringLiteral("R"), QStringLiteral("Kunden"), QStringLiteral("Leer"), 0, {}}};
    oeffnen();
    db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 2"));
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kRelationBesteht);
    EXPECT_EQ(dateizeilen(u"Kunden").size(), 5u);
}

TEST_F(SichernTest, OrdnungDerListeIstDanachDieDerDatei) {
    anlegen(u"A");
    db->TableDefs().Delete(QStringLiteral("Leer"));
    anlegen(u"Leer");
    db->Sichern();
    EXPECT_EQ(tabellennamen(), inhalt.namen());
    anlegen(u"B");
    db->Sichern();
    EXPECT_EQ(tabellennamen(), inhalt.namen());
}

TEST_F(SichernTest, WasDieDateiAndersNenntVerlaesstDieListeUndIhreTabelleKommtHinein) {
    inhalt.endungNeuer = QStringLiteral("$");
    dao::TableDef* const alt = &anlegen(u"Neu", {1, 2});
    const auto satz = db->OpenRecordset(QStringLiteral("Neu"));
    db->Sichern();
    EXPECT_EQ(tabellennamen(), inhalt.namen());
    EXPECT_EQ(tabellennamen().last(), u"Neu$");
    EXPECT_EQ(spalte(QStringLiteral("Neu$"), u"Z"), u"1 2");
    EXPECT_FALSE(db->ungesichert());
    // Neither a definition that somebody holds nor its records are left hanging.
    EXPECT_EQ(alt->Name(), u"Neu");
    EXPECT_NE(fehlerVon([&] { db->OpenRecordset(QStringLiteral("Neu")); }), 0);
    EXPECT_NE(fehlerVon([&] { satz->Fields(0).Value(); }), 0);
}

TEST_F(SichernTest, ZusaetzlicheTabelleDerDateiStehtInIhrerFolge) {
    inhalt.zweiteNeue = QStringLiteral("Neu$");
    anlegen(u"Neu", {7});
    db->Sichern();
    EXPECT_EQ(tabellennamen(), (QStringList{QStringLiteral("Neu$"), QStringLiteral("Kunden"),
                                            QStringLiteral("Leer"), QStringLiteral("Neu")}));
    EXPECT_EQ(spalte(QStringLiteral("Neu$"), u"Z"), u"7");
    EXPECT_EQ(spalte(QStringLiteral("Neu"), u"Z"), u"7");
    // The next save finds the file as the list says.
    anlegen(u"Neu2", {8});
    inhalt.zweiteNeue.clear();
    db->Sichern();
    EXPECT_EQ(tabellennamen(), inhalt.namen());
}

TEST_F(SichernTest, TabelleDieMitEinerGeloeschtenGehtVerlaesstDieListe) {
    inhalt.gehtMit[QStringLiteral("Leer")] = QStringLiteral("Kunden");
    db->Merken();
    spalte(QStringLiteral("Kunden"), u"Nr");
    db->TableDefs().Delete(QStringLiteral("Leer"));
    db->Sichern();
    EXPECT_TRUE(tabellennamen().isEmpty());
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(SichernTest, NamenstauschGelingtInEinemSchritt) {
    tabelle(u"Kunden").setName(QStringLiteral("X"));
    tabelle(u"Leer").setName(QStringLiteral("Kunden"));
    tabelle(u"X").setName(QStringLiteral("Leer"));
    db->Sichern();
    EXPECT_EQ(dateizeilen(u"Leer").size(), 5u);
    EXPECT_TRUE(dateizeilen(u"Kunden").empty());
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(SichernTest, VieleZeilenKommenVollzaehligUndInFolge) {
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Viele"));
    def->Fields().Append(def->CreateField(QStringLiteral("Z"), dao::dbLong));
    db->TableDefs().Append(std::move(def));
    auto satz = db->OpenRecordset(QStringLiteral("Viele"));
    for (int i = 0; i < 1000; ++i) {
        satz->AddNew();
        satz->Fields(0).setValue(Wert(i));
        satz->Update();
    }
    db->Execute(QStringLiteral("DELETE * FROM [Viele] WHERE [Z] = 64"));
    db->Sichern();
    ASSERT_EQ(dateizeilen(u"Viele").size(), 999u);
    for (int i = 0; i < 999; ++i) ASSERT_EQ(dateizeilen(u"Viele")[size_t(i)][0], Wert(i < 64 ? i : i + 1));
}

TEST(UmbenennungTest, KetteWirdVomEndeHerUmbenannt) {
    const auto schritte = dao::umbenennungenOrdnen(
        {{QStringLiteral("A"), QStringLiteral("B")}, {QStringLiteral("B"), QStringLiteral("C")}},
        {QStringLiteral("A"), QStringLiteral("B")}, [](const QString&) { return true; });
    ASSERT_EQ(schritte.size(), 2u);
    EXPECT_EQ(schritte[0].alt, u"B");
    EXPECT_EQ(schritte[1].alt, u"A");
}

TEST(UmbenennungTest, RingBrauchtEinenFreienErlaubtenNamenDazwischen) {
    const auto schritte = dao::umbenennungenOrdnen(
        {{QStringLiteral("A"), QStringLiteral("B")}, {QStringLiteral("B"), QStringLiteral("a")}},
        {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("temp1")},
        [](const QString& name) { return name != u"TEMP2"; });
    ASSERT_EQ(schritte.size(), 3u);
    EXPECT_EQ(schritte[0].neu, u"TEMP3");
    EXPECT_EQ(schritte[1].neu, u"a");
    EXPECT_EQ(schritte[2].alt, u"TEMP3");
    EXPECT_EQ(schritte[2].neu, u"B");
}

TEST(UmbenennungTest, NurGrossUndKleinIstKeinRing) {
    const auto schritte =
        dao::umbenennungenOrdnen({{QStringLiteral("a"), QStringLiteral("A")}}, {QStringLiteral("a")},
                                 [](const QString&) { return true; });
    ASSERT_EQ(schritte.size(), 1u);
    EXPECT_EQ(schritte[0].neu, u"A");
}

TEST(UmbenennungTest, OhneErlaubtenNamenMeldetEs) {
    EXPECT_EQ(
        fehlerVon([] {
            dao::umbenennungenOrdnen(
                {{QStringLiteral("A"), QStringLiteral("B")}, {QStringLiteral("B"), QStringLiteral("A")}},
                {QStringLiteral("A"), QStringLiteral("B")}, [](const QString&) { return false; });
        }),
        kUngueltigerName);
}

}  // namespace
