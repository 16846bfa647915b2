// The sample files that others wrote: what they must hold, and every cell against dbfread.
#include <QRegularExpression>
#include <cmath>

#include "dbasebank.h"
#include "engine/dbase/merkmal.h"

namespace {

using namespace dbasebank;

class DbaseProben : public DbaseTest {};

QStringList spalte(const std::vector<Zeile>& zeilen, size_t stelle) {
    QStringList werte;
    for (const Zeile& zeile : zeilen)
        werte << (zeile[stelle].istNull() ? QStringLiteral("-") : zeile[stelle].alsText());
    return werte;
}

struct Tabellenfall {
    const char* datei;
    const char* begleiter;  // with its extension, or nullptr
    int zeilen;
    int felder;
    const char* ersteZeileBeginnt;
    int memos = -1;  // rows with a memo in the last column that has any
    const char* hinweis = nullptr;
};

void PrintTo(const Tabellenfall& fall, std::ostream* aus) {
    *aus << fall.datei;
}

class DbaseProbe : public DbaseTest, public testing::WithParamInterface<Tabellenfall> {};

TEST_P(DbaseProbe, Inhalt) {
    const Tabellenfall& fall = GetParam();
    const QString name = QString::fromLatin1(fall.datei);
    PROBE_ODER_UEBERSPRINGEN(name + QStringLiteral(".dbf"));
    ASSERT_TRUE(holen(name + QStringLiteral(".dbf"), QStringLiteral("PROBE.dbf")));
    if (fall.begleiter) {
        ASSERT_TRUE(holen(name + u'.' + QString::fromLatin1(fall.begleiter),
                          QStringLiteral("PROBE.") + QString::fromLatin1(fall.begleiter)));
    }
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Katalog katalog = datei.katalogLesen();
    ASSERT_EQ(katalog.tabellen.size(), 1u);
    EXPECT_EQ(int(katalog.tabellen[0].felder.size()), fall.felder);
    const std::vector<Zeile> zeilen = alleZeilen(datei, QStringLiteral("PROBE"));
    ASSERT_EQ(int(zeilen.size()), fall.zeilen);
    EXPECT_TRUE(zeileText(zeilen[0]).startsWith(QString::fromUtf8(fall.ersteZeileBeginnt)))
        << zeileText(zeilen[0]).toStdString();
    QString text;
    for (const QString& hinweis : katalog.hinweise) text += hinweis;
    if (fall.hinweis) {
        EXPECT_TRUE(text.contains(QString::fromUtf8(fall.hinweis))) << text.toStdString();
    } else {
        EXPECT_EQ(text, QString());
    }
    if (fall.memos < 0) return;
    int memos = 0;
    for (const Zeile& zeile : zeilen)
        for (size_t i = 0; i < zeile.size(); ++i)
            memos += katalog.tabellen[0].felder[i].typ == dao::dbMemo && !zeile[i].istNull();
    EXPECT_EQ(memos, fall.memos);
}

INSTANTIATE_TEST_SUITE_P(
    Alle, DbaseProbe,
    testing::Values(
        Tabellenfall{"dbase_03", nullptr, 14, 31, "0507121|CMP|circular"},
        Tabellenfall{"dbase_83", "dbt", 67, 15, "87|2|0|0|87|1|Assorted Petits Fours", 67},
        Tabellenfall{"dbase_83_missing_memo", nullptr, 67, 15, "87|2|0|0|87|1|Assorted", 0,
                     "Die Memodatei fehlt"},
        Tabellenfall{"dbase_8b", "dbt", 10, 6, "One|1|01.01.1970|Wahr|1,23456789012346|First memo\r\n", 9},
        Tabellenfall{"dbase_31", nullptr, 77, 10, "1|Chai|1|1|10 boxes x 20 bags|18|39|0|10|Falsch"},
        Tabellenfall{"cp1251", nullptr, 4, 2, "1|амбулаторно-поликлиническое"},
        Tabellenfall{"mazovia", nullptr, 2, 2, "2020-01-04|English", -1, "Zeichensatz ist unbekannt"},
        Tabellenfall{"memotest", "FPT", 2, 3, "Alice|01.03.1987|Alice memo", 2},
        Tabellenfall{"no_memofile", nullptr, 2, 3, "Alice|01.03.1987|-", 0, "Die Memodatei fehlt"},
        Tabellenfall{"people", nullptr, 2, 2, "Alice|01.03.1987"},
        Tabellenfall{"invalid_value", nullptr, 2, 2, "Alice|-"},
        Tabellenfall{"eigene/uml850", "dbt", 12, 9, "Müller|Hauptstraße 1|50000|Köln|-5|-100|Wahr|01.01.1960",
                     8},
        Tabellenfall{"eigene/uml850_0", "dbt", 12, 9,
                     "Müller|Hauptstraße 1|50000|Köln|-5|-100|Wahr|01.01.1960", 8},
        Tabellenfall{"eigene/uml1252", "dbt", 12, 9,
                     "Müller|Hauptstraße 1|50000|Köln|-5|-100|Wahr|01.01.1960", 8},
        Tabellenfall{"eigene/uml125_0", "dbt", 12, 9,
                     "Müller|Hauptstraße 1|50000|Köln|-5|-100|Wahr|01.01.1960", 8},
        Tabellenfall{"eigene/k_anzahl", "dbt", 12, 9, "Müller", 8, "nur 12 von 4000000000 Datensätzen"},
        Tabellenfall{"eigene/k_kopf", "dbt", 12, 9, "Müller", 8, "Kopflänge ist falsch"},
        Tabellenfall{"eigene/k_satz", "dbt", 12, 9, "Müller", 8, "Satzlänge ist falsch"},
        Tabellenfall{"eigene/k_kurz", "dbt", 4, 9, "Müller", -1, "nur 4 von 12 Datensätzen"},
        Tabellenfall{"eigene/k_memonr", "dbt", 12, 9, "Müller", 7},
        Tabellenfall{"eigene/k_memolg", "dbt", 12, 9, "Müller", 8}),
    [](const auto& i) {
        return QString(QString::fromLatin1(i.param.datei))
            .replace(QRegularExpression("[^A-Za-z0-9]"), "_")
            .toStdString();
    });

TEST_F(DbaseProben, ZuAlteTabelleWirdMitGrundAbgelehnt) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_02.dbf"));
    holen(QStringLiteral("dbase_02.dbf"), QStringLiteral("ALT.dbf"));
    QString text;
    EXPECT_EQ(fehlerVon([&] { oeffnen(); }, &text), kDateifehler);
    EXPECT_TRUE(text.contains(QStringLiteral("ALT.dbf"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("zu alt"))) << text.toStdString();
}

TEST_F(DbaseProben, DoppelterFeldnameWirdUnterscheidbar) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_03.dbf"));
    holen(QStringLiteral("dbase_03.dbf"), QStringLiteral("A.dbf"));
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Katalog katalog = datei.katalogLesen();
    const std::vector<FeldDef>& felder = katalog.tabellen[0].felder;
    EXPECT_EQ(felder.front().name, QStringLiteral("Point_ID"));
    EXPECT_EQ(felder.back().name, QStringLiteral("Point_ID_1"));
}

