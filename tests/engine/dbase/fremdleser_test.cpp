// Tables that the program wrote, read by others: dbfread, dbview, dbfdump.
#include "dbasebank.h"
#include "engine/dbase/merkmal.h"

namespace {

using namespace dbasebank;

const QString kA = QStringLiteral("A");

struct Schrift {
    int stufe;
    int seite;
    quint8 sprachbyte;
};

void PrintTo(const Schrift& schrift, std::ostream* aus) {
    *aus << schrift.stufe << "_" << schrift.seite;
}

class DbaseFremdleser : public DbaseTest, public testing::WithParamInterface<Schrift> {
  protected:
    // A column that says how the table is written, as if it came from such a one.
    static FeldDef kopiert(FeldDef f, char art, int laenge, int stellen = 0) {
        dbase::Merkmal m;
        m.art = art;
        m.laenge = laenge;
        m.stellen = stellen;
        m.feldtyp = f.typ;
        m.sprachbyte = GetParam().sprachbyte;
        m.seite = {GetParam().seite, dbase::Seitenwahl::Herkunft::Sprachbyte};
        m.stufe = GetParam().stufe;
        f.formatEigenes = dbase::merkmalSchreiben(m);
        return f;
    }

    static Zeile zeile(int i) {
        if (i % 10 == 9) return Zeile(7, Wert::null());
        // A memo of dBase IV whose length and prefix fill a block is one that dbfread misreads.
        int laenge = 20 + i * 31 % 3000;
        if (GetParam().stufe == 4 && (laenge + 8) % 512 == 0) ++laenge;
        return {Wert(QStringLiteral("Größe %1 äöüÄÖÜß").arg(i)),
                Wert(i % 3 == 0 ? -1234.5 : i * 0.25),
                Wert(qint64(i) * 100003 - 2147483648),
                Wert(i % 2 == 0),
                Wert(DatumZeit{double(i * 71)}),
                Wert(QStringLiteral("Straße ").repeated(laenge / 7 + 1).left(laenge)),
                i % 4 == 0 ? Wert::null() : Wert(QStringLiteral("  vorn"))};
    }

    void SetUp() override {
        TabellenDef def = tabelle(
            kA,
            {kopiert(feld(QStringLiteral("NAME"), dao::dbText, 40), 'C', 40),
             kopiert(feld(QStringLiteral("WERT"), dao::dbDouble), GetParam().stufe == 3 ? 'N' : 'F', 12, 2),
             feld(QStringLiteral("NR"), dao::dbLong), feld(QStringLiteral("JA"), dao::dbBoolean),
             feld(QStringLiteral("TAG"), dao::dbDate), feld(QStringLiteral("TEXT"), dao::dbMemo),
             feld(QStringLiteral("ORT"), dao::dbText, 10)});
        for (int i = 0; i < 300; ++i) zeilen.push_back(zeile(i));
        schreibeTabelle(def, zeilen);
        datei = pfad(QStringLiteral("A.dbf"));
    }

    static QString tag(const Wert& wert) {
        return wert.istNull() ? QString()
                              : QDate(1899, 12, 30)
                                    .addDays(qint64(wert.datumZeit().tage))
                                    .toString(QStringLiteral("yyyyMMdd"));
    }

