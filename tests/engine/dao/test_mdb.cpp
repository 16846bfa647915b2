// The database operations on real .mdb files: what is written stands there when the file is opened again.
#include <QDir>
#include <QFile>

#include "engine/dao/werkbank.h"
#include "engine/jet/anlegen.h"

namespace {

QByteArray inhaltVon(const QString& pfad) {
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    return datei.readAll();
}

class MdbTest : public testing::Test {
  protected:
    MdbTest() {
        jet::mdbAnlegen(pfad);
        oeffnen();
    }

    void oeffnen() {
        db.reset();
        db = bereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
    }

    // A table (Nr counted, Name, Betrag, Am, Notiz) with a primary key on Nr and one row for each name.
    void anlegen(const char16_t* name, const std::vector<const char16_t*>& namen) {
        auto def = db->CreateTableDef();
        def->setName(QString::fromUtf16(name));
        dao::Field nummer = def->CreateField(QStringLiteral("Nr"), dao::dbLong);
        nummer.setAttributes(dao::dbAutoIncrField | dao::dbFixedField);
        def->Fields().Append(nummer);
        dao::Field text = def->CreateField(QStringLiteral("Name"), dao::dbText, 40);
        text.setAllowZeroLength(true);
        def->Fields().Append(text);
        def->Fields().Append(def->CreateField(QStringLiteral("Betrag"), dao::dbCurrency));
        def->Fields().Append(def->CreateField(QStringLiteral("Am"), dao::dbDate));
        def->Fields().Append(def->CreateField(QStringLiteral("Notiz"), dao::dbMemo));
        dao::Index index = def->CreateIndex(QStringLiteral("PrimaryKey"));
        index.setFields({{QStringLiteral("Nr"), false}});
        index.setUnique(true);
        index.setPrimary(true);
        def->Indexes().Append(index);
        db->TableDefs().Append(std::move(def));
        const auto satz = db->OpenRecordset(QString::fromUtf16(name));
        for (const char16_t* einer : namen) {
            satz->AddNew();
            satz->Fields(1).setValue(Wert(einer));
            satz->Fields(2).setValue(Wert(u"1,5"));
            satz->Fields(3).setValue(Wert(u"31.12.2001"));
            satz->Fields(4).setValue(Wert(QString(3000, u'n')));
            satz->Update();
        }
    }

    QString spalte(const QString& quelle, int feld) {
        const auto satz = db->OpenRecordset(quelle);
        QStringList texte;
        for (; !satz->Eof(); satz->MoveNext()) texte << satz->Fields(feld).Value().alsText();
        return texte.join(u' ');
    }

    QStringList eigeneTabellen() {
        QStringList liste;
        for (const auto& t : db->TableDefs())
            if (t->Attributes() == 0) liste << t->Name();
        return liste;
    }

    QTemporaryDir ordner;
    QString pfad = ordner.filePath(QStringLiteral("a.mdb"));
    std::unique_ptr<dao::Workspace> bereich =
        dao::DBEngine::CreateWorkspace({}, QStringLiteral("Admin"), {}, 2);
    std::unique_ptr<dao::Database> db;
};

TEST_F(MdbTest, GesicherteTabelleStehtNachDemOeffnenDa) {
    anlegen(u"Kunden", {u"Zimmer", u"Äcker", u"", u"adam"});
    EXPECT_TRUE(db->Sichern().empty());
    oeffnen();
    EXPECT_EQ(eigeneTabellen(), QStringList{QStringLiteral("Kunden")});
    dao::TableDef& t = db->TableDefs().Item(QStringLiteral("Kunden"));
    EXPECT_EQ(t.Fields().Item(0).Attributes() & dao::dbAutoIncrField, dao::dbAutoIncrField);
    EXPECT_EQ(t.Fields().Item(1).Size(), 40);
    EXPECT_TRUE(t.Fields().Item(1).AllowZeroLength());
    ASSERT_EQ(t.Indexes().Count(), 1);
    EXPECT_TRUE(t.Indexes().Item(0).Unique());
    EXPECT_TRUE(t.Indexes().Item(0).Primary());
    const auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    ASSERT_EQ(satz->RecordCount(), 4);
    EXPECT_EQ(satz->Fields(0).Value(), Wert(1));
    EXPECT_EQ(satz->Fields(2).Value(), Wert(Waehrung{15000}));
    EXPECT_EQ(satz->Fields(3).Value(), Wert(DatumZeit{37256}));
    EXPECT_EQ(satz->Fields(4).Value(), Wert(QString(3000, u'n')));
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [Kunden] ORDER BY [Name]"), 0), u"3 2 4 1");
}

TEST_F(MdbTest, EineTabelleDieNieGespeichertWerdenKoennteWirdGleichAbgelehnt) {
    auto def = db->CreateTableDef();
    def->setName(QStringLiteral("Viele"));
    def->Fields().Append(def->CreateField(QStringLiteral("Nr"), dao::dbLong));
    for (int i = 0; i < 33; ++i) {
        dao::Index index = def->CreateIndex(QStringLiteral("I%1").arg(i));
        index.setFields({{QStringLiteral("Nr"), false}});
        def->Indexes().Append(index);
    }
    EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kSystemgrenze);
    EXPECT_EQ(eigeneTabellen(), QStringList());
    EXPECT_FALSE(db->ungesichert());
}

