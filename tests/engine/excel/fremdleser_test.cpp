// LibreOffice and Gnumeric read the same in every old sheet before and after a change, formulas included, and
// the new one in full.
#include <QStandardPaths>
#include <QTemporaryDir>

#include "engine/excel/neuetabelle.h"
#include "engine/excel/proben.h"

namespace {

constexpr int kZeilen = 3000;
const QString kNeu = "Neue";

struct Fremdleser {
    const char* programm;
    QString (*umwandeln)(const QString& datei, const QDir& ziel);
};

// Every sheet as a file of its own, formulas instead of their values.
QString mitLibreoffice(const QString& datei, const QDir& ziel) {
    const QString filter = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,true,false,-1";
    return proben::ausfuehren("soffice",
                              {"-env:UserInstallation=file://" + ziel.filePath("../profil"), "--headless",
                               "--convert-to", filter, "--outdir", ziel.path(), datei})
        .fehler;
}

QString mitGnumeric(const QString& datei, const QDir& ziel) {
    return proben::ausfuehren("ssconvert", {"-S", "--export-type=Gnumeric_stf:stf_csv", datei,
                                            ziel.filePath("mappe-%s.csv")})
        .fehler;
}

// The sheets by file name, as their lines.
std::map<QString, QByteArray> blaetter(const Fremdleser& leser, const QString& datei, const QDir& wurzel,
                                       const QString& name) {
    EXPECT_TRUE(wurzel.mkpath(name));
    const QDir ziel(wurzel.filePath(name));
    const QString meldung = leser.umwandeln(datei, ziel);
    std::map<QString, QByteArray> inhalte;
    for (const QString& eintrag : ziel.entryList({"*.csv"}, QDir::Files)) {
        QFile blatt(ziel.filePath(eintrag));
        EXPECT_TRUE(blatt.open(QIODevice::ReadOnly));
        inhalte[eintrag] = blatt.readAll();
    }
    EXPECT_FALSE(inhalte.empty()) << meldung.toStdString();
    return inhalte;
}

std::vector<engine::Zeile> vieleZeilen() {
    std::vector<engine::Zeile> zeilen;
    for (int i = 0; i < kZeilen; ++i)
        zeilen.push_back({Wert("Strasse " + QString::number(i)), Wert(double(i) + 0.5),
                          i % 10 ? Wert("0" + QString::number(i)) : Wert::null()});
    return zeilen;
}

void neuesBlattPruefen(const QByteArray& csv) {
    // Both quote as they like.
    const QList<QByteArray> zeilen = QByteArray(csv).replace('"', "").trimmed().split('\n');
    ASSERT_EQ(zeilen.size(), kZeilen + 1);
    EXPECT_EQ(zeilen[0].simplified(), "Name,Zahl,Text");
    for (const int i : {0, 1, 999, kZeilen - 1}) {
        const QByteArray n = QByteArray::number(i);
        EXPECT_EQ(zeilen[i + 1].simplified(),
                  "Strasse " + n + "," + n + ".5," + (i % 10 ? "0" + n : QByteArray()));
    }
}

class FremdeLeser : public testing::TestWithParam<std::tuple<int, QString>> {};

const Fremdleser kLeser[] = {{"soffice", mitLibreoffice}, {"ssconvert", mitGnumeric}};

TEST_P(FremdeLeser, LesenAltesUnveraendertUndNeuesGanz) {
    const auto& [nummer, probe] = GetParam();
    const Fremdleser& leser = kLeser[nummer];
    PROBE_ODER_UEBERSPRINGEN(probe);
    if (QStandardPaths::findExecutable(leser.programm).isEmpty()) GTEST_SKIP() << leser.programm << " fehlt";
    QTemporaryDir temporaer;
    const QDir ordner(temporaer.path());
    const QString datei = proben::kopie(probe, ordner);
    const auto vorher = blaetter(leser, datei, ordner, "vorher");

    excel::XlsDatei mappe(datei);
    mappe.anwenden({neuetabelle::anlegen(
        kNeu,
        {neuetabelle::feld(u"Name", dao::dbText, 255), neuetabelle::feld(u"Zahl", dao::dbDouble, 8),
         neuetabelle::feld(u"Text", dao::dbText, 255)},
        vieleZeilen())});
    auto angelegt = blaetter(leser, datei, ordner, "angelegt");
    bool gefunden = false;
    for (auto blatt = angelegt.begin(); blatt != angelegt.end();) {
        const bool neu = blatt->first.endsWith("-" + kNeu + ".csv");
        if (neu) neuesBlattPruefen(blatt->second);
        gefunden = gefunden || neu;
        blatt = neu ? angelegt.erase(blatt) : std::next(blatt);
    }
    EXPECT_TRUE(gefunden);
    EXPECT_EQ(angelegt, vorher);

    mappe.anwenden({engine::TabelleLoeschen{kNeu}});
    EXPECT_EQ(blaetter(leser, datei, ordner, "geloescht"), vorher);
}

INSTANTIATE_TEST_SUITE_P(Proben, FremdeLeser,
                         testing::Combine(testing::Values(0, 1),
                                          testing::Values("FormulaEvalTestData.xls", "44010-TwoCharts.xls",
                                                          "sheetjs-pivot_table_test.xls",
                                                          "sheetjs-biff5-named_ranges_2011.xls")),
                         [](const auto& i) {
                             return kLeser[std::get<0>(i.param)].programm +
                                    QString(std::get<1>(i.param))
                                        .replace(QRegularExpression("[^A-Za-z0-9]"), "_")
                                        .prepend('_')
                                        .toStdString();
                         });

}  // namespace
