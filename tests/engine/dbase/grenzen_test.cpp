// What is refused before the first byte, what is changed and told, and how a copied column is written.
#include <cmath>

#include "bauteile.h"
#include "dbasebank.h"
#include "engine/dbase/merkmal.h"

namespace {

using namespace dbasebank;
using engine::Aenderung;

const QString kA = QStringLiteral("A");
const QString kB = QStringLiteral("B");
const QString kX = QStringLiteral("X");

class DbaseGrenzen : public DbaseTest {
  protected:
    // Writes a table of one column; the failure's number and text, 0 when it went well.
    int versuch(const FeldDef& spalte, std::vector<Wert> werte) {
        std::vector<Zeile> zeilen;
        for (Wert& wert : werte) zeilen.push_back({std::move(wert)});
        return versuch(tabelle(kA, {spalte}), zeilen);
    }
    int versuch(const TabellenDef& def, const std::vector<Zeile>& zeilen) {
        dbase::DbaseOrdner datei(ordner.path());
        text.clear();
        hinweise.clear();
        const int nummer = fehlerVon([&] { hinweise = datei.anwenden({anlegen(def, zeilen)}); }, &text);
        if (nummer != 0) {
            EXPECT_TRUE(dateien().isEmpty()) << dateien().join(u' ').toStdString();
        }
        return nummer;
    }
    bool genannt(std::initializer_list<const char16_t*> worte) const {
        for (const char16_t* wort : worte)
            if (!text.contains(QString::fromUtf16(wort))) return false;
        return true;
    }
    // Letter, width, decimals of the first field in the file.
    QString form() const {
        const QByteArray bytes = inhalt(pfad(QStringLiteral("A.dbf")));
        return QStringLiteral("%1%2,%3")
            .arg(QChar::fromLatin1(bytes[32 + 11]))
            .arg(quint8(bytes[32 + 16]))
            .arg(quint8(bytes[32 + 17]));
    }
    void leeren() {
        for (const QString& name : dateien()) QFile::remove(pfad(name));
    }

    QString text;
    engine::Hinweise hinweise;
};

TEST_F(DbaseGrenzen, AbgelehntMitFeldUndZeile) {
    const FeldDef t5 = feld(kX, dao::dbText, 5);
    EXPECT_EQ(versuch(t5, {w(u"kurz"), w(u"zu lang")}), kFeldZuKlein);
    EXPECT_TRUE(genannt({u"'X'", u"Datensatz 2", u"zu lang"})) << text.toStdString();
    EXPECT_EQ(versuch(t5, {w(u"ok"), Wert::null(), w(u"5 €")}), kUmwandlung);
    EXPECT_TRUE(genannt({u"'X'", u"Datensatz 3", u"'€'", u"850"})) << text.toStdString();
    EXPECT_EQ(versuch(feld(kX, dao::dbMemo), {w(u"Čapek")}), kUmwandlung);
    EXPECT_TRUE(genannt({u"Datensatz 1", u"'Č'"})) << text.toStdString();
    EXPECT_EQ(versuch(feld(kX, dao::dbDate), {Wert(DatumZeit{-700000})}), kUmwandlung);
    EXPECT_EQ(versuch(feld(kX, dao::dbDouble), {Wert(1e15), Wert(1e-10)}), kFeldZuKlein);
    EXPECT_TRUE(genannt({u"1 und 2"})) << text.toStdString();
    EXPECT_EQ(versuch(feld(kX, dao::dbDouble), {Wert(1e25)}), kFeldZuKlein);
    EXPECT_EQ(versuch(feld(kX, dao::dbDouble), {Wert(std::nan(""))}), kUmwandlung);
    EXPECT_EQ(versuch(feld(kX, dao::dbCurrency), {Wert(Waehrung{std::numeric_limits<qint64>::min()})}),
              kFeldZuKlein);
    EXPECT_EQ(versuch(feld(kX, dao::dbLongBinary), {}), kSystemgrenze);
    EXPECT_EQ(versuch(feld(kX, dao::dbBinary, 10), {}), kSystemgrenze);
}

TEST_F(DbaseGrenzen, NeueFeldnamen) {
    const dbase::DbaseOrdner datei(ordner.path());
    for (const char16_t* gut : {u"Weg", u"HAUSNUMMER", u"Straße_2", u"ÄÖÜ"})
        EXPECT_EQ(fehlerVon([&] { datei.feldnamePruefen(QString::fromUtf16(gut)); }), 0);
    for (const char16_t* schlecht :
         {u"", u"Postleitzahl", u"2Weg", u"Weg Nr", u"Weg-Nr", u"Čapek", u"_Weg"}) {
        EXPECT_EQ(fehlerVon([&] { datei.feldnamePruefen(QString::fromUtf16(schlecht)); }, &text),
                  kUngueltigerName)
            << QString::fromUtf16(schlecht).toStdString();
        EXPECT_TRUE(genannt({u"10 Buchstaben"})) << text.toStdString();
    }
}

TEST_F(DbaseGrenzen, FelderUndSatzlaenge) {
    std::vector<FeldDef> felder;
    for (int i = 0; i < 256; ++i) felder.push_back(feld(QStringLiteral("F%1").arg(i), dao::dbByte));
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), kZuVieleFelder);
    felder.pop_back();
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), 0);
    leeren();
    for (FeldDef& f : felder) f = feld(f.name, dao::dbText, 128);
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), 0);  // 1 + 255 * 128 = 32641
    leeren();
    for (FeldDef& f : felder) f.groesse = 129;
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), kSystemgrenze);
    EXPECT_EQ(versuch(tabelle(kA, {}), {}), kZuVieleFelder);
}

