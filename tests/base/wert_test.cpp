// The cell value: its kinds, its text forms, its order.
#include "base/wert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double kSekunde = 1.0 / 86400;

TEST(Wert, LeerNullUndLeererTextSindDreierlei) {
    EXPECT_TRUE(Wert().istLeer());
    EXPECT_TRUE(Wert::null().istNull());
    EXPECT_TRUE(Wert(u"").istText());
    EXPECT_NE(Wert(), Wert::null());
    EXPECT_NE(Wert(), Wert(u""));
    EXPECT_NE(Wert::null(), Wert(u""));
    EXPECT_TRUE(Wert().istLeerOderNull());
    EXPECT_TRUE(Wert::null().istLeerOderNull());
    EXPECT_FALSE(Wert(u"").istLeerOderNull());
}

TEST(Wert, JedeArtIstSieSelbst) {
    EXPECT_EQ(Wert(true).art(), Wert::Art::Wahrheit);
    EXPECT_EQ(Wert(7).art(), Wert::Art::Ganzzahl);
    EXPECT_EQ(Wert(qint64(7)).art(), Wert::Art::Ganzzahl);
    EXPECT_EQ(Wert(7.0).art(), Wert::Art::Gleitzahl);
    EXPECT_EQ(Wert(Waehrung{1}).art(), Wert::Art::Waehrung);
    EXPECT_EQ(Wert(DatumZeit{1}).art(), Wert::Art::DatumZeit);
    EXPECT_EQ(Wert(u"7").art(), Wert::Art::Text);
    EXPECT_EQ(Wert(QByteArray("7")).art(), Wert::Art::Bytes);
    EXPECT_EQ(Wert(Dezimal{}).art(), Wert::Art::Dezimal);
}

TEST(Wert, GleichNurBeiGleicherArt) {
    EXPECT_EQ(Wert(7), Wert(qint64(7)));
    EXPECT_NE(Wert(7), Wert(7.0));
    EXPECT_NE(Wert(7), Wert(u"7"));
    EXPECT_NE(Wert(true), Wert(1));
}

TEST(Wert, ZahlenSindZahlenUndSonstNichts) {
    for (const Wert& zahl : {Wert(0), Wert(0.5), Wert(Waehrung{}), Wert(DatumZeit{}), Wert(Dezimal{})})
        EXPECT_TRUE(zahl.istZahl());
    for (const Wert& keine : {Wert(), Wert::null(), Wert(true), Wert(u"12"), Wert(QByteArray("12"))})
        EXPECT_FALSE(keine.istZahl());
}

TEST(Wert, ZahltextIstDeutschMitHoechstensFuenfzehnStellen) {
    const std::vector<std::pair<double, const char16_t*>> faelle = {
        {0, u"0"},
        {-0.0, u"0"},
        {1, u"1"},
        {-1, u"-1"},
        {0.5, u"0,5"},
        {-2.25, u"-2,25"},
        {100, u"100"},
        {50667, u"50667"},
        {0.1 + 0.2, u"0,3"},
        {1.0 / 3, u"0,333333333333333"},
        {2.0 / 3, u"0,666666666666667"},
        {123456789012345.0, u"123456789012345"},
        {99999999999999.9, u"99999999999999,9"},
        {999999999999999.0, u"999999999999999"},
        {1e15, u"1E+15"},
        {1.5e20, u"1,5E+20"},
        {-1.5e20, u"-1,5E+20"},
        {1e100, u"1E+100"},
        {0.0001, u"0,0001"},
        {1e-15, u"0,000000000000001"},
        {1e-16, u"1E-16"},
        {2.5e-300, u"2,5E-300"},
        {double(0.1f), u"0,100000001490116"},
        {std::numeric_limits<double>::infinity(), u"INF"},
        {-std::numeric_limits<double>::infinity(), u"-INF"},
        {std::nan(""), u"NaN"},
    };
    for (const auto& [zahl, text] : faelle) {
        SCOPED_TRACE(zahl);
        EXPECT_EQ(zahlText(zahl), QString::fromUtf16(text));
        EXPECT_EQ(Wert(zahl).alsText(), QString::fromUtf16(text));
    }
}

TEST(Wert, WaehrungstextIstExakt) {
    const std::vector<std::pair<qint64, const char16_t*>> faelle = {
        {0, u"0"},
        {10000, u"1"},
        {12500, u"1,25"},
        {1, u"0,0001"},
        {-1, u"-0,0001"},
        {-123450, u"-12,345"},
        {std::numeric_limits<qint64>::max(), u"922337203685477,5807"},
        {std::numeric_limits<qint64>::min(), u"-922337203685477,5808"},
    };
    for (const auto& [betrag, text] : faelle)
        EXPECT_EQ(Wert(Waehrung{betrag}).alsText(), QString::fromUtf16(text)) << betrag;
}

TEST(Wert, DezimaltextIstExakt) {
    constexpr quint64 alles = std::numeric_limits<quint64>::max();
    const std::vector<std::pair<Dezimal, const char16_t*>> faelle = {
        {{false, 0, 0, 0}, u"0"},
        {{true, 0, 0, 2}, u"0"},
        {{false, 0, 12345, 2}, u"123,45"},
        {{true, 0, 12300, 2}, u"-123"},
        {{false, 0, 5, 3}, u"0,005"},
        {{false, 1, 0, 0}, u"18446744073709551616"},
        {{false, 0xffffffff, alles, 0}, u"79228162514264337593543950335"},
        {{true, 0xffffffff, alles, 28}, u"-7,9228162514264337593543950335"},
        {{false, 0, 1, 28}, u"0,0000000000000000000000000001"},
    };
    for (const auto& [zahl, text] : faelle) EXPECT_EQ(Wert(zahl).alsText(), QString::fromUtf16(text));
}