TEST_F(MdbTest, ZaehlfeldGehtNachDemOeffnenWeiter) {
    anlegen(u"Kunden", {u"a", u"b"});
    db->Sichern();
    oeffnen();
    const auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->AddNew();
    EXPECT_EQ(satz->Fields(0).Value(), Wert(3));
}

TEST_F(MdbTest, GleicheSchluesselMachenDenIndexBeimSichernEinfachUndKeinSatzFehlt) {
    anlegen(u"Kunden", {u"a", u"b"});
    const auto satz = db->OpenRecordset(QStringLiteral("Kunden"));
    satz->MoveLast();
    satz->Edit();
    satz->Fields(0).setValue(Wert(1));
    satz->Update();
    const engine::Hinweise hinweise = db->Sichern();
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("PrimaryKey"))) << hinweise[0].toStdString();
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("Kunden"))) << hinweise[0].toStdString();
    // Known at once, so that a copy of the table is not told about again.
    EXPECT_FALSE(db->TableDefs().Item(QStringLiteral("Kunden")).Indexes().Item(0).Primary());
    EXPECT_FALSE(db->ungesichert());
    oeffnen();
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), 0), u"1 1");
    const dao::TableDef& t = db->TableDefs().Item(QStringLiteral("Kunden"));
    ASSERT_EQ(t.Indexes().Count(), 1);
    EXPECT_FALSE(t.Indexes().Item(0).Unique());
    EXPECT_FALSE(t.Indexes().Item(0).Primary());
}

TEST_F(MdbTest, LoeschenUmbenennenUndUeberschreiben) {
    anlegen(u"A", {u"a"});
    anlegen(u"B", {u"b"});
    anlegen(u"C", {u"c"});
    db->Sichern();
    oeffnen();
    db->TableDefs().Delete(QStringLiteral("A"));
    db->TableDefs().Item(QStringLiteral("B")).setName(QStringLiteral("A"));
    db->TableDefs().Delete(QStringLiteral("C"));
    anlegen(u"C", {u"neu", u"neuer"});
    db->Sichern();
    EXPECT_FALSE(db->ungesichert());
    oeffnen();
    EXPECT_EQ(spalte(QStringLiteral("A"), 1), u"b");
    EXPECT_EQ(spalte(QStringLiteral("C"), 1), u"neu neuer");
    EXPECT_EQ(eigeneTabellen().size(), 2);
}

TEST_F(MdbTest, AbgebrochenerLaufLaesstDieDateiByteFuerByteWieSieWar) {
    anlegen(u"Quelle", {u"a", u"b"});
    anlegen(u"Ziel", {u"alt"});
    db->Sichern();
    oeffnen();
    const QByteArray vorher = inhaltVon(pfad);
    db->Merken();
    db->TableDefs().Delete(QStringLiteral("Ziel"));
    anlegen(u"Ziel", {u"halb"});
    anlegen(u"TEMP_DS", {u"x"});
    bereich->BeginTrans();
    db->Execute(QStringLiteral("DELETE * FROM [Ziel] WHERE [Nr] = 1"));
    bereich->Rollback();
    db->Zuruecknehmen();
    EXPECT_FALSE(db->ungesichert());
    db->Sichern();
    EXPECT_EQ(inhaltVon(pfad), vorher);
    EXPECT_EQ(spalte(QStringLiteral("Ziel"), 1), u"alt");
}

