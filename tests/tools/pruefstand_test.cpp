// The test bench over its pipes: scripts of operations with the answers that are due, and the protocol
// itself.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <cmath>

#include "tools/zeilenprogramm.h"

namespace {

// One running test bench.
class Pruefstand : public Zeilenprogramm {
  public:
    Pruefstand() : Zeilenprogramm(QStringLiteral(LINDGARN_PRUEFSTAND)) {}
    using Zeilenprogramm::antwort;
    QJsonObject antwort(const QString& op, const QJsonArray& args) {
        return antwort({{"op", op}, {"args", args}});
    }
};

// A list as a value: in braces alone, compilers disagree whether a list of one list is a copy.
QJsonValue liste(const QJsonArray& werte) {
    return werte;
}

// Numbers may differ in the last digits of a single-precision value; all else is equal or not.
bool gleich(const QJsonValue& a, const QJsonValue& b) {
    if (a.isDouble() && b.isDouble()) return std::abs(a.toDouble() - b.toDouble()) <= 1e-7;
    if (a.isArray() && b.isArray()) {
        const QJsonArray links = a.toArray(), rechts = b.toArray();
        if (links.size() != rechts.size()) return false;
        for (qsizetype i = 0; i < links.size(); ++i)
            if (!gleich(links[i], rechts[i])) return false;
        return true;
    }
    if (a.isObject() && b.isObject()) {
        const QJsonObject links = a.toObject(), rechts = b.toObject();
        if (links.keys() != rechts.keys()) return false;
        for (const QString& name : links.keys())
            if (!gleich(links[name], rechts[name])) return false;
        return true;
    }
    return a == b;
}

QByteArray kurz(const QJsonValue& wert) {
    return QJsonDocument(QJsonArray{wert}).toJson(QJsonDocument::Compact);
}

// A script: one JSON object a line with "op", "args", and "result" or a part of the "error"; # starts a
// remark.
QList<QByteArray> skriptzeilen(const QString& datei) {
    QFile skript(datei);
    EXPECT_TRUE(skript.open(QIODevice::ReadOnly)) << qPrintable(datei);
    QList<QByteArray> zeilen;
    for (const QByteArray& zeile : skript.readAll().split('\n'))
        if (!zeile.trimmed().isEmpty() && !zeile.startsWith('#')) zeilen.append(zeile);
    return zeilen;
}

void zeilePruefen(Pruefstand& pruefstand, const QByteArray& zeile) {
    SCOPED_TRACE(zeile.constData());
    const QJsonObject soll = QJsonDocument::fromJson(zeile).object();
    ASSERT_TRUE(soll.contains("op"));
    ASSERT_NE(soll.contains("result"), soll.contains("error"));
    const QJsonObject ist = pruefstand.antwort({{"op", soll["op"]}, {"args", soll["args"]}});
    if (soll.contains("result")) {
        ASSERT_TRUE(ist.contains("result")) << qPrintable(ist["error"].toString());
        EXPECT_TRUE(gleich(ist["result"], soll["result"])) << kurz(ist["result"]).constData();
        return;
    }
    ASSERT_TRUE(ist.contains("error")) << kurz(ist["result"]).constData();
    EXPECT_TRUE(ist["error"].toString().contains(soll["error"].toString()))
        << qPrintable(ist["error"].toString());
}

class PruefstandSkript : public ::testing::TestWithParam<const char*> {};

TEST_P(PruefstandSkript, GibtDieErwartetenAntworten) {
    const auto zeilen =
        skriptzeilen(QStringLiteral(LINDGARN_QUELLE "/tests/tools/skripte/") + GetParam() + ".jsonl");
    ASSERT_FALSE(zeilen.isEmpty());
    Pruefstand pruefstand;
    for (const QByteArray& zeile : zeilen) zeilePruefen(pruefstand, zeile);
    EXPECT_EQ(pruefstand.beenden(), 0);
}

INSTANTIATE_TEST_SUITE_P(Alle, PruefstandSkript,
                         ::testing::Values("texte", "parser", "feldarten", "vergleich", "umformung", "muell",
                                           "ziel"),
                         [](const auto& fall) { return std::string(fall.param); });

TEST(PruefstandSkripte, KeinesBleibtLiegen) {
    const QStringList dateien =
        QDir(QStringLiteral(LINDGARN_QUELLE "/tests/tools/skripte")).entryList({"*.jsonl"});
    EXPECT_EQ(dateien, (QStringList{"feldarten.jsonl", "mischen.jsonl", "muell.jsonl", "parser.jsonl",
                                    "texte.jsonl", "umformung.jsonl", "vergleich.jsonl", "ziel.jsonl"}));
}

TEST(PruefstandProtokoll, AntwortenTragenDieKennungUndKommenDerReiheNach) {
    Pruefstand pruefstand;
    const QByteArray antwort = pruefstand.zeile(R"({"id":"a","op":"Wort","args":["x y",1]})");
    EXPECT_EQ(QJsonDocument::fromJson(antwort).object()["id"], QJsonValue("a"));
    EXPECT_EQ(
        QJsonDocument::fromJson(pruefstand.zeile(R"({"id":null,"op":"Wort","args":["x y",2]})")).object(),
        (QJsonObject{{"id", QJsonValue::Null}, {"result", "y"}}));
    EXPECT_EQ(pruefstand.beenden(), 0);
}

TEST(PruefstandProtokoll, UnbekannteOperationUndUnlesbareZeileGebenFehler) {
    Pruefstand pruefstand;
    EXPECT_TRUE(pruefstand.antwort("Gibtsnicht", {})["error"].toString().contains("Gibtsnicht"));
    for (const char* zeile : {"{", "[]", "Unsinn", R"({"id":1})", R"({"id":1,"op":"Wort","args":"x"})"}) {
        const QByteArray antwort = pruefstand.zeile(zeile);
        EXPECT_TRUE(QJsonDocument::fromJson(antwort).object().contains("error"))
            << zeile << antwort.constData();
    }
    EXPECT_EQ(pruefstand.antwort("Wort", {"noch da", 2})["result"], QJsonValue("da"));
    EXPECT_EQ(pruefstand.beenden(), 0);
}

TEST(PruefstandProtokoll, NichtsSonstAufDerAusgabe) {
    Pruefstand pruefstand;
    pruefstand.antwort("Wort", {"a", 1});
    EXPECT_EQ(pruefstand.beenden(), 0);
    EXPECT_EQ(pruefstand.rest(), "");
}

TEST(PruefstandProtokoll, WerteKommenWieSieGehen) {
    Pruefstand pruefstand;
    const QJsonArray werte = {"ä\"\\\n€",
                              1,
                              -2.5,
                              qint64(9007199254740993),
                              true,
                              false,
                              QJsonValue::Null,
                              QJsonObject{{"leer", true}},
                              QJsonObject{{"datum", "2001-12-31T08:15:00"}},
                              QJsonObject{{"datum", "1899-12-29T06:00:00"}},
                              QJsonObject{{"datum", "0100-01-01T00:00:00"}},
                              QJsonObject{{"bytes", "AAH/"}}};
    for (const QJsonValue wert : werte)
        EXPECT_EQ(pruefstand.antwort("FeldInhaltErmitteln", {wert, 1})["result"], wert)
            << kurz(wert).constData();
    EXPECT_EQ(pruefstand.beenden(), 0);
}

// The sample database, in a folder of its own.
class PruefstandDateien : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::copy(QStringLiteral(LINDGARN_BEISPIELE "/adressen.mdb"), datei));
    }
    void TearDown() override { EXPECT_EQ(pruefstand.beenden(), 0); }

    QJsonValue ergebnis(const QString& op, QJsonArray args) {
        args.prepend(QString());
        args.prepend(datei);
        const QJsonObject antwort = pruefstand.antwort(op, args);
        EXPECT_TRUE(antwort.contains("result")) << qPrintable(antwort["error"].toString());
        return antwort["result"];
    }
    QString fehler(const QString& op, QJsonArray args) {
        args.prepend(QString());
        args.prepend(datei);
        return pruefstand.antwort(op, args)["error"].toString();
    }
    QJsonArray namen() {
        QJsonArray namen;
        for (const QJsonValue tabelle : ergebnis("Katalog", {})["tabellen"].toArray())
            if (tabelle["attribute"].toInt() == 0) namen += tabelle["name"];
        return namen;
    }

    QTemporaryDir ordner;
    QString datei = ordner.filePath("a.mdb");
    Pruefstand pruefstand;
};

