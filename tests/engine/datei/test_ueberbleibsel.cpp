// What a crash leaves in a folder: an interrupted change of several files goes back, private copies go away.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <map>

#include "engine/datei/austausch.h"
#include "engine/datei/platte.h"
#include "engine/datei/vorgangsbuch.h"

namespace {

using Inhalte = std::map<QString, QByteArray>;

class Ueberbleibsel : public testing::Test {
  protected:
    QString pfad(const QString& name) const { return ordner_.filePath(name); }
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

// Replace A, add B, remove C: dead after each step, with the book still there.
class Abbrueche : public Ueberbleibsel, public testing::WithParamInterface<int> {};

TEST_P(Abbrueche, GehenGanzZurueck) {
    schreiben(QStringLiteral("A.dbf"), "alt A");
    schreiben(QStringLiteral("C.dbf"), "alt C");
    const Inhalte vorher = inhalte();
    abstuerzenNach([&] {
        engine::Beiname neuA = engine::leereDateiDaneben(pfad(QStringLiteral("A.dbf")));
        engine::Beiname neuB = engine::leereDateiDaneben(pfad(QStringLiteral("B.dbf")));
        const QString altA = engine::nameFuerAltes(pfad(QStringLiteral("A.dbf")));
        const QString altC = engine::nameFuerAltes(pfad(QStringLiteral("C.dbf")));
        const auto knoten = [](const QString& p) { return engine::dateistandLesen(p).knoten; };
        const auto name = [](const QString& p) { return QFileInfo(p).fileName(); };
        new engine::Vorgangsbuch(ordner_.path(), {{QStringLiteral("A.dbf"), name(altA), knoten(neuA.pfad())},
                                                  {QStringLiteral("B.dbf"), QString(), knoten(neuB.pfad())},
                                                  {QStringLiteral("C.dbf"), name(altC), 0}});
        const std::function<void()> schritte[] = {
            [] {},
            [&] { umbenennen(pfad(QStringLiteral("A.dbf")), altA); },
            [&] { umbenennen(neuA.pfad(), pfad(QStringLiteral("A.dbf"))); },
            [&] { umbenennen(neuB.pfad(), pfad(QStringLiteral("B.dbf"))); },
            [&] { umbenennen(pfad(QStringLiteral("C.dbf")), altC); },
        };
        for (int i = 0; i <= GetParam(); ++i) schritte[i]();
        neuA.behalten();
        neuB.behalten();
    });
    EXPECT_GT(inhalte().size(), vorher.size());
    engine::ueberbleibselRaeumen(ordner_.path());
    EXPECT_EQ(inhalte(), vorher);
}

INSTANTIATE_TEST_SUITE_P(NachJedemSchritt, Abbrueche, testing::Range(0, 5));

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
    const QString eigene = engine::Rechnerkennung();
    schreiben(QStringLiteral("a.mdb.lindgarn-%1-%2-0").arg(eigene).arg(::getpid()), "läuft");
    schreiben(QStringLiteral("a.mdb.lindgarn-%1-1-0").arg(eigene), "läuft");
    schreiben(QStringLiteral("a.mdb.lindgarn-00000000-999999999-0"), "anderer Rechner");
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
    const QString buch = QStringLiteral("lindgarn-%1-999999998.vorgang").arg(eigene);
    for (const QByteArray& text : buecher) {
        SCOPED_TRACE(text.constData());
        schreiben(buch, text);
        const Inhalte vorher = inhalte();
        engine::ueberbleibselRaeumen(ordner_.path());
        EXPECT_EQ(inhalte(), vorher);
    }
}

// The change had not begun when its book was being written.
TEST_F(Ueberbleibsel, EinHalbesBuchGeht) {
    schreiben(QStringLiteral("kunden.dbf"), "x");
    schreiben(QStringLiteral("lindgarn-%1-999999998.vorgang").arg(engine::Rechnerkennung()),
              "[{\"ziel\":\"kun");
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