TEST_F(DbaseGrenzen, GrenzenVonDbaseDreiGeltenFuerSeineTabellen) {
    dbase::Merkmal m;
    m.art = 'M';
    m.laenge = 10;
    m.feldtyp = dao::dbMemo;
    m.stufe = 3;
    FeldDef memo = feld(QStringLiteral("TEXT"), dao::dbMemo);
    memo.formatEigenes = dbase::merkmalSchreiben(m);
    std::vector<FeldDef> felder{memo};
    while (felder.size() < 129) felder.push_back(feld(QStringLiteral("F%1").arg(felder.size()), dao::dbByte));
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), kZuVieleFelder);
    felder.pop_back();
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), 0);
    EXPECT_EQ(quint8(inhalt(pfad(QStringLiteral("A.dbf")))[0]), 0x83);
    leeren();
    felder.resize(1);
    while (felder.size() < 17)
        felder.push_back(feld(QStringLiteral("F%1").arg(felder.size()), dao::dbText, 254));
    EXPECT_EQ(versuch(tabelle(kA, felder), {}), kSystemgrenze);
}

TEST_F(DbaseGrenzen, WasDieFormVerbietetWirdVorDenZeilenGesagt) {
    const auto frueh = [&](int felder, const FeldDef& muster) {
        std::vector<FeldDef> alle;
        for (int i = 0; i < felder; ++i) {
            alle.push_back(muster);
            alle.back().name = QStringLiteral("F%1").arg(i);
        }
        return fehlerVon([&] { dbase::DbaseOrdner(ordner.path()).tabellePruefen(tabelle(kA, alle)); }, &text);
    };
    EXPECT_EQ(frueh(255, feld(kX, dao::dbText, 128)), 0);
    EXPECT_EQ(frueh(256, feld(kX, dao::dbByte)), kZuVieleFelder);
    EXPECT_EQ(frueh(255, feld(kX, dao::dbText, 129)), kSystemgrenze);
    EXPECT_TRUE(genannt({u"'A'", u"32896", u"32767", u"Entfernen oder verkürzen"})) << text.toStdString();
    // They may all become memos.
    EXPECT_EQ(frueh(255, feld(kX, dao::dbText, 255)), 0);
    EXPECT_EQ(frueh(1, feld(kX, dao::dbLongBinary)), kSystemgrenze);
}

