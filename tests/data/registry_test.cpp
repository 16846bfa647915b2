// The per-user store: what was written comes back, and a damaged store is an empty one that can be written
// again.
#include "data/registry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr auto kWurzel = Schluesselwurzel::BenutzerAktuell;
const QString kSchluessel = QStringLiteral("Software\\Probe\\1.0");

class Registry : public testing::Test {
  protected:
    Registry() { RegAblageSetzen(datei); }
    ~Registry() override { RegAblageSetzen(QString()); }
    static Wert lesen(const QString& name) { return RegWertLesen(kWurzel, kSchluessel, name); }
    static void schreiben(const QString& name, int typ, const Wert& wert) {
        RegWertSchreiben(kWurzel, kSchluessel, name, typ, wert);
    }
    void ersetzen(const QByteArray& inhalt) const {
        QFile ablage(datei);
        ASSERT_TRUE(ablage.open(QIODevice::WriteOnly));
        ablage.write(inhalt);
    }
    QByteArray inhalt() const {
        QFile ablage(datei);
        EXPECT_TRUE(ablage.open(QIODevice::ReadOnly));
        return ablage.readAll();
    }

    QTemporaryDir ordner;
    QString datei = ordner.filePath(QStringLiteral("ablage.ini"));
};

TEST_F(Registry, TextUndZahlKommenZurueck) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("C:\\Büro\\=;\"")));
    schreiben(QStringLiteral("Zahl"), kRegZahl, Wert(-7));
    EXPECT_EQ(lesen(QStringLiteral("Ordner")).alsText(), QStringLiteral("C:\\Büro\\=;\""));
    EXPECT_EQ(lesen(QStringLiteral("Zahl")).ganzzahl(), -7);
    EXPECT_TRUE(lesen(QStringLiteral("Fehlt")).istLeerOderNull());
}

TEST_F(Registry, OhneSchluesselUndMitAnderemTypWirdNichtsGeschrieben) {
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("x")));
    EXPECT_TRUE(lesen(QStringLiteral("Ordner")).istLeerOderNull());
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), 3, Wert(QStringLiteral("x")));
    schreiben(QStringLiteral("Zahl"), kRegZahl, Wert(3e9));
    EXPECT_TRUE(lesen(QStringLiteral("Ordner")).istLeerOderNull());
    EXPECT_TRUE(lesen(QStringLiteral("Zahl")).istLeerOderNull());
}

TEST_F(Registry, EinLeererTextIstNichtLeer) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QString()));
    EXPECT_EQ(lesen(QStringLiteral("Ordner")), Wert(QString()));
}

TEST_F(Registry, WasSichNichtSchreibenLaesstLaesstDenAltenWert) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("alt")));
    for (const int typ : {0, 2, 3, 7}) schreiben(QStringLiteral("Ordner"), typ, Wert(QStringLiteral("neu")));
    schreiben(QStringLiteral("Ordner"), kRegZahl, Wert(QStringLiteral("keine Zahl")));
    EXPECT_EQ(lesen(QStringLiteral("Ordner")).alsText(), u"alt");
}

TEST_F(Registry, EinAndererTypLiestSichAlsNichts) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("x")));
    ersetzen(
        inhalt().replace("Typ=1", "Typ=30"));  // of another size, so that no cache takes it for the old one
    EXPECT_TRUE(lesen(QStringLiteral("Ordner")).istLeer());
}

TEST_F(Registry, EinSchluesselGibtNichtDieWerteEinesAnderen) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("x")));
    for (const char16_t* anderer : {u"Software\\Probe\\2.0", u"Software\\Probe", u"Software"})
        EXPECT_TRUE(RegWertLesen(kWurzel, QString::fromUtf16(anderer), QStringLiteral("Ordner")).istLeer());
}

// A pipe would wait for its other end for ever, a huge file for long.
TEST_F(Registry, WasKeineAblageSeinKannBleibtUnberuehrt) {
    const auto nichtsDa = [] {
        RegSchluesselAnlegen(kWurzel, kSchluessel);
        schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("x")));
        EXPECT_TRUE(lesen(QStringLiteral("Ordner")).istLeer());
    };
    ASSERT_EQ(::mkfifo(QFile::encodeName(datei).constData(), 0600), 0);
    nichtsDa();
    ASSERT_TRUE(QFile::remove(datei));
    ASSERT_TRUE(QDir().mkdir(datei));
    nichtsDa();
    ASSERT_TRUE(QDir().rmdir(datei));
    const QByteArray riesig(2 << 20, ';');
    ersetzen(riesig);
    nichtsDa();
    EXPECT_EQ(inhalt(), riesig);
}

TEST_F(Registry, EineBeschaedigteAblageLaesstSichLesenUndNeuSchreiben) {
    RegSchluesselAnlegen(kWurzel, kSchluessel);
    schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("C:\\Daten")));
    const QByteArray ganz = inhalt();
    QByteArray alleBytes;
    for (int byte = 0; byte < 256; ++byte) alleBytes += char(byte);
    QList<QByteArray> schaeden = {{},
                                  alleBytes,
                                  QByteArray(ganz).replace("Typ=1", "Typ=@Invalid()"),
                                  QByteArray(ganz).replace("Typ=1", "Typ=99999999999999999999")};
    for (qsizetype laenge = 5; laenge < ganz.size(); laenge += 13) schaeden += ganz.left(laenge);
    for (const QByteArray& schaden : schaeden) {
        SCOPED_TRACE(schaden.constData());
        ersetzen(schaden);
        const QString gelesen = lesen(QStringLiteral("Ordner")).alsText();
        EXPECT_TRUE(QStringLiteral("C:\\Daten").startsWith(gelesen)) << qPrintable(gelesen);
        RegSchluesselAnlegen(kWurzel, kSchluessel);
        schreiben(QStringLiteral("Ordner"), kRegText, Wert(QStringLiteral("D:\\")));
        EXPECT_EQ(lesen(QStringLiteral("Ordner")).alsText(), QStringLiteral("D:\\"));
    }
}

}  // namespace
