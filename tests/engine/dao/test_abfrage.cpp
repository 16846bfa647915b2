// The query texts: what is understood, what is refused, and what the conditions and the order select.
#include "engine/dao/abfrage.h"

#include "engine/dao/werkbank.h"

namespace {

QString spaltenText(const dao::Auswahlabfrage& abfrage) {
    QStringList namen;
    for (const auto& spalte : abfrage.spalten) namen << spalte.value_or(QStringLiteral("*"));
    return namen.join(u'|');
}

TEST(AbfrageTest, ErkenntEineAuswahlAmErstenWort) {
    for (const char16_t* text : {u"SELECT * FROM [a]", u"  select", u"\r\nSelect*", u"SELECT[a]"})
        EXPECT_TRUE(dao::istAuswahlabfrage(QString::fromUtf16(text)))
            << QString::fromUtf16(text).toStdString();
    for (const char16_t* text : {u"", u"SELECTED", u"Selectliste", u"DELETE * FROM [a]", u"[SELECT]", u"SEL"})
        EXPECT_FALSE(dao::istAuswahlabfrage(QString::fromUtf16(text)))
            << QString::fromUtf16(text).toStdString();
}

TEST(AbfrageTest, AlleTexteDesProgrammsMitFehlendenLeerzeichen) {
    for (const char16_t* text :
         {u"SELECT * FROM [T]", u"SELECT [A],* FROM [T]", u"SELECT * FROM [T] WHERE [S] = 12",
          u"SELECT [A],* FROM [T]WHERE [S] = 12", u"SELECT * FROM [T]WHERE [S] = 21 OR [S] = 22",
          u"SELECT [A],* FROM [T]WHERE [S] = 13AND [B] = 7", u"SELECT [A],* FROM [T]WHERE 1 = 2",
          u"SELECT [A],* FROM [T]WHERE 1=2", u"SELECT * FROM [T] ORDER BY [A]",
          u"SELECT * FROM [T] ORDER BY [A],[B],[C]"}) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        EXPECT_EQ(dao::auswahlabfrageLesen(QString::fromUtf16(text)).tabelle, u"T");
    }
    for (const char16_t* text : {u"DELETE * FROM [T] WHERE [S] = 12",
                                 u"DELETE * FROM [T] WHERE ([Q] = 2 AND NOT ([S] = 21 OR [S] = 22))"}) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        EXPECT_EQ(dao::loeschabfrageLesen(QString::fromUtf16(text)).tabelle, u"T");
    }
}

TEST(AbfrageTest, SpaltenTabelleUndOrdnung) {
    const auto abfrage =
        dao::auswahlabfrageLesen(QStringLiteral("select[a b],*,[c]from[t;\" x]order by[d],[e]"));
    EXPECT_EQ(spaltenText(abfrage), u"a b|*|c");
    EXPECT_EQ(abfrage.tabelle, u"t;\" x");
    EXPECT_FALSE(abfrage.bedingung);
    EXPECT_EQ(abfrage.ordnung, (std::vector<QString>{QStringLiteral("d"), QStringLiteral("e")}));
}

TEST(AbfrageTest, NamenDuerfenAllesAusserDerKlammerEnthalten) {
    const QString name = QStringLiteral("[ WHERE 1=1; '\"\n--ß");
    EXPECT_EQ(dao::auswahlabfrageLesen(QStringLiteral("SELECT * FROM [%1]").arg(name)).tabelle, name);
}

TEST(AbfrageTest, UndBindetStaerkerAlsOder) {
    const auto b = dao::bedingungLesen(QStringLiteral("[A]=1 OR [B]=2 AND [C]=3"));
    ASSERT_EQ(b.art, dao::Bedingung::Art::Oder);
    ASSERT_EQ(b.teile.size(), 2u);
    EXPECT_EQ(b.teile[0].art, dao::Bedingung::Art::Gleich);
    EXPECT_EQ(b.teile[1].art, dao::Bedingung::Art::Und);
}

TEST(AbfrageTest, NichtBindetNurDenNaechsten) {
    const auto b = dao::bedingungLesen(QStringLiteral("NOT [A]=1 AND [B]=2"));
    ASSERT_EQ(b.art, dao::Bedingung::Art::Und);
    EXPECT_EQ(b.teile[0].art, dao::Bedingung::Art::Nicht);
}

