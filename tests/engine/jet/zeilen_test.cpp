// Rows: natural order, moved and deleted rows, old rows, every type, long values.
#include "engine/jet/bytes.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/langwert.h"
#include "engine/jet/zeile.h"
#include "proben.h"

using engine::Zeile;

namespace {

std::vector<Zeile> zeilenVon(const jet::Seitendatei& datei, const QString& tabelle) {
    jet::Tabellenleser leser(datei, jet::tabelleLesen(datei, tabelle));
    std::vector<Zeile> zeilen;
    for (Zeile zeile; leser.naechste(zeile);) zeilen.push_back(zeile);
    return zeilen;
}

// First column that is not Null, of each row.
QStringList ersteTexte(const std::vector<Zeile>& zeilen) {
    QStringList texte;
    for (const Zeile& zeile : zeilen)
        for (const Wert& w : zeile)
            if (w.istText()) {
                texte += w.text();
                break;
            }
    return texte;
}

jet::Spalte spalte(quint8 typ, int laenge, quint8 skala = 0) {
    jet::Spalte s;
    s.typ = typ;
    s.laenge = quint16(laenge);
    s.skala = skala;
    return s;
}

Wert wert(const jet::Spalte& s, const QByteArray& hex) {
    return jet::wertAusBytes(jet::kJet4, s, QByteArray::fromHex(hex), u"Probe", 1);
}

// A table with the given columns of type Text, numbered from 0.
jet::Tabelle textTabelle(int spalten) {
    jet::Tabelle t;
    t.name = u"Probe"_qs;
    t.maxSpalten = quint16(spalten);
    t.variable = quint16(spalten);
    for (int i = 0; i < spalten; ++i) {
        jet::Spalte s = spalte(jet::kTypText, 255);
        s.nummer = s.variabel = quint16(i);
        t.spalten.push_back(s);
    }
    return t;
}

// A row of Jet 3 as the format describes it, jump table included.
QByteArray zeile3(const std::vector<QByteArray>& werte) {
    for (int spruenge = 0;; ++spruenge) {
        QByteArray zeile(1, char(werte.size()));
        std::vector<int> stellen;
        for (const QByteArray& w : werte) {
            stellen.push_back(int(zeile.size()));
            zeile += w;
        }
        stellen.push_back(int(zeile.size()));
        for (size_t i = stellen.size(); i-- > 0;) zeile += char(stellen[i]);
        for (int j = spruenge; j >= 1; --j) {
            int erster = 0xFF;
            for (size_t i = stellen.size(); i-- > 0;)
                if (stellen[i] >= 256 * j) erster = int(i);
            zeile += char(erster);
        }
        zeile += char(werte.size());
        zeile += QByteArray((qsizetype(werte.size()) + 7) / 8, char(0xFF));
        if (int(zeile.size() - 1) / 256 == spruenge) return zeile;
    }
}

}  // namespace

TEST(JetZeilen, VerschobeneZeilenStehenWoIhrZeigerSteht) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-verschobene-zeilen.mdb"_qs);
    const auto zeilen = zeilenVon(*proben::oeffnen(u"jet4-verschobene-zeilen.mdb"_qs), u"Table1"_qs);
    EXPECT_EQ(ersteTexte(zeilen), QStringList({"row1col1", "row2col1", "row3col3", "row4col1", "row5col2",
                                               "row6col2", "row7col1"}));
    EXPECT_EQ(zeilen[2][7], Wert(u"row3col9"));
    EXPECT_TRUE(zeilen[2][0].istNull());
}

TEST(JetZeilen, OrtNenntDenSlotNichtDasZiel) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-verschobene-zeilen.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-verschobene-zeilen.mdb"_qs);
    jet::Tabellenleser leser(*datei, jet::tabelleLesen(*datei, u"Table1"_qs));
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(leser.weiter());
    EXPECT_EQ(leser.ort(), (jet::Zeilenort{27, 2}));
    EXPECT_EQ(leser.bytesOrt(), (jet::Zeilenort{28, 0}));
}

TEST(JetZeilen, GeloeschteSpaltenVerschiebenNichts) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-geloeschte-spalten.mdb"_qs);
    const auto zeilen = zeilenVon(*proben::oeffnen(u"jet4-geloeschte-spalten.mdb"_qs), u"Table1"_qs);
    ASSERT_EQ(zeilen.size(), 2u);
    EXPECT_EQ(zeilen[0], (Zeile{Wert(0), Wert(2), Wert(u"foo"), Wert(u"foo2")}));
    EXPECT_EQ(zeilen[1], (Zeile{Wert(3), Wert(5), Wert(u"bar"), Wert(u"bar2")}));
}

