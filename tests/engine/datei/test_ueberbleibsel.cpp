// What a crash leaves in a folder: an interrupted change of several files goes back, private copies go away.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <tuple>

#include "engine/datei/austausch.h"
#include "engine/datei/platte.h"
#include "engine/datei/prozess.h"
#include "engine/datei/vorgangsbuch.h"

namespace {

using Inhalte = std::map<QString, QByteArray>;

constexpr engine::Prozess kAbgestuerzter{999999998, 7};

QString beiname(const engine::Prozess& prozess) {
    return QStringLiteral("a.mdb.lindgarn-%1-0").arg(engine::prozesskennung(prozess));
}

QString buchname(const engine::Prozess& prozess) {
    return QStringLiteral("lindgarn-%1.vorgang").arg(engine::prozesskennung(prozess));
}

class Ueberbleibsel : public testing::Test {
  protected:
    QString pfad(const QString& name) const { return ordner_.path() + u'/' + name; }
    void schreiben(const QString& name, const QByteArray& inhalt) const {
        QFile datei(pfad(name));
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(inhalt);
    }
    Inhalte inhalte() const {
        Inhalte alle;
        for (const QString& name : QDir(ordner_.path()).entryList(QDir::Files | QDir::Hidden)) {
            QFile datei(pfad(name));
            EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
            alle[name] = datei.readAll();
        }
        return alle;
    }
    // Runs in a process of its own, which then dies without cleaning up.
    void abstuerzenNach(const std::function<void()>& tun) const {
        const pid_t kind = ::fork();
        if (kind == 0) {
            tun();
            ::_exit(0);
        }
        int stand = 0;
        ::waitpid(kind, &stand, 0);
        ASSERT_EQ(stand, 0);
    }
    void umbenennen(const QString& von, const QString& nach) const {
        if (std::rename(QFile::encodeName(von).constData(), QFile::encodeName(nach).constData()) != 0)
            ::_exit(1);
    }

    QTemporaryDir ordner_;
};

// A.dbf is replaced, B.dbf added, C.dbf removed: dead after each step, with the book still there. In front of
// the names stands what somebody or something takes for more than letters.
class Abbrueche : public Ueberbleibsel, public testing::WithParamInterface<std::tuple<int, std::string>> {
  protected:
    QString name(const char* ende) const {
        return QString::fromStdString(std::get<1>(GetParam())) + QString::fromLatin1(ende);
    }
    const QString a = name("A.dbf"), b = name("B.dbf"), c = name("C.dbf");
};

TEST_P(Abbrueche, GehenGanzZurueck) {
    schreiben(a, "alt A");
    schreiben(c, "alt C");
    const Inhalte vorher = inhalte();
    abstuerzenNach([&] {
        engine::Beiname neuA = engine::leereDateiDaneben(pfad(a));
        engine::Beiname neuB = engine::leereDateiDaneben(pfad(b));
        const QString altA = engine::nameFuerAltes(pfad(a));
        const QString altC = engine::nameFuerAltes(pfad(c));
        const auto knoten = [](const QString& p) { return engine::dateistandLesen(p).knoten; };
        const auto dateiname = [](const QString& p) { return QFileInfo(p).fileName(); };
        new engine::Vorgangsbuch(ordner_.path(), {{a, dateiname(altA), knoten(neuA.pfad())},
                                                  {b, QString(), knoten(neuB.pfad())},
                                                  {c, dateiname(altC), 0}});
        const std::function<void()> schritte[] = {
            [] {},
            [&] { umbenennen(pfad(a), altA); },
            [&] { umbenennen(neuA.pfad(), pfad(a)); },
            [&] { umbenennen(neuB.pfad(), pfad(b)); },
            [&] { umbenennen(pfad(c), altC); },
        };
        for (int i = 0; i <= std::get<0>(GetParam()); ++i) schritte[i]();
        neuA.behalten();
        neuB.behalten();
    });
    EXPECT_GT(inhalte().size(), vorher.size());
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), vorher);
}

INSTANTIATE_TEST_SUITE_P(NachJedemSchritt, Abbrueche,
                         testing::Combine(testing::Range(0, 5),
                                          testing::Values("", ":", "%1 %2C %3 ", "Zeile\n\"'",
                                                          std::string(240, 'x'))));

TEST_F(Ueberbleibsel, NachDemAbschlussBleibtDasNeue) {
    schreiben(QStringLiteral("A.dbf"), "alt");
    abstuerzenNach([&] {
        const QString altA = engine::nameFuerAltes(pfad(QStringLiteral("A.dbf")));
        engine::Vorgangsbuch buch(ordner_.path(), {{QStringLiteral("A.dbf"), QFileInfo(altA).fileName(), 1}});
        umbenennen(pfad(QStringLiteral("A.dbf")), altA);
        schreiben(QStringLiteral("A.dbf"), "neu");
        buch.abschliessen();
    });
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), (Inhalte{{QStringLiteral("A.dbf"), "neu"}}));
}

