// The sources of the sample database: how they are read, and that they hold what their truth says.
#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QSet>
#include <map>
#include <stdexcept>

#include "csv.h"
#include "tabelle.h"

namespace {

using Saetze = std::vector<QStringList>;

TEST(Csv, LiestFelderUndZeilen) {
    const std::pair<const char16_t*, Saetze> faelle[] = {
        {u"", {}},
        {u"a;b\nc;d\n", {{"a", "b"}, {"c", "d"}}},
        {u"a;b\r\nc;d", {{"a", "b"}, {"c", "d"}}},
        {u";\n", {{"", ""}}},
        {u"a\n\n\nb\n", {{"a"}, {"b"}}},
        {u"\"a;b\";\"c\nd\"\n", {{"a;b", "c\nd"}}},
        {u"\"er sagt \"\"nein\"\"\";x\n", {{"er sagt \"nein\"", "x"}}},
        {u"\"\";\"\"\n", {{"", ""}}},
    };
    for (const auto& [text, soll] : faelle)
        EXPECT_EQ(CsvLesen(text), soll) << qPrintable(QString::fromUtf16(text));
}

TEST(Csv, EinOffenesAnfuehrungszeichenIstEinFehler) {
    EXPECT_THROW(CsvLesen(u"a;\"b\nc"), std::runtime_error);
}

TEST(Beispieltabelle, DieKopfzeileNenntFelderUndIndexe) {
    const auto def = TabelleAusCsv("T", {{"Nr:Long:Schlüssel", "Name:Text:40:Index", "Notiz:Memo",
                                          "Tag:Datum", "Geld:Währung", "Ja:JaNein"}})
                         .def;
    ASSERT_EQ(def.felder.size(), 6u);
    const int typen[] = {dao::dbLong, dao::dbText, dao::dbMemo, dao::dbDate, dao::dbCurrency, dao::dbBoolean};
    for (size_t i = 0; i < 6; ++i) EXPECT_EQ(def.felder[i].typ, typen[i]) << i;
    EXPECT_EQ(def.felder[1].name, "Name");
    EXPECT_EQ(def.felder[1].groesse, 40);
    ASSERT_EQ(def.indexe.size(), 2u);
    EXPECT_TRUE(def.indexe[0].primaer && def.indexe[0].eindeutig);
    EXPECT_EQ(def.indexe[0].felder, (std::vector<engine::IndexFeld>{{"Nr", false}}));
    EXPECT_FALSE(def.indexe[1].primaer || def.indexe[1].eindeutig);
    EXPECT_EQ(def.indexe[1].felder, (std::vector<engine::IndexFeld>{{"Name", false}}));
}

TEST(Beispieltabelle, ZellenWerdenWerte) {
    const auto zeilen =
        TabelleAusCsv("T",
                      {{"Nr:Long", "Name:Text:40", "Notiz:Memo", "Tag:Datum", "Geld:Währung", "Ja:JaNein"},
                       {"-7", "ä", "zwei\r\nZeilen", "2001-12-31", "12.5", "1"},
                       {"", "", "", "", "", ""}})
            .zeilen;
    ASSERT_EQ(zeilen.size(), 2u);
    const std::vector<Wert> erste = {
        Wert(-7),  Wert(u"ä"), Wert(u"zwei\r\nZeilen"), Wert(DatumZeit{37256}), Wert(Waehrung{125000}),
        Wert(true)};
    EXPECT_EQ(zeilen[0], erste);
    const std::vector<Wert> zweite = {Wert::null(), Wert::null(), Wert::null(),
                                      Wert::null(), Wert::null(), Wert(false)};
    EXPECT_EQ(zeilen[1], zweite);
}

TEST(Beispieltabelle, FehlerNennenDenSatz) {
    const std::pair<Saetze, const char*> faelle[] = {
        {{}, "Kopfzeile"},
        {{{"Nr"}}, "Satz 1"},
        {{{"Nr:Zahl"}}, "Satz 1"},
        {{{"Name:Text"}}, "Größe"},
        {{{"Name:Text:256"}}, "Größe"},
        {{{"Nr:Long:Haupt"}}, "Zusatz"},
        {{{"Nr:Long"}, {"1"}, {"1", "2"}}, "Satz 3"},
        {{{"Nr:Long"}, {"x"}}, "Satz 2: Nr"},
        {{{"Tag:Datum"}, {"31.12.2001"}}, "Satz 2: Tag"},
        {{{"Geld:Währung"}, {"1,5"}}, "Satz 2: Geld"},
    };
    for (const auto& [saetze, teil] : faelle) {
        try {
            TabelleAusCsv("T", saetze);
            ADD_FAILURE() << teil;
        } catch (const std::runtime_error& fehler) {
            EXPECT_TRUE(QString(fehler.what()).contains(teil)) << fehler.what();
        }
    }
}

Saetze quelle(const QString& name) {
    QFile datei(QStringLiteral(LINDGARN_QUELLE "/resources/beispiele/") + name);
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    return CsvLesen(QString::fromUtf8(datei.readAll()));
}

TEST(Beispieldaten, JederTextPasstInSeinFeld) {
    for (const char* name : {"adressen.csv", "interessenten.csv"}) {
        const Beispieltabelle tabelle = TabelleAusCsv(name, quelle(name));
        for (const auto& zeile : tabelle.zeilen)
            for (size_t i = 0; i < zeile.size(); ++i) {
                const engine::FeldDef& feld = tabelle.def.felder[i];
                if (feld.typ != dao::dbText || zeile[i].istNull()) continue;
                EXPECT_LE(zeile[i].text().size(), feld.groesse) << qPrintable(feld.name);
            }
    }
}

TEST(Beispieldaten, DieWahrheitNenntJedenSatzUndJedeArtVonDubletten) {
    const size_t adressen = quelle("adressen.csv").size() - 1;
    const size_t interessenten = quelle("interessenten.csv").size() - 1;
    EXPECT_EQ(adressen, 500u);
    EXPECT_EQ(interessenten, 40u);
    const Saetze wahrheit = quelle("wahrheit.csv");
    ASSERT_EQ(wahrheit.size() - 1, adressen + interessenten);
    QSet<QString> arten;
    std::map<int, int> groesse;
    for (size_t i = 1; i <= adressen; ++i) {
        EXPECT_EQ(wahrheit[i][0], "Adressen");
        EXPECT_EQ(wahrheit[i][1].toInt(), int(i));
        EXPECT_LE(wahrheit[i][2].toInt(), int(i));
        ++groesse[wahrheit[i][2].toInt()];
        for (const QString& art : wahrheit[i][3].split(", ", Qt::SkipEmptyParts)) arten.insert(art);
    }
    EXPECT_EQ(arten.size(), 14);
    size_t mehrfach = 0;
    for (const auto& [kunde, anzahl] : groesse) mehrfach += anzahl > 1;
    EXPECT_GT(mehrfach, 50u);
}

}  // namespace
