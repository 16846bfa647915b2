// Keys of index entries: the worked texts, every type in both directions, Null, and the order they make.
#include "engine/jet/schluessel.h"

#include <QUuid>
#include <cmath>

#include "engine/jet/bytes.h"
#include "engine/jet/wertbau.h"
#include "proben.h"

namespace {

jet::Spalte spalte(quint8 typ, int laenge = 255) {
    jet::Spalte s;
    s.name = u"Feld"_qs;
    s.typ = typ;
    s.laenge = quint16(laenge);
    if (typ == jet::kTypText) s.laenge = 510;
    if (typ == jet::kTypDezimal) s.genauigkeit = 28;
    return s;
}

QByteArray schluesselVon(const jet::Spalte& s, const Wert& wert, bool absteigend,
                         const jet::Format& format = jet::kJet4) {
    std::optional<QByteArray> bytes;
    if (s.typ == jet::kTypBoolean) {
        if (jet::wahrheitVon(s, wert)) bytes = QByteArray();
    } else if (!wert.istLeerOderNull()) {
        jet::wertAnhaengen(bytes.emplace(), format, s, wert);
    }
    QByteArray schluessel;
    jet::schluesselAnhaengen(schluessel, format, s, absteigend, bytes);
    return schluessel;
}

std::string hex(const QByteArray& bytes) {
    return bytes.toHex(' ').toUpper().toStdString();
}

struct Textfall {
    const char16_t* text;
    const char* auf;
    const char* ab;
};

const Textfall kTexte[] = {
    {u"", "7F 01 00", "80 FE FF 00"},
    {u"A", "7F 4A 01 00", "80 B5 FE FF 00"},
    {u"a", "7F 4A 01 00", "80 B5 FE FF 00"},
    {u"abc ", "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
    {u"Ä", "7F 4A 01 13 00", "80 B5 FE EC FF 00"},
    {u"ä", "7F 4A 01 13 00", "80 B5 FE EC FF 00"},
    {u"Ae", "7F 4A 51 01 00", "80 B5 AE FE FF 00"},
    {u"Müller", "7F 60 6F 5E 5E 51 69 01 02 13 00", "80 9F 90 A1 A1 AE 96 FE FD EC FF 00"},
    {u"MÜLLER", "7F 60 6F 5E 5E 51 69 01 02 13 00", "80 9F 90 A1 A1 AE 96 FE FD EC FF 00"},
    {u"Möller", "7F 60 64 5E 5E 51 69 01 02 13 00", "80 9F 9B A1 A1 AE 96 FE FD EC FF 00"},
    {u"Weiß", "7F 73 51 59 6B 6B 01 00", "80 8C AE A6 94 94 FE FF 00"},
    {u"Weiss", "7F 73 51 59 6B 6B 01 00", "80 8C AE A6 94 94 FE FF 00"},
    {u"Größe", "7F 55 69 64 6B 6B 51 01 02 02 13 00", "80 AA 96 9B 94 94 AE FE FD FD EC FF 00"},
    {u"café", "7F 4D 4A 53 51 01 02 02 02 0E 00", "80 B2 B5 AC AE FE FD FD FD F1 FF 00"},
    {u"Café-Bar", "7F 4D 4A 53 51 4C 4A 69 01 02 02 02 0E 01 01 01 80 17 06 82 00",
     "80 B2 B5 AC AE B3 B5 96 FE FD FD FD F1 FE FE FE 7F E8 F9 7D FF 00"},
    {u"O'Neill", "7F 64 62 51 59 5E 5E 01 01 01 01 80 0B 06 80 00",
     "80 9B 9D AE A6 A1 A1 FE FE FE FE 7F F4 F9 7F FF 00"},
    {u"x-y-z", "7F 75 76 78 01 01 01 01 80 0B 06 82 80 0F 06 82 00",
     "80 8A 89 87 FE FE FE FE 7F F4 F9 7D 7F F0 F9 7D FF 00"},
    {u"Großmann-Öz",
     "7F 55 69 64 6B 6B 60 4A 62 62 64 78 01 02 02 02 02 02 02 02 02 02 13 01 01 01 80 2B 06 82 00",
     "80 AA 96 9B 94 94 9F B5 9D 9D 9B 87 FE FD FD FD FD FD FD FD FD FD EC FE FE FE 7F D4 F9 7D FF 00"},
    {u"1. FC Köln", "7F 38 1C 07 53 4D 07 5C 64 5E 62 01 02 02 02 02 02 02 02 13 00",
     "80 C7 E3 F8 AC B2 F8 A3 9B A1 9D FE FD FD FD FD FD FD FD EC FF 00"},
    {u"12345", "7F 38 3A 3C 3E 40 01 00", "80 C7 C5 C3 C1 BF FE FF 00"},
    {u"€ 5", "7F 35 A1 07 40 01 00", "80 CA 5E F8 BF FE FF 00"},
};

TEST(Schluessel, TexteHabenDenSchluesselDerEngine) {
    for (const Textfall& fall : kTexte)
        for (const quint8 typ : {jet::kTypText, jet::kTypMemo}) {
            SCOPED_TRACE(QString::fromUtf16(fall.text).toStdString());
            EXPECT_EQ(hex(schluesselVon(spalte(typ), Wert(fall.text), false)), fall.auf);
            EXPECT_EQ(hex(schluesselVon(spalte(typ), Wert(fall.text), true)), fall.ab);
        }
}

struct Wertfall {
    const char* was;
    quint8 typ;
    int laenge;
    Wert wert;
    const char* auf;
    const char* ab;
};

const std::vector<Wertfall>& werte() {
    static const Wert guid(u"{00112233-4455-6677-8899-AABBCCDDEEFF}");
    static const std::vector<Wertfall> faelle = {
        {"Byte 0", jet::kTypByte, 1, Wert(0), "7F 00", "80 FF"},
        {"Byte 200", jet::kTypByte, 1, Wert(200), "7F C8", "80 37"},
        {"Integer 1", jet::kTypInteger, 2, Wert(1), "7F 80 01", "80 7F FE"},
        {"Integer -2", jet::kTypInteger, 2, Wert(-2), "7F 7F FE", "80 80 01"},
        {"Long 2", jet::kTypLong, 4, Wert(2), "7F 80 00 00 02", "80 7F FF FF FD"},
        {"Long -1", jet::kTypLong, 4, Wert(-1), "7F 7F FF FF FF", "80 80 00 00 00"},
        {"Waehrung 1,5", jet::kTypWaehrung, 8, Wert(Waehrung{15000}), "7F 80 00 00 00 00 00 3A 98",
         "80 7F FF FF FF FF FF C5 67"},
        {"Waehrung -0,0001", jet::kTypWaehrung, 8, Wert(Waehrung{-1}), "7F 7F FF FF FF FF FF FF FF",
         "80 80 00 00 00 00 00 00 00"},
        {"Single 1", jet::kTypSingle, 4, Wert(1.0), "7F BF 80 00 00", "80 40 7F FF FF"},
        {"Single -1", jet::kTypSingle, 4, Wert(-1.0), "7F 40 7F FF FF", "80 BF 80 00 00"},
        {"Double 1", jet::kTypDouble, 8, Wert(1.0), "7F BF F0 00 00 00 00 00 00",
         "80 40 0F FF FF FF FF FF FF"},
        {"Double 0", jet::kTypDouble, 8, Wert(0.0), "7F 80 00 00 00 00 00 00 00",
         "80 7F FF FF FF FF FF FF FF"},
        {"Double -1", jet::kTypDouble, 8, Wert(-1.0), "7F 40 0F FF FF FF FF FF FF",
         "80 BF F0 00 00 00 00 00 00"},
        {"Datum 2", jet::kTypDatum, 8, Wert(DatumZeit{2}), "7F C0 00 00 00 00 00 00 00",
         "80 3F FF FF FF FF FF FF FF"},
        {"Wahr", jet::kTypBoolean, 1, Wert(true), "7F 00", "80 FF"},
        {"Falsch", jet::kTypBoolean, 1, Wert(false), "7F FF", "80 00"},
        {"Guid", jet::kTypGuid, 16, guid, "7F 00 11 22 33 44 55 66 77 09 88 99 AA BB CC DD EE FF 08",
         "80 FF EE DD CC BB AA 99 88 09 77 66 55 44 33 22 11 00 F7"},
        {"Binaer leer", jet::kTypBinaer, 20, Wert(QByteArray("")), "7F", "80"},
        {"Binaer 3", jet::kTypBinaer, 20, Wert(QByteArray("\x01\x02\x03")), "7F 01 02 03 00 00 00 00 00 03",
         "80 FE FD FC FF FF FF FF FF FC"},
        {"Binaer 8", jet::kTypBinaer, 20, Wert(QByteArray("\x01\x02\x03\x04\x05\x06\x07\x08")),
         "7F 01 02 03 04 05 06 07 08 08", "80 FE FD FC FB FA F9 F8 F7 F7"},
        {"Binaer 9", jet::kTypBinaer, 20, Wert(QByteArray("\x01\x02\x03\x04\x05\x06\x07\x08\x09")),
         "7F 01 02 03 04 05 06 07 08 09 09 00 00 00 00 00 00 00 01",
         "80 FE FD FC FB FA F9 F8 F7 09 F6 FF FF FF FF FF FF FF FE"},
        {"Dezimal 1", jet::kTypDezimal, 17, Wert(Dezimal{false, 0, 1, 0}),
         "7F FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01",
         "80 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FE"},
        {"Dezimal -258", jet::kTypDezimal, 17, Wert(Dezimal{true, 0, 258, 0}),
         "7F 00 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FE FD",
         "80 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 02"},
    };
    return faelle;
}

TEST(Schluessel, JederTypInBeidenRichtungen) {
    for (const Wertfall& fall : werte()) {
        SCOPED_TRACE(fall.was);
        EXPECT_EQ(hex(schluesselVon(spalte(fall.typ, fall.laenge), fall.wert, false)), fall.auf);
        EXPECT_EQ(hex(schluesselVon(spalte(fall.typ, fall.laenge), fall.wert, true)), fall.ab);
    }
}

TEST(Schluessel, BigIntWieWaehrung) {
    const QByteArray bytes = QByteArray::fromHex("0300000000000000");
    QByteArray schluessel;
    jet::schluesselAnhaengen(schluessel, jet::kJet4, spalte(jet::kTypBigInt, 8), false, bytes);
    EXPECT_EQ(hex(schluessel), "7F 80 00 00 00 00 00 00 03");
}

TEST(Schluessel, NullIstEinByteFuerJedenTypAusserBoolean) {
    for (const Wertfall& fall : werte()) {
        if (fall.typ == jet::kTypBoolean) continue;
        SCOPED_TRACE(fall.was);
        EXPECT_EQ(hex(schluesselVon(spalte(fall.typ, fall.laenge), Wert::null(), false)), "00");
        EXPECT_EQ(hex(schluesselVon(spalte(fall.typ, fall.laenge), Wert::null(), true)), "FF");
    }
}

TEST(Schluessel, NullSchluesselHatEinByteJeSpalte) {
    jet::EchterIndex index;
    index.spalten = {{0, false}, {1, true}, {2, false}};
    EXPECT_EQ(hex(jet::nullSchluessel(index)), "00 FF 00");
}

// Ascending keys compare like the values, descending ones the other way round.
void ordnungPruefen(const jet::Spalte& s, const std::vector<Wert>& aufsteigend) {
    for (size_t i = 1; i < aufsteigend.size(); ++i) {
        SCOPED_TRACE(i);
        const auto liste = [&](bool ab) {
            return std::pair(schluesselVon(s, aufsteigend[i - 1], ab), schluesselVon(s, aufsteigend[i], ab));
        };
        const auto [auf1, auf2] = liste(false);
        const auto [ab1, ab2] = liste(true);
        EXPECT_LT(hex(auf1), hex(auf2));
        EXPECT_GT(hex(ab1), hex(ab2));
    }
}

TEST(Schluessel, ZahlenStehenInIhrerOrdnung) {
    const auto zahlen = [](std::vector<double> z) {
        std::vector<Wert> liste{Wert::null()};
        for (const double d : z) liste.push_back(Wert(d));
        return liste;
    };
    ordnungPruefen(spalte(jet::kTypInteger, 2), zahlen({-32768, -300, -1, 0, 1, 255, 256, 32767}));
    ordnungPruefen(spalte(jet::kTypLong, 4), zahlen({-2147483648.0, -70000, -1, 0, 1, 65536, 2147483647}));
    ordnungPruefen(spalte(jet::kTypWaehrung, 8), zahlen({-1e9, -1.0001, -1, 0, 0.0001, 1e9}));
    for (const quint8 typ : {jet::kTypDouble, jet::kTypDatum})
        ordnungPruefen(spalte(typ, 8), zahlen({-1e300, -2, -1, -1e-300, 0, 1e-300, 1, 1.5, 2, 1e300}));
    ordnungPruefen(spalte(jet::kTypSingle, 4), zahlen({-1e30, -2, -1, -1e-30, 0, 1e-30, 1, 2, 1e30}));
}

TEST(Schluessel, BinaerwerteStehenInIhrerOrdnung) {
    std::vector<Wert> liste{Wert::null()};
    for (const char* text : {"", "a", "ab", "abcdefgh", "abcdefghi", "b"})
        liste.push_back(Wert(QByteArray(text)));
    const jet::Spalte s = spalte(jet::kTypBinaer, 50);
    for (size_t i = 1; i < liste.size(); ++i)
        EXPECT_LT(hex(schluesselVon(s, liste[i - 1], false)), hex(schluesselVon(s, liste[i], false))) << i;
}

TEST(Schluessel, KomprimierterUndUnkomprimierterTextHabenDenselbenSchluessel) {
    QByteArray kurz;
    QByteArray lang;
    jet::schluesselAnhaengen(kurz, jet::kJet4, spalte(jet::kTypText), false,
                             jet::textBytes4(u"Straße", true));
    jet::schluesselAnhaengen(lang, jet::kJet4, spalte(jet::kTypText), false,
                             jet::textBytes4(u"Straße", false));
    EXPECT_NE(jet::textBytes4(u"Straße", true), jet::textBytes4(u"Straße", false));
    EXPECT_EQ(kurz, lang);
}

const struct {
    const char16_t* text;
    const char* auf;
} kTexte97[] = {
    {u"", "7F 00"},
    {u"A", "7F 60 00"},
    {u"a", "7F 60 00"},
    {u"Müller", "7F 6F 78 6D 6D 66 75 06 00"},
    {u"MÜLLER", "7F 6F 78 6D 6D 66 75 06 00"},
    {u"Müller  ", "7F 6F 78 6D 6D 66 75 06 00"},
    {u"Größe", "7F 68 75 72 76 76 66 06 00"},
    {u"café", "7F 62 60 67 66 02 24 00"},
    {u"Weiß", "7F 7B 66 6A 76 76 00"},
    {u"Weiss", "7F 7B 66 6A 76 76 00"},
    {u"Großmann-Öz", "7F 68 75 72 76 76 6F 60 70 70 1E 72 7E 02 22 22 26 00"},
    {u"O'Neill", "7F 72 18 70 66 6A 6D 6D 00"},
    {u"12345", "7F 57 58 59 5A 5B 00"},
};

TEST(Schluessel, DezimalVonAccess2007AbsteigendIstDasKomplement) {
    const jet::Spalte s = spalte(jet::kTypDezimal, 17);
    const Wert plus{Dezimal{false, 0, 1, 0}};
    const Wert minus{Dezimal{true, 0, 258, 0}};
    EXPECT_EQ(schluesselVon(s, plus, false, jet::kAce), schluesselVon(s, plus, false, jet::kJet4));
    EXPECT_EQ(schluesselVon(s, minus, false, jet::kAce), schluesselVon(s, minus, false, jet::kJet4));
    EXPECT_EQ(hex(schluesselVon(s, plus, true, jet::kAce)),
              "80 00 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FE");
    EXPECT_EQ(hex(schluesselVon(s, minus, true, jet::kAce)),
              "80 FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 02");
}

TEST(Schluessel, TexteVonAccess97) {
    for (const auto& fall : kTexte97) {
        SCOPED_TRACE(QString::fromUtf16(fall.text).toStdString());
        const QByteArray auf = schluesselVon(spalte(jet::kTypText), Wert(fall.text), false, jet::kJet3);
        EXPECT_EQ(hex(auf), fall.auf);
        // Descending: the complement, with nothing behind it.
        QByteArray ab = auf;
        for (char& byte : ab) byte = char(~byte);
        EXPECT_EQ(schluesselVon(spalte(jet::kTypText), Wert(fall.text), true, jet::kJet3), ab);
    }
}

TEST(Schluessel, BeiAccess97Zaehlen255Bytes) {
    const jet::Spalte memo = spalte(jet::kTypMemo);
    const QString lang(255, u'x');
    EXPECT_EQ(schluesselVon(memo, Wert(lang), false, jet::kJet3),
              schluesselVon(memo, Wert(lang + u'y'), false, jet::kJet3));
    EXPECT_NE(schluesselVon(memo, Wert(lang), false, jet::kJet3),
              schluesselVon(memo, Wert(lang.chopped(1) + u'y'), false, jet::kJet3));
}

TEST(Schluessel, OhneSchluesselSindFremdeSortierungenUndOle) {
    jet::Spalte text = spalte(jet::kTypText);
    EXPECT_TRUE(jet::schluesselMoeglich(text));
    text.sortVersion = 1;
    EXPECT_FALSE(jet::schluesselMoeglich(text));
    text = spalte(jet::kTypText);
    text.sortierung = 0x0407;
    EXPECT_FALSE(jet::schluesselMoeglich(text));
    EXPECT_FALSE(jet::schluesselMoeglich(spalte(jet::kTypOle)));
    EXPECT_FALSE(jet::schluesselMoeglich(spalte(jet::kTypKomplex)));
    EXPECT_TRUE(jet::schluesselMoeglich(spalte(jet::kTypLong)));
    QByteArray ziel;
    QString meldung;
    EXPECT_EQ(
        fehlerVon([&] { jet::schluesselAnhaengen(ziel, jet::kJet4, text, false, QByteArray("a\0b\0", 4)); },
                  &meldung),
        kSystemgrenze);
    EXPECT_TRUE(meldung.contains(u"'Feld'")) << meldung.toStdString();
}

TEST(Schluessel, ZuWenigeBytesSindEinSchaden) {
    QByteArray ziel;
    EXPECT_EQ(fehlerVon([&] {
                  jet::schluesselAnhaengen(ziel, jet::kJet4, spalte(jet::kTypLong, 4), false,
                                           QByteArray("abc"));
              }),
              kBeschaedigt);
}

}  // namespace
