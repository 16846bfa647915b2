// Changes of a folder: all of them or none, and nobody else's work written over.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "dbasebank.h"

namespace {

using namespace dbasebank;
using engine::Aenderung;
using engine::TabelleLoeschen;
using engine::TabelleUmbenennen;

const QString kA = QStringLiteral("A");
const QString kB = QStringLiteral("B");
const QString kC = QStringLiteral("C");

TabellenDef mitMemo(const QString& name) {
    return tabelle(name,
                   {feld(QStringLiteral("NR"), dao::dbLong), feld(QStringLiteral("TEXT"), dao::dbMemo)});
}

std::vector<Zeile> memozeilen(int anzahl, const QString& wort) {
    std::vector<Zeile> zeilen;
    for (int i = 1; i <= anzahl; ++i) zeilen.push_back({Wert(i), Wert(wort.repeated(i))});
    return zeilen;
}

class DbaseOrdnerTest : public DbaseTest {
  protected:
    static QStringList namen(const engine::Katalog& katalog) {
        QStringList liste;
        for (const TabellenDef& def : katalog.tabellen) liste << def.name;
        return liste;
    }
    // The first memo of a table, as a fresh look at the folder shows it.
    QString ersterText(const QString& name) {
        dbase::DbaseOrdner datei(ordner.path());
        return alleZeilen(datei, name).at(0).at(1).alsText();
    }
    void memotabelle(const QString& name, const QString& wort) {
        schreibeTabelle(mitMemo(name), memozeilen(3, wort));
    }
};

// Nothing else in the folder is waited for: a pipe would be for ever.
TEST_F(DbaseOrdnerTest, WasKeineDateiIstWirdGenanntUndNichtGelesen) {
    kunden(kA);
    for (const char* name : {"B.dbf", "A.cpg", "A.inf"})
        ASSERT_EQ(::mkfifo(QFile::encodeName(ordner.filePath(QString::fromLatin1(name))).constData(), 0600),
                  0);
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(namen(datei.katalogLesen()), QStringList{kA});
    ASSERT_EQ(datei.katalogLesen().hinweise.size(), 1u);
    EXPECT_TRUE(datei.katalogLesen().hinweise[0].contains(QStringLiteral("'B.dbf'")));
}

TEST_F(DbaseOrdnerTest, NamenInEinemAnderenZeichensatzWerdenGemeldet) {
    kunden(kA);
    const QByteArray fremd = QFile::encodeName(ordner.path()) + "/M\xfcller.dbf";
    ASSERT_EQ(
        ::link(QFile::encodeName(ordner.filePath(QStringLiteral("A.dbf"))).constData(), fremd.constData()),
        0);
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(namen(datei.katalogLesen()), QStringList{kA});
    ASSERT_EQ(datei.katalogLesen().hinweise.size(), 1u);
    EXPECT_TRUE(datei.katalogLesen().hinweise[0].contains(QStringLiteral("Benennen Sie sie um")));
    // QTemporaryDir would not find it.
    ::unlink(fremd.constData());
}

TEST_F(DbaseOrdnerTest, AnlegenUndWiederLesen) {
    kunden(kA);
    memotabelle(kB, QStringLiteral("Straße "));
    EXPECT_EQ(dateien(), (QStringList{"A.dbf", "B.dbf", "B.dbt"}));
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(namen(datei.katalogLesen()), (QStringList{kA, kB}));
    EXPECT_EQ(zeileText(alleZeilen(datei, kA)[2]), QStringLiteral("3|Müller 3"));
    EXPECT_EQ(zeileText(alleZeilen(datei, kB)[1]), QStringLiteral("2|Straße Straße "));
    EXPECT_TRUE(datei.katalogLesen().hinweise.empty());
    EXPECT_EQ(quint8(inhalt(pfad(QStringLiteral("B.dbf")))[0]), 0x8B);
}

TEST_F(DbaseOrdnerTest, LoeschenUmbenennenAnlegenInEinerListe) {
    memotabelle(kA, QStringLiteral("alt"));
    memotabelle(kB, QStringLiteral("weg"));
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleLoeschen{kB}, TabelleUmbenennen{kA, kB},
                    anlegen(mitMemo(kA), memozeilen(2, QStringLiteral("neu")))});
    EXPECT_EQ(dateien(), (QStringList{"A.dbf", "A.dbt", "B.dbf", "B.dbt"}));
    EXPECT_EQ(namen(datei.katalogLesen()), (QStringList{kA, kB}));
    EXPECT_EQ(alleZeilen(datei, kB).at(0).at(1).alsText(), QStringLiteral("alt"));
    EXPECT_EQ(ersterText(kA), QStringLiteral("neu"));
    EXPECT_EQ(ersterText(kB), QStringLiteral("alt"));
    // dBase IV keeps the table's name in the memo file.
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbt"))).mid(8, 8), QByteArray("B\0\0\0\0\0\0\0", 8));
}

