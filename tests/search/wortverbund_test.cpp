// The join of texts against looking at each pair.
#include "search/wortverbund.h"

#include <gtest/gtest.h>

#include <set>

#include "search/boesewerte.h"

namespace {

using Paare = std::vector<std::pair<int, int>>;

struct Bestand {
    Textvorrat vorrat;
    std::vector<Verbundtext> texte;
    void anfuegen(const QString& text, int zeilen = 1) { texte.push_back({vorrat.nummer(text), zeilen}); }
};

constexpr qint64 kViele = 1000000;

TEST(Wortverbund, AWordThatStandsInTheOtherText) {
    Bestand b;
    for (const char16_t* text : {u"meier", u"meierhof", u"berg meier", u"berg", u"amberg", u"anton"})
        b.anfuegen(QString::fromUtf16(text));
    const auto verbund = TexteVerbinden(b.vorrat, b.texte, kViele);
    ASSERT_TRUE(verbund);
    EXPECT_EQ((Paare{{0, 1}, {0, 2}, {1, 2}, {2, 3}, {2, 4}, {3, 4}}), verbund->paare);
}

TEST(Wortverbund, ATextGoesWithItselfWhenTwoRowsHaveIt) {
    Bestand b;
    b.anfuegen(QStringLiteral("4711"), 1);
    b.anfuegen(QStringLiteral("1234"), 2);
    const auto verbund = TexteVerbinden(b.vorrat, b.texte, kViele);
    ASSERT_TRUE(verbund);
    EXPECT_EQ((Paare{{1, 1}}), verbund->paare);
}

TEST(Wortverbund, FrequentWordsAreNotFollowed) {
    Bestand b;
    for (int i = 0; i < 500; ++i) b.anfuegen(QString::number(1000 + i));
    b.anfuegen(QStringLiteral("1"));
    b.anfuegen(QStringLiteral("a  b"));  // with an empty word, which stands everywhere
    b.anfuegen(QStringLiteral("1000 1001"));
    const auto verbund = TexteVerbinden(b.vorrat, b.texte, kViele);
    ASSERT_TRUE(verbund);
    EXPECT_TRUE(verbund->haeufig[500]);
    EXPECT_TRUE(verbund->haeufig[501]);
    EXPECT_FALSE(verbund->haeufig[502]);
    EXPECT_EQ((Paare{{0, 502}, {1, 502}}), verbund->paare);
}

TEST(Wortverbund, NothingWhenItWouldBeTooMuch) {
    Bestand b;
    for (int i = 0; i < 500; ++i) b.anfuegen(QStringLiteral("gmbh %1").arg(1000 + i));
    EXPECT_FALSE(TexteVerbinden(b.vorrat, b.texte, kViele)) << "every text has a frequent word";
    Bestand c;
    for (int i = 0; i < 100; ++i) c.anfuegen(QString::number(1000 + i / 10));
    EXPECT_TRUE(TexteVerbinden(c.vorrat, c.texte, 500));
    EXPECT_FALSE(TexteVerbinden(c.vorrat, c.texte, 499));
}

TEST(Wortverbund, FindsWhatLookingAtEachPairFinds) {
    size_t gefunden = 0;
    for (quint32 runde = 0; runde < 300; ++runde) {
        SCOPED_TRACE(runde);
        BoeseWerte werte(runde);
        Bestand b;
        for (const std::vector<Wert>& zeile : werte.zeilen({{3, 8}}, 40 + int(runde % 80)))
            if (const QString text = zeile[0].alsText(); !text.isEmpty())
                b.anfuegen(text, 1 + int(runde % 2));
        const auto verbund = TexteVerbinden(b.vorrat, b.texte, kViele);
        if (!verbund) continue;
        const std::set<std::pair<int, int>> ist(verbund->paare.begin(), verbund->paare.end());
        EXPECT_EQ(ist.size(), verbund->paare.size()) << "each once";
        for (int i = 0; i < int(b.texte.size()); ++i)
            for (int j = i; j < int(b.texte.size()); ++j) {
                const bool haeufig = verbund->haeufig[size_t(i)] || verbund->haeufig[size_t(j)];
                const bool einzeln = i == j && b.texte[size_t(i)].zeilen == 1;
                const bool soll =
                    !haeufig && !einzeln &&
                    b.vorrat.woerterVergleichen(b.texte[size_t(i)].text, b.texte[size_t(j)].text) > 0;
                ASSERT_EQ(soll, ist.contains({i, j})) << i << ' ' << j;
                gefunden += soll;
            }
    }
    EXPECT_GT(gefunden, 5000u);
}

}  // namespace
