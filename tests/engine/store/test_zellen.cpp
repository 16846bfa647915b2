// Every kind of value comes out of every kind of column exactly as it went in, and sorts by its value.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "engine/store/speicher.h"
#include "engine/typen.h"

namespace {

using store::Spaltenart;

constexpr Spaltenart kAlleArten[] = {Spaltenart::Wahrheit, Spaltenart::Ganzzahl,  Spaltenart::Gleitzahl,
                                     Spaltenart::Waehrung, Spaltenart::DatumZeit, Spaltenart::Text,
                                     Spaltenart::Bytes,    Spaltenart::Dezimal};

std::vector<Wert> alleWerte() {
    const qint64 klein = std::numeric_limits<qint64>::min();
    const qint64 gross = std::numeric_limits<qint64>::max();
    const double unendlich = std::numeric_limits<double>::infinity();
    QString mitNull(QStringLiteral("a"));
    mitNull += QChar(0);
    mitNull += u'b';
    return {Wert::null(),
            Wert(true),
            Wert(false),
            Wert(0),
            Wert(-1),
            Wert(klein),
            Wert(gross),
            Wert(0.0),
            Wert(0.1),
            Wert(-1e308),
            Wert(5e-324),
            Wert(1.0),
            Wert(9007199254740993.0),
            Wert(unendlich),
            Wert(-unendlich),
            Wert(Waehrung{0}),
            Wert(Waehrung{klein}),
            Wert(Waehrung{gross}),
            Wert(Waehrung{12345}),
            Wert(DatumZeit{0}),
            Wert(DatumZeit{37226.5}),
            Wert(DatumZeit{-1.25}),
            Wert(u""),
            Wert(u"Müller"),
            Wert(u" 12 "),
            Wert(u"1"),
            Wert(u"-0,5"),
            Wert(QString(QChar(0xfeff)) + QStringLiteral("x")),
            Wert(QString(QChar(0xfffe))),
            Wert(QString(QChar(0xd83d))),
            Wert(QString(QChar(0xdc00)) + QStringLiteral("x")),
            Wert(QStringLiteral("😀")),
            Wert(mitNull),
            Wert(QString(70000, u'ß')),
            Wert(QByteArray()),
            Wert(QByteArray("\0\xff\1", 3)),
            Wert(QByteArray(100000, '\7')),
            Wert(Dezimal{true, 0, 5, 1}),
            Wert(Dezimal{false, 0xffffffffu, std::numeric_limits<quint64>::max(), 28}),
            Wert(Dezimal{true, 0, 0, 0})};
}

TEST(ZellenTest, JederWertKommtAusJederSpalteUnveraendertZurueck) {
    store::Speicher speicher;
    speicher.tabelleAnlegen(1, {std::begin(kAlleArten), std::end(kAlleArten)});
    for (const Wert& wert : alleWerte()) {
        for (int spalte = 0; spalte < int(std::size(kAlleArten)); ++spalte) {
            SCOPED_TRACE(testing::Message() << "Art " << int(wert.art()) << " Spalte " << spalte << " '"
                                            << wert.alsText().left(40).toStdString() << "'");
            const qint64 id = speicher.zeileAnhaengen(1, {spalte}, {wert});
            std::vector<Wert> zeile;
            ASSERT_TRUE(speicher.zeileLesen(1, {spalte}, id, zeile));
            EXPECT_EQ(zeile[0], wert);
        }
    }
}

TEST(ZellenTest, KeineZahlUndNegativeNullBleibenWasSieSind) {
    store::Speicher speicher;
    speicher.tabelleAnlegen(1, {Spaltenart::Gleitzahl, Spaltenart::DatumZeit});
    const Wert keineZahl(std::numeric_limits<double>::quiet_NaN());
    const qint64 id = speicher.zeileAnhaengen(1, {0, 1}, {keineZahl, keineZahl});
    const qint64 zweite = speicher.zeileAnhaengen(1, {0, 1}, {Wert(-0.0), Wert(DatumZeit{-0.0})});
    std::vector<Wert> zeile;
    ASSERT_TRUE(speicher.zeileLesen(1, {0, 1}, id, zeile));
    ASSERT_EQ(zeile[0].art(), Wert::Art::Gleitzahl);
    EXPECT_TRUE(std::isnan(zeile[0].gleitzahl()));
    ASSERT_TRUE(speicher.zeileLesen(1, {0, 1}, zweite, zeile));
    EXPECT_TRUE(std::signbit(zeile[0].gleitzahl()));
    EXPECT_TRUE(std::signbit(zeile[1].datumZeit().tage));
}

TEST(ZellenTest, LeerWirdNull) {
    store::Speicher speicher;
    speicher.tabelleAnlegen(1, {Spaltenart::Text});
    std::vector<Wert> zeile;
    ASSERT_TRUE(speicher.zeileLesen(1, {0}, speicher.zeileAnhaengen(1, {0}, {Wert()}), zeile));
    EXPECT_TRUE(zeile[0].istNull());
}

TEST(ZellenTest, SpaltenartZuJedemFeldtyp) {
    using namespace dao;
    const std::pair<int, Spaltenart> faelle[] = {{dbBoolean, Spaltenart::Wahrheit},
                                                 {dbByte, Spaltenart::Ganzzahl},
                                                 {dbInteger, Spaltenart::Ganzzahl},
                                                 {dbLong, Spaltenart::Ganzzahl},
                                                 {dbBigInt, Spaltenart::Ganzzahl},
                                                 {dbCurrency, Spaltenart::Waehrung},
                                                 {dbSingle, Spaltenart::Gleitzahl},
                                                 {dbDouble, Spaltenart::Gleitzahl},
                                                 {dbDate, Spaltenart::DatumZeit},
                                                 {dbTime, Spaltenart::DatumZeit},
                                                 {dbBinary, Spaltenart::Bytes},
                                                 {dbLongBinary, Spaltenart::Bytes},
                                                 {dbDecimal, Spaltenart::Dezimal},
                                                 {dbText, Spaltenart::Text},
                                                 {dbMemo, Spaltenart::Text},
                                                 {dbGUID, Spaltenart::Text},
                                                 {999, Spaltenart::Text}};
    for (const auto& fall : faelle) EXPECT_EQ(store::spaltenartVon(fall.first), fall.second) << fall.first;
}

// Puts the values into one column and gives their places in the order of the column.
std::vector<qint64> geordnet(Spaltenart art, const std::vector<Wert>& werte) {
    store::Speicher speicher;
    speicher.tabelleAnlegen(1, {art});
    for (const Wert& wert : werte) speicher.zeileAnhaengen(1, {0}, {wert});
    return speicher.auswaehlen({1, {}, {0}});
}

TEST(ZellenTest, OrdnungJederSpaltenart) {
    struct Fall {
        Spaltenart art;
        std::vector<Wert> werte;
        std::vector<qint64> folge;
    };
    const std::vector<Fall> faelle = {
        {Spaltenart::Wahrheit, {Wert(false), Wert(true), Wert::null()}, {3, 2, 1}},
        {Spaltenart::Ganzzahl, {Wert(10), Wert(9), Wert(-1), Wert::null(), Wert(9)}, {4, 3, 2, 5, 1}},
        {Spaltenart::Gleitzahl, {Wert(1.5), Wert(-0.5), Wert(1), Wert(1e300)}, {2, 3, 1, 4}},
        // Beyond 2^53 whole numbers stand between two floating ones.
        {Spaltenart::Gleitzahl,
         {Wert(qint64(9007199254740993)), Wert(9007199254740992.0), Wert(9007199254740994.0)},
         {2, 1, 3}},
        {Spaltenart::Waehrung, {Wert(Waehrung{20000}), Wert(Waehrung{-5}), Wert(Waehrung{10000})}, {2, 3, 1}},
        {Spaltenart::DatumZeit,
         {Wert(DatumZeit{37000.75}), Wert(DatumZeit{37000.25}), Wert(DatumZeit{-3})},
         {3, 2, 1}},
        {Spaltenart::Text,
         {Wert(u"zb"), Wert(u"Ä"), Wert(u"b"), Wert(u"A"), Wert(u"a"), Wert::null(), Wert(u"")},
         {6, 7, 4, 5, 2, 3, 1}},
        {Spaltenart::Bytes,
         {Wert(QByteArray("b")), Wert(QByteArray("a\xff")), Wert(QByteArray("a"))},
         {3, 2, 1}},
        {Spaltenart::Dezimal,
         {Wert(Dezimal{false, 0, 15, 1}), Wert(Dezimal{false, 0, 149, 2}), Wert(Dezimal{true, 0, 1, 0}),
          Wert(Dezimal{true, 0, 2, 0}), Wert(Dezimal{true, 0, 0, 5}), Wert(Dezimal{false, 1, 0, 0}),
          Wert::null()},
         {7, 4, 3, 5, 2, 1, 6}}};
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(int(fall.art));
        EXPECT_EQ(geordnet(fall.art, fall.werte), fall.folge);
    }
}

