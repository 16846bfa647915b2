// What a field makes of a value: every type, every kind of value, every refusal.
#include "engine/dao/umwandlung.h"

#include "engine/dao/dezimalzahl.h"
#include "engine/dao/werkbank.h"

namespace {

constexpr double kUnendlich = std::numeric_limits<double>::infinity();

Wert umgewandelt(int typ, const Wert& wert, int groesse = 0) {
    return dao::feldwertAus(feldDef(u"F", typ, groesse), wert);
}

TEST(UmwandlungTest, LeerUndNullSindInJedemFeldNull) {
    for (int typ = 1; typ <= 22; ++typ)
        for (const Wert& wert : {Wert(), Wert::null()}) EXPECT_TRUE(umgewandelt(typ, wert).istNull()) << typ;
}

TEST(UmwandlungTest, LeererTextIstNurInTextfeldernEinText) {
    using namespace dao;
    for (int typ : {dbText, dbMemo}) EXPECT_EQ(umgewandelt(typ, Wert(u"")), Wert(u""));
    for (int typ : {dbBoolean, dbByte, dbInteger, dbLong, dbCurrency, dbSingle, dbDouble, dbDate, dbBinary,
                    dbLongBinary, dbGUID, dbBigInt, dbDecimal, dbTime})
        EXPECT_TRUE(umgewandelt(typ, Wert(u"")).istNull()) << typ;
}

struct Fall {
    int typ;
    Wert von;
    Wert nach;  // Empty: refused with 3421
};

class UmwandlungsTabelle : public testing::TestWithParam<Fall> {};

TEST_P(UmwandlungsTabelle, Wandelt) {
    const Fall& fall = GetParam();
    SCOPED_TRACE(testing::Message() << "Typ " << fall.typ << " von '" << fall.von.alsText().toStdString()
                                    << "'");
    if (fall.nach.istLeer())
        EXPECT_EQ(fehlerVon([&] { umgewandelt(fall.typ, fall.von); }), kUmwandlung);
    else
        EXPECT_EQ(umgewandelt(fall.typ, fall.von), fall.nach);
}

INSTANTIATE_TEST_SUITE_P(
    Ganzzahlen, UmwandlungsTabelle,
    testing::Values(
        Fall{dao::dbByte, Wert(255), Wert(255)}, Fall{dao::dbByte, Wert(256), Wert()},
        Fall{dao::dbByte, Wert(-1), Wert()}, Fall{dao::dbByte, Wert(true), Wert()},
        Fall{dao::dbInteger, Wert(-32768), Wert(-32768)}, Fall{dao::dbInteger, Wert(32768), Wert()},
        Fall{dao::dbInteger, Wert(true), Wert(-1)}, Fall{dao::dbLong, Wert(2147483647), Wert(2147483647)},
        Fall{dao::dbLong, Wert(qint64(2147483648)), Wert()}, Fall{dao::dbLong, Wert(u" 12 "), Wert(12)},
        Fall{dao::dbLong, Wert(u"-12"), Wert(-12)}, Fall{dao::dbLong, Wert(u"12,5"), Wert(12)},
        Fall{dao::dbLong, Wert(u"13.5"), Wert(14)}, Fall{dao::dbLong, Wert(12.5), Wert(12)},
        Fall{dao::dbLong, Wert(u"1E2"), Wert(100)}, Fall{dao::dbLong, Wert(u"12a"), Wert()},
        Fall{dao::dbLong, Wert(u"1.234,5"), Wert()}, Fall{dao::dbLong, Wert(u" "), Wert()},
        Fall{dao::dbLong, Wert(u"1e400"), Wert()}, Fall{dao::dbLong, Wert(kUnendlich), Wert()},
        Fall{dao::dbLong, Wert(Waehrung{25000}), Wert(2)},
        Fall{dao::dbLong, Wert(DatumZeit{36526.75}), Wert(36527)},
        Fall{dao::dbLong, Wert(QByteArray("1")), Wert()},
        Fall{dao::dbBigInt, Wert(u"9223372036854775807"), Wert(std::numeric_limits<qint64>::max())},
        Fall{dao::dbBigInt, Wert(u"9223372036854775808"), Wert()}));

INSTANTIATE_TEST_SUITE_P(
    AndereZahlen, UmwandlungsTabelle,
    testing::Values(Fall{dao::dbCurrency, Wert(u"1,23455"), Wert(Waehrung{12346})},
                    Fall{dao::dbCurrency, Wert(u"1,23445"), Wert(Waehrung{12344})},
                    Fall{dao::dbCurrency, Wert(0.1), Wert(Waehrung{1000})},
                    Fall{dao::dbCurrency, Wert(3), Wert(Waehrung{30000})},
                    Fall{dao::dbCurrency, Wert(1e18), Wert()}, Fall{dao::dbCurrency, Wert(u"x"), Wert()},
                    Fall{dao::dbSingle, Wert(0.1), Wert(double(0.1f))},
                    Fall{dao::dbSingle, Wert(1e39), Wert()}, Fall{dao::dbSingle, Wert(u"1,5"), Wert(1.5)},
                    Fall{dao::dbDouble, Wert(u"0,1"), Wert(0.1)}, Fall{dao::dbDouble, Wert(u"1e309"), Wert()},
                    Fall{dao::dbDouble, Wert(u"-1e-390"), Wert(-0.0)},
                    Fall{dao::dbDouble, Wert(u"-1,7E308"), Wert(-1.7e308)},
                    Fall{dao::dbDouble, Wert(kUnendlich), Wert(kUnendlich)},
                    Fall{dao::dbDouble, Wert(7), Wert(7.0)},
                    Fall{dao::dbDouble, Wert(qint64(1) << 60), Wert(double(qint64(1) << 60))},
                    Fall{dao::dbDouble, Wert(qint64(1234567890123456789)), Wert(qint64(1234567890123456789))},
                    Fall{dao::dbDouble, Wert(QByteArray("7")), Wert()},
                    Fall{dao::dbDecimal, Wert(u"-1,50"), Wert(Dezimal{true, 0, 150, 2})},
                    Fall{dao::dbDecimal, Wert(u"12345678901234567890123456789"), Wert()},
                    Fall{dao::dbDecimal, Wert(12), Wert(Dezimal{false, 0, 12, 0})},
                    Fall{dao::dbDecimal, Wert(u"x"), Wert()}));

INSTANTIATE_TEST_SUITE_P(
    DatumUndWahrheit, UmwandlungsTabelle,
    testing::Values(Fall{dao::dbDate, Wert(u"31.12.2001"), Wert(DatumZeit{37256})},
                    Fall{dao::dbDate, Wert(u"31.12.01"), Wert(DatumZeit{37256})},
                    Fall{dao::dbDate, Wert(u"1.1.30"), Wert(DatumZeit{10959})},
                    Fall{dao::dbDate, Wert(u"2001-12-31 12:00"), Wert(DatumZeit{37256.5})},
                    Fall{dao::dbDate, Wert(u"29.12.1899 06:00:00"), Wert(DatumZeit{-1.25})},
                    Fall{dao::dbDate, Wert(u"06:00"), Wert(DatumZeit{0.25})},
                    Fall{dao::dbDate, Wert(u"31.2.2001"), Wert()}, Fall{dao::dbDate, Wert(u"31.12."), Wert()},
                    Fall{dao::dbDate, Wert(u"25:00"), Wert()},
                    Fall{dao::dbDate, Wert(36526.5), Wert(DatumZeit{36526.5})},
                    Fall{dao::dbDate, Wert(3e6), Wert()}, Fall{dao::dbDate, Wert(kUnendlich), Wert()},
                    Fall{dao::dbTime, Wert(u"06:00"), Wert(DatumZeit{0.25})},
                    Fall{dao::dbBoolean, Wert(u"wahr"), Wert(true)},
                    Fall{dao::dbBoolean, Wert(u" Nein "), Wert(false)},
                    Fall{dao::dbBoolean, Wert(u"2"), Wert(true)}, Fall{dao::dbBoolean, Wert(0), Wert(false)},
                    Fall{dao::dbBoolean, Wert(u"vielleicht"), Wert()}));

INSTANTIATE_TEST_SUITE_P(
    TexteUndBytes, UmwandlungsTabelle,
    testing::Values(Fall{dao::dbText, Wert(1.5), Wert(u"1,5")}, Fall{dao::dbText, Wert(true), Wert(u"Wahr")},
                    Fall{dao::dbText, Wert(DatumZeit{37256}), Wert(u"31.12.2001")},
                    Fall{dao::dbMemo, Wert(Waehrung{12345}), Wert(u"1,2345")},
                    Fall{dao::dbText, Wert(QByteArray("x")), Wert()},
                    Fall{dao::dbBinary, Wert(QByteArray("xy")), Wert(QByteArray("xy"))},
                    Fall{dao::dbBinary, Wert(u"xy"), Wert()}, Fall{dao::dbLongBinary, Wert(1), Wert()},
                    Fall{dao::dbGUID, Wert(1), Wert()}, Fall{dao::dbGUID, Wert(u"{x}"), Wert(u"{x}")}));

TEST(UmwandlungTest, ZuLangerTextUndZuLangeBytesSind3163) {
    EXPECT_EQ(umgewandelt(dao::dbText, Wert(u"abc"), 3), Wert(u"abc"));
    EXPECT_EQ(fehlerVon([] { umgewandelt(dao::dbText, Wert(u"abcd"), 3); }), kFeldZuKlein);
    EXPECT_EQ(fehlerVon([] { umgewandelt(dao::dbText, Wert(1234), 3); }), kFeldZuKlein);
    EXPECT_EQ(fehlerVon([] { umgewandelt(dao::dbText, Wert(QStringLiteral("😀😀")), 3); }), kFeldZuKlein);
    EXPECT_EQ(umgewandelt(dao::dbMemo, Wert(QString(70000, u'x')), 0), Wert(QString(70000, u'x')));
    EXPECT_EQ(fehlerVon([] { umgewandelt(dao::dbBinary, Wert(QByteArray("abcd")), 3); }), kFeldZuKlein);
}

// A name or value with a per cent sign and a number is a text like any other.
TEST(UmwandlungTest, DieMeldungHatAuchNamenMitProzentzeichenAmRechtenPlatz) {
    QString text;
    try {
        dao::feldwertAus(feldDef(u"Rabatt %2 %3", dao::dbText, 5), Wert(u"%4 Rabatt"));
    } catch (const EngineFehler& fehler) {
        text = fehler.beschreibung();
    }
    EXPECT_TRUE(text.startsWith(QStringLiteral(
        "Das Feld 'Rabatt %2 %3' nimmt höchstens 5 Zeichen auf, der Wert '%4 Rabatt' hat 9. ")))
        << text.toStdString();
}

TEST(UmwandlungTest, DezimalfeldMitStellen) {
    engine::FeldDef feld = feldDef(u"F", dao::dbDecimal, 16);
    feld.genauigkeit = 5;
    feld.nachkommastellen = 2;
    EXPECT_EQ(dao::feldwertAus(feld, Wert(u"123,455")), Wert(Dezimal{false, 0, 12346, 2}));
    EXPECT_EQ(dao::feldwertAus(feld, Wert(u"123,445")), Wert(Dezimal{false, 0, 12344, 2}));
    EXPECT_EQ(dao::feldwertAus(feld, Wert(7)), Wert(Dezimal{false, 0, 700, 2}));
    EXPECT_EQ(fehlerVon([&] { dao::feldwertAus(feld, Wert(u"1234")); }), kUmwandlung);
}

TEST(UmwandlungTest, GrosseDezimalzahlVerliertKeineStelle) {
    EXPECT_EQ(dao::feldwertAus(feldDef(u"F", dao::dbDecimal), Wert(u"1234567890123456789012345678")),
              Wert(Dezimal{false, 66926059, 7888470988696384334u, 0}));
}

TEST(UmwandlungTest, LeererTextWirdNurVonFeldernAbgelehntDieIhnNichtErlauben) {
    engine::FeldDef feld = feldDef(u"F", dao::dbText, 5);
    EXPECT_EQ(fehlerVon([&] { dao::leertextPruefen(feld, Wert(u"")); }), kLeereZeichenfolge);
    EXPECT_EQ(fehlerVon([&] { dao::leertextPruefen(feld, Wert::null()); }), 0);
    EXPECT_EQ(fehlerVon([&] { dao::leertextPruefen(feld, Wert(u" ")); }), 0);
    feld.leerErlaubt = true;
    EXPECT_EQ(fehlerVon([&] { dao::leertextPruefen(feld, Wert(u"")); }), 0);
}

}  // namespace
