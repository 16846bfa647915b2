// Databases of Access 97: written, read back by mdbtools, encoded, with a password, at the format's limits.
#include <QTemporaryDir>

#include "engine/jet/kopf.h"
#include "engine/jet/schluessel.h"
#include "engine/jet/tdef.h"
#include "mdbschreiben.h"

namespace {

using namespace mdbschreiben;

class Access97 : public testing::Test {
  protected:
    void SetUp() override {
        if (!QFile::exists(proben::pfad(u"jet3-typen.mdb"_qs))) GTEST_SKIP() << "Probe fehlt: jet3-typen.mdb";
        kopieren(u"jet3-typen.mdb"_qs);
    }
    void kopieren(const QString& name) { schreiben(proben::bytes(name)); }
    void schreiben(const QByteArray& bytes) {
        QFile datei(pfad_);
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        ASSERT_EQ(datei.write(bytes), bytes.size());
    }
    qint64 zeilenLautMdbcount(const QString& tabelle) {
        return mdbtools(u"mdb-count"_qs, {pfad_, tabelle}).trimmed().toLongLong();
    }

    QTemporaryDir ordner_;
    QString pfad_ = ordner_.filePath(u"alt.mdb"_qs);
};

TEST_F(Access97, AlleFeldartenKommenBeiMdbtoolsAn) {
    TabellenDef def;
    def.name = u"Alle Arten"_qs;
    def.felder = {feld(u"Ja"_qs, dao::dbBoolean),     feld(u"Byte"_qs, dao::dbByte),
                  feld(u"Kurz"_qs, dao::dbInteger),   feld(u"Lang"_qs, dao::dbLong),
                  feld(u"Geld"_qs, dao::dbCurrency),  feld(u"Einfach"_qs, dao::dbSingle),
                  feld(u"Doppelt"_qs, dao::dbDouble), feld(u"Tag"_qs, dao::dbDate),
                  feld(u"Roh"_qs, dao::dbBinary, 20), feld(u"Straße"_qs, dao::dbText, 255),
                  feld(u"Notiz"_qs, dao::dbMemo)};
    const QString lang(30000, u'ä');
    const QString einSatz(300, u'x');
    const std::vector<Zeile> zeilen{
        {Wert(true), Wert(200), Wert(-12345), Wert(-2000000000), Wert(::Waehrung{-1234567}), Wert(0.5),
         Wert(-1e100), Wert(::DatumZeit{37256.5}), Wert(QByteArray("\x01\x02\xff", 3)),
         Wert(u"Größe, \"süß\" 5 €"), Wert(lang)},
        {Wert(false), Wert::null(), Wert::null(), Wert::null(), Wert::null(), Wert::null(), Wert::null(),
         Wert::null(), Wert::null(), Wert::null(), Wert::null()},
        {Wert(true), Wert(0), Wert(0), Wert(0), Wert(::Waehrung{0}), Wert(0.0), Wert(0.0),
         Wert(::DatumZeit{0.25}), Wert(QByteArray(20, 'z')), Wert(QString(255, u'ß')), Wert(einSatz)}};
    {
        jet::MdbDatei datei(pfad_, QString());
        EXPECT_TRUE(datei.anwenden({anlegen(def, zeilen)}).empty());
        EXPECT_EQ(alleZeilen(datei, def.name), zeilen);
    }
    ohneMangel(pfad_);
    EXPECT_EQ(mdbtools(u"mdb-ver"_qs, {pfad_}).trimmed(), u"JET3"_qs);
    const QStringList fremd = zeilenLautMdbtools(pfad_, def.name);
    ASSERT_EQ(fremd.size(), 3);
    EXPECT_EQ(
        fremd[0].toStdString(),
        "1|200|-12345|-2000000000|-123.4567|0.5|-1e+100|2001-12-31 12:00:00|0102FF|Größe, \"süß\" 5 €|" +
            lang.toStdString());
    EXPECT_EQ(fremd[1].toStdString(), "0|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL");
    EXPECT_TRUE(fremd[2].endsWith(u"|"_qs + QString(255, u'ß') + u"|"_qs + einSatz))
        << fremd[2].toStdString();
}

// Offsets are one byte each: rows of more than 256 bytes need the jump table, one entry for each 256 bytes.
TEST_F(Access97, ZeilenJederLaengeBisZurGrenze) {
    TabellenDef def;
    def.name = u"Lang"_qs;
    constexpr int kFelder = 7;
    for (int i = 0; i < kFelder; ++i) def.felder.push_back(feld(u"F%1"_qs.arg(i), dao::dbText, 255));
    std::vector<Zeile> zeilen;
    for (int laenge = 0; laenge <= kFelder * 255; ++laenge) {
        Zeile zeile;
        for (int i = 0; i < kFelder; ++i)
            zeile.push_back(Wert(QString(std::clamp(laenge - i * 255, 0, 255), QChar(u'a' + i))));
        // The empty texts of a short row alternate with Null.
        for (int i = laenge % 2; i < kFelder; i += 2)
            if (zeile[size_t(i)].text().isEmpty()) zeile[size_t(i)] = Wert::null();
        zeilen.push_back(zeile);
    }
    jet::MdbDatei datei(pfad_, QString());
    for (FeldDef& f : def.felder) f.leerErlaubt = true;
    datei.anwenden({anlegen(def, zeilen)});
    EXPECT_EQ(alleZeilen(datei, def.name), zeilen);
    ohneMangel(pfad_);
    // mdbtools shows an empty text as Null.
    QStringList erwartet;
    for (const Zeile& zeile : zeilen) {
        QStringList zellen;
        for (const Wert& wert : zeile) zellen << (wert.alsText().isEmpty() ? u"NULL"_qs : wert.text());
        erwartet << zellen.join(u'|');
    }
    const QStringList fremd = zeilenLautMdbtools(pfad_, def.name);
    ASSERT_EQ(fremd.size(), erwartet.size());
    for (qsizetype i = 0; i < fremd.size(); ++i) EXPECT_EQ(fremd[i].toStdString(), erwartet[i].toStdString());
}

TEST_F(Access97, ZuLangerDatensatzWirdVorherGesagt) {
    TabellenDef def;
    def.name = u"Lang"_qs;
    for (int i = 0; i < 8; ++i) def.felder.push_back(feld(u"F%1"_qs.arg(i), dao::dbText, 255));
    const QByteArray vorher = inhalt(pfad_);
    jet::MdbDatei datei(pfad_, QString());
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({anlegen(def, {Zeile(8, Wert(QString(255, u'x')))})}); }),
              kSystemgrenze);
    EXPECT_EQ(inhalt(pfad_), vorher);
}