TEST_F(DbaseGrenzen, ZweiGigabyteWerdenVorDemSchreibenErkannt) {
    // Rows are counted, not stored: a source that gives the same row over and over.
    class Viele : public engine::Zeilenquelle {
      public:
        bool naechste(Zeile& zeile) override {
            zeile.assign(128, Wert::null());
            return ++zeilen_ <= 70000;
        }
        int zeilen_ = 0;
    };
    std::vector<FeldDef> felder;
    for (int i = 0; i < 128; ++i) felder.push_back(feld(QStringLiteral("F%1").arg(i), dao::dbText, 250));
    dbase::DbaseOrdner datei(ordner.path());
    const engine::TabelleAnlegen neu{tabelle(kA, felder), [] { return std::make_unique<Viele>(); }};
    EXPECT_EQ(fehlerVon([&] { datei.anwenden({neu}); }, &text), kSystemgrenze);
    EXPECT_TRUE(genannt({u"2 GB", u"70000"})) << text.toStdString();
    EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(DbaseGrenzen, WelchesFeldAusWelchemTyp) {
    const struct {
        int typ;
        int groesse;
        std::vector<Wert> werte;
        const char* form;
    } faelle[] = {
        {dao::dbBoolean, 0, {Wert(true)}, "L1,0"},
        {dao::dbByte, 0, {Wert(255)}, "N3,0"},
        {dao::dbInteger, 0, {Wert(-32768)}, "N6,0"},
        {dao::dbLong, 0, {Wert(qint64(-2147483648))}, "N11,0"},
        {dao::dbCurrency, 0, {Wert(Waehrung{12345})}, "N20,4"},
        {dao::dbSingle, 0, {Wert(1.5)}, "N20,5"},
        {dao::dbDouble, 0, {}, "N20,5"},
        {dao::dbDouble, 0, {Wert(-12345678901234.0)}, "N20,0"},
        {dao::dbDouble, 0, {Wert(0.12345678)}, "N20,8"},
        {dao::dbDouble, 0, {Wert(12345678901.0), Wert(0.1234567)}, "N20,7"},
        {dao::dbDate, 0, {Wert(DatumZeit{36000})}, "D8,0"},
        {dao::dbText, 30, {w(u"x")}, "C30,0"},
        {dao::dbText, 254, {w(u"x")}, "C254,0"},
        {dao::dbText, 255, {w(u"x")}, "C254,0"},
        {dao::dbText, 0, {w(u"x")}, "C254,0"},
        {dao::dbText, 255, {Wert(QString(255, u'x'))}, "M10,0"},
        {dao::dbMemo, 0, {w(u"x")}, "M10,0"},
        {dao::dbGUID, 0, {w(u"{00112233-4455-6677-8899-AABBCCDDEEFF}")}, "C38,0"},
        {dao::dbDecimal, 0, {Wert(Dezimal{true, 0, 12345678901234567890u, 2})}, "N20,2"},
    };
    for (const auto& fall : faelle) {
        leeren();
        EXPECT_EQ(versuch(feld(kX, fall.typ, fall.groesse), fall.werte),
                  fall.typ == dao::dbDecimal ? kFeldZuKlein : 0)
            << fall.form << text.toStdString();
        if (fall.typ != dao::dbDecimal) {
            EXPECT_EQ(form(), QString::fromLatin1(fall.form));
        }
    }
}

TEST_F(DbaseGrenzen, HinweiseAufWasWegfiel) {
    EXPECT_EQ(versuch(feld(kX, dao::dbDate), {Wert(DatumZeit{36000.25}), Wert(DatumZeit{36000.0})}), 0);
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("Weggefallene Uhrzeiten: 1.")));
    leeren();
    EXPECT_EQ(versuch(tabelle(kA, {feld(QStringLiteral("Ansprechpartner"), dao::dbText, 10),
                                   feld(QStringLiteral("Ansprechpartner 2"), dao::dbText, 10),
                                   feld(QStringLiteral("Ort"), dao::dbText, 10)}),
                      {}),
              0);
    ASSERT_EQ(hinweise.size(), 2u);
    EXPECT_TRUE(
        hinweise[1].contains(QStringLiteral("'Ansprechpartner 2' heißt in der dBase-Datei 'ANSPRECH_1'")))
        << hinweise[1].toStdString();
    dbase::DbaseOrdner datei(ordner.path());
    EXPECT_EQ(datei.katalogLesen().tabellen[0].felder[2].name, QStringLiteral("ORT"));
}

