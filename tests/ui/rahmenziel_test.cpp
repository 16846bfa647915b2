// Frame 4: the default name of the target table and what is refused.
#include <QDate>

#include "ui/assistent.h"

namespace {

class Ziel : public Assistent {
  protected:
    QLineEdit& name() { return *haupt().rahmenZiel->tbxZielTabelle; }
    static QString heute(const QString& stamm, int nummer) {
        const QDate tag = QDate::currentDate();
        return QStringLiteral("%1 _#%2__%3_%4_%5")
            .arg(stamm)
            .arg(nummer)
            .arg(tag.day())
            .arg(tag.month())
            .arg(tag.year());
    }
};

TEST_F(Ziel, VorgabeAusTabelleNummerUndTag) {
    bisZiel();
    EXPECT_EQ(name().text(), heute(QStringLiteral("Adressen"), 1));
}

TEST_F(Ziel, ZweiteTabelleDesTagesBekommtDieNaechsteNummer) {
    bisFelder();
    tabelleAnlegen(heute(QStringLiteral("Adressen"), 1), {"A"});
    weiter();
    EXPECT_EQ(name().text(), heute(QStringLiteral("Adressen"), 2));
}

TEST_F(Ziel, NachEinemErgebnisWirdDerNameNeuGemacht) {
    bisZiel();
    name().setText(QStringLiteral("Mein Ziel"));
    tabelleAnlegen(heute(QStringLiteral("Adressen"), 1), {"A"});
    gZielTabelle = heute(QStringLiteral("Adressen"), 1);
    RahmenWechseln(4, 13, false, true);
    weiter();
    ASSERT_EQ(gRahmen, 3);
    EXPECT_EQ(gVorgang, 0);
    EXPECT_TRUE(tabellen().contains(gZielTabelle));
    tabelleWaehlen(QStringLiteral("Adressen"));
    weiter();
    vorgangWaehlen(3);
    weiter();
    ASSERT_EQ(gRahmen, 4);
    EXPECT_EQ(name().text(), heute(QStringLiteral("Adressen"), 2));
}

TEST_F(Ziel, DerStammEinesErgebnissesKommtWieder) {
    bisTabelle();
    tabelleAnlegen(QStringLiteral("Adressen _#1__3_7_2001"), {"Name"});
    RahmenWechseln(3, 3, false, true);
    tabelleWaehlen(QStringLiteral("Adressen _#1__3_7_2001"));
    weiter();
    vorgangWaehlen(3);
    weiter();
    EXPECT_EQ(name().text(), heute(QStringLiteral("Adressen"), 1));
}

TEST_F(Ziel, WasAbgelehntWird) {
    bisZiel();
    const QString format = QStringLiteral(
        "Der Name enthält ungültige Zeichen ( ! . [ ] ' \" ) für die Bezeichnung\r"
        "einer Access-Datenbanktabelle, oder ist länger als 64 Zeichen oder leer.");
    const QString gleich =
        QStringLiteral("Die Zieltabelle kann nicht identisch mit der Ausgangstabelle sein.");
    const std::pair<QString, QString> faelle[] = {{QString(), format},
                                                  {QStringLiteral("   "), format},
                                                  {QStringLiteral("a.b"), format},
                                                  {QString(65, u'x'), format},
                                                  {QStringLiteral("Adressen"), gleich},
                                                  {QStringLiteral(" aDRESSEN "), gleich}};
    gZielTabelle = QStringLiteral("unverändert");
    for (const auto& [getippt, meldung] : faelle) {
        SCOPED_TRACE(getippt.toStdString());
        name().setText(getippt);
        erwarte(meldung);
        weiter();
        EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
        EXPECT_EQ(gRahmen, 4);
        EXPECT_EQ(gZielTabelle, u"unverändert");
        EXPECT_EQ(name().text(), getippt.trimmed());
    }
}

TEST_F(Ziel, ScharfesSGegenDoppelS) {
    bisTabelle();
    tabelleAnlegen(QStringLiteral("Straßen"), {"Name"});
    RahmenWechseln(3, 3, false, true);
    tabelleWaehlen(QStringLiteral("Straßen"));
    weiter();
    vorgangWaehlen(3);
    weiter();
    name().setText(QStringLiteral("STRASSEN"));
    erwarte(QStringLiteral("Die Zieltabelle kann nicht identisch mit der Ausgangstabelle sein."));
    weiter();
    EXPECT_EQ(gRahmen, 4);
}

TEST_F(Ziel, EineVorhandeneTabelleWirdErfragt) {
    bisZiel();
    name().setText(QStringLiteral("INTERESSENTEN"));
    const QString frage =
        QStringLiteral("Die Tabelle \"Interessenten\" existiert bereits.\rSoll sie überschrieben werden?");
    erwarte(frage, Knopf::Nein);
    weiter();
    EXPECT_EQ(letzteMeldung().symbol, Symbol::Ausrufezeichen);
    EXPECT_EQ(letzteMeldung().titel, QString());
    EXPECT_EQ(letzteMeldung().knoepfe, Knoepfe::JaNein);
    EXPECT_EQ(gRahmen, 4);
    erwarte(frage, Knopf::Ja);
    weiter();
    EXPECT_EQ(gRahmen, 11);
    EXPECT_EQ(gZielTabelle, u"INTERESSENTEN");
}

TEST_F(Ziel, ZurueckPrueftNichtsUndWeiterMachtDenNamenNeu) {
    bisZiel();
    gZielTabelle = QStringLiteral("unverändert");
    name().setText(QStringLiteral("!"));
    zurueck();
    EXPECT_EQ(gRahmen, 7);
    EXPECT_EQ(gZielTabelle, u"unverändert");
    weiter();
    EXPECT_EQ(name().text(), heute(QStringLiteral("Adressen"), 1));
}

TEST_F(Ziel, ZurueckAusDenSuchoptionenZeigtDenNamenWieErWar) {
    bisZiel();
    name().setText(QStringLiteral("Mein Ziel"));
    weiter();
    ASSERT_EQ(gRahmen, 11);
    EXPECT_EQ(haupt().btnWeiter->text(), u"Starten");
    zurueck();
    EXPECT_EQ(haupt().btnWeiter->text(), u"Weiter  >>");
    EXPECT_EQ(name().text(), u"Mein Ziel");
}

}  // namespace
