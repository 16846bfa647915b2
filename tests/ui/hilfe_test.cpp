// The help: topics found in a text, the file that comes with the program, the window; the info box.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include "data/start.h"
#include "fields/einstellungen.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"
#include "ui/dialoge.h"
#include "ui/frmhaupt.h"
#include "ui/frmhilfe.h"
#include "ui/frminfo.h"
#include "ui/hilfethema.h"

namespace {

const QString kKeineHilfe = QStringLiteral("Zu diesem Thema ist leider keine Hilfe verfügbar.");

struct Themenfall {
    const char* name;
    const char* datei;
    QString text;
};

class Hilfethema : public testing::TestWithParam<Themenfall> {};

TEST_P(Hilfethema, Suchen) {
    EXPECT_EQ(HilfeThemaSuchen(QString::fromUtf8(GetParam().datei), QStringLiteral("Thema")),
              GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Dateien, Hilfethema,
    testing::Values(
        Themenfall{"LeereDatei", "", kKeineHilfe},
        Themenfall{"SchluesselFehlt", "###\nAnderes\n\nText\n###\n", kKeineHilfe},
        Themenfall{"SchluesselInAndererSchreibung", "###\nthema\n\nText\n", kKeineHilfe},
        Themenfall{"SchluesselMitLeerzeichen", "###\nThema \n\nText\n", kKeineHilfe},
        Themenfall{"BisZurNaechstenMarke", "###\nThema\n\neins\nzwei\n###\nAnderes\n\ndrei\n",
                   "eins\r\nzwei\r\n"},
        Themenfall{"AmEndeOhneSchliessendeMarke", "###\nThema\n\neins\nzwei", "eins\r\nzwei\r\n"},
        Themenfall{"HinterEinemAnderen", "###\nAnderes\n\nText\n### ganz gleich\nThema\nTitel\neins\n###\n",
                   "eins\r\n"},
        Themenfall{"OhneText", "###\nThema\n\n###\nAnderes\n\nText\n", ""},
        Themenfall{"SchluesselIstDieLetzteZeile", "###\nThema", ""},
        Themenfall{"UebergangeneZeileIstEineMarke", "###\nThema\n###\nAnderes\n\nText\n", ""},
        Themenfall{"LeereZeilenGehoerenZumText", "###\nThema\n\n\neins\n\n###\n", "\r\neins\r\n\r\n"},
        Themenfall{"ZeileDesTextesIstDerSchluessel", "###\nAnderes\n\neins\nThema\nTitel\nzwei\n",
                   "zwei\r\n"},
        Themenfall{"SchluesselOhneMarke", "Thema\n\neins\n", "eins\r\n"},
        Themenfall{"SchluesselzeileIstEineMarke", "###\n###\n###\nThema\n\neins\n", kKeineHilfe},
        Themenfall{"MarkeAlsLetzteZeile", "###\nAnderes\n\nText\n###", kKeineHilfe},
        Themenfall{"ZeilenendenVonWindows", "###\r\nThema\r\n\r\neins\r\nzwei\r\n###\r\n",
                   "eins\r\nzwei\r\n"},
        Themenfall{"ZeilenendenMitWagenruecklauf", "###\rThema\r\reins\rzwei\r", "eins\r\nzwei\r\n"}),
    [](const auto& fall) { return std::string(fall.param.name); });

TEST(Hilfeschluessel, RichtetSichNachDemRahmen) {
    const QString titel = QStringLiteral(" Auswahl der Tabelle ");
    EXPECT_EQ(HilfeSchluessel(0, titel), u"Nichts");
    EXPECT_EQ(HilfeSchluessel(7, titel), u"Zuordnung der Felder");
    EXPECT_EQ(HilfeSchluessel(12, titel), u"Dubletten bearbeiten");
    EXPECT_EQ(HilfeSchluessel(22, titel), u"Mülldatensätze bearbeiten");
    for (const int rahmen : {1, 2, 3, 6, 13, 21, 63})
        EXPECT_EQ(HilfeSchluessel(rahmen, titel), u"Auswahl der Tabelle");
}

QString mitgelieferteHilfe() {
    QFile datei(QStringLiteral(LINDGARN_HILFE));
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    return TextAusBytes(datei.readAll());
}

constexpr const char* kSchluessel[] = {"Nichts",
                                       "Sicherheitshinweis",
                                       "Auswahl der Datenbank",
                                       "Auswahl der Tabelle",
                                       "Auswahl der Zieltabelle",
                                       "Auswahl des Vorgangs",
                                       "Durchführung",
                                       "Zuordnung der Felder",
                                       "Suchoptionen",
                                       "Dubletten bearbeiten",
                                       "Protokoll",
                                       "Mülldatensätze erkennen",
                                       "Mülldatensätze bearbeiten",
                                       "Felder splitten",
                                       "Felder verschmelzen",
                                       "Daten abgleichen",
                                       "Neue Daten einfügen"};

TEST(Hilfedatei, HatEinenTextZuJedemSchluessel) {
    const QString hilfe = mitgelieferteHilfe();
    QStringList texte;
    for (const char* schluessel : kSchluessel) {
        SCOPED_TRACE(schluessel);
        const QString text = HilfeThemaSuchen(hilfe, QString::fromUtf8(schluessel));
        EXPECT_NE(text, kKeineHilfe);
        EXPECT_GT(text.size(), 200);
        EXPECT_FALSE(texte.contains(text));
        texte << text;
    }
}

// The captions lead to the topics.
TEST(Hilfedatei, KenntDenTitelJedesRahmens) {
    const QString hilfe = mitgelieferteHilfe();
    FrmHaupt haupt;
    int gesehen = 0;
    for (int nummer = 0; nummer < 100; ++nummer) {
        const Rahmen* rahmen = haupt.freRahmen(nummer);
        if (!rahmen) continue;
        SCOPED_TRACE(nummer);
        EXPECT_NE(HilfeThemaSuchen(hilfe, HilfeSchluessel(nummer, rahmen->title())), kKeineHilfe);
        ++gesehen;
    }
    EXPECT_GE(gesehen, 11);
}

// A program folder of its own, and a window that hears the messages.
class Hilfefenster : public testing::Test {
  protected:
    void SetUp() override {
        ProgrammOrdnerSetzen(ordner.path());
        gRahmen = 0;
    }
    void TearDown() override {
        ProgrammOrdnerSetzen(QString());
        gRahmen = 0;
    }
    void dateiSchreiben(const QString& name, const QByteArray& text) {
        QFile datei(name);
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(text);
    }

    QTemporaryDir ordner;
    Fensterattrappe attrappe;
};

TEST_F(Hilfefenster, OhneDateiSagtEsDasUndBleibtLeer) {
    attrappe.erwarte(QStringLiteral("Hilfedatei nicht gefunden!"));
    const FrmHilfe hilfe(nullptr, QString());
    ASSERT_EQ(attrappe.meldungen.size(), 1u);
    EXPECT_EQ(attrappe.meldungen[0].titel, QString());
    EXPECT_EQ(attrappe.meldungen[0].symbol, Symbol::Kritisch);
    EXPECT_EQ(hilfe.tbxHilfe->toPlainText(), QString());
}

TEST_F(Hilfefenster, ZeigtDasThemaDesRahmens) {
    dateiSchreiben(ordner.filePath("Hilfe.HLP"), "###\nAuswahl der Tabelle\n\n\xC3\x84nderungen\n");
    gRahmen = 3;
    const FrmHilfe hilfe(nullptr, QStringLiteral(" Auswahl der Tabelle "));
    EXPECT_EQ(hilfe.windowTitle(), u" Hilfe");
    EXPECT_EQ(hilfe.tbxHilfe->toPlainText(), u"Änderungen\n");
    EXPECT_TRUE(hilfe.tbxHilfe->isReadOnly());
    EXPECT_EQ(hilfe.Command1->text(), u"OK");
    EXPECT_NE(hilfe.findChild<QFrame*>(QStringLiteral("Shape1")), nullptr);
    EXPECT_TRUE(attrappe.meldungen.empty());
}

TEST_F(Hilfefenster, LiestDieDateiBeiJedemOeffnen) {
    dateiSchreiben(ordner.filePath("Hilfe.HLP"), "###\nNichts\n\neins\n");
    EXPECT_EQ(FrmHilfe(nullptr, QString()).tbxHilfe->toPlainText(), u"eins\n");
    dateiSchreiben(ordner.filePath("Hilfe.HLP"), "###\nNichts\n\nzwei\n");
    EXPECT_EQ(FrmHilfe(nullptr, QString()).tbxHilfe->toPlainText(), u"zwei\n");
}

TEST_F(Hilfefenster, LiestEineDateiInDerKodierungVonWindows) {
    dateiSchreiben(ordner.filePath("Hilfe.HLP"), "###\r\nNichts\r\n\r\n\xC4nderungen\r\n");
    EXPECT_EQ(FrmHilfe(nullptr, QString()).tbxHilfe->toPlainText(), u"Änderungen\n");
}

TEST_F(Hilfefenster, FindetDieDateiEinerInstallation) {
    QDir(ordner.path()).mkpath("bin");
    QDir(ordner.path()).mkpath("share/lindgarn");
    ProgrammOrdnerSetzen(ordner.filePath("bin"));
    dateiSchreiben(ordner.filePath("share/lindgarn/Hilfe.HLP"), "###\nNichts\n\ninstalliert\n");
    EXPECT_EQ(FrmHilfe(nullptr, QString()).tbxHilfe->toPlainText(), u"installiert\n");
    dateiSchreiben(ordner.filePath("bin/Hilfe.HLP"), "###\nNichts\n\ndaneben\n");
    EXPECT_EQ(FrmHilfe(nullptr, QString()).tbxHilfe->toPlainText(), u"daneben\n");
}

TEST_F(Hilfefenster, DasHandbuchIstZuErreichenWennEsDaIst) {
    dateiSchreiben(ordner.filePath("Hilfe.HLP"), "###\nNichts\n\neins\n");
    {
        FrmHilfe hilfe(nullptr, QString());
        hilfe.show();
        EXPECT_FALSE(hilfe.btnHandbuch->isVisible());
    }
    dateiSchreiben(ordner.filePath("Handbuch.html"), "<p>Handbuch</p>");
    FrmHilfe hilfe(nullptr, QString());
    hilfe.show();
    EXPECT_TRUE(hilfe.btnHandbuch->isVisible());
    // Without a display there is no program that could show it.
    attrappe.erwarte(
        QStringLiteral("Es ließ sich kein Programm starten, das das Handbuch zeigt. Es liegt in\r") +
        QDir::toNativeSeparators(ordner.filePath("Handbuch.html")));
    hilfe.btnHandbuch->click();
    EXPECT_EQ(attrappe.meldungen.size(), 1u);
    EXPECT_TRUE(hilfe.isVisible());
}

TEST_F(Hilfefenster, OkUndEscapeSchliessen) {
    for (const Qt::Key taste : {Qt::Key_Return, Qt::Key_Escape}) {
        attrappe.erwarte(QStringLiteral("Hilfedatei nicht gefunden!"));
        FrmHilfe hilfe(nullptr, QString());
        hilfe.show();
        QTest::keyClick(&hilfe, taste);
        EXPECT_FALSE(hilfe.isVisible());
    }
}

TEST_F(Hilfefenster, InfoZeigtNameVersionUndAnschriften) {
    FrmInfo info(nullptr);
    EXPECT_EQ(info.lblTitle->text(), u"Lindgarn");
    EXPECT_EQ(info.lblVersion->text(), u"Version 1.0");
    EXPECT_TRUE(info.lblDescription->text().contains(u"https://"));
    EXPECT_TRUE(info.lblDescription->text().contains(u'@'));
    EXPECT_FALSE(info.lblDisclaimer->text().isEmpty());
    EXPECT_EQ(info.cmdOK->text(), u"OK");
    EXPECT_EQ(info.cmdSysInfo->text(), u"&Systeminfo...");
    EXPECT_FALSE(info.Image1->pixmap(Qt::ReturnByValue).isNull());
    info.show();
    attrappe.erwarte(QStringLiteral("Systeminformationen sind momentan nicht verfügbar"));
    info.cmdSysInfo->click();
    ASSERT_EQ(attrappe.meldungen.size(), 1u);
    EXPECT_EQ(attrappe.meldungen[0].symbol, Symbol::Keines);
    EXPECT_TRUE(info.isVisible());
    info.cmdOK->click();
    EXPECT_FALSE(info.isVisible());
}

}  // namespace