TEST_F(Access97, ZeichenDieEsNichtGibtWerdenMitFeldGenannt) {
    const QByteArray vorher = inhalt(pfad_);
    jet::MdbDatei datei(pfad_, QString());
    QString meldung;
    EXPECT_EQ(fehlerVon(
                  [&] {
                      datei.anwenden({anlegen(kunden(), {{Wert(1), Wert(u"Łódź")}})});
                  },
                  &meldung),
              kUmwandlung);
    EXPECT_TRUE(meldung.contains(u"'Name'") && meldung.contains(u'Ł')) << meldung.toStdString();
    EXPECT_EQ(inhalt(pfad_), vorher);
}

TEST_F(Access97, FreieTabellenUndFeldnamenInWindows1252) {
    TabellenDef def = kunden();
    def.name = u"Büro „Süd“ – 5 €"_qs;
    def.felder[1].name = u"Straße/Größe"_qs;
    def.indexe[1].felder[0].name = def.felder[1].name;
    jet::MdbDatei datei(pfad_, QString());
    datei.anwenden({anlegen(def, kundenzeilen(3))});
    EXPECT_TRUE(tabellenLautMdbtools(pfad_).contains(def.name));
    EXPECT_EQ(zeilenLautMdbtools(pfad_, def.name).size(), 3);
    ohneMangel(pfad_);
    def.name = u"Łódź"_qs;
    EXPECT_NE(fehlerVon([&] { datei.anwenden({anlegen(def, kundenzeilen(3))}); }), 0);
}

// Text keys of many rows: several levels of index pages, whose prefix length is one byte.
TEST_F(Access97, VieleDatensaetzeMitTextindex) {
    std::vector<Zeile> zeilen;
    for (int i = 1; i <= 30000; ++i)
        zeilen.push_back({Wert(i), Wert(u"Großhändler Müller-Straße %1"_qs.arg(i * 7919 % 30011))});
    {
        jet::MdbDatei datei(pfad_, QString());
        EXPECT_TRUE(datei.anwenden({anlegen(kunden(), zeilen)}).empty());
    }
    ohneMangel(pfad_);
    EXPECT_EQ(zeilenLautMdbcount(u"Kunden"_qs), 30000);
}