TEST(JetZeilen, GeloeschterSlotWirdUebergangenZeigerFuehrtTrotzdemHin) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
    const qsizetype slots0 = 60 * 4096 + 14;  // Table2, three rows
    bytes[slots0 + 3] = char(quint8(bytes[slots0 + 3]) | 0x80);
    EXPECT_EQ(zeilenVon(jet::Seitendatei(bytes), u"Table2"_qs).size(), 2u);
    // Slot 0 becomes a pointer to the deleted slot 1.
    bytes[slots0 + 1] = char(quint8(bytes[slots0 + 1]) | 0x40);
    jet::u32Setzen(bytes, 60 * 4096 + 0xFED, 60 << 8 | 1);
    const auto zeilen = zeilenVon(jet::Seitendatei(bytes), u"Table2"_qs);
    ASSERT_EQ(zeilen.size(), 2u);
    EXPECT_EQ(zeilen[0][0], Wert(1));
}

TEST(JetZeilen, RingAusZeigernEndetMitFehlerDerDieTabelleNennt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
    const qsizetype slots0 = 60 * 4096 + 14;
    bytes[slots0 + 1] = char(quint8(bytes[slots0 + 1]) | 0x40);
    jet::u32Setzen(bytes, 60 * 4096 + 0xFED, 60 << 8 | 0);
    QString text;
    EXPECT_EQ(fehlerVon([&] { zeilenVon(jet::Seitendatei(bytes), u"Table2"_qs); }, &text), kBeschaedigt);
    EXPECT_TRUE(text.contains(u"Table2")) << text.toStdString();
}

TEST(JetZeilen, FremdeSeiteInDerKarteWirdUebergangen) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
    bytes[60 * 4096 + 4] = 28;  // the owner of Table2's data page
    EXPECT_TRUE(zeilenVon(jet::Seitendatei(bytes), u"Table2"_qs).empty());
}

TEST(JetZeilen, AlteZeileKenntNeueSpaltenNicht) {
    const jet::Tabelle t = textTabelle(3);
    QByteArray zeile(
        "\x01\x00"
        "ab"
        "\x04\x00\x02\x00\x01\x00\x01",
        11);
    const jet::Zeilenteile teile(jet::kJet4, t, zeile, 1);
    EXPECT_EQ(teile.roh(t.spalten[0])->toByteArray(), QByteArray("ab"));
    EXPECT_FALSE(teile.roh(t.spalten[1]).has_value());
    EXPECT_FALSE(teile.roh(t.spalten[2]).has_value());
}

TEST(JetZeilen, ZeileAelterAlsAlleVariablenSpaltenHatKeineListe) {
    jet::Tabelle t = textTabelle(2);
    t.spalten[0] = spalte(jet::kTypLong, 4);
    t.spalten[0].flags |= jet::kSpalteFest;
    QByteArray zeile("\x01\x00\x2A\x00\x00\x00\x01", 7);
    const jet::Zeilenteile teile(jet::kJet4, t, zeile, 1);
    EXPECT_EQ(teile.roh(t.spalten[0])->toByteArray(), QByteArray("\x2A\0\0\0", 4));
    EXPECT_FALSE(teile.roh(t.spalten[1]).has_value());
}

TEST(JetZeilen, LeererTextIstNichtNull) {
    const jet::Tabelle t = textTabelle(1);
    QByteArray zeile(
        "\x01\x00"
        "\x02\x00\x02\x00\x01\x00\x01",
        9);
    const jet::Zeilenteile teile(jet::kJet4, t, zeile, 1);
    ASSERT_TRUE(teile.roh(t.spalten[0]).has_value());
    EXPECT_TRUE(teile.roh(t.spalten[0])->isEmpty());
    zeile[8] = 0;
    EXPECT_FALSE(jet::Zeilenteile(jet::kJet4, t, zeile, 1).roh(t.spalten[0]).has_value());
}

// Every length around the borders of 256, 512 and 768, so that dummy entries occur as well.
TEST(JetZeilen, SprungtabelleVonJet3) {
    for (int spalten = 1; spalten <= 5; ++spalten) {
        const jet::Tabelle t = textTabelle(spalten);
        for (int laenge = 0; laenge <= 250; ++laenge) {
            SCOPED_TRACE(std::to_string(spalten) + " * " + std::to_string(laenge));
            std::vector<QByteArray> werte;
            for (int i = 0; i < spalten; ++i) werte.push_back(QByteArray(laenge, char('a' + i)));
            const QByteArray zeile = zeile3(werte);
            const jet::Zeilenteile teile(jet::kJet3, t, zeile, 1);
            for (int i = 0; i < spalten; ++i) {
                const auto roh = teile.roh(t.spalten[size_t(i)]);
                ASSERT_TRUE(roh.has_value());
                ASSERT_EQ(roh->toByteArray(), werte[size_t(i)]);
            }
        }
    }
}

