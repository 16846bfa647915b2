// Opening and closing: connect texts, openers, the list of errors.
#include "engine/dao/werkbank.h"

namespace {

class ArbeitsbereichTest : public Werkbank {};

TEST_F(ArbeitsbereichTest, VerbindungstextNenntDasFormat) {
    struct Fall {
        const char16_t* text;
        std::optional<dao::Dateiart> art;
    };
    using dao::Dateiart;
    for (const Fall& fall : {Fall{u"", Dateiart::Access},
                             {u";PWD=;", Dateiart::Access},
                             {u";PWD=x;", Dateiart::Access},
                             {u"Excel 5.0;", Dateiart::Excel},
                             {u"Dbase 5;", Dateiart::Dbase},
                             {u"Dbase III;", Dateiart::Dbase},
                             {u"Dbase IV;", Dateiart::Dbase},
                             {u"Access", std::nullopt},
                             {u"Excel 8.0;", std::nullopt},
                             {u"Text;", std::nullopt},
                             {u"ODBC;", std::nullopt},
                             {u"excel 5.0;", std::nullopt}}) {
        SCOPED_TRACE(QString::fromUtf16(fall.text).toStdString());
        EXPECT_EQ(dao::dateiartVon(QString::fromUtf16(fall.text)), fall.art);
    }
}

TEST_F(ArbeitsbereichTest, PasswortStehtZwischenGleichUndLetztemSemikolon) {
    EXPECT_EQ(dao::passwortVon(QStringLiteral(";PWD=;")), u"");
    EXPECT_EQ(dao::passwortVon(QStringLiteral(";PWD=geheim;")), u"geheim");
    EXPECT_EQ(dao::passwortVon(QStringLiteral(";PWD=a=b;")), u"a=b");
    EXPECT_EQ(dao::passwortVon(QStringLiteral("Excel 5.0;")), u"");
}

TEST_F(ArbeitsbereichTest, PasswortMitSemikolonKommtGanzBeimFormatAn) {
    oeffnen();
    db = bereich->OpenDatabase(ordner.filePath(QStringLiteral("test.mdb")), false, false,
                               QStringLiteral(";PWD=a;b;;"));
    EXPECT_EQ(inhalt.passwort, u"a;b;");
}

TEST_F(ArbeitsbereichTest, FehlendeDateiIst3024) {
    oeffnen();
    EXPECT_EQ(fehlerVon([&] {
                  bereich->OpenDatabase(ordner.filePath(QStringLiteral("fehlt.mdb")), false, false,
                                        QStringLiteral(";PWD=;"));
              }),
              kDateiFehlt);
}

TEST_F(ArbeitsbereichTest, UnbekanntesFormatIst3343) {
    oeffnen();
    const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
    for (const char16_t* text : {u"Access", u"Text;"})
        EXPECT_EQ(fehlerVon([&] { bereich->OpenDatabase(pfad, false, false, QString::fromUtf16(text)); }),
                  kDateiNichtLesbar);
}

TEST_F(ArbeitsbereichTest, FormatOhneOeffnerIst3343) {
    oeffnen();
    const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
    dao::DateiOeffnerSetzen(dao::Dateiart::Excel, nullptr);
    EXPECT_EQ(fehlerVon([&] { bereich->OpenDatabase(pfad, false, false, QStringLiteral("Excel 5.0;")); }),
              kDateiNichtLesbar);
}

TEST_F(ArbeitsbereichTest, FehlerDesFormatsKommtDurch) {
    oeffnen();
    dao::DateiOeffnerSetzen(dao::Dateiart::Access,
                            [](const QString&, const QString&) -> std::unique_ptr<engine::Datenbankdatei> {
                                throw EngineFehler(kPasswortFalsch, QStringLiteral("falsch"));
                            });
    EXPECT_EQ(fehlerVon([&] {
                  bereich->OpenDatabase(ordner.filePath(QStringLiteral("test.mdb")), false, false,
                                        QStringLiteral(";PWD=x;"));
              }),
              kPasswortFalsch);
}

TEST_F(ArbeitsbereichTest, OrdnerIstFuerDbaseEineDatenbank) {
    QString gesehen;
    dao::DateiOeffnerSetzen(dao::Dateiart::Dbase, [&](const QString& pfad, const QString&) {
        gesehen = pfad;
        return std::make_unique<Speicherdatei>(inhalt);
    });
    db = bereich->OpenDatabase(ordner.path(), false, false, QStringLiteral("Dbase 5;"));
    EXPECT_EQ(gesehen, ordner.path());
    EXPECT_EQ(db->TableDefs().Count(), 2);
    dao::DateiOeffnerSetzen(dao::Dateiart::Dbase, nullptr);
}

TEST_F(ArbeitsbereichTest, RueckstricheImPfadSindTrenner) {
    oeffnen();
    QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
    pfad.replace(u'/', u'\\');
    db = bereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
    EXPECT_EQ(db->TableDefs().Count(), 2);
}

TEST_F(ArbeitsbereichTest, OeffnenLiestKeineZeile) {
    oeffnen();
    tabelle(u"Kunden").Fields().Count();
    EXPECT_TRUE(inhalt.protokoll.isEmpty());
}

TEST_F(ArbeitsbereichTest, NachSchliessenIstAlles3420) {
    oeffnen();
    db->setQueryTimeout(1);
    db->Close();
    EXPECT_EQ(fehlerVon([&] { db->TableDefs(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->Relations(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->OpenRecordset(QStringLiteral("Kunden")); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 1")); }),
              kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->CreateTableDef(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->Sichern(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->ungesichert(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { db->Close(); }), kObjektUngueltig);
}

TEST_F(ArbeitsbereichTest, SchliessenOhneSichernVerwirft) {
    oeffnen();
    anlegen(u"Neu", {1});
    db->Close();
    EXPECT_FALSE(inhalt.suchen(QStringLiteral("Neu")));
}

TEST_F(ArbeitsbereichTest, SchliessenDesBereichsSchliesstDieDatenbanken) {
    oeffnen();
    bereich->Close();
    EXPECT_EQ(fehlerVon([&] { db->TableDefs(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { bereich->BeginTrans(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { bereich->OpenDatabase(QStringLiteral("x"), false, false, {}); }),
              kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { bereich->Close(); }), kObjektUngueltig);
}

TEST_F(ArbeitsbereichTest, DatenbankUeberlebtIhrenBereich) {
    oeffnen();
    bereich.reset();
    EXPECT_EQ(db->TableDefs().Count(), 2);
    db.reset();
}

TEST_F(ArbeitsbereichTest, FehlerlisteHatEinenEintragAbDemErstenFehler) {
    oeffnen();
    EXPECT_NE(fehlerVon([&] { db->OpenRecordset(QStringLiteral("Fehlt")); }), 0);
    EXPECT_EQ(dao::DBEngine::ErrorsCount(), 1);
    EXPECT_NE(fehlerVon([&] { db->OpenRecordset(QStringLiteral("Fehlt")); }), 0);
    EXPECT_EQ(dao::DBEngine::ErrorsCount(), 1);
    db->OpenRecordset(QStringLiteral("Kunden"));
    EXPECT_EQ(dao::DBEngine::ErrorsCount(), 1);
}

}  // namespace