TEST_F(DbaseOrdnerTest, TauschZweierNamenUeberEinenDritten) {
    memotabelle(kA, QStringLiteral("a"));
    memotabelle(kB, QStringLiteral("b"));
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleUmbenennen{kA, QStringLiteral("TEMP1")}, TabelleUmbenennen{kB, kA},
                    TabelleUmbenennen{QStringLiteral("TEMP1"), kB}});
    EXPECT_EQ(ersterText(kA), QStringLiteral("b"));
    EXPECT_EQ(ersterText(kB), QStringLiteral("a"));
    EXPECT_EQ(dateien().size(), 4);
}

TEST_F(DbaseOrdnerTest, NameInAndererSchreibweise) {
    memotabelle(QStringLiteral("adr"), QStringLiteral("x"));
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleUmbenennen{QStringLiteral("adr"), QStringLiteral("ADR")}});
    EXPECT_EQ(dateien(), (QStringList{"ADR.dbf", "ADR.dbt"}));
    datei.anwenden({TabelleLoeschen{QStringLiteral("adr")}, anlegen(mitMemo(QStringLiteral("Adr")), {})});
    EXPECT_EQ(dateien(), (QStringList{"Adr.dbf", "Adr.dbt"}));
}

TEST_F(DbaseOrdnerTest, HinUndZurueckBleibtUnberuehrt) {
    memotabelle(kA, QStringLiteral("a"));
    const auto vorher = alles();
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleUmbenennen{kA, kB}, TabelleUmbenennen{kB, kA}, anlegen(mitMemo(kC), {}),
                    TabelleLoeschen{kC}});
    EXPECT_EQ(alles(), vorher);
}

TEST_F(DbaseOrdnerTest, NeueTabelleOhneMemoNimmtDieAlteMemodateiMit) {
    memotabelle(kA, QStringLiteral("a"));
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden(
        {TabelleLoeschen{kA}, anlegen(tabelle(kA, {feld(QStringLiteral("NR"), dao::dbLong)}), {{Wert(1)}})});
    EXPECT_EQ(dateien(), QStringList{"A.dbf"});
}

TEST_F(DbaseOrdnerTest, FalscheListenAendernNichts) {
    memotabelle(kA, QStringLiteral("a"));
    kunden(kB);
    const auto vorher = alles();
    const struct {
        std::vector<Aenderung> liste;
        int nummer;
    } faelle[] = {{{TabelleLoeschen{kC}}, kNichtGefunden},
                  {{TabelleLoeschen{kA}, TabelleLoeschen{kA}}, kNichtGefunden},
                  {{TabelleUmbenennen{kA, kB}}, kNameVorhanden},
                  {{TabelleUmbenennen{kA, QStringLiteral("NEUNLANGE")}}, kUngueltigerName},
                  {{TabelleLoeschen{kB}, anlegen(mitMemo(kA), {})}, kNameVorhanden},
                  {{TabelleLoeschen{kB}, anlegen(mitMemo(QStringLiteral("a/b")), {})}, kUngueltigerName}};
    for (const auto& fall : faelle) {
        dbase::DbaseOrdner datei(ordner.path());
        EXPECT_EQ(fehlerVon([&] { datei.anwenden(fall.liste); }), fall.nummer);
        EXPECT_EQ(alles(), vorher);
    }
}