TEST(JetZeilen, EinerAbgeschnittenenDateiFehlenKeineZeilenStillschweigend) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
    const auto zeilen = [](const QByteArray& inhalt) {
        const jet::Seitendatei datei(inhalt);
        jet::Tabellenleser leser(datei, jet::tabelleLesen(datei, u"Table1"_qs));
        int anzahl = 0;
        for (engine::Zeile zeile; leser.naechste(zeile);) ++anzahl;
        return anzahl;
    };
    EXPECT_EQ(zeilen(bytes), 4);
    QString text;
    EXPECT_EQ(fehlerVon([&] { zeilen(bytes.left(bytes.size() / 8192 * 4096)); }, &text), kBeschaedigt);
    EXPECT_TRUE(text.contains(u"'Table1'") && text.contains(u"Sicherungskopie")) << text.toStdString();
}

TEST(JetZeilen, KaputteZeilenNennenDieTabelle) {
    const jet::Tabelle t = textTabelle(1);
    const QByteArray gut(
        "\x01\x00"
        "ab"
        "\x04\x00\x02\x00\x01\x00\x01",
        11);
    struct Fall {
        const char* was;
        int ab;
        char byte;
    };
    const Fall faelle[] = {{"zu viele Spalten für die Länge", 0, char(0xFF)},
                           {"Ende hinter der Zeile", 4, 60},
                           {"Anfang vor dem festen Teil", 6, 1},
                           {"Anfang hinter dem Ende", 6, 5},
                           {"zu viele Werte", 8, 60}};
    for (const Fall& f : faelle) {
        SCOPED_TRACE(f.was);
        QByteArray zeile = gut;
        zeile[f.ab] = f.byte;
        QString text;
        EXPECT_EQ(fehlerVon([&] { jet::Zeilenteile(jet::kJet4, t, zeile, 1).roh(t.spalten[0]); }, &text),
                  kBeschaedigt);
        EXPECT_TRUE(text.contains(u"Probe")) << text.toStdString();
    }
    EXPECT_EQ(fehlerVon([&] { jet::Zeilenteile(jet::kJet4, t, QByteArray(), 1); }), kBeschaedigt);
}

TEST(JetWerte, JederTyp) {
    struct Fall {
        jet::Spalte spalte;
        const char* hex;
        Wert wert;
    };
    const Fall faelle[] = {
        {spalte(jet::kTypByte, 1), "ff", Wert(255)},
        {spalte(jet::kTypInteger, 2), "ffff", Wert(-1)},
        {spalte(jet::kTypLong, 4), "00000080", Wert(qint64(-2147483648LL))},
        {spalte(jet::kTypWaehrung, 8), "b888000000000000", Wert(Waehrung{35000})},
        {spalte(jet::kTypSingle, 4), "cdcccc3d", Wert(0.1)},
        {spalte(jet::kTypSingle, 4), "0000c07f", Wert::null()},
        {spalte(jet::kTypDouble, 8), "000000000000f83f", Wert(1.5)},
        {spalte(jet::kTypDouble, 8), "000000000000f87f", Wert::null()},
        {spalte(jet::kTypDatum, 8), "000000000000f4bf", Wert(DatumZeit{-1.25})},
        {spalte(jet::kTypBinaer, 4), "00ff", Wert(QByteArray("\0\xFF", 2))},
        {spalte(jet::kTypText, 20), "e40020ac", Wert(u"ä\uAC20")},
        {spalte(jet::kTypGuid, 16), "33221100554477668899aabbccddeeff",
         Wert(u"{00112233-4455-6677-8899-AABBCCDDEEFF}")},
        {spalte(jet::kTypDezimal, 17, 2), "8000000000000000000000000039300000",
         Wert(Dezimal{true, 0, 12345, 2})},
        {spalte(jet::kTypDezimal, 17, 0), "0000000000010000000000000000000000",
         Wert(Dezimal{false, 1, 0, 0})},
        {spalte(jet::kTypDezimal, 17, 0), "8000000000000000000000000000000000",
         Wert(Dezimal{false, 0, 0, 0})},
        {spalte(jet::kTypBigInt, 8), "ffffffffffffffff", Wert(-1)},
        {spalte(17, 3), "010203", Wert(QByteArray("\1\2\3"))},
    };
    for (const Fall& f : faelle) {
        SCOPED_TRACE(std::to_string(f.spalte.typ) + " " + f.hex);
        EXPECT_EQ(wert(f.spalte, f.hex), f.wert);
    }
}

TEST(JetWerte, ZuWenigeBytesSindBeschaedigt) {
    const std::pair<quint8, const char*> faelle[] = {{jet::kTypLong, "0000"},      {jet::kTypByte, ""},
                                                     {jet::kTypDatum, "00000000"}, {jet::kTypGuid, "0011"},
                                                     {jet::kTypDezimal, "00"},     {jet::kTypSingle, "00"}};
    for (const auto& [typ, hex] : faelle)
        EXPECT_EQ(fehlerVon([&, typ = typ, hex = hex] { wert(spalte(typ, 0), hex); }), kBeschaedigt)
            << int(typ);
}

