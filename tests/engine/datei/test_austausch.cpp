// The swap of a file: all or nothing, nobody else's change overwritten, mode, owner and links kept.
#include "engine/datei/austausch.h"
#include "engine/datei/platte.h"
#include "engine/datei/prozess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <optional>
#include <vector>

#include "base/atempause.h"
#include "base/fehler.h"
#include "gemeinsam/fehlernummer.h"

namespace {

using engine::dateiAustauschen;
using engine::dateistandLesen;
using engine::schreibbarkeitPruefen;

constexpr uid_t kGast = 65534;

// Runs in a child without the superuser's rights, who may write everywhere. The number of the failure.
template <typename F>
int nummerOhneVorrechte(F&& f) {
    const pid_t kind = ::fork();
    if (kind == 0) {
        const bool gewechselt = ::geteuid() != 0 || (::setgid(kGast) == 0 && ::setuid(kGast) == 0);
        const int nummer = gewechselt ? fehlerVon(f) : -1;
        // An exit code has eight bits; the published numbers in question differ in them.
        ::_exit(nummer == 0 ? 0 : nummer & 0xff);
    }
    int stand = 0;
    ::waitpid(kind, &stand, 0);
    return WIFEXITED(stand) ? WEXITSTATUS(stand) : -1;
}

class AustauschTest : public testing::Test {
  protected:
    AustauschTest() {
        schreiben(pfad, "alt");
        ::chmod(QFile::encodeName(ordner.path()).constData(), 0777);
    }

    static void schreiben(const QString& wohin, const QByteArray& inhalt) {
        QFile datei(wohin);
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(inhalt);
    }
    static QByteArray lesen(const QString& woher) {
        QFile datei(woher);
        EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
        return datei.readAll();
    }
    static struct stat angaben(const QString& woher) {
        struct stat s {};
        EXPECT_EQ(::stat(QFile::encodeName(woher).constData(), &s), 0);
        return s;
    }
    QStringList dateien() {
        return QDir(ordner.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    // The old content and nothing beside it.
    void unberuehrt() {
        EXPECT_EQ(lesen(pfad), "alt");
        EXPECT_EQ(dateien(), QStringList{QStringLiteral("a.mdb")});
    }

    static void neuSchreiben(const QString& neu) { schreiben(neu, "neu"); }
    static void gutheissen(const QString&) {}

    QTemporaryDir ordner;
    QString pfad = ordner.filePath(QStringLiteral("a.mdb"));
};

TEST_F(AustauschTest, NeuerInhaltStehtAnDerStelleDesAlten) {
    const auto danach = dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen);
    EXPECT_EQ(lesen(pfad), "neu");
    EXPECT_EQ(dateien(), QStringList{QStringLiteral("a.mdb")});
    EXPECT_EQ(danach, dateistandLesen(pfad));
    EXPECT_EQ(danach.groesse, 3);
}

TEST_F(AustauschTest, SchreiberBekommtEineKopieImSelbenOrdner) {
    QString name;
    dateiAustauschen(
        pfad, dateistandLesen(pfad),
        [&](const QString& neu) {
            name = neu;
            EXPECT_EQ(lesen(neu), "alt");
            EXPECT_EQ(lesen(pfad), "alt");
            QFile datei(neu);
            ASSERT_TRUE(datei.open(QIODevice::Append));
            datei.write("+");
        },
        [&](const QString& neu) {
            EXPECT_EQ(neu, name);
            EXPECT_EQ(lesen(neu), "alt+");
            EXPECT_EQ(lesen(pfad), "alt");
        });
    EXPECT_EQ(QFileInfo(name).absolutePath(), QFileInfo(pfad).absolutePath());
    EXPECT_EQ(lesen(pfad), "alt+");
}

TEST_F(AustauschTest, GrosseDateiWirdGanzKopiert) {
    QByteArray gross(3 * (1 << 20) + 17, 'x');
    gross[5] = '\0';
    schreiben(pfad, gross);
    dateiAustauschen(pfad, dateistandLesen(pfad), gutheissen, gutheissen);
    EXPECT_EQ(lesen(pfad), gross);
}

TEST_F(AustauschTest, FehlerBeimSchreibenLaesstDieDateiWieSieWar) {
    const auto stand = dateistandLesen(pfad);
    EXPECT_EQ(fehlerVon([&] {
                  dateiAustauschen(
                      pfad, stand,
                      [](const QString& neu) {
                          schreiben(neu, "halb");
                          throw EngineFehler(kDatentraegerVoll, QStringLiteral("voll"));
                      },
                      gutheissen);
              }),
              kDatentraegerVoll);
    unberuehrt();
    EXPECT_EQ(dateistandLesen(pfad), stand);
}

TEST_F(AustauschTest, FehlerBeimPruefenLaesstDieDateiWieSieWar) {
    EXPECT_EQ(fehlerVon([&] {
                  dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, [](const QString&) {
                      throw EngineFehler(kBeschaedigt, QStringLiteral("falsch"));
                  });
              }),
              kBeschaedigt);
    unberuehrt();
}

TEST_F(AustauschTest, VonAnderenGeaenderteDateiWirdNichtUeberschrieben) {
    const auto stand = dateistandLesen(pfad);
    schreiben(pfad, "fremd");
    EXPECT_EQ(fehlerVon([&] { dateiAustauschen(pfad, stand, neuSchreiben, gutheissen); }), kDateiGeaendert);
    EXPECT_EQ(lesen(pfad), "fremd");
    EXPECT_EQ(dateien().size(), 1);
}

TEST_F(AustauschTest, AuchEineAenderungWaehrendDesSchreibensZaehlt) {
    EXPECT_EQ(fehlerVon([&] {
                  dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben,
                                   [&](const QString&) { schreiben(pfad, "fremd"); });
              }),
              kDateiGeaendert);
    EXPECT_EQ(lesen(pfad), "fremd");
    EXPECT_EQ(dateien().size(), 1);
}