TEST_F(MdbTest, VonAnderenGeaenderteDateiWirdNichtUeberschrieben) {
    anlegen(u"A", {u"a"});
    QFile datei(pfad);
    ASSERT_TRUE(datei.open(QIODevice::Append));
    datei.write(QByteArray(4096, '\0'));
    datei.close();
    const QByteArray fremd = inhaltVon(pfad);
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kDateiGeaendert);
    EXPECT_EQ(inhaltVon(pfad), fremd);
    EXPECT_EQ(spalte(QStringLiteral("A"), 1), u"a");
    EXPECT_TRUE(db->ungesichert());
}

TEST_F(MdbTest, NameDenAccessAblehntIst3125) {
    auto def = db->CreateTableDef();
    for (const char16_t* name : {u"", u"a.b", u"a!b", u"[a]"}) {
        def->setName(QString::fromUtf16(name));
        EXPECT_EQ(fehlerVon([&] { db->TableDefs().Append(std::move(def)); }), kUngueltigerName);
        ASSERT_TRUE(def);
    }
}

TEST_F(MdbTest, JedeBeispieldateiAbAccess2000WirdAbgelehntOderGibtAlleIhreTabellenHer) {
    const QDir beispiele(QStringLiteral(LINDGARN_FREMDDATEN "/mdb/beispiele"));
    const QStringList namen = beispiele.entryList({QStringLiteral("jet4-*.mdb")});
    if (namen.isEmpty()) GTEST_SKIP() << beispiele.path().toStdString();
    int tabellen = 0;
    for (const QString& name : namen) {
        SCOPED_TRACE(name.toStdString());
        // The password is told in the folder's description; without it the file must be refused.
        if (name == u"jet4-passwort.mdb") continue;
        const QString kopie = ordner.filePath(name);
        ASSERT_TRUE(QFile::copy(beispiele.filePath(name), kopie));
        QFile::setPermissions(kopie, QFile::ReadOwner | QFile::WriteOwner);
        std::unique_ptr<dao::Database> andere;
        const int nummer =
            fehlerVon([&] { andere = bereich->OpenDatabase(kopie, false, false, QStringLiteral(";PWD=;")); });
        // What could not be written at the end is refused at the start, with its reason.
        if (nummer == kSystemgrenze) continue;
        ASSERT_EQ(nummer, 0);
        for (const auto& tabelle : andere->TableDefs()) {
            if (tabelle->Attributes() != 0) continue;
            ++tabellen;
            const auto satz = tabelle->OpenRecordset();
            const dao::Block block = satz->GetRows(satz->RecordCount());
            EXPECT_EQ(block.zeilen(), satz->RecordCount()) << tabelle->Name().toStdString();
        }
        EXPECT_FALSE(andere->ungesichert());
    }
    EXPECT_GE(tabellen, 5);
}

TEST_F(MdbTest, FalschesPasswortIst3031) {
    const QString vorlage = QStringLiteral(LINDGARN_FREMDDATEN "/mdb/beispiele/jet4-passwort.mdb");
    if (!QFile::exists(vorlage)) GTEST_SKIP() << vorlage.toStdString();
    const QString kopie = ordner.filePath(QStringLiteral("p.mdb"));
    ASSERT_TRUE(QFile::copy(vorlage, kopie));
    QFile::setPermissions(kopie, QFile::ReadOwner | QFile::WriteOwner);
    for (const char16_t* text : {u";PWD=;", u";PWD=gewiss falsch;"})
        EXPECT_EQ(fehlerVon([&] { bereich->OpenDatabase(kopie, false, false, QString::fromUtf16(text)); }),
                  kPasswortFalsch);
}

}  // namespace
