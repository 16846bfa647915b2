// The message boxes and the failure they tell about.
#include "run/meldungen.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/fehler.h"
#include "engine/dao/workspace.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

class Meldungen : public testing::Test {
  protected:
    Meldungen() {
        ZustandZuruecksetzen();
        FehlerVergessen();
    }
    ~Meldungen() override { ZustandZuruecksetzen(); }

    static void merken(int nummer, const QString& beschreibung) {
        try {
            throw EngineFehler(nummer, beschreibung);
        } catch (...) {
            FehlerMerken();
        }
    }

    // The extra line that the list of the engine's errors makes.
    static QString zeile() { return dao::DBEngine::ErrorsCount() > 0 ? QStringLiteral("\r") : QString(); }

    Fensterattrappe fenster_;
};

TEST_F(Meldungen, TitleIconAndButtonOfNewsAndWarning) {
    fenster_.erwarte(QStringLiteral("neu"));
    HinweisZeigen(QStringLiteral("neu"));
    fenster_.erwarte(QStringLiteral("halt"));
    AchtungZeigen(QStringLiteral("halt"));
    EXPECT_EQ(QStringLiteral(" Hinweis"), fenster_.meldungen[0].titel);
    EXPECT_EQ(Symbol::Information, fenster_.meldungen[0].symbol);
    EXPECT_EQ(Knoepfe::Ok, fenster_.meldungen[0].knoepfe);
    EXPECT_EQ(QStringLiteral(" Achtung!"), fenster_.meldungen[1].titel);
    EXPECT_EQ(Symbol::Ausrufezeichen, fenster_.meldungen[1].symbol);
    EXPECT_EQ(Knoepfe::Ok, fenster_.meldungen[1].knoepfe);
}

TEST_F(Meldungen, APlainBoxHasTheProgramsNameAndNoIcon) {
    fenster_.erwarte(QStringLiteral("schlicht"));
    KastenZeigen(QStringLiteral("schlicht"));
    EXPECT_EQ(QStringLiteral("Lindgarn"), fenster_.meldungen[0].titel);
    EXPECT_EQ(Symbol::Keines, fenster_.meldungen[0].symbol);
    EXPECT_EQ(Knoepfe::Ok, fenster_.meldungen[0].knoepfe);
}

TEST_F(Meldungen, TheErrorBoxAnswersWithItsButton) {
    for (Knopf knopf : {Knopf::Abbrechen, Knopf::Wiederholen, Knopf::Ignorieren}) {
        fenster_.erwarte(QStringLiteral("Fehler.") + zeile(), knopf);
        EXPECT_EQ(knopf, FehlerZeigen(QStringLiteral("Fehler.")));
    }
    EXPECT_EQ(QStringLiteral(" Fehler!"), fenster_.meldungen[0].titel);
    EXPECT_EQ(Symbol::Kritisch, fenster_.meldungen[0].symbol);
    EXPECT_EQ(Knoepfe::AbbrechenWiederholenIgnorieren, fenster_.meldungen[0].knoepfe);
    EXPECT_EQ(Knopf::Ignorieren, fenster_.meldungen[0].vorwahl);
    EXPECT_EQ(3, int(Knopf::Abbrechen));
    EXPECT_EQ(4, int(Knopf::Wiederholen));
    EXPECT_EQ(5, int(Knopf::Ignorieren));
}

TEST_F(Meldungen, TheSystemsOwnMessageIsAppended) {
    merken(94, QStringLiteral("Null."));
    fenster_.erwarte(QStringLiteral("Fehler.\rSystemmeldung:\rNull.") + zeile(), Knopf::Ignorieren);
    FehlerZeigen(QStringLiteral("Fehler."));
}

TEST_F(Meldungen, WithoutASystemTextTheMessageStandsAlone) {
    merken(94, QString());
    fenster_.erwarte(QStringLiteral("Fehler.") + zeile(), Knopf::Ignorieren);
    FehlerZeigen(QStringLiteral("Fehler."));
}

TEST_F(Meldungen, SwitchedOffTheSystemsMessageIsNotTold) {
    gSystemmeldungZeigen = false;
    merken(94, QStringLiteral("Null."));
    fenster_.erwarte(QStringLiteral("Fehler.") + zeile(), Knopf::Ignorieren);
    FehlerZeigen(QStringLiteral("Fehler."));
}

TEST_F(Meldungen, AFailureIsToldOnce) {
    merken(94, QStringLiteral("Null."));
    fenster_.sonst = [](const Meldung&) { return Knopf::Ignorieren; };
    FehlerZeigen(QStringLiteral("Erster."));
    FehlerZeigen(QStringLiteral("Zweiter."));
    EXPECT_EQ(QStringLiteral("Zweiter.") + zeile(), fenster_.meldungen[1].text);
    EXPECT_EQ(0, FehlerNummerGemerkt());
}

TEST_F(Meldungen, AfterAFailureOfTheEngineTheBoxGrowsByALine) {
    merken(kNichtGefunden, QStringLiteral("Fehlt."));
    EXPECT_EQ(kNichtGefunden, FehlerNummerGemerkt());
    fenster_.erwarte(QStringLiteral("Fehler.\rSystemmeldung:\rFehlt.\r"), Knopf::Ignorieren);
    FehlerZeigen(QStringLiteral("Fehler."));
    // The engine's list is not emptied by what goes well afterwards.
    fenster_.erwarte(QStringLiteral("Später.\r"), Knopf::Ignorieren);
    FehlerZeigen(QStringLiteral("Später."));
}

TEST_F(Meldungen, OtherFailuresHaveNoNumber) {
    try {
        throw std::runtime_error("voll");
    } catch (...) {
        FehlerMerken();
    }
    EXPECT_EQ(0, FehlerNummerGemerkt());
    EXPECT_EQ(QStringLiteral("voll"), FehlerBeschreibung());
    try {
        throw 5;
    } catch (...) {
        FehlerMerken();
    }
    EXPECT_EQ(QString(), FehlerBeschreibung());
}

TEST_F(Meldungen, AQuestionIsYesOnJa) {
    fenster_.erwarte(QStringLiteral("Ja?"), Knopf::Ja);
    EXPECT_TRUE(FrageStellen(QStringLiteral("Ja?"), Symbol::Information, Knopf::Nein));
    fenster_.erwarte(QStringLiteral("Ja?"), Knopf::Nein);
    EXPECT_FALSE(FrageStellen(QStringLiteral("Ja?"), Symbol::Information, Knopf::Nein));
    EXPECT_EQ(QString(), fenster_.meldungen[0].titel);
    EXPECT_EQ(Symbol::Information, fenster_.meldungen[0].symbol);
    EXPECT_EQ(Knopf::Nein, fenster_.meldungen[0].vorwahl);
}

}  // namespace
