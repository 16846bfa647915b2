// The settings file in the program's folder, or where an installation keeps it.
#include "data/start.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "fields/feldarten.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

class Einstellungsdatei : public ::testing::Test {
  protected:
    Einstellungsdatei() {
        QDir(ordner.path()).mkpath(QStringLiteral("bin"));
        QDir(ordner.path()).mkpath(QStringLiteral("share/lindgarn"));
        ProgrammOrdnerSetzen(ordner.filePath(QStringLiteral("bin")));
    }
    ~Einstellungsdatei() override { ProgrammOrdnerSetzen(QString()); }
    void schreiben(const QString& verzeichnis, const QByteArray& inhalt) {
        QFile datei(ordner.filePath(verzeichnis + QStringLiteral("/Einstellungen.CFG")));
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(inhalt);
    }
    int relevanz(int feldart) { return gFeldArten[size_t(feldart)].RelevanzFaktor; }

    QTemporaryDir ordner;
};

TEST_F(Einstellungsdatei, OhneSieGeltenDieEingebautenGewichte) {
    EinstellungenLaden();
    EXPECT_EQ(relevanz(33), 100);
    EXPECT_EQ(relevanz(22), 5);
    EXPECT_EQ(gRelevanz, 0.8f);
}

TEST_F(Einstellungsdatei, MitIhrGiltNurWasSieNennt) {
    schreiben(QStringLiteral("bin"),
              "' Stra\xdf"
              "e\r\n31\r\nRelevanzFaktor = 7\r\ngRelevanz = 75\r\n");
    EinstellungenLaden();
    EXPECT_EQ(relevanz(31), 7);
    EXPECT_EQ(relevanz(33), 0);
    EXPECT_EQ(gRelevanz, 0.75f);
}

TEST_F(Einstellungsdatei, DieNebenDemProgrammGehtDerInstalliertenVor) {
    schreiben(QStringLiteral("share/lindgarn"), "31\nRelevanzFaktor = 1\n");
    EinstellungenLaden();
    EXPECT_EQ(relevanz(31), 1);
    schreiben(QStringLiteral("bin"), "31\nRelevanzFaktor = 2\n");
    EinstellungenLaden();
    EXPECT_EQ(relevanz(31), 2);
}

// A folder of that name cannot be opened for reading.
TEST_F(Einstellungsdatei, EinOrdnerDiesesNamensIstKeine) {
    QDir(ordner.path()).mkpath(QStringLiteral("bin/Einstellungen.CFG"));
    EinstellungenLaden();
    EXPECT_EQ(relevanz(33), 100);
}

TEST_F(Einstellungsdatei, EineRiesigeWirdGemeldetUndNichtGelesen) {
    Fensterattrappe fenster;
    fenster.sonst = [](const Meldung&) { return Knopf::Abbrechen; };
    schreiben(QStringLiteral("bin"), "31\nRelevanzFaktor = 1\n" + QByteArray(2 << 20, '\n'));
    gFehler = false;
    EinstellungenLaden();
    EXPECT_TRUE(gFehler);
    ASSERT_EQ(fenster.meldungen.size(), 1u);
    EXPECT_TRUE(
        fenster.meldungen[0].text.startsWith(QStringLiteral("Fehler beim Laden der Einstellungsdatei")));
    EXPECT_EQ(relevanz(31), 0);
}

}  // namespace
