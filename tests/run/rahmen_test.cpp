// The way from frame to frame: button states, filling, checking, both tables of successors.
#include "run/rahmen.h"

#include <gtest/gtest.h>

#include "base/fehler.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

namespace {

int gestartet = 0;  // the operation whose run was started last

template <int vorgang>
void einstieg() {
    gestartet = vorgang;
}

class Rahmen : public testing::Test {
  protected:
    Rahmen() {
        ZustandZuruecksetzen();
        gestartet = 0;
        LaufEinstiegSetzen(1, einstieg<1>);
        LaufEinstiegSetzen(2, einstieg<2>);
        LaufEinstiegSetzen(3, einstieg<3>);
        LaufEinstiegSetzen(4, einstieg<4>);
        LaufEinstiegSetzen(5, einstieg<5>);
        LaufEinstiegSetzen(6, einstieg<6>);
        gAusgangsTabelle = QStringLiteral("Kunden");
        gZweiteTabelle = QStringLiteral("Neue");
    }
    ~Rahmen() override { ZustandZuruecksetzen(); }

    // What the window was told, without checking and filling.
    QStringList oeffnen(int rahmen) {
        fenster_.protokoll.clear();
        RahmenOeffnen(rahmen, false);
        return fenster_.protokoll;
    }
    QStringList schliessen(int rahmen) {
        fenster_.protokoll.clear();
        EXPECT_TRUE(RahmenSchliessen(rahmen, false));
        return fenster_.protokoll;
    }