TEST(AbfrageTest, ZuGrosseZahlWirdGleitzahl) {
    EXPECT_EQ(dao::bedingungLesen(QStringLiteral("[A] = 9223372036854775807")).rechts.zahl,
              Wert(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(dao::bedingungLesen(QStringLiteral("[A] = 9223372036854775808")).rechts.zahl,
              Wert(9223372036854775808.0));
}

TEST(AbfrageTest, AllesAndereIst3075) {
    for (const char16_t* text : {u"",
                                 u"SELECT",
                                 u"SELECT FROM [T]",
                                 u"SELECT * FROM",
                                 u"SELECT * FROM T",
                                 u"SELECT * FROM [T",
                                 u"SELECT * FROM []",
                                 u"SELECT *, FROM [T]",
                                 u"SELECT * FROM [T] WHERE",
                                 u"SELECT * FROM [T] WHERE [A]",
                                 u"SELECT * FROM [T] WHERE [A] =",
                                 u"SELECT * FROM [T] WHERE [A] = 'x'",
                                 u"SELECT * FROM [T] WHERE [A] = -1",
                                 u"SELECT * FROM [T] WHERE [A] = 1 AND",
                                 u"SELECT * FROM [T] WHERE ([A] = 1",
                                 u"SELECT * FROM [T] WHERE [A] = [B]",
                                 u"SELECT * FROM [T] ORDER [A]",
                                 u"SELECT * FROM [T] ORDER BY",
                                 u"SELECT * FROM [T] ORDER BY [A],",
                                 u"SELECT * FROM [T] ORDER BY [A] WHERE [B] = 1",
                                 u"SELECT * FROM [T]; DROP TABLE [T]",
                                 u"SELECT * FROM [T] [U]",
                                 u"UPDATE [T]",
                                 u"SELECT * FROM [T] WHERE [A] = 1.5",
                                 u"SELECT \xd83d * FROM [T]"}) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        EXPECT_EQ(fehlerVon([&] { dao::auswahlabfrageLesen(QString::fromUtf16(text)); }), kSyntaxfehler);
    }
    for (const char16_t* text :
         {u"DELETE FROM [T] WHERE [A] = 1", u"DELETE * FROM [T]", u"DELETE * FROM [T] WHERE [A] = 1 [B]",
          u"DELETE [A] FROM [T] WHERE [A] = 1", u"SELECT * FROM [T]"}) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        EXPECT_EQ(fehlerVon([&] { dao::loeschabfrageLesen(QString::fromUtf16(text)); }), kSyntaxfehler);
    }
}

TEST(AbfrageTest, FehlerNenntStelleUndErwartung) {
    try {
        dao::auswahlabfrageLesen(QStringLiteral("SELECT * FROM T"));
        FAIL();
    } catch (const EngineFehler& fehler) {
        EXPECT_TRUE(fehler.beschreibung().contains(QStringLiteral("an der Stelle 15"))) << fehler.what();
        EXPECT_TRUE(fehler.beschreibung().contains(QStringLiteral("ein Name in eckigen Klammern")))
            << fehler.what();
    }
}

TEST(AbfrageTest, TiefeSchachtelungWirdAbgelehntStattAbzustuerzen) {
    const int tief = 200000;
    const QString klammern = QString(tief, u'(') + QStringLiteral("[A]=1") + QString(tief, u')');
    EXPECT_EQ(fehlerVon([&] { dao::bedingungLesen(klammern); }), kSyntaxfehler);
    EXPECT_EQ(fehlerVon([&] {
                  dao::bedingungLesen(QStringLiteral("NOT ").repeated(tief) + QStringLiteral("[A]=1"));
              }),
              kSyntaxfehler);
    EXPECT_EQ(fehlerVon([&] { dao::bedingungLesen(QStringLiteral("((((([A]=1)))))")); }), 0);
}

class AuswahlTest : public Werkbank {
  protected:
    AuswahlTest() { oeffnen(); }
    QString nummern(const char16_t* rest) {
        return spalte(QStringLiteral("SELECT * FROM [Kunden] ") + QString::fromUtf16(rest), u"Nr");
    }
};

