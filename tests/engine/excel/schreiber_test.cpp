// What each change does to a workbook: formats, limits, references, texts and windows.
#include <QTemporaryDir>

#include "engine/excel/behaelter.h"
#include "engine/excel/blatttabelle.h"
#include "engine/excel/mappenlauf.h"
#include "engine/excel/neuetabelle.h"
#include "engine/excel/proben.h"
#include "engine/excel/spalteneigenes.h"

namespace {

using neuetabelle::anlegen;
using neuetabelle::feld;

// The workbook stream of a sample.
QByteArray stromVon(const QString& probe) {
    QFile datei(proben::pfad(probe));
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    const excel::Behaelter behaelter(datei.readAll());
    const auto* strom = behaelter.strom("Workbook");
    return (strom ? strom : behaelter.strom("Book"))->bytes;
}

QByteArray nach(const QByteArray& strom, const engine::TabelleAnlegen& a) {
    return mappenlauf::geaendert(strom, [&](excel::Schreiber& s) { s.anlegen(a.def, *a.zeilen()); });
}
QByteArray ohne(const QByteArray& strom, const QString& tabelle) {
    return mappenlauf::geaendert(strom, [&](excel::Schreiber& s) { s.loeschen(tabelle); });
}
QByteArray umbenannt(const QByteArray& strom, const QString& alt, const QString& neu) {
    return mappenlauf::geaendert(strom, [&](excel::Schreiber& s) { s.umbenennen(alt, neu); });
}

QStringList tabellenVon(const QByteArray& strom) {
    const excel::Arbeitsmappe mappe(strom);
    QStringList namen;
    for (const auto& ort : mappe.tabellen()) namen << ort.name;
    return namen;
}

std::vector<engine::FeldDef> felderVon(const QByteArray& strom, const QString& tabelle) {
    const excel::Arbeitsmappe mappe(strom);
    return excel::tabellenplan(mappe, *excel::tabelleFinden(mappe.tabellen(), tabelle)).felder;
}

std::vector<engine::Zeile> zeilenVon(const QByteArray& strom, const QString& tabelle) {
    const auto mappe = std::make_shared<const excel::Arbeitsmappe>(strom);
    const auto quelle = excel::tabellenzeilen(
        mappe, excel::tabellenplan(*mappe, *excel::tabelleFinden(mappe->tabellen(), tabelle)));
    std::vector<engine::Zeile> zeilen;
    for (engine::Zeile zeile; quelle->naechste(zeile);) zeilen.push_back(zeile);
    return zeilen;
}

engine::TabelleAnlegen texttabelle(const QString& name, const QStringList& texte) {
    std::vector<engine::Zeile> zeilen;
    for (const QString& text : texte) zeilen.push_back({Wert(text)});
    return anlegen(name, {feld(u"Text", dao::dbMemo)}, std::move(zeilen));
}

int anzahlSaetze(const QByteArray& strom, quint16 typ) {
    int anzahl = 0;
    excel::Satzfolge folge(strom);
    for (excel::Satzsicht satz; folge.naechster(satz);) anzahl += satz.typ == typ;
    return anzahl;
}

class ExcelSchreiber : public testing::Test {
  protected:
    void SetUp() override { PROBE_ODER_UEBERSPRINGEN("SimpleMultiCell.xls"); }
};

TEST_F(ExcelSchreiber, BlattUndBereichStehenAlsEineTabelleInDerListe) {
    const QByteArray strom = stromVon("SimpleMultiCell.xls");
    for (const QString& name :
         QStringList{"Ziel", "Kunden _#1__3_7_2001", "Q1", "2001", "R", "a.b", "Ä & Ö"}) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray neu = nach(strom, texttabelle(name, {"x"}));
        EXPECT_EQ(tabellenVon(neu), (QStringList{"Sheet1$", "Sheet2$", "Sheet3$", name}));
        EXPECT_EQ(tabellenVon(umbenannt(neu, name, "Neuer Name")).last(), "Neuer Name");
        EXPECT_EQ(tabellenVon(ohne(neu, name)), tabellenVon(strom));
    }
}

