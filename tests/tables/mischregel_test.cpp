// The mapping table: what a field of the first table takes from the second one.
#include "tables/mischregel.h"

#include <gtest/gtest.h>

#include <map>

#include "engine/typen.h"
#include "fields/einstellungen.h"

namespace {

const Wert kNull = Wert::null();
using Quellen = std::map<int, Wert>;

struct Mischfall {
    const char* name;
    FeldZuordnung ziel;
    Quellen quellen;
    Wert soll;
};

class Mischregel : public testing::TestWithParam<Mischfall> {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
};

TEST_P(Mischregel, Wert) {
    const Mischfall& fall = GetParam();
    const auto quelle = [&](int art) {
        const auto fund = fall.quellen.find(art);
        return fund == fall.quellen.end() ? nullptr : &fund->second;
    };
    EXPECT_EQ(MischWert(fall.ziel, quelle), fall.soll);
}

const Quellen kAlle{
    {21, u"Meyer GmbH"},      {22, u"Meyer GmbH"},      {23, u" Handel "},   {31, u"Weg 7"},
    {32, u"Weg 7"},           {33, u"53111 Bonn"},      {34, u"53111 Bonn"}, {41, u"Herr Hans Meyer"},
    {42, u"Herr Hans Meyer"}, {43, u"Herr Hans Meyer"}, {44, u" Einkauf "},  {51, u"0228/123456"},
    {52, u"0228/123456"},     {53, u"0228/123457"},     {61, u"a@b.de "},    {62, u" www.b.de"}};

Quellen ohne(std::initializer_list<int> arten) {
    Quellen rest = kAlle;
    for (const int art : arten) rest.erase(art);
    return rest;
}

Quellen mit(int art, const Wert& wert) {
    Quellen alle = kAlle;
    alle[art] = wert;
    return alle;
}

INSTANTIATE_TEST_SUITE_P(
    Zeilen, Mischregel,
    testing::Values(
        Mischfall{"Firmenname", {2, 1}, kAlle, u"Meyer"}, Mischfall{"Rechtsform", {2, 2}, kAlle, u"GmbH"},
        Mischfall{"FirmennameUndRechtsform", {2, 3}, kAlle, u"Meyer GmbH"},
        Mischfall{"Branche", {2, 4}, kAlle, u" Handel "}, Mischfall{"Strasse", {3, 1}, kAlle, u"Weg"},
        Mischfall{"Hausnummer", {3, 2}, kAlle, u"7"},
        Mischfall{"StrasseUndHausnummer", {3, 3}, kAlle, u"Weg 7"},
        Mischfall{"Postleitzahl", {3, 4}, kAlle, u"53111"}, Mischfall{"Ort", {3, 8}, kAlle, u"Bonn"},
        Mischfall{"PlzUndOrt", {3, 12}, kAlle, u"53111 Bonn"}, Mischfall{"Anrede", {4, 1}, kAlle, u"Herr"},
        Mischfall{"Vorname", {4, 2}, kAlle, u"Hans"},
        Mischfall{"VornameFaelltAufDenRohwertZurueck", {4, 2}, mit(42, u"Hans"), u"Hans"},
        Mischfall{"Nachname", {4, 4}, kAlle, u"Meyer"},
        Mischfall{"VornameUndNachname", {4, 6}, kAlle, u"Hans Meyer"},
        Mischfall{"VornameUndNachnameOhneRohwert", {4, 6}, mit(42, u"Hans"), u"Meyer"},
        Mischfall{"AnredeUndNachname", {4, 5}, kAlle, u"Herr Meyer"},
        Mischfall{"AnredeVornameNachname", {4, 7}, kAlle, u"Herr Hans Meyer"},
        Mischfall{"AnredeVornameNachnameOhneRohwert", {4, 7}, mit(42, u"Hans"), u"Herr Meyer"},
        Mischfall{"Abteilung", {4, 8}, kAlle, u" Einkauf "}, Mischfall{"Vorwahl", {5, 1}, kAlle, u"0228"},
        Mischfall{"Telefon", {5, 2}, kAlle, u"123456"}, Mischfall{"Telefax", {5, 4}, kAlle, u"123457"},
        Mischfall{"VorwahlUndTelefon", {5, 3}, kAlle, u"0228 / 123456"},
        Mischfall{"VorwahlUndTelefax", {5, 5}, kAlle, u"0228 / 123457"},
        Mischfall{"VorwahlFehltImWert", {5, 3}, mit(51, u"x"), u"/ 123456"},
        Mischfall{"VorwahlOhneQuelle", {5, 3}, ohne({51}), u"/ 123456"},
        Mischfall{"Emailadresse", {6, 1}, kAlle, u"a@b.de "},
        Mischfall{"Internetadresse", {6, 2}, kAlle, u" www.b.de"},
        Mischfall{"OhneQuelle", {3, 1}, ohne({31}), Wert()},
        Mischfall{"ErsterTeilOhneQuelle", {3, 3}, ohne({31}), u"7"},
        Mischfall{"ZweiterTeilOhneQuelle", {3, 3}, ohne({32}), u"Weg"},
        Mischfall{"ZweiterTeilOhneQuelleLaesstUngekuerzt", {3, 12}, {{33, u"53111 Bonn"}}, u"53111"},
        Mischfall{"ZweiterTeilOhneQuelleMachtAusLeeremKeinenText", {5, 3}, {{51, u"x"}}, Wert()},
        Mischfall{"MittlererTeilOhneQuelle", {4, 7}, ohne({42}), u"Herr Meyer"},
        Mischfall{"LetzterTeilOhneQuelle", {4, 7}, ohne({43}), u"Herr Hans"},
        Mischfall{"AlleTeileOhneQuelle", {4, 7}, {}, Wert()},
        Mischfall{"NullBleibtWieErDasteht", {6, 1}, mit(61, kNull), kNull},
        Mischfall{"NullDurchEinenParserIstLeer", {3, 1}, mit(31, kNull), Wert()},
        Mischfall{"BeideTeileNichtGefunden", {5, 3}, {{51, u"x"}, {52, u""}}, u"/"},
        Mischfall{"Gruppe0", {0, 1}, kAlle, Wert()}, Mischfall{"Index", {1, 1}, kAlle, Wert()},
        Mischfall{"StrasseMitPostleitzahl", {3, 5}, kAlle, Wert()},
        Mischfall{"AbteilungMitNachname", {4, 12}, kAlle, Wert()},
        Mischfall{"AlleDreiNummern", {5, 7}, kAlle, Wert()}),
    [](const auto& fall) { return std::string(fall.param.name); });

TEST(Mischfeld, NurEinZaehlerBleibtAussen) {
    EXPECT_FALSE(MischfeldAusgelassen(dao::dbText, 0));
    EXPECT_TRUE(MischfeldAusgelassen(dao::dbLong, dao::dbAutoIncrField));
    EXPECT_TRUE(MischfeldAusgelassen(dao::dbLong, dao::dbAutoIncrField | 1));
    for (const int typ : {1, 5, 8, 22}) EXPECT_FALSE(MischfeldAusgelassen(typ, dao::dbAutoIncrField)) << typ;
}

}  // namespace
