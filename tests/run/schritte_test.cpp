// Procedures as rows of steps: what each of the three buttons does.
#include "run/schritte.h"

#include <gtest/gtest.h>

#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

class SchritteTest : public testing::Test {
  protected:
    SchritteTest() {
        ZustandZuruecksetzen();
        gSystemmeldungZeigen = false;
        fenster_.sonst = [this](const Meldung& meldung) {
            text_ = meldung.text;
            return antwort_;
        };
    }
    ~SchritteTest() override { ZustandZuruecksetzen(); }

    // Three steps; the second one fails as often as told.
    void laufen(int fehlschlaege) {
        s_.ablauf(
            [&] {
                s_.tu([&] { spur_ += u'1'; });
                s_.tu([&] {
                    if (fehlschlaege-- > 0) throw EngineFehler(94, QStringLiteral("zwei"));
                    spur_ += u'2';
                });
                s_.tu([&] { spur_ += u'3'; });
            },
            [&] { spur_ += u'A'; });
    }

    Fensterattrappe fenster_;
    Knopf antwort_ = Knopf::Abbrechen;
    QString spur_;
    QString text_;
    Schritte s_{[] { return QStringLiteral("Fehler hier."); }};
};

TEST_F(SchritteTest, NothingIsAskedWhileNothingFails) {
    laufen(0);
    EXPECT_EQ(QStringLiteral("123"), spur_);
    EXPECT_TRUE(fenster_.meldungen.empty());
}

TEST_F(SchritteTest, WiederholenRunsTheFailingStepAgain) {
    antwort_ = Knopf::Wiederholen;
    laufen(3);
    EXPECT_EQ(QStringLiteral("123"), spur_);
    EXPECT_EQ(3u, fenster_.meldungen.size());
    EXPECT_TRUE(text_.startsWith(QStringLiteral("Fehler hier.")));
}

TEST_F(SchritteTest, IgnorierenGoesOnBehindIt) {
    antwort_ = Knopf::Ignorieren;
    laufen(1);
    EXPECT_EQ(QStringLiteral("13"), spur_);
}

TEST_F(SchritteTest, AbbrechenLeaves) {
    laufen(1);
    EXPECT_EQ(QStringLiteral("1A"), spur_);
}

TEST_F(SchritteTest, AnInnerAbbrechenDoesNotLeaveTheOuterProcedure) {
    Schritte aussen([] { return QStringLiteral("aussen"); });
    aussen.ablauf(
        [&] {
            aussen.tu([&] { laufen(1); });
            aussen.tu([&] { spur_ += u'9'; });
        },
        [&] { spur_ += u'B'; });
    EXPECT_EQ(QStringLiteral("1A9"), spur_);
}

TEST_F(SchritteTest, AnOuterAbbrechenPassesThroughTheInnerProcedure) {
    Schritte aussen([] { return QStringLiteral("aussen"); });
    aussen.ablauf(
        [&] {
            s_.ablauf([&] { aussen.tu([] { throw EngineFehler(94, QString()); }); }, [&] { spur_ += u'A'; });
        },
        [&] { spur_ += u'B'; });
    EXPECT_EQ(QStringLiteral("B"), spur_);
}

TEST_F(SchritteTest, AnObjectThatWasNeverMadeIsAFailure) {
    const std::unique_ptr<int> nichts;
    EXPECT_THROW(Gesetzt(nichts), EngineFehler);
    EXPECT_EQ(7, Gesetzt(std::make_unique<int>(7)));
}

TEST_F(SchritteTest, SomeFailuresDoNotMatter) {
    FehlerUebergehen([] { throw EngineFehler(3265, QString()); });
    FehlerUebergehen([] { throw 1; });
    EXPECT_TRUE(fenster_.meldungen.empty());
}

}  // namespace