TEST_F(AuswahlTest, Bedingungen) {
    struct Fall {
        const char16_t* rest;
        const char16_t* nummern;
    };
    for (const Fall& fall : {Fall{u"WHERE [Nr] = 3", u"3"},
                             {u"WHERE [Nr] = 6", u""},
                             {u"WHERE [Nr] = 2 OR [Nr] = 5", u"2 5"},
                             {u"WHERE NOT [Nr] = 3", u"1 2 4 5"},
                             {u"WHERE [Nr] = 3AND [Betrag] = 3", u"3"},
                             {u"WHERE [Nr] = 3 AND [Betrag] = 4", u""},
                             {u"WHERE 1 = 2", u""},
                             {u"WHERE 1=1", u"1 2 3 4 5"},
                             {u"WHERE [Betrag] = 2", u"2"},
                             {u"WHERE [Nr] = 99999999999999999999", u""},
                             {u"WHERE NOT ([Nr] = 1 OR NOT ([Nr] = 2 OR [Nr] = 3))", u"2 3"},
                             {u"WHERE [Nr] = 1 OR [Nr] = 2 AND [Betrag] = 9", u"1"}}) {
        SCOPED_TRACE(QString::fromUtf16(fall.rest).toStdString());
        EXPECT_EQ(nummern(fall.rest), QString::fromUtf16(fall.nummern));
    }
}

TEST_F(AuswahlTest, NullErfuelltWederDieBedingungNochIhrGegenteil) {
    anlegen(u"T", {1, 2});
    auto satz = db->OpenRecordset(QStringLiteral("T"));
    satz->AddNew();
    satz->Update();
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [T] WHERE [Z] = 1"), u"Z"), u"1");
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [T] WHERE NOT [Z] = 1"), u"Z"), u"2");
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [T]"), u"Z"), u"1 2 -");
}

TEST_F(AuswahlTest, UnbekanntesFeldIst3061) {
    for (const char16_t* text : {u"SELECT [X],* FROM [Kunden]", u"SELECT * FROM [Kunden] WHERE [X] = 1",
                                 u"SELECT * FROM [Kunden] ORDER BY [X]"})
        EXPECT_EQ(fehlerVon([&] { db->OpenRecordset(QString::fromUtf16(text)); }), kParameterFehlt);
}

TEST_F(AuswahlTest, TextfeldGegenZahlIst3464) {
    EXPECT_EQ(fehlerVon([&] { nummern(u"WHERE [Name] = 1"); }), 3464);
}

TEST_F(AuswahlTest, TextSortiertNachDerAllgemeinenOrdnungMitNullZuerst) {
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [Kunden] ORDER BY [Name]"), u"Name"),
              u"Äcker adam Adler Meyer Zimmer");
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [Kunden] ORDER BY [Ort]"), u"Ort"),
              u"- Aachen Bonn Bonn Ulm");
}

TEST_F(AuswahlTest, GleicheSchluesselStehenInNatuerlicherFolge) {
    EXPECT_EQ(nummern(u"ORDER BY [Ort]"), u"3 5 1 4 2");
}

TEST_F(AuswahlTest, MehrereSpaltenDieErsteZaehltAmMeisten) {
    EXPECT_EQ(nummern(u"ORDER BY [Ort],[Name]"), u"3 5 4 1 2");
    EXPECT_EQ(nummern(u"ORDER BY [Ort],[Name],[Nr]"), u"3 5 4 1 2");
    EXPECT_EQ(nummern(u"WHERE [Nr] = 1 OR [Nr] = 2 ORDER BY [Ort],[Ort]"), u"1 2");
}

TEST_F(AuswahlTest, ZahlenSortierenNachIhremWert) {
    anlegen(u"T", {10, 9, -3, 100, 0});
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [T] ORDER BY [Z]"), u"Z"), u"-3 0 9 10 100");
}

TEST_F(AuswahlTest, TabelleDieWieEineAbfrageHeisstGehtVor) {
    anlegen(u"SELECT * FROM [Kunden]", {7});
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [Kunden]"), u"Z"), u"7");
}

TEST_F(AuswahlTest, LoeschenNachBedingung) {
    EXPECT_EQ(db->Execute(QStringLiteral(
                  "DELETE * FROM [Kunden] WHERE ([Nr] = 2 AND NOT ([Betrag] = 21 OR [Betrag] = 22))")),
              1);
    EXPECT_EQ(db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 2")), 0);
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 3 4 5");
}

}  // namespace