TEST_F(PruefstandDateien, KatalogNenntTabellenFelderUndIndexe) {
    QJsonObject adressen;
    for (const QJsonValue tabelle : ergebnis("Katalog", {})["tabellen"].toArray())
        if (tabelle["name"] == QJsonValue("Adressen")) adressen = tabelle.toObject();
    EXPECT_EQ(adressen["zeilen"], QJsonValue(500));
    ASSERT_EQ(adressen["felder"].toArray().size(), 17);
    const QJsonValue nachname = adressen["felder"][5];
    EXPECT_EQ(nachname["name"], QJsonValue("Nachname"));
    EXPECT_EQ(nachname["typ"], QJsonValue(10));
    EXPECT_EQ(nachname["groesse"], QJsonValue(50));
    ASSERT_EQ(adressen["indexe"].toArray().size(), 2);
    for (const QJsonValue index : adressen["indexe"].toArray()) {
        const bool primaer = index["primaer"].toBool();
        const QJsonArray felder{liste({primaer ? "Kundennummer" : "Nachname", false})};
        EXPECT_EQ(index["felder"].toArray(), felder) << kurz(index).constData();
        EXPECT_EQ(index["eindeutig"].toBool(), primaer);
    }
    EXPECT_TRUE(adressen["geaendert"].isObject());
}