// Raises after some rows: at the first look at them or at the second.
class Kaputt : public engine::Zeilenquelle {
  public:
    explicit Kaputt(bool jetzt) : jetzt_(jetzt) {}
    bool naechste(Zeile& zeile) override {
        if (jetzt_) throw EngineFehler(kDatentraegerVoll, QStringLiteral("voll"));
        zeile = {Wert(1), Wert(QStringLiteral("x"))};
        return ++gegeben_ <= 3;
    }

  private:
    bool jetzt_;
    int gegeben_ = 0;
};

TEST_F(DbaseOrdnerTest, FehlerBeimLesenDerZeilenAendertNichts) {
    memotabelle(kA, QStringLiteral("a"));
    const auto vorher = alles();
    for (const int wann : {1, 2}) {
        int aufruf = 0;
        dbase::DbaseOrdner datei(ordner.path());
        const engine::TabelleAnlegen neu{mitMemo(kA),
                                         [&] { return std::make_unique<Kaputt>(++aufruf == wann); }};
        EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleLoeschen{kA}, neu}); }), kDatentraegerVoll);
        EXPECT_EQ(alles(), vorher);
        EXPECT_EQ(zeileText(alleZeilen(datei, kA)[0]), QStringLiteral("1|a")) << "the folder can be used on";
    }
}

TEST_F(DbaseOrdnerTest, VonAnderenGeaendertesWirdNichtUeberschrieben) {
    for (const char* datei : {"A.dbf", "A.dbt"}) {
        memotabelle(kA, QStringLiteral("a"));
        dbase::DbaseOrdner offen(ordner.path());
        const QString fremd = pfad(QString::fromLatin1(datei));
        schreiben(fremd, inhalt(fremd) + ' ');
        const auto vorher = alles();
        EXPECT_EQ(fehlerVon([&] { offen.anwenden({TabelleLoeschen{kA}}); }), kDateiGeaendert) << datei;
        EXPECT_EQ(fehlerVon([&] { offen.anwenden({TabelleUmbenennen{kA, kB}}); }), kDateiGeaendert) << datei;
        EXPECT_EQ(fehlerVon([&] { offen.zeilenLesen(kA); }), kDateiGeaendert) << datei;
        // Another table does not concern it.
        EXPECT_EQ(fehlerVon([&] { offen.anwenden({anlegen(mitMemo(kC), {})}); }), 0);
        EXPECT_EQ(inhalt(fremd), vorher.at(QString::fromLatin1(datei)));
        // The catalogue that is read again does not make the change one that was seen.
        offen.katalogLesen();
        EXPECT_EQ(fehlerVon([&] { offen.anwenden({TabelleLoeschen{kA}}); }), kDateiGeaendert) << datei;
        for (const QString& name : dateien()) QFile::remove(pfad(name));
    }
}

TEST_F(DbaseOrdnerTest, ErstWaehrendDesSchreibensGeaendertZaehltAuch) {
    memotabelle(kA, QStringLiteral("a"));
    dbase::DbaseOrdner datei(ordner.path());
    const engine::TabelleAnlegen neu{mitMemo(kA), [&] {
                                         schreiben(pfad(QStringLiteral("A.dbt")), "fremd");
                                         return std::make_unique<Kaputt>(false);
                                     }};
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleLoeschen{kA}, neu}); }), kDateiGeaendert);
    EXPECT_EQ(inhalt(pfad(QStringLiteral("A.dbt"))), "fremd");
    EXPECT_EQ(dateien(), (QStringList{"A.dbf", "A.dbt"}));
}

