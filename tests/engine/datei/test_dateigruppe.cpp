// Several files changed together: all or nothing, nobody else's file lost.
#include "engine/datei/dateigruppe.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <map>

#include "base/fehler.h"

namespace {

using engine::Gruppenschritt;

class DateigruppeTest : public testing::Test {
  protected:
    QString pfad(const char* name) const { return ordner.filePath(QString::fromLatin1(name)); }

    void schreiben(const QString& wohin, const QByteArray& inhalt) const {
        QFile datei(wohin);
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(inhalt);
    }

    std::map<QString, QByteArray> alles() const {
        std::map<QString, QByteArray> stand;
        for (const QString& name : QDir(ordner.path()).entryList(QDir::Files | QDir::Hidden)) {
            QFile datei(ordner.filePath(name));
            EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
            stand[name] = datei.readAll();
        }
        return stand;
    }

    Gruppenschritt neu(const char* ziel, const QByteArray& inhalt) const {
        const bool da = QFile::exists(pfad(ziel));
        Gruppenschritt schritt{pfad(ziel), engine::leereDateiDaneben(pfad(ziel)), {}};
        if (da) schritt.stand = engine::dateistandLesen(pfad(ziel));
        schreiben(schritt.neu.pfad(), inhalt);
        return schritt;
    }
    Gruppenschritt weg(const char* ziel) const {
        return {pfad(ziel), engine::Beiname(), engine::dateistandLesen(pfad(ziel))};
    }

    int austauschen(std::vector<Gruppenschritt> schritte) {
        try {
            engine::gruppeAustauschen(std::move(schritte));
            return 0;
        } catch (const EngineFehler& fehler) {
            EXPECT_FALSE(fehler.beschreibung().isEmpty());
            return fehler.nummer();
        }
    }

    // The files a, b and c; steps that replace a, make d, remove b.
    std::vector<Gruppenschritt> dreiSchritte() {
        std::vector<Gruppenschritt> schritte;
        schritte.push_back(neu("a", "neues a"));
        schritte.push_back(neu("d", "neues d"));
        schritte.push_back(weg("b"));
        return schritte;
    }

    void SetUp() override {
        for (const char* name : {"a", "b", "c"}) schreiben(pfad(name), name);
    }

    QTemporaryDir ordner;
    const std::map<QString, QByteArray> anfang{
        {QStringLiteral("a"), "a"}, {QStringLiteral("b"), "b"}, {QStringLiteral("c"), "c"}};
};

TEST_F(DateigruppeTest, ErsetztLegtAnUndLoescht) {
    EXPECT_EQ(austauschen(dreiSchritte()), 0);
    const std::map<QString, QByteArray> erwartet{
        {QStringLiteral("a"), "neues a"}, {QStringLiteral("c"), "c"}, {QStringLiteral("d"), "neues d"}};
    EXPECT_EQ(alles(), erwartet);
}

TEST_F(DateigruppeTest, ScheiternderSchrittNimmtDieFrueherenZurueck) {
    for (size_t scheitert = 0; scheitert < 4; ++scheitert) {
        std::vector<Gruppenschritt> schritte = dreiSchritte();
        // A finished file that is no longer there cannot be put in place.
        Gruppenschritt letzter = neu("c", "neues c");
        QFile::remove(letzter.neu.pfad());
        schritte.insert(schritte.begin() + std::ptrdiff_t(scheitert), std::move(letzter));
        EXPECT_EQ(austauschen(std::move(schritte)), kDateifehler) << scheitert;
        EXPECT_EQ(alles(), anfang) << scheitert;
    }
}

TEST_F(DateigruppeTest, FremdeAenderungHaeltAllesAuf) {
    std::vector<Gruppenschritt> schritte = dreiSchritte();
    schreiben(pfad("b"), "fremd");
    EXPECT_EQ(austauschen(std::move(schritte)), kDateiGeaendert);
    std::map<QString, QByteArray> erwartet = anfang;
    erwartet[QStringLiteral("b")] = "fremd";
    EXPECT_EQ(alles(), erwartet);
}

TEST_F(DateigruppeTest, FremdeNeueDateiBleibt) {
    std::vector<Gruppenschritt> schritte = dreiSchritte();
    schreiben(pfad("d"), "fremd");
    EXPECT_EQ(austauschen(std::move(schritte)), kDateiGeaendert);
    std::map<QString, QByteArray> erwartet = anfang;
    erwartet[QStringLiteral("d")] = "fremd";
    EXPECT_EQ(alles(), erwartet);
}

}  // namespace