TEST_F(AustauschTest, GleichGrosseErsetzteDateiWirdErkannt) {
    const auto stand = dateistandLesen(pfad);
    const QString anderer = ordner.filePath(QStringLiteral("b"));
    schreiben(anderer, "neu");
    const struct timespec zeiten[2] = {{0, UTIME_OMIT}, angaben(pfad).st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(anderer).constData(), zeiten, 0), 0);
    ASSERT_EQ(::rename(QFile::encodeName(anderer).constData(), QFile::encodeName(pfad).constData()), 0);
    EXPECT_EQ(fehlerVon([&] { dateiAustauschen(pfad, stand, neuSchreiben, gutheissen); }), kDateiGeaendert);
}

TEST_F(AustauschTest, VerschwundeneDateiIst3024) {
    const auto stand = dateistandLesen(pfad);
    ASSERT_TRUE(QFile::remove(pfad));
    EXPECT_EQ(fehlerVon([&] { dateistandLesen(pfad); }), kDateiFehlt);
    EXPECT_EQ(fehlerVon([&] { dateiAustauschen(pfad, stand, neuSchreiben, gutheissen); }), kDateiFehlt);
    EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(AustauschTest, RechteBleiben) {
    for (mode_t rechte : {mode_t(0600), mode_t(0664), mode_t(0640)}) {
        ASSERT_EQ(::chmod(QFile::encodeName(pfad).constData(), rechte), 0);
        dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen);
        EXPECT_EQ(angaben(pfad).st_mode & 07777, rechte);
    }
}

// A file that everybody may read is nobody's business before it is whole.
TEST_F(AustauschTest, EineHalbeKopieGehtNiemandenEtwasAn) {
    ASSERT_EQ(::chmod(QFile::encodeName(pfad).constData(), 0666), 0);
    std::vector<mode_t> gesehen;
    AtempauseSetzen([&] {
        for (const QString& name : dateien())
            if (name != u"a.mdb") gesehen.push_back(angaben(ordner.filePath(name)).st_mode & 0777);
    });
    dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen);
    AtempauseSetzen(nullptr);
    EXPECT_EQ(gesehen, std::vector<mode_t>{0600});
    EXPECT_EQ(angaben(pfad).st_mode & 0777, 0666u);
}

