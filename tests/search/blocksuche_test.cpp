// Blocks of the sorted table: keys, Null, empty keys.
#include "search/blocksuche.h"

#include <gtest/gtest.h>

namespace {

struct Fall {
    const char* name;
    int laenge;
    std::vector<Wert> spalte;
    std::vector<Suchblock> bloecke;
};

TEST(Blocksuche, RunsOfRecordsThatBeginAlike) {
    const Wert null = Wert::null();
    const std::vector<Fall> faelle{
        {"no record", 2, {}, {}},
        {"one record counts and has no pair", 2, {u"Meyer"}, {{1, 1}}},
        {"the first characters", 2, {u"Maier", u"Mayer", u"Meyer"}, {{1, 2}, {3, 3}}},
        {"a value shorter than the length shares only with its equal",
         5,
         {u"Ab", u"Ab", u"Abc"},
         {{1, 2}, {3, 3}}},
        {"case counts", 1, {u"a", u"A", u"a"}, {{1, 1}, {2, 2}, {3, 3}}},
        {"accents count", 1, {u"o", u"ö"}, {{1, 1}, {2, 2}}},
        {"an empty key does not count", 1, {u"", u"", u"a", u"a"}, {{3, 4}}},
        {"a blank is a key", 2, {u" ", u" "}, {{1, 2}}},
        {"numbers by their text", 2, {50667, 50668, 60311}, {{1, 2}, {3, 3}}},
        {"a Null at the front makes one uncounted block of all", 1, {null, u"a", u"b"}, {}},
        {"a Null on the way ends nothing", 1, {u"a", null, u"a", u"b", null}, {{1, 3}, {4, 5}}},
        {"a Null behind an empty key stays with it", 1, {u"", null, u"b"}, {{3, 3}}},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.name);
        Blocksuche suche(fall.laenge);
        for (const Wert& wert : fall.spalte) suche.naechster(wert);
        EXPECT_EQ(fall.bloecke, suche.fertig());
    }
}

TEST(Blocksuche, PairsOfABlock) {
    EXPECT_EQ(0, (Suchblock{4, 4}.paare()));
    EXPECT_EQ(1, (Suchblock{4, 5}.paare()));
    EXPECT_EQ(45, (Suchblock{1, 10}.paare()));
    EXPECT_EQ(179999700000, (Suchblock{1, 600000}.paare()));
}

}  // namespace
