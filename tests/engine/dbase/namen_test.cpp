// Names of tables and fields.
#include "engine/dbase/namen.h"

#include <gtest/gtest.h>

namespace {

using namespace dbase;

TEST(DbaseNamen, Tabellen) {
    for (const char16_t* name : {u"A", u"ADRESSEN", u"a-b c", u"Köln", u"TEMP_DS", u"COM", u"LPT10", u"1998"})
        EXPECT_TRUE(tabellennameErlaubt(QString::fromUtf16(name))) << QString::fromUtf16(name).toStdString();
    for (const char16_t* name :
         {u"",   u"ADRESSEN1", u"a.b", u"a:b", u"a/b", u"a\\b", u"a*",  u"a?",   u"[a",   u"a]",   u"a\"",
          u"<a", u"a>",        u"a|b", u" a",  u"a ",  u"con",  u"NUL", u"COM1", u"lpt9", u"a\x1F"})
        EXPECT_FALSE(tabellennameErlaubt(QString::fromUtf16(name))) << QString::fromUtf16(name).toStdString();
}

TEST(DbaseNamen, NeueFelder) {
    const struct {
        const char16_t* wunsch;
        const char16_t* name;
    } faelle[] = {{u"Vorname", u"VORNAME"},
                  {u"Straße", u"STRAßE"},
                  {u"TEMP_DSS", u"TEMP_DSS"},
                  {u"Größe (cm)", u"GRÖßE__CM_"},
                  {u"2. Name", u"F2__NAME"},
                  {u"Ansprechpartner", u"ANSPRECHPA"},
                  {u"_x", u"F_X"},
                  {u"Čech", u"F_ECH"},
                  {u"€", u"F_"}};
    for (const auto& fall : faelle)
        EXPECT_EQ(neuerFeldname(QString::fromUtf16(fall.wunsch), Zeichensatz(850), {}),
                  QString::fromUtf16(fall.name));
}

TEST(DbaseNamen, NieZweimalDerselbe) {
    std::vector<QString> vergeben;
    for (int i = 0; i < 250; ++i) {
        const QString name =
            neuerFeldname(QStringLiteral("Ansprechpartner %1").arg(i), Zeichensatz(1252), vergeben);
        ASSERT_LE(name.size(), kMaxFeldname);
        for (const QString& anderer : vergeben) ASSERT_NE(anderer.toUpper(), name.toUpper());
        vergeben.push_back(name);
    }
    EXPECT_EQ(vergeben[0], QStringLiteral("ANSPRECHPA"));
    EXPECT_EQ(vergeben[1], QStringLiteral("ANSPRECH_1"));
    EXPECT_EQ(neuerFeldname(QStringLiteral("plz"), Zeichensatz(850), {QStringLiteral("Plz")}),
              QStringLiteral("PLZ_1"));
}

TEST(DbaseNamen, GeleseneFelder) {
    EXPECT_EQ(lesbarerFeldname(QStringLiteral("Point_ID"), {}), QStringLiteral("Point_ID"));
    EXPECT_EQ(lesbarerFeldname(QStringLiteral("POINT_ID"), {QStringLiteral("Point_ID")}),
              QStringLiteral("POINT_ID_1"));
    EXPECT_EQ(lesbarerFeldname(QStringLiteral("ABCDEFGHIJ"), {QStringLiteral("abcdefghij")}),
              QStringLiteral("ABCDEFGH_1"));
    EXPECT_EQ(lesbarerFeldname(QString(), {QStringLiteral("A"), QStringLiteral("B")}),
              QStringLiteral("FELD3"));
    EXPECT_EQ(lesbarerFeldname(QStringLiteral("A\x07"
                                              "B  "),
                               {}),
              QStringLiteral("A_B"));
}

}  // namespace