TEST_F(ExcelSchreiber, SpaltenformateUndKoepfeGehenMitDerKopie) {
    const auto eigenes = [](int nummer, const QString& format, const QString& kopf = {}) {
        return excel::spalteneigenesSchreiben({nummer, format, kopf});
    };
    const std::vector<engine::FeldDef> felder = {
        feld(u"Str#", dao::dbText, 255, eigenes(0, {}, "Str.")),
        feld(u"PLZ", dao::dbText, 255, eigenes(170, "00000")),
        feld(u"Tag", dao::dbDate, 8, eigenes(171, "dd/mm/yy")),
        feld(u"Geld", dao::dbCurrency, 8, eigenes(172, "#,##0.00 \"DM\"")),
        feld(u"Anteil", dao::dbDouble, 8, eigenes(10, {})),
        feld(u"Neu", dao::dbText, 255, eigenes(0, {}, "Alt.")),
    };
    const std::vector<engine::Zeile> zeilen = {
        {Wert(u"Weg"), Wert(u"01067"), Wert(DatumZeit{37000}), Wert(Waehrung{123400}), Wert(0.25),
         Wert(u"x")},
        {Wert::null(), Wert(u"D-1067"), Wert::null(), Wert::null(), Wert::null(), Wert::null()}};
    for (const QString& probe : QStringList{"SimpleMultiCell.xls", "testEXCEL_95.xls"}) {
        SCOPED_TRACE(probe.toStdString());
        const QByteArray einmal = nach(stromVon(probe), anlegen("Kopie", felder, zeilen));
        const std::vector<engine::FeldDef> gelesen = felderVon(einmal, "Kopie");
        ASSERT_EQ(gelesen.size(), felder.size());
        for (size_t i = 0; i < felder.size(); ++i) {
            EXPECT_EQ(gelesen[i].name, felder[i].name);
            EXPECT_EQ(gelesen[i].typ, felder[i].typ) << i;
        }
        EXPECT_EQ(zeilenVon(einmal, "Kopie"), zeilen);
        // A copy of the copy finds all formats there.
        const QByteArray zweimal = nach(einmal, anlegen("Kopie 2", gelesen, zeilen));
        EXPECT_EQ(anzahlSaetze(zweimal, excel::kXf), anzahlSaetze(einmal, excel::kXf));
        EXPECT_EQ(anzahlSaetze(zweimal, excel::kFormat), anzahlSaetze(einmal, excel::kFormat));
        EXPECT_EQ(zeilenVon(zweimal, "Kopie 2"), zeilen);
    }
}

TEST_F(ExcelSchreiber, WasNichtPasstWirdMitRatAbgelehnt) {
    const QByteArray biff8 = stromVon("SimpleMultiCell.xls");
    const QByteArray biff5 = stromVon("testEXCEL_95.xls");
    std::vector<engine::FeldDef> vieleFelder;
    for (int i = 0; i < 257; ++i) vieleFelder.push_back(feld(u"F", dao::dbLong));
    const auto mitZeilenzahl = [](qint64 zeilen) {
        engine::TabelleAnlegen a = texttabelle("Neu", {});
        a.def.zeilen = zeilen;
        return a;
    };
    struct Fall {
        const QByteArray& strom;
        engine::TabelleAnlegen a;
        int nummer;
        const char* rat;
    };
    const Fall faelle[] = {
        {biff8, mitZeilenzahl(65536), kSystemgrenze, "65.535"},
        {biff5, mitZeilenzahl(16384), kSystemgrenze, "16.383"},
        {biff8, mitZeilenzahl(65535), 0, ""},
        {biff5, mitZeilenzahl(16383), 0, ""},
        {biff8, anlegen("Neu", vieleFelder, {}), kSystemgrenze, "256"},
        {biff8, texttabelle("Neu", {QString(32767, 'x')}), 0, ""},
        {biff8, texttabelle("Neu", {QString(32768, 'x')}), kSystemgrenze, "32.767"},
        {biff5, texttabelle("Neu", {QString(255, 'x')}), 0, ""},
        {biff5, texttabelle("Neu", {QString(256, 'x')}), kSystemgrenze, "Excel 97-2003"},
        {biff5, texttabelle("Neu", {"Łódź"}), kSystemgrenze, "Excel 97-2003"},
        {biff5, texttabelle("Łódź", {}), kUngueltigerName, "Excel 97-2003"},
        {biff8, texttabelle("Sheet2", {}), kNameVorhanden, "Sheet2"},
        {biff8, texttabelle("a/b", {}), kUngueltigerName, "31"},
        {biff8, texttabelle(QString(32, 'x'), {}), kUngueltigerName, "31"},
        {biff8, anlegen("Neu", {feld(u"B", dao::dbBinary, 5)}, {{Wert(QByteArray("\1\2"))}}), kSystemgrenze,
         "Access"},
    };
    for (const Fall& fall : faelle) {
        QString text;
        EXPECT_EQ(fehlerVon([&] { nach(fall.strom, fall.a); }, &text), fall.nummer) << text.toStdString();
        EXPECT_TRUE(text.contains(fall.rat)) << text.toStdString();
    }
}

