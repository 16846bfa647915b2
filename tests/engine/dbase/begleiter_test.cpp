// Files that go with a table: indexes, code pages, memos.
#include "dbasebank.h"

namespace {

using namespace dbasebank;
using engine::TabelleLoeschen;
using engine::TabelleUmbenennen;

const QString kA = QStringLiteral("A");
const QString kB = QStringLiteral("B");

class DbaseBegleiter : public DbaseTest {
  protected:
    void mitIndexen() {
        kunden(kA);
        QByteArray bytes = inhalt(pfad(QStringLiteral("A.dbf")));
        bytes[28] = 1;
        schreiben(pfad(QStringLiteral("A.dbf")), bytes);
        schreiben(pfad(QStringLiteral("A.MDX")), "mdx");
        schreiben(pfad(QStringLiteral("A.inf")),
                  "[dBase III]\r\nNDX1=NAME.NDX\r\nNDX2=ORT.NDX\r\nNDX3=FEHLT.NDX\r\n");
        schreiben(pfad(QStringLiteral("ORT.NDX")), "ndx");
        schreiben(pfad(QStringLiteral("name.ndx")), "ndx");
        schreiben(pfad(QStringLiteral("fremd.ndx")), "ndx");
        kunden(kB);
        schreiben(pfad(QStringLiteral("B.inf")), "[dBase III]\r\nNDX1=ORT.NDX\r\n");
    }
};

TEST_F(DbaseBegleiter, LoeschenNimmtDieIndexeMitUndNenntSie) {
    mitIndexen();
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Hinweise hinweise = datei.anwenden({TabelleLoeschen{kA}});
    EXPECT_EQ(dateien(), (QStringList{"B.dbf", "B.inf", "ORT.NDX", "fremd.ndx"}));
    ASSERT_EQ(hinweise.size(), 1u);
    for (const char* name : {"A.MDX", "A.inf", "name.ndx"})
        EXPECT_TRUE(hinweise[0].contains(QString::fromLatin1(name))) << hinweise[0].toStdString();
    EXPECT_FALSE(hinweise[0].contains(QStringLiteral("ORT.NDX")));
}

TEST_F(DbaseBegleiter, UmbenennenLoestDenIndexvermerk) {
    mitIndexen();
    schreiben(pfad(QStringLiteral("A.cpg")), "850");
    const QByteArray vorher = inhalt(pfad(QStringLiteral("A.dbf")));
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Hinweise hinweise = datei.anwenden({TabelleUmbenennen{kA, QStringLiteral("NEU")}});
    EXPECT_EQ(dateien(), (QStringList{"B.dbf", "B.inf", "NEU.cpg", "NEU.dbf", "ORT.NDX", "fremd.ndx"}));
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("A.MDX"))) << hinweise[0].toStdString();
    QByteArray erwartet = vorher;
    erwartet[28] = 0;
    EXPECT_EQ(inhalt(pfad(QStringLiteral("NEU.dbf"))), erwartet);
    EXPECT_EQ(inhalt(pfad(QStringLiteral("NEU.cpg"))), "850");
}

TEST_F(DbaseBegleiter, UeberschreibenLaesstDieIndexeNichtLiegen) {
    mitIndexen();
    dbase::DbaseOrdner datei(ordner.path());
    datei.anwenden({TabelleLoeschen{kA}, anlegen(tabelle(kA, {feld(QStringLiteral("X"), dao::dbLong)}), {})});
    EXPECT_EQ(dateien(), (QStringList{"A.dbf", "B.dbf", "B.inf", "ORT.NDX", "fremd.ndx"}));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("A.dbf")))[28], 0);
}

TEST_F(DbaseBegleiter, IndexeEinerNeuenTabelleWerdenGenannt) {
    TabellenDef def = tabelle(kA, {feld(QStringLiteral("X"), dao::dbLong)});
    engine::IndexDef index;
    index.name = QStringLiteral("PrimaryKey");
    def.indexe = {index};
    dbase::DbaseOrdner datei(ordner.path());
    const engine::Hinweise hinweise = datei.anwenden({anlegen(def, {})});
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("PrimaryKey")));
    EXPECT_TRUE(datei.katalogLesen().tabellen[0].indexe.empty());
}

TEST_F(DbaseBegleiter, UmbenannteTabelleVonDbaseDrei) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_83.dbt"));
    holen(QStringLiteral("dbase_83.dbf"), QStringLiteral("A.DBF"));
    holen(QStringLiteral("dbase_83.dbt"), QStringLiteral("a.DBT"));
    const QByteArray memo = inhalt(pfad(QStringLiteral("a.DBT")));
    dbase::DbaseOrdner datei(ordner.path());
    const std::vector<Zeile> vorher = alleZeilen(datei, kA);
    datei.anwenden({TabelleUmbenennen{kA, kB}});
    EXPECT_EQ(dateien(), (QStringList{"B.DBF", "B.DBT"}));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.DBT"))), memo);
    EXPECT_EQ(alleZeilen(datei, kB), vorher);
}

}  // namespace