TEST_F(DbaseOrdnerTest, InzwischenEntstandeneDateiBleibt) {
    kunden(kA);
    dbase::DbaseOrdner datei(ordner.path());
    const engine::TabelleAnlegen neu{mitMemo(kC), [&] {
                                         schreiben(pfad(QStringLiteral("C.dbf")), "fremd");
                                         return std::make_unique<Kaputt>(false);
                                     }};
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({neu, TabelleLoeschen{kA}}); }), kDateiGeaendert);
    EXPECT_EQ(dateien(), (QStringList{"A.dbf", "C.dbf"}));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("C.dbf"))), "fremd");
}

TEST_F(DbaseOrdnerTest, FremdeDateiDesselbenNamensWirdNieErsetzt) {
    kunden(kA);
    schreiben(pfad(QStringLiteral("B.DBT")), "verwaist");
    schreiben(pfad(QStringLiteral("C.dbf")), "keine Tabelle");
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(datei.katalogLesen().hinweise.size(), 1u);
    const auto vorher = alles();
    for (const QString& name : {kB, kC}) {
        EXPECT_FALSE(datei.nameErlaubt(name));
        EXPECT_EQ(fehlerVon([&] { datei.anwenden({anlegen(mitMemo(name), {})}); }), kNameVorhanden);
        EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleUmbenennen{kA, name}}); }), kNameVorhanden);
    }
    EXPECT_EQ(alles(), vorher);
}

TEST_F(DbaseOrdnerTest, BeschaedigteTabelleWirdGelesenAberNieAngetastet) {
    memotabelle(kA, QStringLiteral("a"));
    QByteArray bytes = inhalt(pfad(QStringLiteral("A.dbf")));
    bytes.chop(10);
    schreiben(pfad(QStringLiteral("A.dbf")), bytes);
    const auto vorher = alles();
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(alleZeilen(datei, kA).size(), 2u);
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleLoeschen{kA}}); }), kBeschaedigt);
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleUmbenennen{kA, kB}}); }), kBeschaedigt);
    EXPECT_EQ(fehlerVon([&] {
                  datei.anwenden({TabelleLoeschen{kA}, anlegen(mitMemo(kA), {})});
              }),
              kBeschaedigt);
    EXPECT_EQ(alles(), vorher);
}

TEST_F(DbaseOrdnerTest, BeschaedigtesMemoZeigtSichBeimLesen) {
    memotabelle(kA, QStringLiteral("a"));
    QByteArray memo = inhalt(pfad(QStringLiteral("A.dbt")));
    memo[512 + 7] = 0x7F;  // a length of 2 GB
    schreiben(pfad(QStringLiteral("A.dbt")), memo);
    dbase::DbaseOrdner datei(ordner.path());
    alleZeilen(datei, kA);
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({TabelleLoeschen{kA}}); }), kBeschaedigt);
    const engine::Hinweise hinweise = datei.anwenden({anlegen(mitMemo(kB), {})});
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("Memodatei ist beschädigt")));
}

TEST_F(DbaseOrdnerTest, UnlesbareDateiUnterGuten) {
    kunden(kA);
    schreiben(pfad(QStringLiteral("kaputt.dbf")), "unsinn");
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Katalog katalog = datei.katalogLesen();
    EXPECT_EQ(namen(katalog), QStringList{kA});
    ASSERT_EQ(katalog.hinweise.size(), 1u);
    EXPECT_TRUE(katalog.hinweise[0].contains(QStringLiteral("kaputt.dbf")))
        << katalog.hinweise[0].toStdString();
    QFile::remove(pfad(QStringLiteral("A.dbf")));
    QString text;
    EXPECT_EQ(fehlerVon([&] { oeffnen(); }, &text), kDateifehler);
    EXPECT_TRUE(text.contains(QStringLiteral("kaputt.dbf")) && !text.contains(QStringLiteral("Auch")))
        << text.toStdString();
    schreiben(pfad(QStringLiteral("leer.dbf")), "");
    EXPECT_EQ(fehlerVon([&] { oeffnen(); }, &text), kDateifehler);
    EXPECT_TRUE(text.contains(QStringLiteral("(1)"))) << text.toStdString();
    QFile::remove(pfad(QStringLiteral("leer.dbf")));
    QFile::remove(pfad(QStringLiteral("kaputt.dbf")));
    EXPECT_TRUE(oeffnen().katalogLesen().tabellen.empty());
}