TEST_F(Access97, HinzufuegenUmbenennenLoeschenGibtDenPlatzZurueck) {
    const QStringList fremde = tabellenLautMdbtools(pfad_);
    jet::MdbDatei datei(pfad_, QString());
    datei.anwenden({anlegen(kunden(), kundenzeilen(5000))});
    const qint64 groesse = inhalt(pfad_).size();
    for (int i = 0; i < 3; ++i) {
        datei.anwenden({engine::TabelleUmbenennen{u"Kunden"_qs, u"Kunden alt"_qs}});
        EXPECT_EQ(zeilenLautMdbtools(pfad_, u"Kunden alt"_qs).size(), 5000);
        datei.anwenden({engine::TabelleLoeschen{u"Kunden alt"_qs}});
        EXPECT_EQ(tabellenLautMdbtools(pfad_), fremde);
        ohneMangel(pfad_);
        datei.anwenden({anlegen(kunden(), kundenzeilen(5000))});
    }
    EXPECT_LE(inhalt(pfad_).size(), groesse + 8 * 2048);
    ohneMangel(pfad_);
}

// The map of free pages outgrows its page at 28 MB and moves to pages of its own.
TEST_F(Access97, MehrAlsAchtundzwanzigMegabyte) {
    TabellenDef def;
    def.name = u"Groß"_qs;
    for (int i = 0; i < 5; ++i) def.felder.push_back(feld(u"F%1"_qs.arg(i), dao::dbText, 255));
    constexpr int kZeilen = 32000;
    const std::vector<Zeile> zeilen(kZeilen, Zeile(5, Wert(QString(200, u'ü'))));
    jet::MdbDatei datei(pfad_, QString());
    datei.anwenden({anlegen(def, zeilen)});
    EXPECT_GT(QFile(pfad_).size(), 28 << 20);
    ohneMangel(pfad_);
    EXPECT_EQ(zeilenLautMdbcount(def.name), kZeilen);
    datei.anwenden({engine::TabelleLoeschen{def.name}, anlegen(kunden(), kundenzeilen(100))});
    EXPECT_EQ(zeilenLautMdbtools(pfad_, u"Kunden"_qs).size(), 100);
    ohneMangel(pfad_);
}

TEST_F(Access97, KodierteDateiBleibtKodiert) {
    kopieren(u"jet3-kodiert.mdb"_qs);
    const QStringList vorher = zeilenLautMdbtools(pfad_, u"Table1"_qs);
    jet::MdbDatei datei(pfad_, QString());
    datei.anwenden({anlegen(kunden(), kundenzeilen(2000))});
    ohneMangel(pfad_);
    EXPECT_EQ(zeilenLautMdbtools(pfad_, u"Table1"_qs), vorher);
    EXPECT_EQ(zeilenLautMdbtools(pfad_, u"Kunden"_qs).size(), 2000);
    EXPECT_FALSE(inhalt(pfad_).contains("Kunden"));
    EXPECT_FALSE(inhalt(pfad_).contains("ller 7"));
}

TEST_F(Access97, PasswortWirdGeprueftUndBleibt) {
    QByteArray bytes = inhalt(pfad_);
    const QByteArray klar = jet::kopfEntmaskieren(jet::kJet3, bytes);
    const QByteArray passwort = "Geheim-Ü";  // one byte a character in the file
    QByteArray mitPasswort = klar;
    const QByteArray roh = QString::fromUtf8(passwort).toLatin1();
    mitPasswort.replace(0x42, roh.size(), roh);
    bytes.replace(0, mitPasswort.size(), jet::kopfEntmaskieren(jet::kJet3, mitPasswort));
    schreiben(bytes);
    for (const QString& falsch : {QString(), u"geheim-ü"_qs, u"Geheim"_qs})
        EXPECT_EQ(fehlerVon([&] { jet::MdbDatei datei(pfad_, falsch); }), kPasswortFalsch)
            << falsch.toStdString();
    {
        jet::MdbDatei datei(pfad_, QString::fromUtf8(passwort));
        datei.anwenden({anlegen(kunden(), kundenzeilen(3))});
        EXPECT_EQ(alleZeilen(datei, u"Kunden"_qs), kundenzeilen(3));
    }
    EXPECT_EQ(inhalt(pfad_).left(2048), bytes.left(2048));
    EXPECT_EQ(fehlerVon([&] { jet::MdbDatei datei(pfad_, QString()); }), kPasswortFalsch);
}

}  // namespace