TEST(JetWerte, TypenVonJet3InDerDatei) {
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    const auto zeilen = zeilenVon(*proben::oeffnen(u"jet3-typen.mdb"_qs), u"Table1"_qs);
    ASSERT_EQ(zeilen.size(), 2u);
    const Zeile& z = zeilen[1];
    EXPECT_EQ(z[0], Wert(u"abcdefg"));
    EXPECT_EQ(z[2], Wert(2));
    EXPECT_EQ(z[3], Wert(222));
    EXPECT_EQ(z[4], Wert(333333333));
    EXPECT_EQ(z[5], Wert(444.555));
    EXPECT_EQ(z[6].alsText(), u"21.09.1974"_qs);
    EXPECT_EQ(z[7], Wert(Waehrung{35000}));
    EXPECT_EQ(z[8], Wert(true));
    EXPECT_EQ(zeilen[0][8], Wert(false));
}

TEST(JetLangwert, InlineMitLaenge) {
    const auto datei = [] { return proben::oeffnen(u"jet4-memo-ole.mdb"_qs); };
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    const QByteArray feld = QByteArray::fromHex("030000800000000000000000") + "abcde";
    const jet::Langwert w = jet::langwertLesen(*datei(), feld, u"Probe");
    EXPECT_EQ(w.form, jet::Langform::Inline);
    EXPECT_EQ(w.bytes, QByteArray("abc"));
    EXPECT_TRUE(jet::langwertLesen(*datei(), QByteArray(), u"Probe").bytes.isEmpty());
    EXPECT_EQ(fehlerVon([&] { jet::langwertLesen(*datei(), feld.left(11), u"Probe"); }), kBeschaedigt);
}

TEST(JetLangwert, KetteAusDerDatei) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-memo-ole.mdb"_qs);
    jet::Tabellenleser leser(*datei, jet::tabelleLesen(*datei, u"MSP_PROJECTS"_qs));
    ASSERT_TRUE(leser.weiter());
    bool kette = false;
    for (const jet::Spalte& s : leser.tabelle().spalten) {
        if (!s.istLang()) continue;
        const auto roh = leser.teile().roh(s);
        if (!roh || roh->isEmpty()) continue;
        const jet::Langwert w = jet::langwertLesen(*datei, *roh, u"Probe");
        EXPECT_EQ(quint32(w.bytes.size()), w.angekuendigt);
        kette = kette || (w.form == jet::Langform::Kette && w.stuecke.size() > 1);
    }
    EXPECT_TRUE(kette);
}

TEST(JetLangwert, RingUndUebergroesseEnden) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    const QByteArray bytes = proben::bytes(u"jet4-memo-ole.mdb"_qs);
    const jet::Seitendatei datei(bytes);
    const QByteArray zuLang = QByteArray::fromHex("ffffff3f0001000000000000");
    EXPECT_EQ(fehlerVon([&] { jet::langwertLesen(datei, zuLang, u"Probe"); }), kBeschaedigt);
    // A piece of four bytes that leads to itself and brings nothing.
    QByteArray ring = bytes;
    QByteArray seite(4096, '\0');
    seite.replace(0, 8, QByteArray("\x01\x01\0\0LVAL", 8));
    jet::u16Setzen(seite, 12, 1);
    jet::u16Setzen(seite, 14, 4092);
    jet::u32Setzen(seite, 4092, 50 << 8);
    ring.replace(50 * 4096, 4096, seite);
    const jet::Seitendatei mitRing(ring);
    const QByteArray feld = QByteArray::fromHex("000100000032000000000000");
    EXPECT_EQ(fehlerVon([&] { jet::langwertLesen(mitRing, feld, u"Probe"); }), kBeschaedigt);
}

TEST(JetLangwert, FruehesKettenendeGibtWasDaIst) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-memo-ole.mdb"_qs);
    QByteArray seite(4096, '\0');
    seite.replace(0, 8, QByteArray("\x01\x01\0\0LVAL", 8));
    jet::u16Setzen(seite, 12, 1);
    jet::u16Setzen(seite, 14, 4089);
    seite.replace(4089, 7, QByteArray("\0\0\0\0abc", 7));
    bytes.replace(50 * 4096, 4096, seite);
    const jet::Langwert w = jet::langwertLesen(jet::Seitendatei(bytes),
                                               QByteArray::fromHex("000100000032000000000000"), u"Probe");
    EXPECT_EQ(w.bytes, QByteArray("abc"));
    EXPECT_EQ(w.angekuendigt, 256u);
}