TEST_F(DbaseOrdnerTest, ZweiDateienDieSichNurInDerSchreibweiseUnterscheiden) {
    kunden(QStringLiteral("adr"));
    QFile::rename(pfad(QStringLiteral("adr.dbf")), pfad(QStringLiteral("x")));
    kunden(QStringLiteral("ADR"), 5);
    QFile::rename(pfad(QStringLiteral("x")), pfad(QStringLiteral("adr.dbf")));
    const QByteArray zweite = inhalt(pfad(QStringLiteral("adr.dbf")));
    schreiben(pfad(QStringLiteral("adr.mdx")), "der Index der zweiten");
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(namen(datei.katalogLesen()), QStringList{QStringLiteral("ADR")});
    EXPECT_EQ(datei.katalogLesen().hinweise.size(), 1u);
    EXPECT_EQ(alleZeilen(datei, QStringLiteral("adr")).size(), 5u);
    datei.anwenden({TabelleLoeschen{QStringLiteral("ADR")}});
    EXPECT_EQ(dateien(), (QStringList{"adr.dbf", "adr.mdx"}));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("adr.dbf"))), zweite);
}

// Runs in a child without the superuser's rights. The low byte of the failure's number.
template <typename F>
int ohneVorrechte(F tun) {
    const pid_t kind = ::fork();
    if (kind == 0) {
        const bool gewechselt = ::geteuid() != 0 || (::setgid(65534) == 0 && ::setuid(65534) == 0);
        ::_exit(gewechselt ? fehlerVon(tun) & 0xff : 255);
    }
    int stand = 0;
    ::waitpid(kind, &stand, 0);
    return WIFEXITED(stand) ? WEXITSTATUS(stand) : -1;
}

TEST_F(DbaseOrdnerTest, SchreibgeschuetzterOrdner) {
    kunden(kA);
    const QByteArray name = QFile::encodeName(ordner.path());
    ::chmod(name.constData(), 0555);
    EXPECT_EQ(ohneVorrechte([&] { oeffnen(); }), kSchreibgeschuetzt & 0xff);
    ::chmod(name.constData(), 0777);
    EXPECT_EQ(ohneVorrechte([&] { oeffnen(); }), 0);
}

TEST_F(DbaseOrdnerTest, SchreibgeschuetzteTabelleWirdNichtGeloescht) {
    kunden(kA);
    ::chmod(QFile::encodeName(ordner.path()).constData(), 0777);
    ::chmod(QFile::encodeName(pfad(QStringLiteral("A.dbf"))).constData(), 0444);
    const auto vorher = alles();
    EXPECT_EQ(ohneVorrechte([&] {
                  dbase::DbaseOrdner datei(ordner.path());
                  datei.anwenden({TabelleLoeschen{kA}});
              }),
              kSchreibgeschuetzt & 0xff);
    EXPECT_EQ(alles(), vorher);
}

TEST_F(DbaseOrdnerTest, GesperrteTabelleWirdNichtUeberschrieben) {
    memotabelle(kA, QStringLiteral("a"));
    for (const char* datei : {"A.dbf", "A.dbt"}) {
        const auto vorher = alles();
        const int griff = ::open(QFile::encodeName(pfad(QString::fromLatin1(datei))).constData(), O_RDWR);
        ASSERT_EQ(::flock(griff, LOCK_EX), 0);
        dbase::DbaseOrdner offen(ordner.path());
        EXPECT_EQ(fehlerVon([&] { offen.anwenden({TabelleLoeschen{kA}}); }), kDateiGesperrt) << datei;
        ::close(griff);
        EXPECT_EQ(alles(), vorher);
    }
}