TEST_F(DbaseProben, UnlesbareWerteWerdenGezaehltUndGenannt) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("invalid_value.dbf"));
    holen(QStringLiteral("invalid_value.dbf"), QStringLiteral("A.dbf"));
    dbase::DbaseOrdner datei(ordner.path());
    alleZeilen(datei, QStringLiteral("A"));
    alleZeilen(datei, QStringLiteral("A"));
    const engine::Hinweise hinweise =
        datei.anwenden({anlegen(tabelle(QStringLiteral("B"), {feld(QStringLiteral("X"), dao::dbLong)}), {})});
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_EQ(hinweise[0],
              QStringLiteral("Tabelle 'A': 1 Wert ist im Feld 'BIRTHDATE' nicht lesbar und leer geblieben."));
}

TEST_F(DbaseProben, ZweiterMemotextUndSeinEnde) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_8b.dbf"));
    holen(QStringLiteral("dbase_8b.dbf"), QStringLiteral("A.dbf"));
    holen(QStringLiteral("dbase_8b.dbt"), QStringLiteral("A.DBT"));
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(spalte(alleZeilen(datei, QStringLiteral("a")), 5)[1], QStringLiteral("Second memo"));
}

// --- every cell against dbfread
// ----------------------------------------------------------------------------------

bool gleich(const Wert& eigen, const QJsonValue& fremd) {
    switch (eigen.art()) {
        case Wert::Art::Null:
            return fremd.isNull() || fremd.toString() == QString();
        case Wert::Art::Text:
            return eigen.text() == fremd.toString();
        case Wert::Art::Wahrheit:
            // A Boolean that was never set: None there, False here.
            return fremd.isNull() ? !eigen.wahrheit() : eigen.wahrheit() == fremd.toBool();
        case Wert::Art::DatumZeit:
            return QDate(1899, 12, 30).addDays(qint64(eigen.datumZeit().tage)).toString(Qt::ISODate) ==
                   fremd.toString();
        default:
            return fremd.isDouble() &&
                   std::abs(eigen.alsZahl() - fremd.toDouble()) <= 1e-9 * std::abs(eigen.alsZahl());
    }
}

