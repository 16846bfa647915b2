// Numbers, dates and the rest in the text form of a record.
#include "engine/dbase/werte.h"

#include <gtest/gtest.h>

#include <QDate>
#include <cmath>
#include <limits>

namespace {

using namespace dbase;

struct Zahlfall {
    const char* text;
    Wert wert;
    bool lesbar = true;
};

TEST(DbaseWerte, Zahlen) {
    const Zahlfall faelle[] = {
        {"   35", Wert(35.0)},
        {"12   ", Wert(12.0)},
        {".50", Wert(0.5)},
        {"-7.25", Wert(-7.25)},
        {"+7.1", Wert(7.1)},
        {"1,25", Wert(1.25)},
        {"1.5E+02", Wert(150.0)},
        {"1.234567890123456789", Wert(1.234567890123456789)},
        {"     ", Wert::null()},
        {"", Wert::null()},
        {"*****", Wert::null()},
        {".", Wert::null()},
        {"-", Wert::null()},
        {"1.2.3", Wert::null(), false},
        {"1,2,3", Wert::null(), false},
        {"12a", Wert::null(), false},
        {"1e", Wert::null(), false},
        {"inf", Wert::null(), false},
        {"nan", Wert::null(), false},
        {"1e999", Wert::null(), false},
        {"9007199254740993", Wert(qint64(9007199254740993))},  // no double
        {"9007199254740992", Wert(9007199254740992.0)},
        {"1234567890123456789", Wert(qint64(1234567890123456789))},
        {"99999999999999999999", Wert(1e20)},
    };
    for (const Zahlfall& fall : faelle) {
        const Gelesen gelesen = zahlLesen(QByteArrayView(fall.text, qsizetype(std::strlen(fall.text))));
        EXPECT_EQ(gelesen.wert, fall.wert) << fall.text << " " << gelesen.wert.alsText().toStdString();
        EXPECT_EQ(gelesen.lesbar, fall.lesbar) << fall.text;
    }
    EXPECT_EQ(zahlLesen(QByteArrayView("5\0\0\0", 4)).wert, Wert(5.0));
}

struct Schreibfall {
    Wert wert;
    int breite;
    int stellen;
    const char* text;  // nullptr: does not fit
    Zahlergebnis ergebnis = Zahlergebnis::Genau;
};

TEST(DbaseWerte, ZahlenSchreiben) {
    const Schreibfall faelle[] = {
        {Wert(-5.0), 6, 0, "    -5"},
        {Wert(0.5), 6, 2, "  0.50"},
        {Wert(-0.0), 6, 2, "  0.00"},
        {Wert(-0.001), 6, 2, "-0.001"},
        {Wert(-0.001), 5, 2, " 0.00", Zahlergebnis::Gerundet},
        {Wert(2.675), 5, 3, "2.675"},
        {Wert(2.675), 4, 2, "2.68",
         Zahlergebnis::Gerundet},  // by its decimal text, not by the double below it
        {Wert(-2.675), 5, 2, "-2.68", Zahlergebnis::Gerundet},
        {Wert(9.995), 4, 2, nullptr, Zahlergebnis::PasstNicht},
        {Wert(99.5), 3, 0, "100", Zahlergebnis::Gerundet},
        {Wert(0.1 + 0.2), 12, 2, "        0.30"},
        {Wert(1.5), 6, 0, "   1.5"},
        {Wert(123.456), 12, 2, "     123.456"},
        {Wert(1e15), 16, 0, "1000000000000000"},
        {Wert(1e20), 20, 0, nullptr, Zahlergebnis::PasstNicht},
        {Wert(qint64(-2147483648)), 11, 0, "-2147483648"},
        {Wert(std::numeric_limits<qint64>::min()), 20, 0, "-9223372036854775808"},
        {Wert(Waehrung{-12345}), 10, 4, "   -1.2345"},
        {Wert(Waehrung{std::numeric_limits<qint64>::max()}), 20, 4, "922337203685477.5807"},
        {Wert(Dezimal{true, 0, 12345, 3}), 8, 1, " -12.345"},
        {Wert(true), 3, 0, " -1"},
        {Wert(std::nan("")), 6, 0, nullptr, Zahlergebnis::PasstNicht},
        {Wert(INFINITY), 6, 0, nullptr, Zahlergebnis::PasstNicht},
        {Wert(1000.0), 3, 0, nullptr, Zahlergebnis::PasstNicht},
        {Wert(1e-300), 20, 5, "             0.00000", Zahlergebnis::Gerundet},
        {Wert(1e300), 20, 5, nullptr, Zahlergebnis::PasstNicht},
    };
    for (const Schreibfall& fall : faelle) {
        QByteArray ziel(fall.breite, '#');
        EXPECT_EQ(zahlSchreiben(fall.wert, ziel.data(), fall.breite, fall.stellen), fall.ergebnis)
            << fall.wert.alsText().toStdString();
        if (fall.text) {
            EXPECT_EQ(ziel.toStdString(), fall.text);
        }
    }
}

TEST(DbaseWerte, JederTagHinUndZurueck) {
    const QDate null(1899, 12, 30);
    for (QDate tag(1, 1, 1); tag.year() <= 9999; tag = tag.addDays(97)) {
        const qint64 tage = null.daysTo(tag);
        ASSERT_EQ(tageVon(tag.year(), tag.month(), tag.day()), tage)
            << tag.toString(Qt::ISODate).toStdString();
        const Kalendertag k = kalendertagVon(tage);
        ASSERT_EQ(QDate(k.jahr, k.monat, k.tag), tag);
    }
    EXPECT_EQ(tageVon(9999, 12, 31), null.daysTo(QDate(9999, 12, 31)));
}

TEST(DbaseWerte, Daten) {
    const auto tag = [](int j, int m, int t) {
        return Wert(DatumZeit{double(QDate(1899, 12, 30).daysTo(QDate(j, m, t)))});
    };
    const Zahlfall faelle[] = {{"20010228", tag(2001, 2, 28)},    {"20000229", tag(2000, 2, 29)},
                               {"18991230", Wert(DatumZeit{0})},  {"        ", Wert::null()},
                               {"00000000", Wert::null()},        {"       0", Wert::null()},
                               {"19990229", Wert::null(), false}, {"20011301", Wert::null(), false},
                               {"NotAYear", Wert::null(), false}, {"00010101", tag(1, 1, 1)},
                               {"2001 228", Wert::null(), false}};
    for (const Zahlfall& fall : faelle) {
        const Gelesen gelesen = datumLesen(QByteArrayView(fall.text, 8));
        EXPECT_EQ(gelesen.wert, fall.wert) << fall.text;
        EXPECT_EQ(gelesen.lesbar, fall.lesbar) << fall.text;
    }
    EXPECT_EQ(datumLesen(QByteArrayView("\0\0\0\0\0\0\0\0", 8)).wert, Wert::null());
}

TEST(DbaseWerte, WahrheitUndBlocknummer) {
    for (const char c : {'T', 't', 'Y', 'y', '1'}) EXPECT_EQ(wahrheitLesen(c), Wert(true)) << c;
    for (const char c : {'F', 'f', 'N', 'n', '?', ' ', '\0', '0'})
        EXPECT_EQ(wahrheitLesen(c), Wert(false)) << c;
    EXPECT_EQ(blocknummerLesen("        12"), 12);
    EXPECT_EQ(blocknummerLesen("0000000012"), 12);
    EXPECT_EQ(blocknummerLesen("          "), 0);
    EXPECT_EQ(blocknummerLesen("   12a    "), 0);
    EXPECT_EQ(blocknummerLesen("        -3"), -3);
}

}  // namespace