TEST_F(AustauschTest, EigentuemerUndGruppeBleiben) {
    if (::geteuid() != 0) GTEST_SKIP() << "Nur der Verwalter kann eine Datei einem anderen geben.";
    ASSERT_EQ(::chown(QFile::encodeName(pfad).constData(), kGast, kGast), 0);
    dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen);
    EXPECT_EQ(angaben(pfad).st_uid, kGast);
    EXPECT_EQ(angaben(pfad).st_gid, kGast);
}

TEST_F(AustauschTest, VerweisBleibtVerweisUndSeinZielWirdErsetzt) {
    const QString verweis = ordner.filePath(QStringLiteral("verweis.mdb"));
    ASSERT_TRUE(QFile::link(QStringLiteral("a.mdb"), verweis));
    dateiAustauschen(verweis, dateistandLesen(verweis), neuSchreiben, gutheissen);
    EXPECT_TRUE(QFileInfo(verweis).isSymLink());
    EXPECT_FALSE(QFileInfo(pfad).isSymLink());
    EXPECT_EQ(lesen(pfad), "neu");
}

TEST_F(AustauschTest, RestEinesFrueherenVersuchsStoertNicht) {
    const QString rest =
        pfad + QStringLiteral(".lindgarn-%1-0").arg(engine::prozesskennung(engine::eigenerProzess()));
    schreiben(rest, "rest");
    dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen);
    EXPECT_EQ(lesen(pfad), "neu");
    EXPECT_EQ(lesen(rest), "rest");
}

// A pipe would wait for its other end for ever.
TEST_F(AustauschTest, WasKeineDateiIstWirdNichtGelesen) {
    const QString leitung = ordner.filePath(QStringLiteral("b.mdb"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(leitung).constData(), 0600), 0);
    for (const QString& keine : {leitung, ordner.path(), QStringLiteral("/dev/null")}) {
        SCOPED_TRACE(keine.toStdString());
        EXPECT_EQ(fehlerVon([&] { dateistandLesen(keine); }), kDateifehler);
        EXPECT_EQ(fehlerVon([&] { engine::zumLesenOeffnen(keine); }), kDateifehler);
    }
}

TEST_F(AustauschTest, DerLaengsteNameDenEineDateiHabenKann) {
    const QString lang = ordner.filePath(QString(251, u'x') + QStringLiteral(".mdb"));
    schreiben(lang, "alt");
    dateiAustauschen(lang, dateistandLesen(lang), neuSchreiben, gutheissen);
    EXPECT_EQ(lesen(lang), "neu");
    EXPECT_EQ(dateien().size(), 2);
}

TEST_F(AustauschTest, SchreibgeschuetzteDateiIst3027) {
    ::chmod(QFile::encodeName(pfad).constData(), 0444);
    const auto stand = dateistandLesen(pfad);
    EXPECT_EQ(nummerOhneVorrechte([&] { schreibbarkeitPruefen(pfad); }), kSchreibgeschuetzt & 0xff);
    EXPECT_EQ(nummerOhneVorrechte([&] { dateiAustauschen(pfad, stand, neuSchreiben, gutheissen); }),
              kSchreibgeschuetzt & 0xff);
    unberuehrt();
}

TEST_F(AustauschTest, SchreibgeschuetzterOrdnerIst3027) {
    ::chmod(QFile::encodeName(pfad).constData(), 0666);
    ::chmod(QFile::encodeName(ordner.path()).constData(), 0555);
    const auto stand = dateistandLesen(pfad);
    EXPECT_EQ(nummerOhneVorrechte([&] { schreibbarkeitPruefen(pfad); }), kSchreibgeschuetzt & 0xff);
    EXPECT_EQ(nummerOhneVorrechte([&] { dateiAustauschen(pfad, stand, neuSchreiben, gutheissen); }),
              kSchreibgeschuetzt & 0xff);
    ::chmod(QFile::encodeName(ordner.path()).constData(), 0777);
    unberuehrt();
}

