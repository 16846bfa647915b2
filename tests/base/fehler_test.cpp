// The engine's failure type and the breathing hook.
#include "base/fehler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "base/atempause.h"

namespace {

TEST(Fehler, TraegtNummerUndBeschreibung) {
    const EngineFehler fehler(kFeldZuKlein, QStringLiteral("Das Feld ist für die Daten zu klein."));
    EXPECT_EQ(fehler.nummer(), 3163);
    EXPECT_EQ(fehler.beschreibung(), u"Das Feld ist für die Daten zu klein.");
    EXPECT_STREQ(fehler.what(), "Das Feld ist für die Daten zu klein.");
}

TEST(Fehler, NurFehlerDerDatenbankZaehlen) {
    const int vorher = EngineFehlerAnzahl();
    EngineFehler(kUngueltigeNullVerwendung, QString());
    EngineFehler(2419, QString());
    EXPECT_EQ(EngineFehlerAnzahl(), vorher);
    EngineFehler(2420, QString());
    EngineFehler(kNichtInListe, QString());
    EXPECT_EQ(EngineFehlerAnzahl(), vorher + 2);
}

class Atem : public ::testing::Test {
  protected:
    void TearDown() override { AtempauseSetzen({}); }
    // Breathes for some tens of milliseconds; returns the number of calls.
    static int atmen() {
        const auto ende = std::chrono::steady_clock::now() + std::chrono::milliseconds(60);
        int rufe = 0;
        for (; std::chrono::steady_clock::now() < ende; ++rufe) Atempause();
        return rufe;
    }
};

TEST_F(Atem, OhneHakenGeschiehtNichts) {
    AtempauseSetzen({});
    EXPECT_NO_THROW(Atempause());
}

TEST_F(Atem, DerHakenLaeuftAbUndZuUndNichtBeiJedemRuf) {
    int laeufe = 0;
    AtempauseSetzen([&] { ++laeufe; });
    const int rufe = atmen();
    EXPECT_GE(laeufe, 2);
    EXPECT_LT(laeufe, rufe);
    EXPECT_LE(laeufe, 5);
}

TEST_F(Atem, ImHakenWirdNichtNochmalGeatmet) {
    int tiefe = 0, tiefste = 0;
    AtempauseSetzen([&] {
        tiefste = std::max(tiefste, ++tiefe);
        Atempause();
        --tiefe;
    });
    atmen();
    EXPECT_EQ(tiefste, 1);
}

TEST_F(Atem, WasDerHakenWirftEndetDenLaufUndDerNaechsteAtmetWieder) {
    int laeufe = 0;
    AtempauseSetzen([&] {
        ++laeufe;
        throw std::runtime_error("halt");
    });
    EXPECT_THROW(atmen(), std::runtime_error);
    EXPECT_THROW(atmen(), std::runtime_error);
    EXPECT_EQ(laeufe, 2);
}

TEST_F(Atem, DerHakenDarfSichSelbstAbsetzen) {
    int laeufe = 0;
    AtempauseSetzen([&] {
        AtempauseSetzen({});
        ++laeufe;
    });
    atmen();
    EXPECT_EQ(laeufe, 1);
}

}  // namespace
