// Frame 4: the default name of the target table and what is refused.
#include <QDate>

#include "engine/dao/speicherdatei.h"
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

// A database in memory whose format takes few records.
class ZielMitGrenze : public Ziel {
  protected:
    void SetUp() override {
        Ziel::SetUp();
        dao::DateiOeffnerSetzen(dao::Dateiart::Access, [this](const QString&, const QString&) {
            return std::make_unique<Speicherdatei>(inhalt);
        });
        for (const char16_t* name : {u"Adressen", u"Zweite"}) {
            engine::TabellenDef def;
            def.name = QString::fromUtf16(name);
            def.felder.push_back(tabellenprobe::feld(QStringLiteral("Ort"), dao::dbText, 50));
            inhalt.tabellen.push_back({def, {{Wert(u"Ulm")}, {Wert(u"Bonn")}}});
        }
    }
    void bisZielMit(int auswahl) {
        bisVorgang();
        vorgangWaehlen(auswahl);
        if (gRahmen == 61) {
            finde<QComboBox>("cbxNeueDaten")->setCurrentText(QStringLiteral("Zweite"));
            weiter();
            weiter();
        }
        if (gRahmen == 7) weiter();
        ASSERT_EQ(gRahmen, 4);
        name().setText(QStringLiteral("Neu"));
    }
    const QString kZuViele = QStringLiteral("'Neu' hat zu viele Zeilen.");
    const QString kWarnung =
        QStringLiteral(
            "Das Ergebnis wird vielleicht zu groß und kann nicht gespeichert werden, wenn nicht "
            "genügend Datensätze wegfallen:\r") +
        kZuViele;
    Speicherinhalt inhalt;
};

TEST_F(ZielMitGrenze, WasSicherZuVieleSaetzeHatWirdAbgelehnt) {
    inhalt.meisteZeilen = 1;
    bisZielMit(1);  // a split keeps all records
    erwarte(kZuViele);
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
    EXPECT_EQ(gRahmen, 4);
    inhalt.meisteZeilen = 2;
    weiter();
    EXPECT_EQ(gRahmen, 31);
}

TEST_F(ZielMitGrenze, WasVielleichtZuVieleSaetzeHatWirdGesagt) {
    inhalt.meisteZeilen = 1;
    bisZielMit(3);
    erwarte(kWarnung);
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Hinweis");
    EXPECT_EQ(gRahmen, 11);
}

TEST_F(ZielMitGrenze, DieSaetzeDerZweitenTabelleZaehlenMit) {
    inhalt.meisteZeilen = 3;
    bisZielMit(5);
    erwarte(kWarnung);
    weiter();
    EXPECT_EQ(gRahmen, 11);
}

// The search needs four columns of its own.
TEST_F(ZielMitGrenze, PlatzFuerDieSteuerfelder) {
    auto& felder = inhalt.tabellen[0].def.felder;
    while (felder.size() < 252) {
        felder.push_back(tabellenprobe::feld(QStringLiteral("F%1").arg(felder.size()), dao::dbText, 10));
        for (engine::Zeile& zeile : inhalt.tabellen[0].zeilen) zeile.push_back(Wert::null());
    }
    bisZielMit(3);
    erwarte(
        QStringLiteral("Die Tabelle 'Adressen' hat 252 Felder. Der Vorgang braucht bei der Arbeit 4 weitere, "
                       "und eine Tabelle "
                       "nimmt höchstens 255 auf. Entfernen Sie Felder aus der Ausgangstabelle."));
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