TEST_F(DbaseOrdnerTest, GrenzeDesSystemsBeimSchreiben) {
    kunden(kA);
    const auto vorher = alles();
    const pid_t kind = ::fork();
    if (kind == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit grenze { 20000, 20000 };
        ::setrlimit(RLIMIT_FSIZE, &grenze);
        dbase::DbaseOrdner datei(ordner.path());
        ::_exit(fehlerVon([&] {
                    datei.anwenden(
                        {TabelleLoeschen{kA}, anlegen(mitMemo(kA), memozeilen(100, QStringLiteral("viel")))});
                }) &
                0xff);
    }
    int stand = 0;
    ::waitpid(kind, &stand, 0);
    EXPECT_EQ(WEXITSTATUS(stand), kDateifehler & 0xff);
    EXPECT_EQ(alles(), vorher);
}

TEST_F(DbaseOrdnerTest, VollerDatentraeger) {
    if (::geteuid() != 0) GTEST_SKIP() << "Nur der Verwalter kann einen kleinen Datenträger einhängen.";
    const QString klein = ordner.filePath(QStringLiteral("klein"));
    ASSERT_TRUE(QDir().mkpath(klein));
    if (QProcess::execute(QStringLiteral("mount"), {"-t", "tmpfs", "-o", "size=64k", "none", klein}) != 0)
        GTEST_SKIP() << "Hier lässt sich nichts einhängen.";
    {
        dbase::DbaseOrdner datei(klein);
        EXPECT_EQ(fehlerVon([&] {
                      datei.anwenden({anlegen(mitMemo(kA), memozeilen(500, QStringLiteral("viel")))});
                  }),
                  kDatentraegerVoll);
    }
    EXPECT_TRUE(QDir(klein).entryList(QDir::Files | QDir::Hidden).isEmpty());
    QProcess::execute(QStringLiteral("umount"), {klein});
}

TEST_F(DbaseOrdnerTest, ScheitertEinSpaetererSchrittDannIstAllesWieVorher) {
    memotabelle(kA, QStringLiteral("a"));
    memotabelle(kB, QStringLiteral("b"));
    // The last step meets a folder in the way of the private name: a table's name is a folder's.
    dbase::DbaseOrdner datei(ordner.path());
    const auto vorher = alles();
    const engine::TabelleAnlegen neu{mitMemo(kC), [&] {
                                         QDir(ordner.path()).mkdir(QStringLiteral("C.dbf"));
                                         return std::make_unique<Kaputt>(false);
                                     }};
    EXPECT_NE(fehlerVon([&] { datei.anwenden({TabelleLoeschen{kA}, TabelleUmbenennen{kB, kA}, neu}); }), 0);
    QDir(ordner.path()).rmdir(QStringLiteral("C.dbf"));
    EXPECT_EQ(alles(), vorher);
    EXPECT_EQ(ersterText(kA), QStringLiteral("a"));
    EXPECT_EQ(ersterText(kB), QStringLiteral("b"));
}

TEST_F(DbaseOrdnerTest, RechteDerErsetztenDateiBleiben) {
    kunden(kA);
    ::chmod(QFile::encodeName(pfad(QStringLiteral("A.dbf"))).constData(), 0640);
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleLoeschen{kA}, anlegen(mitMemo(kA), {})});
    struct stat angaben {};
    ASSERT_EQ(::stat(QFile::encodeName(pfad(QStringLiteral("A.dbf"))).constData(), &angaben), 0);
    EXPECT_EQ(angaben.st_mode & 0777, 0640u);
}

TEST_F(DbaseOrdnerTest, EndungUndSchreibweiseWieImOrdner) {
    kunden(kA);
    QFile::rename(pfad(QStringLiteral("A.dbf")), pfad(QStringLiteral("A.DBF")));
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({anlegen(mitMemo(kB), {})});
    EXPECT_EQ(dateien(), (QStringList{"A.DBF", "B.DBF", "B.DBT"}));
}

}  // namespace
