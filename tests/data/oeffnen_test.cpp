// Opening a database: what a format has to tell is told once, in one box.
#include "gemeinsam/speicherbank.h"

namespace {

class Oeffnen : public Speicherbank {
  protected:
    void SetUp() override {
        tabelleAnlegen(QStringLiteral("Adressen"), {{u"Ort"}}, {{Wert(u"Köln")}});
        oeffnen();
        gDatenbank->Close();
        gDatenbank.reset();
    }
    void oeffnenWieImFenster() {
        DatenbankOeffnen(ordner.filePath(QStringLiteral("test.mdb")), QString(), gDatenbank);
        EXPECT_FALSE(gFehler);
        EXPECT_EQ(TabellenNamen(), QStringList{QStringLiteral("Adressen")});
    }
};

TEST_F(Oeffnen, OhneHinweiseKommtKeinKasten) {
    oeffnenWieImFenster();
    EXPECT_TRUE(f().meldungen.empty());
}

TEST_F(Oeffnen, AlleHinweiseStehenInEinemKasten) {
    inhalt.oeffnungshinweise = {QStringLiteral("Eins."), QStringLiteral("Zwei.")};
    f().erwarte(QStringLiteral("Eins.\rZwei."));
    oeffnenWieImFenster();
}

TEST_F(Oeffnen, VonVielenHinweisenWirdDerRestGezaehlt) {
    QStringList erwartet;
    for (int i = 1; i <= 20; ++i) {
        inhalt.oeffnungshinweise.push_back(QStringLiteral("Hinweis %1.").arg(i));
        if (i <= 8) erwartet << inhalt.oeffnungshinweise.back();
    }
    erwartet << QStringLiteral("(und 12 weitere Hinweise)");
    f().erwarte(erwartet.join(u'\r'));
    oeffnenWieImFenster();
}

}  // namespace