// --- copies
// ------------------------------------------------------------------------------------------------------

class DbaseKopie : public DbaseGrenzen {
  protected:
    // Copies a table as the program does: its columns, and `dazu` behind them.
    engine::Hinweise kopieren(const QString& von, const QString& nach, std::vector<FeldDef> dazu = {}) {
        dbase::DbaseOrdner datei(ordner.path());
        const engine::Katalog katalog = datei.katalogLesen();
        TabellenDef def = definition(katalog, von);
        def.name = nach;
        def.felder.insert(def.felder.end(), dazu.begin(), dazu.end());
        std::vector<Zeile> zeilen = alleZeilen(datei, von);
        for (Zeile& zeile : zeilen) zeile.resize(def.felder.size(), Wert::null());
        return datei.anwenden({anlegen(def, zeilen)});
    }
    // Header and fields without date and what belongs to the source's program.
    static QByteArray felderVon(const QByteArray& bytes) {
        QByteArray felder;
        for (qsizetype ab = 32; ab + 32 <= bytes.size() && bytes[ab] != 0x0D; ab += 32)
            felder += bytes.mid(ab, 11).split('\0')[0] + bytes.mid(ab + 11, 1) + bytes.mid(ab + 16, 2) + ';';
        return felder;
    }
};

TEST_F(DbaseKopie, SpaltenUndWerteBleibenWieSieWaren) {
    for (const char* probe : {"dbase_83", "dbase_8b", "eigene/uml850", "eigene/uml850_0", "eigene/uml1252",
                              "eigene/uml125_0", "people"}) {
        const QString name = QString::fromLatin1(probe);
        PROBE_ODER_UEBERSPRINGEN(name + QStringLiteral(".dbf"));
        leeren();
        holen(name + QStringLiteral(".dbf"), QStringLiteral("A.dbf"));
        holen(name + QStringLiteral(".dbt"), QStringLiteral("A.dbt"));
        kopieren(kA, kB);
        const QByteArray alt = inhalt(pfad(QStringLiteral("A.dbf")));
        const QByteArray neu = inhalt(pfad(QStringLiteral("B.dbf")));
        EXPECT_EQ(felderVon(neu), felderVon(alt)) << probe;
        EXPECT_EQ(neu[0], alt[0]) << probe;
        EXPECT_EQ(neu[29], alt[29]) << probe;
        dbase::DbaseOrdner datei(ordner.path());
        EXPECT_EQ(alleZeilen(datei, kB), alleZeilen(datei, kA)) << probe;
    }
}

TEST_F(DbaseKopie, DieKopieEinerKopieIstDieselbe) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_03.dbf"));
    holen(QStringLiteral("dbase_03.dbf"), QStringLiteral("A.dbf"));
    kopieren(kA, kB);
    kopieren(kB, QStringLiteral("C"));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbf"))), inhalt(pfad(QStringLiteral("C.dbf"))));
}

