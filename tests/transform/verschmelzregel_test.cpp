// What a merge makes of two values.
#include "transform/verschmelzregel.h"

#include <gtest/gtest.h>

namespace {

const Wert kNull = Wert::null();

TEST(Verschmelzregel, MitUndOhneTrennzeichen) {
    struct Fall {
        Wert erster, zweiter;
        std::optional<QString> trennzeichen;
        Wert soll;
    };
    const std::optional<QString> ohne;
    const QString lang(200, u'x');
    const Fall faelle[] = {{u"Hauptstr.", u"12", " ", u"Hauptstr. 12"},
                           {u"Hauptstr.", u"12", ohne, u"Hauptstr.12"},
                           {u"Hauptstr.", 12, " ", u"Hauptstr. 12"},
                           {1.5, true, "/", u"1,5/Wahr"},
                           {kNull, u"12", "-", u"-12"},
                           {u"12", kNull, "-", u"12-"},
                           {kNull, kNull, "-", u"-"},
                           {kNull, kNull, QString(), u""},
                           {kNull, kNull, ohne, kNull},
                           {u"", u"", ohne, u""},
                           {kNull, u"", ohne, u""},
                           {u"a", kNull, ohne, u"a"},
                           {lang, lang, "-", (lang + u'-' + lang).left(255)}};
    for (size_t i = 0; i < std::size(faelle); ++i)
        EXPECT_EQ(Verschmelzen(faelle[i].erster, faelle[i].zweiter, faelle[i].trennzeichen), faelle[i].soll)
            << i;
}

}  // namespace
