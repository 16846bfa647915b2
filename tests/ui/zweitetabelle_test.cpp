// Frames 51 and 61, and frame 7 for two tables in both directions.
#include "ui/assistent.h"

namespace {

struct Vorgangsfall {
    int auswahl;
    int rahmen;
    const char* liste;
};

class ZweiteTabelle : public Assistent, public testing::WithParamInterface<Vorgangsfall> {
  protected:
    void bisZweiteTabelle() {
        bisVorgang();
        vorgangWaehlen(GetParam().auswahl);
        ASSERT_EQ(gRahmen, GetParam().rahmen);
    }
    void bisZweiterZuordnung() {
        bisZweiteTabelle();
        liste()->setCurrentText(QStringLiteral("Interessenten"));
        weiter();
        weiter();
        ASSERT_EQ(gRahmen, 7);
        ASSERT_EQ(gZuordnungsSchritt, 2);
    }
    QComboBox* liste() { return finde<QComboBox>(GetParam().liste); }
    QListWidget* felder() { return haupt().rahmenFelder->lstFelder; }
    void korrigieren(int stelle) {
        felder()->setCurrentRow(stelle);
        finde<QAction>("smnInternet_1")->trigger();
    }
    QString titel() { return haupt().rahmenFelder->title(); }
};

INSTANTIATE_TEST_SUITE_P(Vorgaenge, ZweiteTabelle,
                         testing::Values(Vorgangsfall{4, 51, "cbxDatenabgleich"},
                                         Vorgangsfall{5, 61, "cbxNeueDaten"}),
                         [](const auto& fall) { return std::string(fall.param.liste); });

TEST_P(ZweiteTabelle, DieListeNenntAlleTabellen) {
    bisZweiteTabelle();
    QStringList namen;
    for (int i = 0; i < liste()->count(); ++i) namen << liste()->itemText(i);
    EXPECT_EQ(namen, (QStringList{"Adressen", "Interessenten"}));
    EXPECT_EQ(liste()->currentIndex(), 0);
    EXPECT_EQ(haupt().btnWeiter->text(), u"Weiter  >>");
}

TEST_P(ZweiteTabelle, DieErsteTabelleWirdAbgelehnt) {
    bisZweiteTabelle();
    erwarte(QStringLiteral("Die 2. Tabelle kann nicht identisch mit der 1. Tabelle sein."));
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
    EXPECT_EQ(gRahmen, GetParam().rahmen);
    EXPECT_EQ(gZweiteTabelle, QString());
    zurueck();
    EXPECT_EQ(gRahmen, 5);
}

TEST_P(ZweiteTabelle, OhneTabelleIstDieListeLeer) {
    bisZweiteTabelle();
    gDatenbank->TableDefs().Delete(QStringLiteral("Adressen"));
    gDatenbank->TableDefs().Delete(QStringLiteral("Interessenten"));
    RahmenWechseln(GetParam().rahmen, GetParam().rahmen, false, true);
    EXPECT_EQ(liste()->count(), 0);
    EXPECT_EQ(liste()->currentIndex(), -1);
}

TEST_P(ZweiteTabelle, ErstDieErsteDannDieZweiteZuordnung) {
    bisZweiteTabelle();
    liste()->setCurrentText(QStringLiteral("Interessenten"));
    weiter();
    EXPECT_EQ(gZweiteTabelle, u"Interessenten");
    EXPECT_EQ(gRahmen, 7);
    EXPECT_EQ(gZuordnungsSchritt, 1);
    EXPECT_EQ(titel(), u" Zuordnung der Felder von 'Adressen' ");
    weiter();
    EXPECT_EQ(gZuordnungsSchritt, 2);
    EXPECT_EQ(titel(), u" Zuordnung der Felder von 'Interessenten' ");
    EXPECT_EQ(felder()->count(),
              gDatenbank->TableDefs().Item(QStringLiteral("Interessenten")).Fields().Count());
    weiter();
    EXPECT_EQ(gRahmen, 4);
    EXPECT_EQ(int(gZuordnungenTabelle1.size()),
              gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields().Count());
    EXPECT_EQ(int(gZuordnungenTabelle2.size()),
              gDatenbank->TableDefs().Item(QStringLiteral("Interessenten")).Fields().Count());
    weiter();
    EXPECT_EQ(gRahmen, 11);
}

TEST_P(ZweiteTabelle, ZurueckVomZielFuehrtDurchBeideZuordnungen) {
    bisZweiterZuordnung();
    korrigieren(1);
    const QString korrigiert = felder()->item(1)->text();
    weiter();
    EXPECT_EQ(gRahmen, 4);
    zurueck();
    EXPECT_EQ(gRahmen, 7);
    EXPECT_EQ(titel(), u" Zuordnung der Felder von 'Interessenten' ");
    EXPECT_EQ(felder()->item(1)->text(), korrigiert);
    zurueck();
    EXPECT_EQ(gRahmen, 7);
    EXPECT_EQ(gZuordnungsSchritt, 1);
    EXPECT_EQ(titel(), u" Zuordnung der Felder von 'Adressen' ");
    zurueck();
    EXPECT_EQ(gRahmen, GetParam().rahmen);
    EXPECT_EQ(liste()->currentText(), u"Interessenten");
}

TEST_P(ZweiteTabelle, ZurueckZurErstenVerliertIhreKorrekturen) {
    bisZweiteTabelle();
    liste()->setCurrentText(QStringLiteral("Interessenten"));
    weiter();
    const QString vorschlag = felder()->item(1)->text();
    korrigieren(1);
    ASSERT_NE(felder()->item(1)->text(), vorschlag);
    weiter();
    zurueck();
    EXPECT_EQ(gZuordnungsSchritt, 1);
    EXPECT_EQ(felder()->item(1)->text(), vorschlag);
}

}  // namespace