TEST_F(DbaseKopie, NeueSpalteNimmtZeichensatzUndStufeDerTabelle) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("eigene/uml1252.dbf"));
    holen(QStringLiteral("eigene/uml1252.dbf"), QStringLiteral("A.dbf"));
    holen(QStringLiteral("eigene/uml1252.dbt"), QStringLiteral("A.dbt"));
    dbase::DbaseOrdner datei(ordner.path());
    TabellenDef def = datei.katalogLesen().tabellen[0];
    def.name = kB;
    def.felder.insert(def.felder.begin(), feld(QStringLiteral("Preis"), dao::dbText, 8));
    std::vector<Zeile> zeilen = alleZeilen(datei, kA);
    for (Zeile& zeile : zeilen) zeile.insert(zeile.begin(), w(u"10 €"));
    datei.anwenden({anlegen(def, zeilen)});
    const QByteArray neu = inhalt(pfad(QStringLiteral("B.dbf")));
    EXPECT_EQ(neu[29], 0x03);
    EXPECT_TRUE(neu.contains("10 \x80"));
    EXPECT_EQ(alleZeilen(datei, kB), zeilen);
}

// A table that tells no page is guessed by its letters; one that a copy without them would be guessed wrong
// says so from then on.
TEST_F(DbaseKopie, GeschaetzterZeichensatzBleibtErkennbar) {
    bauteile::Tabelle t;
    t.sprachbyte = 0;
    t.felder = {{"NAME", 'C', 10}};
    t.saetze = {"M\xFCller    ", "Caf\xE9      "};
    schreiben(pfad(QStringLiteral("A.dbf")), t.bytes());
    dbase::DbaseOrdner datei(ordner.path());
    TabellenDef def = datei.katalogLesen().tabellen[0];
    std::vector<Zeile> zeilen = alleZeilen(datei, kA);
    ASSERT_EQ(zeileText(zeilen[1]), QStringLiteral("Café"));
    def.name = kB;
    datei.anwenden({anlegen(def, zeilen)});
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbf")))[29], 0);
    def.name = QStringLiteral("C");
    zeilen.erase(zeilen.begin());
    datei.anwenden({anlegen(def, zeilen)});
    EXPECT_EQ(inhalt(pfad(QStringLiteral("C.dbf")))[29], 0x03);
    EXPECT_EQ(zeileText(alleZeilen(datei, QStringLiteral("C"))[0]), QStringLiteral("Café"));
}

TEST_F(DbaseKopie, ZeichensatzAusDerCpgDatei) {
    bauteile::Tabelle t;
    t.sprachbyte = 0;
    t.felder = {{"NAME", 'C', 10}};
    t.saetze = {"\xA4\xE4        "};
    for (const char* cpg : {"1251", "ISO-8859-15"}) {
        leeren();
        schreiben(pfad(QStringLiteral("A.dbf")), t.bytes());
        schreiben(pfad(QStringLiteral("A.cpg")), cpg);
        kopieren(kA, kB);
        dbase::DbaseOrdner datei(ordner.path());
        EXPECT_EQ(alleZeilen(datei, kB), alleZeilen(datei, kA)) << cpg;
        EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbf"))).mid(65),
                  inhalt(pfad(QStringLiteral("A.dbf"))).mid(65))
            << cpg;
    }
}

TEST_F(DbaseKopie, WasNichtKopierbarIstWirdFruehAbgelehnt) {
    bauteile::Tabelle bild;
    bild.felder = {{"NR", 'N', 3}, {"BILD", 'G', 10}};
    bild.saetze = {"  1         3"};
    bauteile::Tabelle memo;
    memo.version = 0x83;
    memo.felder = {{"TEXT", 'M', 10}};
    memo.saetze = {"         1"};
    bauteile::Tabelle utf8;
    utf8.sprachbyte = 0;
    utf8.felder = {{"NAME", 'C', 10}};
    utf8.saetze = {"M\xC3\xBCller   "};
    const struct {
        const bauteile::Tabelle& tabelle;
        size_t feld;
    } faelle[] = {{bild, 1}, {memo, 0}, {utf8, 0}};
    for (const auto& fall : faelle) {
        leeren();
        schreiben(pfad(QStringLiteral("A.dbf")), fall.tabelle.bytes());
        const auto vorher = alles();
        dbase::DbaseOrdner datei(ordner.path());
        const engine::Katalog katalog = datei.katalogLesen();
        EXPECT_EQ(fehlerVon([&] { datei.feldPruefen(katalog.tabellen[0].felder[fall.feld]); }, &text),
                  kSystemgrenze);
        EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(fehlerVon([&] { kopieren(kA, kB); }), kSystemgrenze);
        EXPECT_EQ(alles(), vorher);
    }
}