TEST_F(ExcelSchreiber, FremderZeichensatzDerSchriftNimmtNurAscii) {
    const QByteArray strom = stromVon("sheetjs-biff5-cell_style_simple.xls");
    EXPECT_EQ(fehlerVon([&] { nach(strom, texttabelle("Neu", {"Strasse"})); }), 0);
    EXPECT_EQ(fehlerVon([&] { nach(strom, texttabelle("Neu", {"Straße"})); }), kSystemgrenze);
    const QByteArray macintosh = stromVon("edr-as3xls_BIFF5.xls");
    EXPECT_EQ(fehlerVon([&] { nach(macintosh, texttabelle("Neu", {"Straße"})); }), kSystemgrenze);
}

TEST_F(ExcelSchreiber, TexteJederLaengeUeberstehenDieSatzgrenzen) {
    QStringList texte;
    for (int i = 0; i < 60; ++i) {
        const int laenge = (i * 1373) % 9000 + (i % 7 == 0 ? 8200 : 0);
        texte << QString(laenge + 1, i % 3 ? QChar(u'a' + i % 26) : QChar(0x4E00 + i)) + QString::number(i);
    }
    texte << QString(32767, u'ß') << QString(32767, u'Ж') << "x";
    for (const QString& probe : QStringList{"SimpleMultiCell.xls", "46368.xls", "FormulaEvalTestData.xls"}) {
        const QByteArray neu = nach(stromVon(probe), texttabelle("Texte", texte));
        const auto zeilen = zeilenVon(neu, "Texte");
        ASSERT_EQ(int(zeilen.size()), texte.size());
        for (int i = 0; i < texte.size(); ++i) EXPECT_EQ(zeilen[size_t(i)][0], Wert(texte[i])) << i;
    }
}

TEST_F(ExcelSchreiber, ZehnRundenLassenDieMappeNichtWachsen) {
    for (const QString& probe :
         QStringList{"SimpleMultiCell.xls", "FormulaEvalTestData.xls", "SimpleMacro.xls"}) {
        SCOPED_TRACE(probe.toStdString());
        const auto a =
            anlegen("Ziel", neuetabelle::gemischteFelder(), neuetabelle::gemischteZeilen(300, "Text "));
        QByteArray strom = nach(stromVon(probe), a);
        const qsizetype voll = strom.size();
        const QByteArray leer = ohne(strom, "Ziel");
        for (int i = 0; i < 10; ++i) strom = nach(ohne(strom, "Ziel"), a);
        EXPECT_EQ(strom.size(), voll);
        EXPECT_EQ(ohne(strom, "Ziel"), leer);
        EXPECT_LT(leer.size(), stromVon(probe).size() + 400);
    }
}

TEST_F(ExcelSchreiber, GleicheTexteStehenNurEinmalDa) {
    const QByteArray strom = stromVon("SimpleMultiCell.xls");
    QStringList texte;
    for (int i = 0; i < 500; ++i) texte << QString(200, 'x') + QString::number(i % 3);
    EXPECT_LT(nach(strom, texttabelle("Neu", texte)).size(), strom.size() + 500 * 20 + 3 * 220);
}