TEST_F(AustauschTest, DateiDieEinAndererSperrtIst3045) {
    EXPECT_EQ(fehlerVon([&] { schreibbarkeitPruefen(pfad); }), 0);
    const int griff = ::open(QFile::encodeName(pfad).constData(), O_RDWR);
    ASSERT_GE(griff, 0);
    ASSERT_EQ(::flock(griff, LOCK_EX), 0);
    EXPECT_EQ(fehlerVon([&] { schreibbarkeitPruefen(pfad); }), kDateiGesperrt);
    EXPECT_EQ(fehlerVon([&] { dateiAustauschen(pfad, dateistandLesen(pfad), neuSchreiben, gutheissen); }),
              kDateiGesperrt);
    ::close(griff);
    EXPECT_EQ(fehlerVon([&] { schreibbarkeitPruefen(pfad); }), 0);
    unberuehrt();
}

// Two Lindgarn that are done at the same time: the second one looks while the first one renames.
TEST_F(AustauschTest, ZwischenDemLetztenBlickUndDemUmbenennenKommtKeinZweiter) {
    const auto stand = dateistandLesen(pfad);
    EXPECT_EQ(fehlerVon([&] {
                  std::optional<engine::Griff> erster;
                  dateiAustauschen(pfad, stand, neuSchreiben,
                                   [&](const QString&) { erster.emplace(schreibbarkeitPruefen(pfad)); });
              }),
              kDateiGesperrt);
    unberuehrt();
    dateiAustauschen(pfad, stand, neuSchreiben, gutheissen);
    EXPECT_EQ(lesen(pfad), "neu");
}

TEST_F(AustauschTest, BereichssperreEinesAnderenProzessesIst3045) {
    int bereit[2], fertig[2];
    ASSERT_EQ(::pipe(bereit), 0);
    ASSERT_EQ(::pipe(fertig), 0);
    const pid_t kind = ::fork();
    if (kind == 0) {
        const int griff = ::open(QFile::encodeName(pfad).constData(), O_RDWR);
        struct flock bereich {};
        bereich.l_type = F_RDLCK;
        bereich.l_whence = SEEK_SET;
        bereich.l_start = 0x10000000;
        bereich.l_len = 1;
        char zeichen = ::fcntl(griff, F_SETLK, &bereich) == 0 ? 'j' : 'n';
        if (::write(bereit[1], &zeichen, 1) == 1 && ::read(fertig[0], &zeichen, 1) == 1) ::_exit(0);
        ::_exit(1);
    }
    char zeichen = 0;
    ASSERT_EQ(::read(bereit[0], &zeichen, 1), 1);
    EXPECT_EQ(zeichen, 'j');
    EXPECT_EQ(fehlerVon([&] { schreibbarkeitPruefen(pfad); }), kDateiGesperrt);
    ASSERT_EQ(::write(fertig[1], &zeichen, 1), 1);
    int stand = 0;
    ::waitpid(kind, &stand, 0);
    EXPECT_EQ(fehlerVon([&] { schreibbarkeitPruefen(pfad); }), 0);
}

TEST_F(AustauschTest, GrenzeDesSystemsBeimKopierenLaesstDieDateiWieSieWar) {
    schreiben(pfad, QByteArray(1 << 20, 'x'));
    ::chmod(QFile::encodeName(pfad).constData(), 0666);
    const auto stand = dateistandLesen(pfad);
    const int nummer = nummerOhneVorrechte([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit grenze { 1000, 1000 };
        ::setrlimit(RLIMIT_FSIZE, &grenze);
        dateiAustauschen(pfad, stand, neuSchreiben, gutheissen);
    });
    EXPECT_EQ(nummer, kDateifehler & 0xff);
    EXPECT_EQ(lesen(pfad).size(), 1 << 20);
    EXPECT_EQ(dateien().size(), 1);
}

}  // namespace
