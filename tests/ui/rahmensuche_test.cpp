// Frames 11 and 13: the search options, and the figures of a result.
#include "ui/assistent.h"

namespace {

const QString kUnbenutzt = QStringLiteral("*** Unbenutzt ***");

class Suche : public Assistent {
  protected:
    RahmenSuche& seite() { return *haupt().rahmenSuche; }
    QStringList auswahl() {
        QStringList texte;
        for (const QComboBox* liste : seite().cbxSuchFeld) texte << liste->currentText();
        return texte;
    }
    void fuellenMit(const FeldZuordnungen& zuordnungen) {
        gZuordnungenTabelle1 = zuordnungen;
        RahmenWechseln(11, 11, false, true);
    }
};

TEST_F(Suche, JedeListeNenntAlleFelder) {
    bisSuche();
    QStringList soll{kUnbenutzt};
    const dao::Fields& felder = gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields();
    for (int i = 0; i < felder.Count(); ++i) soll << felder.Item(i).Name();
    for (const QComboBox* liste : seite().cbxSuchFeld) {
        QStringList ist;
        for (int i = 0; i < liste->count(); ++i) ist << liste->itemText(i);
        EXPECT_EQ(ist, soll);
    }
}

TEST_F(Suche, AnfangswerteDerRegler) {
    bisSuche();
    const Suchoptionen optionen = seite().optionen();
    EXPECT_TRUE(optionen.durchfuehren[0] && optionen.durchfuehren[1] && optionen.durchfuehren[2]);
    EXPECT_EQ(optionen.zeichenRichtig[0], 2);
    EXPECT_EQ(optionen.zeichenRichtig[1], 5);
    EXPECT_EQ(optionen.zeichenRichtig[2], 5);
    EXPECT_EQ(optionen.toleranz, 1);
    EXPECT_FALSE(optionen.quickSuche);
    EXPECT_FALSE(optionen.ansprechpartnerDifferenzieren);
    for (const QSlider* regler : seite().sdrZeichenRichtig) {
        EXPECT_EQ(regler->minimum(), 1);
        EXPECT_EQ(regler->maximum(), 5);
    }
    EXPECT_EQ(seite().sdrToleranz->minimum(), 0);
    EXPECT_EQ(seite().sdrToleranz->maximum(), 3);
}

// Positions of the kinds in the sample's first fields; each list takes its own kind.
TEST_F(Suche, JedeListeWaehltIhreArt) {
    bisSuche();
    const dao::Fields& felder = gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields();
    FeldZuordnungen zuordnungen(size_t(felder.Count()), FeldZuordnung{0, 1});
    zuordnungen[1] = {2, 1};   // firm
    zuordnungen[2] = {3, 12};  // postal code and town
    zuordnungen[3] = {3, 1};   // street
    zuordnungen[4] = {5, 3};   // area code and phone
    fuellenMit(zuordnungen);
    const auto name = [&](int stelle) { return felder.Item(stelle).Name(); };
    EXPECT_EQ(auswahl(),
              (QStringList{name(1), name(2), name(3), name(4), name(4), name(1), name(2), name(2), name(1)}));
}

TEST_F(Suche, OhneFirmaStehtDerNachnameVorn) {
    bisSuche();
    const dao::Fields& felder = gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields();
    FeldZuordnungen zuordnungen(size_t(felder.Count()), FeldZuordnung{0, 1});
    zuordnungen[5] = {4, 4};
    fuellenMit(zuordnungen);
    QStringList soll(9, kUnbenutzt);
    soll[0] = felder.Item(5).Name();
    EXPECT_EQ(auswahl(), soll);
}

TEST_F(Suche, OhneFirmaUndNachnamenBleibtDieErsteListeUnbenutzt) {
    bisSuche();
    fuellenMit(FeldZuordnungen(gZuordnungenTabelle1.size(), FeldZuordnung{0, 1}));
    EXPECT_EQ(auswahl(), QStringList(9, kUnbenutzt));
    erwarte(QStringLiteral("Mindestens ein Feld muss ausgewählt werden."));
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
    EXPECT_EQ(gRahmen, 11);
}

TEST_F(Suche, EinFeldEinerAbgeschaltetenSucheGenuegt) {
    bisSuche();
    fuellenMit(FeldZuordnungen(gZuordnungenTabelle1.size(), FeldZuordnung{0, 1}));
    seite().cbxSuchFeld[4]->setCurrentIndex(1);
    seite().chkSucheDurchführen[1]->setChecked(false);
    EXPECT_TRUE(seite().pruefen());
}

TEST_F(Suche, OhneDieFelderBleibenDieListenUnbenutzt) {
    bisSuche();
    gSystemmeldungZeigen = false;
    gAusgangsTabelle = QStringLiteral("fehlt");
    erwarte(QStringLiteral("Fehler beim Öffnen des Rahmens 11.\r"), Knopf::Ignorieren);
    RahmenWechseln(11, 11, false, true);
    EXPECT_EQ(gRahmen, 11);
    EXPECT_EQ(auswahl(), QStringList(9, kUnbenutzt));
    for (const QComboBox* liste : seite().cbxSuchFeld) EXPECT_EQ(liste->count(), 1);
}

TEST_F(Suche, DerHakenSchaltetListenUndReglerSeinerSuche) {
    bisSuche();
    for (int suche = 0; suche < 3; ++suche) {
        SCOPED_TRACE(suche);
        seite().chkSucheDurchführen[size_t(suche)]->setChecked(false);
        for (int liste = 0; liste < 9; ++liste)
            EXPECT_EQ(seite().cbxSuchFeld[size_t(liste)]->isEnabled(), suche == 0 || liste / 3 != suche)
                << liste;
        for (int regler = 0; regler < 3; ++regler)
            EXPECT_EQ(seite().sdrZeichenRichtig[size_t(regler)]->isEnabled(), suche == 0 || regler != suche);
        seite().chkSucheDurchführen[size_t(suche)]->setChecked(true);
        for (const QComboBox* liste : seite().cbxSuchFeld) EXPECT_TRUE(liste->isEnabled());
    }
}

TEST_F(Suche, ZurueckUndWeiterBehaeltHakenUndReglerAberNichtDieListen) {
    bisSuche();
    const QStringList vorschlag = auswahl();
    seite().cbxSuchFeld[0]->setCurrentIndex(0);
    seite().chkQuickSuche->setChecked(true);
    seite().sdrToleranz->setValue(3);
    seite().sdrZeichenRichtig[0]->setValue(4);
    zurueck();
    EXPECT_EQ(gRahmen, 4);
    weiter();
    EXPECT_EQ(auswahl(), vorschlag);
    EXPECT_TRUE(seite().optionen().quickSuche);
    EXPECT_EQ(seite().optionen().toleranz, 3);
    EXPECT_EQ(seite().optionen().zeichenRichtig[0], 4);
}

TEST_F(Suche, DasProtokollZeichnetDieAnteile) {
    bisTabelle();
    tabelleAnlegen(QStringLiteral("Ergebnis"), {"A"}, 433);
    gAusgangsTabelle = QStringLiteral("Adressen");
    gZielTabelle = QStringLiteral("Ergebnis");
    gDublettenAnzahl = 124;
    gAnzahlAngereichert = 57;
    RahmenWechseln(3, 13, false, true);
    EXPECT_EQ(haupt().btnWeiter->text(), u"Fertig");
    EXPECT_FALSE(haupt().btnZurück->isVisible());
    EXPECT_EQ(finde<QLabel>("lblDubletten1")->text(), u"500 Datensätze");
    EXPECT_EQ(finde<QLabel>("lblDubletten2")->text(), u"124 Dubletten");
    EXPECT_EQ(finde<QLabel>("lblDubletten3")->text(), u"433 Datensätze nach Korrektur");
    EXPECT_EQ(finde<QLabel>("lblDublettenVerunreinigung")->text(), u"13% Verunreinigung");
    const QRect ganz = finde<QFrame>("shpDubletten1")->geometry();
    EXPECT_GT(ganz.width(), 100);
    const std::pair<const char*, double> anteile[] = {{"shpDubletten2", 124.0 / 500},
                                                      {"shpDubletten3", 433.0 / 500}};
    for (const auto& [name, anteil] : anteile) {
        const QRect rechteck = finde<QFrame>(name)->geometry();
        EXPECT_EQ(rechteck.width(), int(anteil * ganz.width())) << name;
        EXPECT_EQ(rechteck.right(), ganz.right()) << name;
    }
    weiter();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(gVorgang, 0);
    EXPECT_EQ(haupt().btnWeiter->text(), u"Weiter  >>");
}

}  // namespace