    Fensterattrappe fenster_;
};

struct Knopfzustand {
    QList<int> rahmen;
    QStringList beimOeffnen;
    QStringList beimSchliessen;
};

TEST_F(Rahmen, ButtonStatesOfEveryFrame) {
    const QString weiter = QStringLiteral("btnWeiter=Weiter  >>");
    const std::vector<Knopfzustand> tabelle{
        {{0}, {"btnZurück aus", "btnHilfe aus"}, {"btnZurück an", "btnHilfe an"}},
        {{1}, {"btnZurück aus"}, {"btnZurück an", "btnHilfe an"}},
        {{2, 3, 4, 7}, {}, {}},
        {{5}, {"btnWeiter aus"}, {"btnWeiter an"}},
        {{6}, {"btnZurück=Abbrechen", "btnWeiter aus"}, {"btnZurück=<<  Zurück", "btnWeiter an"}},
        {{11, 21, 31, 41}, {"btnWeiter=Starten"}, {weiter}},
        {{12, 22}, {"btnWeiter aus", "btnZurück aus"}, {"btnWeiter an", "btnZurück an"}},
        {{13, 23, 32, 42, 53, 63}, {"btnZurück aus", "btnWeiter=Fertig"}, {"btnZurück an", weiter}},
        {{51, 61}, {}, {weiter}},
    };
    int zahl = 0;
    for (const Knopfzustand& zeile : tabelle)
        for (int rahmen : zeile.rahmen) {
            SCOPED_TRACE(rahmen);
            ++zahl;
            const QString sichtbar = QStringLiteral("rahmen %1 ").arg(rahmen);
            EXPECT_EQ(zeile.beimOeffnen + QStringList(sichtbar + "an"), oeffnen(rahmen));
            EXPECT_EQ(rahmen, gRahmen);
            EXPECT_EQ(zeile.beimSchliessen + QStringList(sichtbar + "aus"), schliessen(rahmen));
            EXPECT_EQ(-1, gRahmen);
        }
    EXPECT_EQ(RahmenNummern().size(), zahl);
}

TEST_F(Rahmen, FillingComesBeforeShowingAndButtonsBeforeBoth) {
    RahmenOeffnen(6, true);
    EXPECT_EQ((QStringList{"btnZurück=Abbrechen", "btnWeiter aus", "fuellen 6", "rahmen 6 an"}),
              fenster_.protokoll);
}

TEST_F(Rahmen, AFailedCheckLeavesTheFrameAsItIs) {
    gRahmen = 31;
    fenster_.beimPruefen = [](int) { return false; };
    EXPECT_FALSE(RahmenSchliessen(31, true));
    EXPECT_EQ(31, gRahmen);
    EXPECT_EQ(QStringList{"pruefen 31"}, fenster_.protokoll);
    RahmenWechseln(31, 6, true, true);
    EXPECT_EQ(31, gRahmen);
}

TEST_F(Rahmen, ClosingWithoutCheckAsksNothing) {
    fenster_.beimPruefen = [](int) { return false; };
    EXPECT_TRUE(RahmenSchliessen(31, false));
}

TEST_F(Rahmen, FillingThatFailsOnceSucceedsOnWiederholen) {
    int versuche = 0;
    fenster_.beimFuellen = [&](int) {
        if (++versuche == 1) throw EngineFehler(1, QStringLiteral("kaputt"));
    };
    fenster_.erwarte(QStringLiteral("Fehler beim Öffnen des Rahmens 3.\rSystemmeldung:\rkaputt"),
                     Knopf::Wiederholen);
    RahmenOeffnen(3, true);
    EXPECT_EQ(2, versuche);
    EXPECT_EQ(3, gRahmen);
    EXPECT_FALSE(gFehler);
}

TEST_F(Rahmen, IgnorierenShowsTheFrameWithItsHalfFilling) {
    fenster_.beimFuellen = [](int) { throw EngineFehler(1, QString()); };
    fenster_.erwarte(QStringLiteral("Fehler beim Öffnen des Rahmens 63."), Knopf::Ignorieren);
    RahmenOeffnen(63, true);
    EXPECT_EQ(63, gRahmen);
    EXPECT_EQ(QStringLiteral("rahmen 63 an"), fenster_.protokoll.last());
}

TEST_F(Rahmen, AbbrechenLeavesTheNewFrameHidden) {
    gRahmen = -1;
    fenster_.beimFuellen = [](int) { throw EngineFehler(1, QString()); };
    fenster_.erwarte(QStringLiteral("Fehler beim Öffnen des Rahmens 3."), Knopf::Abbrechen);
    RahmenOeffnen(3, true);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(-1, gRahmen);
    EXPECT_FALSE(fenster_.protokoll.contains(QStringLiteral("rahmen 3 an")));
}

struct Weg {
    int vorgang;
    int schritt;
    int von;
    int nach;
    bool fuellen = true;  // for btnZurück
};

TEST_F(Rahmen, WhereWeiterLeads) {
    const std::vector<Weg> wege{
        {0, 0, 0, 1},  {0, 0, 1, 2},  {0, 0, 2, 3},  {0, 0, 3, 5},  {1, 0, 4, 11}, {5, 1, 4, 11},
        {6, 1, 4, 11}, {2, 0, 4, 21}, {3, 0, 4, 31}, {4, 0, 4, 41}, {1, 0, 7, 4},  {2, 0, 7, 4},
        {3, 0, 7, 4},  {4, 0, 7, 4},  {5, 1, 7, 7},  {6, 1, 7, 7},  {5, 2, 7, 4},  {6, 2, 7, 4},
        {5, 0, 51, 7}, {6, 0, 61, 7}, {1, 0, 13, 3}, {2, 0, 23, 3}, {3, 0, 32, 3}, {4, 0, 42, 3},
        {5, 0, 53, 3}, {6, 0, 63, 3},
    };
    for (const Weg& weg : wege) {
        SCOPED_TRACE(testing::Message() << weg.vorgang << "/" << weg.schritt << " from " << weg.von);
        gVorgang = quint8(weg.vorgang);
        gZuordnungsSchritt = quint8(weg.schritt);
        gRahmen = qint16(weg.von);
        fenster_.protokoll.clear();
        WeiterGehen();
        EXPECT_EQ(weg.nach, gRahmen);
        EXPECT_TRUE(fenster_.protokoll.contains(QStringLiteral("pruefen %1").arg(weg.von)));
        EXPECT_TRUE(fenster_.protokoll.contains(QStringLiteral("fuellen %1").arg(weg.nach)));
    }
}

TEST_F(Rahmen, WeiterFromTheAssignmentKeepsItForTheTableOfTheStep) {
    const FeldZuordnungen erste{{2, 1}};
    const FeldZuordnungen zweite{{3, 4}, {3, 8}};
    gVorgang = 5;
    gRahmen = 51;
    WeiterGehen();
    EXPECT_EQ(1, gZuordnungsSchritt);
    EXPECT_EQ(QStringLiteral("Kunden"), gZuordnungsTabelle);
    gFeldZuordnungen = erste;
    WeiterGehen();
    EXPECT_EQ(erste, gZuordnungenTabelle1);
    EXPECT_EQ(2, gZuordnungsSchritt);
    EXPECT_EQ(QStringLiteral("Neue"), gZuordnungsTabelle);
    gFeldZuordnungen = zweite;
    WeiterGehen();
    EXPECT_EQ(erste, gZuordnungenTabelle1);
    EXPECT_EQ(zweite, gZuordnungenTabelle2);
    EXPECT_EQ(4, gRahmen);
}

TEST_F(Rahmen, WeiterFromTheAssignmentOfOneTable) {
    gVorgang = 2;
    gRahmen = 7;
    gFeldZuordnungen = {{2, 3}};
    WeiterGehen();
    EXPECT_EQ(gFeldZuordnungen, gZuordnungenTabelle1);
    EXPECT_TRUE(gZuordnungenTabelle2.empty());
}

TEST_F(Rahmen, WhereZurueckLeads) {
    const std::vector<Weg> wege{
        {0, 0, 2, 1, false},  {0, 0, 3, 2, false},  {1, 0, 4, 7, false},  {2, 0, 4, 7, false},
        {3, 0, 4, 5, false},  {4, 0, 4, 5, false},  {5, 2, 4, 7, false},  {6, 2, 4, 7, false},
        {0, 0, 5, 3, true},   {5, 1, 7, 51, false}, {6, 1, 7, 61, false}, {5, 2, 7, 7, true},
        {6, 2, 7, 7, true},   {1, 0, 7, 5, false},  {2, 0, 7, 5, false},  {3, 0, 7, 5, false},
        {4, 0, 7, 5, false},  {1, 0, 11, 4, false}, {2, 0, 21, 4, false}, {3, 0, 31, 4, false},
        {4, 0, 41, 4, false}, {5, 0, 51, 5, false}, {6, 0, 61, 5, false},
    };
    for (const Weg& weg : wege) {
        SCOPED_TRACE(testing::Message() << weg.vorgang << "/" << weg.schritt << " from " << weg.von);
        gVorgang = quint8(weg.vorgang);
        gZuordnungsSchritt = quint8(weg.schritt);
        gRahmen = qint16(weg.von);
        fenster_.protokoll.clear();
        ZurueckGehen();
        EXPECT_EQ(weg.nach, gRahmen);
        EXPECT_TRUE(fenster_.protokoll.filter(QStringLiteral("pruefen")).isEmpty());
        EXPECT_EQ(weg.fuellen, !fenster_.protokoll.filter(QStringLiteral("fuellen")).isEmpty());
    }
}

TEST_F(Rahmen, ZurueckFromTheTargetLeadsToTheSecondTableAndThenTheFirst) {
    gVorgang = 6;
    gRahmen = 4;
    gZuordnungsSchritt = 2;
    ZurueckGehen();
    EXPECT_EQ(2, gZuordnungsSchritt);
    EXPECT_EQ(QStringLiteral("Neue"), gZuordnungsTabelle);
    ZurueckGehen();
    EXPECT_EQ(7, gRahmen);
    EXPECT_EQ(1, gZuordnungsSchritt);
    EXPECT_EQ(QStringLiteral("Kunden"), gZuordnungsTabelle);
    ZurueckGehen();
    EXPECT_EQ(61, gRahmen);
}

TEST_F(Rahmen, ZurueckInFrontOfTheFirstFrameDoesNothing) {
    gRahmen = 0;
    ZurueckGehen();
    EXPECT_EQ(0, gRahmen);
}

TEST_F(Rahmen, EachOperationButton) {
    struct Knopfweg {
        int index;
        int vorgang;
        int nach;
    };
    for (const Knopfweg& weg : {Knopfweg{3, 1, 7}, Knopfweg{2, 2, 7}, Knopfweg{1, 3, 4}, Knopfweg{0, 4, 4},
                                Knopfweg{4, 5, 51}, Knopfweg{5, 6, 61}}) {
        SCOPED_TRACE(weg.index);
        gRahmen = 5;
        gZuordnungsTabelle.clear();
        VorgangWaehlen(weg.index);
        EXPECT_EQ(weg.vorgang, gVorgang);
        EXPECT_EQ(weg.nach, gRahmen);
        EXPECT_EQ(weg.vorgang <= 2 ? gAusgangsTabelle : QString(), gZuordnungsTabelle);
    }
}

TEST_F(Rahmen, TheLastOptionsFrameStartsTheRunBetweenTwoFrames) {
    struct Start {
        int rahmen;
        int vorgang;
    };
    for (const Start& start :
         {Start{11, 1}, Start{11, 5}, Start{11, 6}, Start{21, 2}, Start{31, 3}, Start{41, 4}}) {
        SCOPED_TRACE(start.vorgang);
        gRahmen = qint16(start.rahmen);
        gVorgang = quint8(start.vorgang);
        gestartet = 0;
        WeiterGehen();
        EXPECT_EQ(start.vorgang, gestartet);
        EXPECT_EQ(-1, gRahmen);
    }
}

TEST_F(Rahmen, NoRunStartsFromAFrameThatDoesNotClose) {
    fenster_.beimPruefen = [](int) { return false; };
    gRahmen = 41;
    gVorgang = 4;
    WeiterGehen();
    EXPECT_EQ(0, gestartet);
    EXPECT_EQ(41, gRahmen);
}

TEST_F(Rahmen, AFailureOfACheckIsToldAndTheFrameStays) {
    fenster_.beimPruefen = [](int) -> bool {
        throw EngineFehler(kBeschaedigt, QStringLiteral("Seite 7 ist beschädigt."));
    };
    fenster_.erwarte(QStringLiteral("Seite 7 ist beschädigt."));
    gRahmen = 3;
    WeiterGehen();
    EXPECT_EQ(3, gRahmen);
    EXPECT_EQ(QStringLiteral(" Achtung!"), fenster_.meldungen.at(0).titel);
}

TEST_F(Rahmen, WeiterFindsOutOfTheGapThatAnAbandonedFillingLeaves) {
    gRahmen = -1;
    WeiterGehen();
    EXPECT_EQ(0, gRahmen);
    EXPECT_FALSE(fenster_.protokoll.contains(QStringLiteral("rahmen -1 aus")));
}

TEST_F(Rahmen, TheAbortQuestionSetsTheFlagOnJaOnly) {
    const QString frage = QStringLiteral("Wollen sie den aktuellen Vorgang wirklich abbrechen?");
    gRahmen = 6;
    fenster_.erwarte(frage, Knopf::Nein);
    ZurueckGehen();
    EXPECT_FALSE(gAbbruch);
    fenster_.erwarte(frage, Knopf::Ja);
    ZurueckGehen();
    EXPECT_TRUE(gAbbruch);
    EXPECT_EQ(6, gRahmen);
    const Meldung& meldung = fenster_.meldungen.at(0);
    EXPECT_EQ(QString(), meldung.titel);
    EXPECT_EQ(Symbol::Ausrufezeichen, meldung.symbol);
    EXPECT_EQ(Knoepfe::JaNein, meldung.knoepfe);
    EXPECT_EQ(Knopf::Nein, meldung.vorwahl);
}

}  // namespace