TEST(Wert, DatumstextMitUndOhneUhrzeit) {
    const std::vector<std::pair<double, const char16_t*>> faelle = {
        {37256, u"31.12.2001"},
        {37256 + 8.25 / 24, u"31.12.2001 08:15:00"},
        {0, u"00:00:00"},
        {0.5, u"12:00:00"},
        {1, u"31.12.1899"},
        {37256 + 86399 * kSekunde, u"31.12.2001 23:59:59"},
        {37256 + 86399.7 * kSekunde, u"01.01.2002"},
        {-657434, u"01.01.0100"},
        {2958465, u"31.12.9999"},
    };
    for (const auto& [tage, text] : faelle)
        EXPECT_EQ(Wert(DatumZeit{tage}).alsText(), QString::fromUtf16(text)) << tage;
}

TEST(Wert, VorDemNulltagZaehltDieUhrzeitVorwaerts) {
    EXPECT_EQ(datumText({-1}), u"29.12.1899");
    EXPECT_EQ(datumText({-1.25}), u"29.12.1899 06:00:00");
    EXPECT_EQ(datumText({-1.75}), u"29.12.1899 18:00:00");
    EXPECT_EQ(datumText({-0.75}), u"18:00:00");
    EXPECT_EQ(datumText({-2 - 86399.9 * kSekunde}), u"29.12.1899");
}

TEST(Wert, UnmoeglichesDatumHatKeinenText) {
    EXPECT_EQ(datumText({-657435}), u"");
    EXPECT_EQ(datumText({2958466}), u"");
    EXPECT_EQ(datumText({1e300}), u"");
    EXPECT_EQ(datumText({std::nan("")}), u"");
}

TEST(Wert, UebrigeTexte) {
    EXPECT_EQ(Wert(true).alsText(), u"Wahr");
    EXPECT_EQ(Wert(false).alsText(), u"Falsch");
    EXPECT_EQ(Wert(-32768).alsText(), u"-32768");
    EXPECT_EQ(Wert(u" a ").alsText(), u" a ");
    EXPECT_EQ(Wert().alsText(), u"");
    EXPECT_EQ(Wert::null().alsText(), u"");
    EXPECT_EQ(Wert(QByteArray("abc")).alsText(), u"");
}

TEST(Wert, AlsZahl) {
    EXPECT_EQ(Wert(true).alsZahl(), -1);
    EXPECT_EQ(Wert(false).alsZahl(), 0);
    EXPECT_EQ(Wert().alsZahl(), 0);
    EXPECT_EQ(Wert(-3).alsZahl(), -3);
    EXPECT_EQ(Wert(2.5).alsZahl(), 2.5);
    EXPECT_EQ(Wert(Waehrung{-12345}).alsZahl(), -1.2345);
    EXPECT_EQ(Wert(DatumZeit{-1.25}).alsZahl(), -1.25);
    EXPECT_EQ(Wert(Dezimal{true, 0, 12345, 2}).alsZahl(), -123.45);
    EXPECT_EQ(Wert(Dezimal{false, 1, 0, 0}).alsZahl(), 18446744073709551616.0);
}

TEST(Wert, OrdnungVonKleinNachGross) {
    constexpr qint64 gross = qint64(1) << 53;
    const std::vector<std::vector<Wert>> reihen = {
        {Wert::null(), Wert(-5), Wert(0), Wert(gross), Wert(gross + 1)},
        {Wert(), Wert(u""), Wert(u"A"), Wert(u"Z"), Wert(u"a"), Wert(u"aa"), Wert(u"ä")},
        {Wert::null(), Wert(true), Wert(false)},
        {Wert::null(), Wert(-1.5), Wert(0.0), Wert(1e300)},
        {Wert(Waehrung{gross}), Wert(Waehrung{gross + 1})},
        {Wert(DatumZeit{-1.5}), Wert(DatumZeit{0}), Wert(DatumZeit{37256}), Wert(DatumZeit{37256.5})},
        {Wert(QByteArray("")), Wert(QByteArray("a")), Wert(QByteArray("a\xff")), Wert(QByteArray("b"))},
        {Wert(Dezimal{true, 1, 1, 2}), Wert(Dezimal{true, 1, 0, 2}), Wert(Dezimal{true, 0, 0, 2}),
         Wert(Dezimal{false, 1, 0, 2}), Wert(Dezimal{false, 1, 1, 2})},
        {Wert(Dezimal{false, 0, 2, 1}), Wert(Dezimal{false, 0, 1, 0})},
    };
    for (const auto& reihe : reihen)
        for (size_t i = 0; i < reihe.size(); ++i)
            for (size_t j = 0; j < reihe.size(); ++j) {
                SCOPED_TRACE(::testing::Message() << &reihe - reihen.data() << ": " << i << ", " << j);
                EXPECT_EQ(wertVergleichen(reihe[i], reihe[j]), std::weak_ordering(i <=> j));
            }
}

TEST(Wert, LeerUndNullSindInDerOrdnungGleich) {
    EXPECT_EQ(wertVergleichen(Wert(), Wert::null()), std::weak_ordering::equivalent);
    EXPECT_EQ(wertVergleichen(Wert::null(), Wert()), std::weak_ordering::equivalent);
}

TEST(Wert, DezimalNullHatKeinVorzeichen) {
    EXPECT_EQ(wertVergleichen(Wert(Dezimal{true, 0, 0, 2}), Wert(Dezimal{false, 0, 0, 2})),
              std::weak_ordering::equivalent);
}

}  // namespace