TEST_F(Ueberbleibsel, EineKopieEinesTotenProzessesGeht) {
    schreiben(QStringLiteral("kunden.mdb"), "x");
    abstuerzenNach([&] {
        engine::Beiname neu =
            engine::kopieDaneben(pfad(QStringLiteral("kunden.mdb")), pfad(QStringLiteral("kunden.mdb")));
        neu.behalten();
    });
    ASSERT_EQ(inhalte().size(), 2u);
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), (Inhalte{{QStringLiteral("kunden.mdb"), "x"}}));
}

// Files of a program that runs, of other computers, of the user, and books that this program did not write.
TEST_F(Ueberbleibsel, AllesAndereBleibt) {
    schreiben(beiname(engine::eigenerProzess()), "läuft");
    schreiben(beiname({1, 0}), "läuft, und seit wann weiß niemand");
    schreiben(QStringLiteral("a.mdb.lindgarn-00000000-999999999-1-0"), "anderer Rechner");
    schreiben(QStringLiteral("Rechnung.lindgarn-2024"), "des Benutzers");
    schreiben(QStringLiteral("kunden.dbf"), "wichtig");
    schreiben(QStringLiteral("geheim"), "wichtig");
    const QByteArray buecher[] = {
        R"([{"ziel":"../kunden.dbf","alt":"","knoten":"5"}])",
        R"([{"ziel":"kunden.dbf","alt":"geheim","knoten":"5"}])",
        R"([{"ziel":"kunden.dbf","alt":"","knoten":"0"}])",
        R"([{"ziel":7}])",
        R"([3])",
    };
    for (const QByteArray& text : buecher) {
        SCOPED_TRACE(text.constData());
        schreiben(buchname(kAbgestuerzter), text);
        const Inhalte vorher = inhalte();
        engine::ueberbleibselRaeumen(ordner_.path());
        EXPECT_EQ(inhalte(), vorher);
    }
}

// After a restart of the computer somebody else soon has the number.
TEST_F(Ueberbleibsel, EineNummerDieNeuVergebenIstGehoertNiemandemMehr) {
    const engine::Prozess jetzt = engine::eigenerProzess();
    const engine::Prozess frueher{jetzt.nummer, jetzt.beginn + 1};
    ASSERT_NE(jetzt.beginn, 0u);
    schreiben(QStringLiteral("a.mdb"), "x");
    schreiben(beiname(frueher), "Rest");
    schreiben(buchname(frueher), "[]");
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), (Inhalte{{QStringLiteral("a.mdb"), "x"}}));
}

// A pipe would wait for its other end for ever; a folder has nothing to say.
TEST_F(Ueberbleibsel, EinBuchDasKeineDateiIstWirdNichtGelesen) {
    schreiben(beiname(kAbgestuerzter), "davon könnte es sprechen");
    const QByteArray buch = QFile::encodeName(pfad(buchname(kAbgestuerzter)));
    ASSERT_EQ(::mkfifo(buch.constData(), 0600), 0);
    engine::ueberbleibselRaeumen(ordner_.path());
    ASSERT_EQ(::unlink(buch.constData()), 0);
    ASSERT_EQ(::mkdir(buch.constData(), 0700), 0);
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte().size(), 1u);
}

// In a folder such as /tmp a book may take away a file that its writer may not.
TEST_F(Ueberbleibsel, WoAlleSchreibenGiltNurDasEigeneBuch) {
    if (::geteuid() != 0) GTEST_SKIP() << "Nur der Verwalter kann eine Datei einem anderen geben.";
    constexpr uid_t kAnderer = 65534;
    schreiben(QStringLiteral("a"), "x");
    const quint64 knoten = engine::dateistandLesen(pfad(QStringLiteral("a"))).knoten;
    const QString buch = buchname(kAbgestuerzter);
    schreiben(buch, QStringLiteral(R"([{"ziel":"a","alt":"","knoten":"%1"}])").arg(knoten).toLatin1());
    ASSERT_EQ(::chown(QFile::encodeName(pfad(buch)).constData(), kAnderer, kAnderer), 0);
    const Inhalte vorher = inhalte();
    ASSERT_EQ(::chmod(QFile::encodeName(ordner_.path()).constData(), 01777), 0);
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), vorher);
    ASSERT_EQ(::chmod(QFile::encodeName(ordner_.path()).constData(), 0777), 0);
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), Inhalte());
}

// The change had not begun when its book was being written.
TEST_F(Ueberbleibsel, EinHalbesBuchGeht) {
    schreiben(QStringLiteral("kunden.dbf"), "x");
    schreiben(buchname(kAbgestuerzter), "[{\"ziel\":\"kun");
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), (Inhalte{{QStringLiteral("kunden.dbf"), "x"}}));
}

TEST_F(Ueberbleibsel, WasEinAndererInzwischenHingelegtHatBleibt) {
    abstuerzenNach([&] {
        engine::Beiname neu = engine::leereDateiDaneben(pfad(QStringLiteral("B.dbf")));
        new engine::Vorgangsbuch(ordner_.path(), {{QStringLiteral("B.dbf"), QString(),
                                                   engine::dateistandLesen(neu.pfad()).knoten}});
        neu.behalten();
    });
    schreiben(QStringLiteral("B.dbf"), "von jemand anderem");
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), (Inhalte{{QStringLiteral("B.dbf"), "von jemand anderem"}}));
}

}  // namespace
