// The test bench over its pipes: scripts of operations with the answers that are due, and the protocol
// itself.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cmath>

namespace {

constexpr int kFrist = 60000;

// One running test bench.
class Pruefstand {
  public:
    Pruefstand() {
        prozess_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        prozess_.start(QStringLiteral(LINDGARN_PRUEFSTAND), QStringList());
        if (!prozess_.waitForStarted(kFrist)) ADD_FAILURE() << "startet nicht";
    }

    // Sends a line and gives the line that comes back.
    QByteArray zeile(const QByteArray& auftrag) {
        prozess_.write(auftrag + '\n');
        while (!prozess_.canReadLine())
            if (!prozess_.waitForReadyRead(kFrist)) {
                ADD_FAILURE() << "keine Antwort auf " << auftrag.constData();
                return QByteArray();
            }
        return prozess_.readLine();
    }

    QJsonObject antwort(QJsonObject auftrag) {
        auftrag["id"] = ++nummer_;
        const QByteArray text = zeile(QJsonDocument(auftrag).toJson(QJsonDocument::Compact));
        const QJsonObject objekt = QJsonDocument::fromJson(text).object();
        EXPECT_EQ(objekt["id"].toInt(), nummer_) << text.constData();
        EXPECT_NE(objekt.contains("result"), objekt.contains("error")) << text.constData();
        return objekt;
    }

    QJsonObject antwort(const QString& op, const QJsonArray& args) {
        return antwort({{"op", op}, {"args", args}});
    }

    // Ends the input and returns the exit code; -1 when the tool does not end.
    int beenden() {
        prozess_.closeWriteChannel();
        const bool beendet = prozess_.waitForFinished(kFrist);
        return beendet && prozess_.exitStatus() == QProcess::NormalExit ? prozess_.exitCode() : -1;
    }
    QByteArray rest() { return prozess_.readAllStandardOutput(); }

  private:
    QProcess prozess_;
    int nummer_ = 0;
};

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
                         ::testing::Values("texte", "parser", "feldarten", "vergleich", "ziel"),
                         [](const auto& fall) { return std::string(fall.param); });

TEST(PruefstandSkripte, KeinesBleibtLiegen) {
    const QStringList dateien =
        QDir(QStringLiteral(LINDGARN_QUELLE "/tests/tools/skripte")).entryList({"*.jsonl"});
    EXPECT_EQ(dateien, (QStringList{"feldarten.jsonl", "parser.jsonl", "texte.jsonl", "vergleich.jsonl",
                                    "ziel.jsonl"}));
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
    for (const QJsonValue& wert : werte)
        EXPECT_EQ(pruefstand.antwort("FeldInhaltErmitteln", {wert, 1})["result"], wert)
            << kurz(wert).constData();
    EXPECT_EQ(pruefstand.beenden(), 0);
}

}  // namespace
