// Path helpers: both separators, trimming, missing parts.
#include "base/pfad.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "gemeinsam/fehlernummer.h"

namespace {

struct Fall {
    QString pfad, name, verzeichnis;
};

const std::vector<Fall> kFaelle = {
    {"C:\\Daten\\adressen.mdb", "adressen.mdb", "C:\\Daten\\"},
    {"adressen.mdb", "adressen.mdb", ""},
    {"\\adressen.mdb", "adressen.mdb", "\\"},
    {"C:\\Daten\\", "", "C:\\Daten\\"},
    {"", "", ""},
    // The name is trimmed and its length is cut from the right: what the trimming took stays behind.
    {"C:\\Daten\\adr.mdb ", "adr.mdb", "C:\\Daten\\a"},
    {"C:\\Daten\\ adr.mdb", "adr.mdb", "C:\\Daten\\ "},
    {"C:\\Eigene Dateien\\Größe.xls", "Größe.xls", "C:\\Eigene Dateien\\"},
};

TEST(Pfad, DateinameStehtHinterDemLetztenTrenner) {
    for (const Fall& f : kFaelle) EXPECT_EQ(DateinameAusPfad(f.pfad), f.name) << qPrintable(f.pfad);
}

TEST(Pfad, VerzeichnisBehaeltDenTrenner) {
    for (const Fall& f : kFaelle) EXPECT_EQ(VerzeichnisAusPfad(f.pfad), f.verzeichnis) << qPrintable(f.pfad);
}

TEST(Pfad, VerzeichnisEinesBlossenNamensIstLeer) {
    EXPECT_EQ(VerzeichnisAusPfad("adressen.mdb"), u"");
}

TEST(Pfad, DerTrennerDesSystemsZaehltAuch) {
    if (QDir::separator() != u'/') GTEST_SKIP() << "nur der Backslash trennt";
    EXPECT_EQ(DateinameAusPfad("/daten/a.mdb"), u"a.mdb");
    EXPECT_EQ(VerzeichnisAusPfad("/daten/a.mdb"), u"/daten/");
    EXPECT_EQ(DateinameAusPfad("/daten\\a.mdb"), u"a.mdb");
    EXPECT_EQ(DateinameAusPfad("c:\\daten/a.mdb"), u"a.mdb");
    EXPECT_EQ(SystemPfad("/daten\\unter\\a.mdb"), u"/daten/unter/a.mdb");
}

TEST(Pfad, EndungStehtHinterDemLetztenPunkt) {
    EXPECT_EQ(DateiEndung("C:\\a.b.mdb"), Wert(u"mdb"));
    EXPECT_EQ(DateiEndung("a.MDB "), Wert(u"MDB"));
    EXPECT_EQ(DateiEndung("a."), Wert(u""));
}

TEST(Pfad, EndungOhnePunktIstLeer) {
    EXPECT_TRUE(DateiEndung("C:\\daten\\adressen").istLeer());
    EXPECT_TRUE(DateiEndung("").istLeer());
}

TEST(Pfad, EndungSuchtUeberDenTrennerHinaus) {
    EXPECT_EQ(DateiEndung("C:\\alt.neu\\adressen"), Wert(u"neu\\adressen"));
}

TEST(Pfad, VorhandenIstEineLesbareDatei) {
    QTemporaryDir ordner;
    ASSERT_TRUE(ordner.isValid());
    const QString pfad = ordner.filePath("da.txt");
    QFile datei(pfad);
    ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
    datei.close();
    EXPECT_TRUE(DateiVorhanden(pfad));
    EXPECT_TRUE(DateiVorhanden(ordner.path() + "\\da.txt"));
    EXPECT_FALSE(DateiVorhanden(ordner.filePath("fort.txt")));
    EXPECT_FALSE(DateiVorhanden(ordner.path()));
    EXPECT_FALSE(DateiVorhanden(""));
    EXPECT_FALSE(DateiVorhanden("/dev/null"));
    // A pipe would wait for its other end for ever.
    ASSERT_EQ(::mkfifo(ordner.filePath("leitung").toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(DateiVorhanden(ordner.filePath("leitung")));
}

TEST(Pfad, EineProgrammdateiHatHoechstensEinMegabyte) {
    QTemporaryDir ordner;
    QFile datei(ordner.filePath("Hilfe.HLP"));
    ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
    ASSERT_TRUE(datei.resize(1 << 20));
    EXPECT_EQ(ProgrammdateiLesen(datei.fileName()).size(), 1 << 20);
    ASSERT_TRUE(datei.resize((1 << 20) + 1));
    EXPECT_EQ(fehlerVon([&] { ProgrammdateiLesen(datei.fileName()); }), kDateifehler);
    EXPECT_EQ(fehlerVon([&] { ProgrammdateiLesen(ordner.filePath("fort")); }), kDateifehler);
}

}  // namespace