TEST(ZellenTest, MarkierteTexteSortierenWieTexte) {
    EXPECT_EQ(geordnet(Spaltenart::Text,
                       {Wert(u"b"), Wert(QString(QChar(0xfeff)) + QStringLiteral("a")), Wert(u"c")}),
              (std::vector<qint64>{2, 1, 3}));
}

TEST(ZellenTest, GleichheitMitEinerZahlInJederZahlenspalte) {
    struct Fall {
        Spaltenart art;
        Wert inhalt;
        Wert zahl;
        bool gleich;
    };
    const Fall faelle[] = {
        {Spaltenart::Ganzzahl, Wert(12), Wert(12), true},
        {Spaltenart::Ganzzahl, Wert(13), Wert(12), false},
        {Spaltenart::Ganzzahl, Wert::null(), Wert(0), false},
        {Spaltenart::Gleitzahl, Wert(12.0), Wert(12), true},
        {Spaltenart::Gleitzahl, Wert(12.5), Wert(12), false},
        {Spaltenart::Waehrung, Wert(Waehrung{120000}), Wert(12), true},
        {Spaltenart::Waehrung, Wert(Waehrung{12}), Wert(12), false},
        {Spaltenart::Dezimal, Wert(Dezimal{false, 0, 120, 1}), Wert(12), true},
        {Spaltenart::Dezimal, Wert(Dezimal{true, 0, 120, 1}), Wert(12), false},
        {Spaltenart::DatumZeit, Wert(DatumZeit{12}), Wert(12), true},
        {Spaltenart::Wahrheit, Wert(false), Wert(0), true},
        {Spaltenart::Wahrheit, Wert(true), Wert(1), false},
        {Spaltenart::Ganzzahl, Wert(std::numeric_limits<qint64>::max()), Wert(1e30), false}};
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(testing::Message() << int(fall.art) << " " << fall.inhalt.alsText().toStdString());
        store::Speicher speicher;
        speicher.tabelleAnlegen(1, {fall.art});
        speicher.zeileAnhaengen(1, {0}, {fall.inhalt});
        const auto ids = speicher.auswaehlen({1, store::gleich(0, fall.art, fall.zahl), {}});
        EXPECT_EQ(!ids.empty(), fall.gleich);
    }
}

}  // namespace