// Drop or rename of the user's own sheet: what pointed to others keeps its target.
TEST_F(ExcelSchreiber, BezuegeFolgenDemLoeschenUndUmbenennen) {
    for (const QString& probe :
         QStringList{"sheetjs-named_ranges_2011.xls", "sheetjs-biff5-named_ranges_2011.xls"}) {
        SCOPED_TRACE(probe.toStdString());
        const QByteArray strom = stromVon(probe);
        ASSERT_EQ(tabellenVon(strom),
                  (QStringList{"Named Ranges$", "Cross-Sheet$", "col1_", "col3_", "row6_"}));
        const QByteArray ohneErstes = ohne(strom, "Named Ranges$");
        EXPECT_EQ(tabellenVon(ohneErstes), QStringList{"Cross-Sheet$"});
        EXPECT_EQ(zeilenVon(ohneErstes, "Cross-Sheet$"), zeilenVon(strom, "Cross-Sheet$"));
        const QByteArray ohneZweites = ohne(strom, "Cross-Sheet$");
        EXPECT_EQ(tabellenVon(ohneZweites), (QStringList{"Named Ranges$", "col1_", "col3_", "row6_"}));
        EXPECT_EQ(zeilenVon(ohneZweites, "col3_"), zeilenVon(strom, "col3_"));
        const QByteArray anders = umbenannt(strom, "Named Ranges$", "Ein ganz anderer Name");
        EXPECT_EQ(tabellenVon(anders),
                  (QStringList{"Ein ganz anderer Name$", "Cross-Sheet$", "col1_", "col3_", "row6_"}));
        EXPECT_EQ(zeilenVon(anders, "col1_"), zeilenVon(strom, "col1_"));
        // A range of its own is dropped and renamed as a name; its cells stay.
        EXPECT_EQ(tabellenVon(ohne(strom, "col1_")),
                  (QStringList{"Named Ranges$", "Cross-Sheet$", "col3_", "row6_"}));
        EXPECT_EQ(zeilenVon(ohne(strom, "col1_"), "Named Ranges$"), zeilenVon(strom, "Named Ranges$"));
        EXPECT_EQ(zeilenVon(umbenannt(strom, "col1_", "spalte"), "spalte"), zeilenVon(strom, "col1_"));
    }
}

TEST_F(ExcelSchreiber, EineNeueTabelleBelebtDenNamenDerGeloeschtenWieder) {
    const auto a = texttabelle("Ziel", {"x"});
    const QByteArray einmal = nach(stromVon("SimpleMultiCell.xls"), a);
    const QByteArray wieder = nach(ohne(einmal, "Ziel"), a);
    EXPECT_EQ(anzahlSaetze(wieder, excel::kName), anzahlSaetze(einmal, excel::kName));
    EXPECT_EQ(excel::Verweisliste(excel::Mappe(wieder)).eintraege().size(),
              excel::Verweisliste(excel::Mappe(einmal)).eintraege().size());
    EXPECT_EQ(tabellenVon(wieder), tabellenVon(einmal));
}

TEST_F(ExcelSchreiber, DasLetzteSichtbareBlattBleibt) {
    QString text;
    EXPECT_EQ(fehlerVon([&] { ohne(stromVon("TwoSheetsOneHidden.xls"), "Sheet2$"); }, &text), kSystemgrenze);
    EXPECT_TRUE(text.contains("sichtbare")) << text.toStdString();
    const QByteArray strom = stromVon("sheetjs-sheet_visibility.xls");
    EXPECT_EQ(fehlerVon([&] { ohne(strom, "Visible$"); }), kSystemgrenze);
    EXPECT_EQ(fehlerVon([&] { ohne(strom, "Hidden$"); }), 0);
    // With a new visible one beside it, it may go.
    EXPECT_EQ(fehlerVon([&] { ohne(nach(strom, texttabelle("Neu", {"x"})), "Visible$"); }), 0);
}

TEST_F(ExcelSchreiber, LaengereTexteMachenDieSpalteZumMemo) {
    const QByteArray strom = stromVon("SimpleMultiCell.xls");
    QStringList texte(30, "kurz");
    EXPECT_EQ(felderVon(nach(strom, texttabelle("T", texte)), "T")[0].typ, dao::dbText);
    texte << QString(256, 'x');
    EXPECT_EQ(felderVon(nach(strom, texttabelle("T", texte)), "T")[0].typ, dao::dbMemo);
}

}  // namespace