TEST_F(PruefstandDateien, ZeilenAbEinerStelle) {
    EXPECT_EQ(ergebnis("Zeilen", {"Adressen"}).toArray().size(), 500);
    const QJsonArray zwei = ergebnis("Zeilen", {"Adressen", 498, 5}).toArray();
    ASSERT_EQ(zwei.size(), 2);
    EXPECT_EQ(zwei[0][0], QJsonValue(499));
    EXPECT_TRUE(zwei[0][13].toObject().contains("datum"));
    EXPECT_TRUE(zwei[0][15].isBool());
    EXPECT_EQ(ergebnis("Zeilen", {"Adressen", 500, 5}).toArray().size(), 0);
}

TEST_F(PruefstandDateien, AbfrageWaehltUndLoescht) {
    EXPECT_EQ(ergebnis("Abfrage", {"SELECT * FROM [Adressen]WHERE [Kundennummer] = 13"}).toArray().size(), 1);
    EXPECT_EQ(ergebnis("Abfrage", {"DELETE * FROM [Adressen] WHERE [Kundennummer] = 13"}), QJsonValue(1));
    EXPECT_EQ(ergebnis("Zeilen", {"Adressen"}).toArray().size(), 499);
    EXPECT_TRUE(fehler("Abfrage", {"SELECT Unsinn"}).contains("3075"));
}

TEST_F(PruefstandDateien, TabelleSchreibenUmbenennenLoeschen) {
    const QJsonArray felder{QJsonObject{{"name", "Nr"}, {"typ", 4}},
                            QJsonObject{{"name", "Text"}, {"typ", 10}, {"groesse", 20}}};
    const QJsonArray index{QJsonObject{
        {"name", "P"}, {"felder", QJsonArray{liste({"Nr", false})}}, {"eindeutig", true}, {"primaer", true}}};
    const QJsonArray zeilen{QJsonArray{2, "zwei"}, QJsonArray{1, QJsonValue::Null}};
    const QJsonObject tabelle{{"name", "Neu"}, {"felder", felder}, {"indexe", index}, {"zeilen", zeilen}};
    EXPECT_EQ(ergebnis("TabelleSchreiben", {tabelle}), QJsonValue(true));
    EXPECT_EQ(ergebnis("Zeilen", {"Neu"}).toArray(), zeilen);
    EXPECT_TRUE(fehler("TabelleSchreiben", {tabelle}).contains("3010"));
    EXPECT_EQ(ergebnis("TabelleUmbenennen", {"Neu", "Anders"}), QJsonValue(true));
    EXPECT_EQ(namen(), (QJsonArray{"Adressen", "Interessenten", "Anders"}));
    EXPECT_EQ(ergebnis("TabelleLoeschen", {"Anders"}), QJsonValue(true));
    EXPECT_EQ(namen(), (QJsonArray{"Adressen", "Interessenten"}));
    EXPECT_TRUE(fehler("TabelleLoeschen", {"Anders"}).contains("3265"));
}

TEST_F(PruefstandDateien, DerErzeugerMachtSoVieleAdressenWieVerlangt) {
    const QStringList worte{"--anzahl", "60", "--anfang", "3"};
    const QString gleich = ordner.filePath("b.mdb");
    ASSERT_EQ(QProcess::execute(QStringLiteral(LINDGARN_BEISPIELPROGRAMM), worte + QStringList{datei}), 0);
    ASSERT_EQ(QProcess::execute(QStringLiteral(LINDGARN_BEISPIELPROGRAMM), worte + QStringList{gleich}), 0);
    const QJsonArray zeilen = ergebnis("Zeilen", {"Adressen"}).toArray();
    EXPECT_EQ(zeilen.size(), 60);
    EXPECT_EQ(pruefstand.antwort("Zeilen", {gleich, "", "Adressen"})["result"].toArray(), zeilen);
    EXPECT_NE(QProcess::execute(QStringLiteral(LINDGARN_BEISPIELPROGRAMM), {datei, "fehlt.csv"}), 0);
}

TEST_F(PruefstandDateien, FehlendeDatei) {
    datei = ordner.filePath("fehlt.mdb");
    EXPECT_EQ(fehler("Katalog", {}), "Datei kann nicht geöffnet werden.");
}

}  // namespace
