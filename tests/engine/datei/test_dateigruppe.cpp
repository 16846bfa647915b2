// Several files changed together: all or nothing, nobody else's file lost.
#include "engine/datei/dateigruppe.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <map>

#include "base/fehler.h"
#include "engine/datei/prozess.h"
#include "engine/datei/vorgangsbuch.h"
#include "gemeinsam/fehlernummer.h"

// What the disk does from a chosen renaming on. The two functions take the place of the C library's.
namespace {
enum class Platte { kHeil, kVersagt, kStromWeg };
Platte platte = Platte::kHeil;
int umbenennungenBisDahin = 0;
bool zweiteNamen = true;  // FAT has none
}  // namespace

extern "C" int rename(const char* von, const char* nach) noexcept {
    if (platte != Platte::kHeil && umbenennungenBisDahin-- <= 0) {
        if (platte == Platte::kStromWeg) ::_exit(0);
        errno = EIO;
        return -1;
    }
    return ::renameat(AT_FDCWD, von, AT_FDCWD, nach);
}

extern "C" int link(const char* von, const char* nach) noexcept {
    if (zweiteNamen) return ::linkat(AT_FDCWD, von, AT_FDCWD, nach, 0);
    errno = EPERM;
    return -1;
}

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
        QDirIterator suche(ordner.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (suche.hasNext()) {
            QFile datei(suche.next());
            EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
            stand[QDir(ordner.path()).relativeFilePath(datei.fileName())] = datei.readAll();
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
        return fehlerVon([&] { engine::gruppeAustauschen(std::move(schritte)); });
    }

    // The process ends without clearing up, unless it was dead before.
    void inEigenemProzess(const std::function<bool()>& tun) {
        const pid_t kind = ::fork();
        if (kind == 0) ::_exit(tun() ? 0 : 1);
        int ausgang = 0;
        ASSERT_EQ(::waitpid(kind, &ausgang, 0), kind);
        ASSERT_EQ(ausgang, 0);
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

// Neither the way forward nor the way back: what was replaced lies under its private name, and the next start
// puts it back.
TEST_F(DateigruppeTest, HoltDerNaechsteStartZurueckWasSelbstNichtZurueckging) {
    inEigenemProzess([&] {
        platte = Platte::kVersagt;
        umbenennungenBisDahin = 1;
        return austauschen(dreiSchritte()) == kDateifehler;
    });
    EXPECT_EQ(alles().at(QStringLiteral("a")), "neues a");
    engine::ueberbleibselRaeumen(ordner.path());
    EXPECT_EQ(alles(), anfang);
}

// Where files have one name only, the place is empty between the two renamings.
TEST_F(DateigruppeTest, FuehrtAuchUeberEinenEinzigenSchrittBuch) {
    inEigenemProzess([&] {
        platte = Platte::kStromWeg;
        umbenennungenBisDahin = 1;
        zweiteNamen = false;
        std::vector<Gruppenschritt> schritte;
        schritte.push_back(neu("a", "neues a"));
        austauschen(std::move(schritte));
        return false;
    });
    EXPECT_FALSE(QFile::exists(pfad("a")));
    engine::ueberbleibselRaeumen(ordner.path());
    EXPECT_EQ(alles(), anfang);
}

TEST_F(DateigruppeTest, SchreibtKeinBuchUeberEinesVonFrueher) {
    const QString buch =
        QStringLiteral("lindgarn-%1.vorgang").arg(engine::prozesskennung(engine::eigenerProzess()));
    schreiben(ordner.filePath(buch), "von frueher");
    std::map<QString, QByteArray> vorher = anfang;
    vorher[buch] = "von frueher";
    EXPECT_EQ(austauschen(dreiSchritte()), kDateifehler);
    EXPECT_EQ(alles(), vorher);
}

// Links may lead a table's files into several folders.
class InZweiOrdnern : public DateigruppeTest {
  protected:
    void SetUp() override {
        DateigruppeTest::SetUp();
        ASSERT_TRUE(QDir(ordner.path()).mkdir(QStringLiteral("anderswo")));
        schreiben(pfad("anderswo/e"), "e");
        vorher[QStringLiteral("anderswo/e")] = "e";
    }

    std::vector<Gruppenschritt> schritte() {
        std::vector<Gruppenschritt> beide;
        beide.push_back(neu("a", "neues a"));
        beide.push_back(neu("anderswo/e", "neues e"));
        return beide;
    }

    std::map<QString, QByteArray> vorher = anfang;
};

TEST_F(InZweiOrdnern, WerdenBeideErsetzt) {
    EXPECT_EQ(austauschen(schritte()), 0);
    std::map<QString, QByteArray> erwartet = vorher;
    erwartet[QStringLiteral("a")] = "neues a";
    erwartet[QStringLiteral("anderswo/e")] = "neues e";
    EXPECT_EQ(alles(), erwartet);
}

TEST_F(InZweiOrdnern, NimmtEinFehlschlagBeideZurueck) {
    std::vector<Gruppenschritt> beide = schritte();
    QFile::remove(beide[1].neu.pfad());
    EXPECT_EQ(austauschen(std::move(beide)), kDateifehler);
    EXPECT_EQ(alles(), vorher);
}

TEST_F(InZweiOrdnern, GehtJederNachEinemAbsturzFuerSichZurueck) {
    inEigenemProzess([&] {
        platte = Platte::kStromWeg;
        umbenennungenBisDahin = 1;
        austauschen(schritte());
        return false;
    });
    EXPECT_EQ(alles().at(QStringLiteral("a")), "neues a");
    engine::ueberbleibselRaeumen(ordner.path());
    EXPECT_EQ(alles().at(QStringLiteral("a")), "a");
    engine::ueberbleibselRaeumen(pfad("anderswo"));
    EXPECT_EQ(alles(), vorher);
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