    std::vector<Zeile> zeilen;
    QString datei;
};

TEST_P(DbaseFremdleser, EigenerLeser) {
    dbase::DbaseOrdner offen(ordner.path());
    const std::vector<Zeile> gelesen = alleZeilen(offen, kA);
    ASSERT_EQ(gelesen.size(), zeilen.size());
    for (size_t i = 0; i < zeilen.size(); ++i) {
        Zeile erwartet = zeilen[i];
        for (Wert& wert : erwartet)
            if (wert.art() == Wert::Art::Ganzzahl) wert = Wert(double(wert.ganzzahl()));
        // There is no Boolean without a value.
        if (erwartet[3].istNull()) erwartet[3] = Wert(false);
        ASSERT_EQ(gelesen[i], erwartet) << i;
    }
}

TEST_P(DbaseFremdleser, Dbfread) {
    const QJsonObject fremd = dbfread(datei);
    const QJsonArray alle = fremd["zeilen"].toArray();
    ASSERT_EQ(alle.size(), qsizetype(zeilen.size()));
    for (qsizetype i = 0; i < alle.size(); ++i) {
        const QJsonArray dort = alle[i].toArray();
        const Zeile& hier = zeilen[size_t(i)];
        EXPECT_EQ(dort[0].toString(), hier[0].istNull() ? QString() : hier[0].text()) << i;
        EXPECT_EQ(dort[1].isNull(), hier[1].istNull()) << i;
        EXPECT_EQ(dort[1].toDouble(), hier[1].istNull() ? 0 : hier[1].gleitzahl()) << i;
        EXPECT_EQ(dort[2].toDouble(), hier[2].istNull() ? 0 : double(hier[2].ganzzahl())) << i;
        EXPECT_EQ(dort[3].isNull(), hier[3].istNull()) << i;
        EXPECT_EQ(dort[3].toBool(), !hier[3].istNull() && hier[3].wahrheit()) << i;
        EXPECT_EQ(dort[4].toString().remove(u'-'), tag(hier[4])) << i;
        EXPECT_EQ(dort[5].toString(), hier[5].istNull() ? QString() : hier[5].text()) << i;
        EXPECT_EQ(dort[6].toString(), hier[6].istNull() ? QString() : hier[6].text()) << i;
    }
}

// shapelib shows a memo's block number and the code page's own bytes.
TEST_P(DbaseFremdleser, Dbfdump) {
    const QList<QByteArray> dort =
        aufrufen(QStringLiteral("dbfdump"), {QStringLiteral("-r"), datei}).split('\n');
    const dbase::Zeichensatz satz(GetParam().seite);
    ASSERT_GE(dort.size(), qsizetype(zeilen.size()) + 1);
    for (size_t i = 0; i < zeilen.size(); ++i) {
        const QByteArray zeile = dort[qsizetype(i) + 1];
        const Zeile& hier = zeilen[i];
        QByteArray name;
        qsizetype fehlend = 0;
        satz.anhaengen(hier[0].istNull() ? QString() : hier[0].text(), name, fehlend);
        EXPECT_TRUE(zeile.startsWith(name)) << i << zeile.constData();
        if (!hier[2].istNull()) {
            EXPECT_TRUE(zeile.contains(QByteArray::number(hier[2].ganzzahl()))) << i;
        }
        if (!hier[4].istNull()) {
            EXPECT_TRUE(zeile.contains(tag(hier[4]).toLatin1())) << i << zeile.constData();
        }
    }
}

TEST_P(DbaseFremdleser, Dbview) {
    if (GetParam().stufe == 4) GTEST_SKIP() << "dbview kennt die Memos von dBase IV nicht.";
    const QByteArray dort = aufrufen(
        QStringLiteral("dbview"), {QStringLiteral("-b"), QStringLiteral("-d"), QStringLiteral("|"), datei});
    const QList<QByteArray> alle = dort.split('\n');
    const dbase::Zeichensatz satz(GetParam().seite);
    ASSERT_GE(alle.size(), qsizetype(zeilen.size()));
    for (size_t i = 0; i < zeilen.size(); ++i) {
        const QList<QByteArray> teile = alle[qsizetype(i)].split('|');
        ASSERT_GE(teile.size(), 7) << alle[qsizetype(i)].constData();
        QByteArray name;
        qsizetype fehlend = 0;
        satz.anhaengen(zeilen[i][0].istNull() ? QString() : zeilen[i][0].text(), name, fehlend);
        EXPECT_EQ(teile[0].trimmed(), name) << i;
        if (!zeilen[i][2].istNull()) {
            EXPECT_EQ(teile[2].trimmed().toLongLong(), zeilen[i][2].ganzzahl()) << i;
        }
        EXPECT_EQ(QString::fromLatin1(teile[4].trimmed()), tag(zeilen[i][4])) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Alle, DbaseFremdleser,
                         testing::Values(Schrift{3, 850, 0x02}, Schrift{3, 1252, 0x03}, Schrift{4, 850, 0x02},
                                         Schrift{4, 1252, 0x03}, Schrift{3, 437, 0x01}),
                         testing::PrintToStringParamName());

class DbaseMemolaengen : public DbaseTest, public testing::WithParamInterface<int> {};

TEST_P(DbaseMemolaengen, AnDenGrenzenDerBloecke) {
    dbase::Merkmal m;
    m.art = 'M';
    m.laenge = 10;
    m.feldtyp = dao::dbMemo;
    m.stufe = GetParam();
    m.sprachbyte = 0x02;
    m.seite = {850, dbase::Seitenwahl::Herkunft::Sprachbyte};
    FeldDef memo = feld(QStringLiteral("TEXT"), dao::dbMemo);
    memo.formatEigenes = dbase::merkmalSchreiben(m);
    std::vector<Zeile> zeilen;
    for (const int laenge :
         {1, 7, 8, 9, 502, 503, 504, 505, 509, 510, 511, 512, 513, 1022, 1023, 1024, 1025, 5000, 200000})
        zeilen.push_back({Wert(QString(laenge, QChar(u'a' + laenge % 26)))});
    schreibeTabelle(tabelle(kA, {memo}), zeilen);
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(alleZeilen(datei, kA), zeilen);
    const QJsonArray fremd = dbfread(pfad(QStringLiteral("A.dbf")))["zeilen"].toArray();
    ASSERT_EQ(fremd.size(), qsizetype(zeilen.size()));
    for (size_t i = 0; i < zeilen.size(); ++i) {
        if (GetParam() == 4 && (zeilen[i][0].text().size() + 8) % 512 == 0) continue;
        EXPECT_EQ(fremd[qsizetype(i)].toArray()[0].toString(), zeilen[i][0].text())
            << zeilen[i][0].text().size();
    }
    EXPECT_EQ(inhalt(pfad(QStringLiteral("A.dbt"))).size() % 512, 0);
}

INSTANTIATE_TEST_SUITE_P(Stufen, DbaseMemolaengen, testing::Values(3, 4));

}  // namespace
