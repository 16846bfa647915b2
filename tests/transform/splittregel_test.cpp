// What a split makes of values.
#include "transform/splittregel.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const Wert& wert, std::ostream* aus) {
    *aus << (wert.istNull() ? "Null" : wert.istLeer() ? "Empty" : '"' + wert.alsText().toStdString() + '"');
}

namespace {

const Wert kNull = Wert::null();

struct Splittfall {
    const char* name;
    Splittart art;
    Wert erster, zweiter;
    QString trennzeichen;
    std::array<Wert, 3> soll;
};

class Splittregel : public testing::TestWithParam<Splittfall> {};

TEST_P(Splittregel, Teile) {
    const Splittfall& fall = GetParam();
    EXPECT_EQ(Splitten(fall.art, fall.erster, fall.zweiter, fall.trennzeichen), fall.soll);
}

constexpr auto kPlz = Splittart::PlzOrt;
constexpr auto kStr = Splittart::StrasseHausnummer;
constexpr auto kName = Splittart::AnredeVornameName;
constexpr auto kTel = Splittart::VorwahlDurchwahl;
constexpr auto kFax = Splittart::VorwahlTelefonTelefax;
constexpr auto kFrei = Splittart::Trennzeichen;

INSTANTIATE_TEST_SUITE_P(
    Faelle, Splittregel,
    testing::Values(
        Splittfall{"PlzOrt", kPlz, u"53111 Bonn", {}, {}, {u"53111", u"Bonn", kNull}},
        Splittfall{"NurOrt", kPlz, u"Bonn", {}, {}, {kNull, u"Bonn", kNull}},
        Splittfall{"StrasseHausnummer", kStr, u"Hauptstr. 12a", {}, {}, {u"Hauptstr.", u"12a", kNull}},
        Splittfall{"AnredeVornameName", kName, u"Herr Hans Meyer", {}, {}, {u"Herr", u"Hans", u"Meyer"}},
        Splittfall{"OhneZweitenTeilKeinDritter", kName, u"Meyer", {}, {}, {kNull, kNull, kNull}},
        Splittfall{"LeerzeichenAmEndeGibtLeerenDrittenTeil", kName, u"Hans ", {}, {}, {kNull, u"Hans", u""}},
        Splittfall{"ZweiterZaehltNichtBeimNamen",
                   kName,
                   u"Herr Hans Meyer",
                   u"Frau Anna Schulz",
                   {},
                   {u"Herr", u"Hans", u"Meyer"}},
        Splittfall{"VorwahlDurchwahl", kTel, u"0228/123456", {}, {}, {u"0228", u"123456", kNull}},
        Splittfall{
            "TelefonUndFax", kFax, u"0228/123456", u"0228/123457", {}, {u"0228", u"123456", u"123457"}},
        Splittfall{
            "VorwahlAusDemZweiten", kFax, u"123456", u"0228/123457", {}, {u"0228", u"123456", u"123457"}},
        Splittfall{"VorwahlDesErstenGehtVor",
                   kFax,
                   u"0228/123456",
                   u"0221/123457",
                   {},
                   {u"0228", u"123456", u"123457"}},
        Splittfall{"ErsterNullLaesstAllesNull", kFax, kNull, u"0228/123457", {}, {kNull, kNull, kNull}},
        Splittfall{"ErsterLeerLaesstAllesNull", kFax, u"", u"0228/123457", {}, {kNull, kNull, kNull}},
        Splittfall{"ZweiterNull", kFax, u"0228/123456", kNull, {}, {u"0228", u"123456", kNull}},
        Splittfall{"AmTrennzeichen", kFrei, u"eins-zwei-drei", {}, "-", {u"eins", u"zwei-drei", kNull}},
        Splittfall{"BeginntMitDemTrennzeichen", kFrei, u"-zwei", {}, "-", {kNull, u"zwei", kNull}},
        Splittfall{"EndetMitDemTrennzeichen", kFrei, u"eins-", {}, "-", {u"eins", kNull, kNull}},
        Splittfall{"OhneTrennzeichen", kFrei, u"eins", {}, "-", {u"eins", kNull, kNull}},
        Splittfall{"LangesTrennzeichenWirdUmEinZeichenGekuerzt",
                   kFrei,
                   u"eins::zwei",
                   {},
                   "::",
                   {u"eins", u":zwei", kNull}},
        Splittfall{"GrossUndKleinSindZweierlei", kFrei, u"einsXzwei", {}, "x", {u"einsXzwei", kNull, kNull}},
        Splittfall{"ZahlOhneTrennzeichen", kFrei, 12, {}, "-", {12, kNull, kNull}},
        Splittfall{"Null", kPlz, kNull, {}, {}, {kNull, kNull, kNull}},
        Splittfall{"LeererText", kFrei, u"", {}, "-", {kNull, kNull, kNull}}),
    [](const auto& fall) { return std::string(fall.param.name); });

TEST(NeueFelder, ZweiOderDrei) {
    const int soll[] = {2, 2, 3, 2, 3, 2};
    for (int typ = 0; typ < 6; ++typ) EXPECT_EQ(NeueFelder(Splittart(typ)), soll[typ]) << typ;
}

}  // namespace