TEST_F(DbaseKopie, ZahlDieNichtInsFeldPasst) {
    bauteile::Tabelle t;
    t.felder = {{"WERT", 'N', 6, 2}};
    t.saetze = {"  1.50"};
    schreiben(pfad(QStringLiteral("A.dbf")), t.bytes());
    dbase::DbaseOrdner datei(ordner.path());
    TabellenDef def = datei.katalogLesen().tabellen[0];
    def.name = kB;
    EXPECT_EQ(fehlerVon(
                  [&] {
                      datei.anwenden({anlegen(def, {{Wert(1.0)}, {Wert(1234.0)}})});
                  },
                  &text),
              kFeldZuKlein);
    EXPECT_TRUE(genannt({u"'WERT'", u"Datensatz 2", u"1234"})) << text.toStdString();
    EXPECT_EQ(dateien(), QStringList{"A.dbf"});
    hinweise = datei.anwenden({anlegen(def, {{Wert(1.125)}, {Wert(100.125)}})});
    ASSERT_EQ(hinweise.size(), 1u);
    EXPECT_TRUE(hinweise[0].contains(QStringLiteral("gerundete Zahlen: 1."))) << hinweise[0].toStdString();
    EXPECT_EQ(alleZeilen(datei, kB), (std::vector<Zeile>{{Wert(1.125)}, {Wert(100.13)}}));
}

TEST_F(DbaseKopie, LangeKundennummerVerliertKeineZiffer) {
    bauteile::Tabelle t;
    t.felder = {{"NR", 'N', 19}};
    t.saetze = {"1234567890123456789", "               1234"};
    schreiben(pfad(QStringLiteral("A.dbf")), t.bytes());
    kopieren(kA, kB);
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbf"))).mid(65), t.bytes().mid(65));
}

TEST_F(DbaseKopie, FelderVonFoxpro) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_31.dbf"));
    holen(QStringLiteral("dbase_31.dbf"), QStringLiteral("A.dbf"));
    kopieren(kA, kB);
    dbase::DbaseOrdner datei(ordner.path());
    const std::vector<Zeile> alt = alleZeilen(datei, kA);
    const std::vector<Zeile> neu = alleZeilen(datei, kB);
    ASSERT_EQ(alt.size(), neu.size());
    for (size_t i = 0; i < alt.size(); ++i) EXPECT_EQ(zeileText(alt[i]), zeileText(neu[i]));
    EXPECT_EQ(inhalt(pfad(QStringLiteral("B.dbf")))[0], 0x03);
}

TEST_F(DbaseKopie, DoppelterNameInDerQuelleStehtInDerKopieNichtDoppelt) {
    PROBE_ODER_UEBERSPRINGEN(QStringLiteral("dbase_03.dbf"));
    holen(QStringLiteral("dbase_03.dbf"), QStringLiteral("A.dbf"));
    kopieren(kA, kB, {feld(QStringLiteral("point_id"), dao::dbLong)});
    const QByteArray felder = felderVon(inhalt(pfad(QStringLiteral("B.dbf"))));
    for (const char* name : {"Point_IDC", "Point_ID_1N", "POINT_ID_2N"})
        EXPECT_EQ(felder.count(name), 1) << name;
}

}  // namespace