struct Fremdfall {
    const char* datei;
    const char* memo;
    const char* seite;
};

void PrintTo(const Fremdfall& fall, std::ostream* aus) {
    *aus << fall.datei;
}

class DbaseFremd : public DbaseTest, public testing::WithParamInterface<Fremdfall> {};

TEST_P(DbaseFremd, ZelleFuerZelleWieDbfread) {
    const QString name = QString::fromLatin1(GetParam().datei);
    PROBE_ODER_UEBERSPRINGEN(name + QStringLiteral(".dbf"));
    holen(name + QStringLiteral(".dbf"), QStringLiteral("PROBE.dbf"));
    if (GetParam().memo)
        holen(name + u'.' + QString::fromLatin1(GetParam().memo),
              QStringLiteral("PROBE.") + QString::fromLatin1(GetParam().memo));
    const QJsonArray fremd =
        dbfread(pfad(QStringLiteral("PROBE.dbf")), QString::fromLatin1(GetParam().seite))["zeilen"].toArray();
    dbase::DbaseOrdner datei(ordner.path());
    const std::vector<Zeile> zeilen = alleZeilen(datei, QStringLiteral("PROBE"));
    ASSERT_EQ(fremd.size(), qsizetype(zeilen.size()));
    const engine::Katalog katalog = datei.katalogLesen();
    for (size_t i = 0; i < zeilen.size(); ++i)
        for (size_t k = 0; k < zeilen[i].size(); ++k) {
            const QJsonArray fremdeZeile = fremd[qsizetype(i)].toArray();
            // dbfread folds fields of one name into one.
            if (name == QStringLiteral("dbase_03") && (k == 0 || k + 1 == zeilen[i].size())) continue;
            // It reads the filler behind a memo of dBase IV as text.
            if (name == QStringLiteral("dbase_8b") && katalog.tabellen[0].felder[k].typ == dao::dbMemo)
                continue;
            EXPECT_TRUE(gleich(zeilen[i][k], fremdeZeile[qsizetype(k)]))
                << i << "/" << k << ": " << zeilen[i][k].alsText().toStdString() << " / "
                << fremdeZeile[qsizetype(k)].toVariant().toString().toStdString();
        }
}

INSTANTIATE_TEST_SUITE_P(
    Alle, DbaseFremd,
    testing::Values(Fremdfall{"dbase_03", nullptr, ""}, Fremdfall{"dbase_83", "dbt", "cp850"},
                    Fremdfall{"dbase_8b", "dbt", ""}, Fremdfall{"dbase_31", nullptr, ""},
                    Fremdfall{"cp1251", nullptr, ""}, Fremdfall{"memotest", "FPT", ""},
                    Fremdfall{"people", nullptr, ""}, Fremdfall{"eigene/uml850", "dbt", ""},
                    Fremdfall{"eigene/uml850_0", "dbt", "cp850"}, Fremdfall{"eigene/uml1252", "dbt", ""},
                    Fremdfall{"eigene/uml125_0", "dbt", "cp1252"}),
    [](const auto& i) {
        return QString(QString::fromLatin1(i.param.datei))
            .replace(QRegularExpression("[^A-Za-z0-9]"), "_")
            .toStdString();
    });

}  // namespace
