// Frames 31, 32, 41 and 42: the options of split and merge, what is refused, and the way to the result.
#include <QFrame>

#include "ui/assistent.h"

namespace {

class Splitten : public Assistent {
  protected:
    void bisSplitten() {
        bisVorgang();
        vorgangWaehlen(1);
        ASSERT_EQ(gRahmen, 4);
        weiter();
        ASSERT_EQ(gRahmen, 31);
    }
    RahmenSplitten& seite() { return *haupt().rahmenSplitten; }
    void namen(const QString& eins, const QString& zwei, const QString& drei = QString()) {
        seite().tbxSplitten1->setText(eins);
        seite().tbxSplitten2->setText(zwei);
        seite().tbxSplitten3->setText(drei);
    }
};

const QString kVorhanden =
    QStringLiteral("Das Zielfeld exisitiert bereits. Bitte wählen sie einen anderen Namen.");

TEST_F(Splitten, ListenUndTypen) {
    bisSplitten();
    EXPECT_EQ(haupt().btnWeiter->text(), u"Starten");
    for (const QComboBox* liste : {seite().cbxSplitten1, seite().cbxSplitten2}) {
        EXPECT_EQ(liste->count(), gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields().Count());
        EXPECT_EQ(liste->currentIndex(), 0);
    }
    QStringList typen;
    for (int i = 0; i < seite().cbxSplittenTypus->count(); ++i)
        typen << seite().cbxSplittenTypus->itemText(i);
    EXPECT_EQ(typen,
              (QStringList{"Postleitzahl+Ort   --->   Postleitzahl  |  Ort",
                           "Straße+Hausnummer   --->   Straße  |  Hausnummer",
                           "Anrede+Vorname+Name   --->   Anrede  |  Vorname  |  Name",
                           "Vorwahl+Durchwahl   --->   Vorwahl  |  Durchwahl",
                           "Vorwahl+Telefon  |  Vorwahl+Telefax   --->   Vorwahl  |  Telefon  |  Telefax",
                           "Beliebig+Beliebig   --->   Beliebig  |  Beliebig"}));
    EXPECT_EQ(seite().cbxSplittenTypus->currentIndex(), 0);
    EXPECT_EQ(seite().chkSplittenLöschen->text().remove(u'&'), u"Die ursprünglichen Felder werden gelöscht.");
}

TEST_F(Splitten, WasJederTypZeigt) {
    bisSplitten();
    for (const int typ : {5, 4, 3, 2, 1, 0}) {
        SCOPED_TRACE(typ);
        seite().cbxSplittenTypus->setCurrentIndex(typ);
        EXPECT_EQ(seite().cbxSplitten2->isVisible(), typ == 4);
        EXPECT_EQ(seite().lblSplitten3->isVisible(), typ == 4);
        EXPECT_EQ(seite().tbxSplitten3->isVisible(), typ == 2 || typ == 4);
        for (const QWidget* teil : std::initializer_list<QWidget*>{
                 seite().lblSplitten4, seite().tbxSplitten_Trennzeichen, seite().shpSplitten_Verdeutlichung})
            EXPECT_EQ(teil->isVisible(), typ == 5);
        EXPECT_EQ(seite().lblSplitten1->text(), typ == 4 ? u"Die Felder" : u"Das Feld");
        EXPECT_EQ(seite().lblSplitten2->text(), typ == 4 ? u"werden in mehrere Felder aufgespalten."
                                                         : u"wird in mehrere Felder aufgespalten.");
    }
}

TEST_F(Splitten, WasAbgelehntWird) {
    bisSplitten();
    const QString leer = QStringLiteral("Geben sie einen Namen für das Zielfeld an.");
    const QString gleich = QStringLiteral("Die Zielfelder müssen verschiedene Namen haben.");
    struct Fall {
        int typ;
        QString eins, zwei, drei, meldung;
    };
    const Fall faelle[] = {
        {0, " ", "b", "", leer},
        {0, "a", "", "", leer},
        {2, "a", "b", " ", leer},
        {0, "ORT", "b", "", kVorhanden},
        {0, "a", "straße", "", kVorhanden},
        {2, "a", "b", "Nachname", kVorhanden},
        {0, "a", "A", "", gleich},
        {2, "a", "b", "B", gleich},
        {0, "Nachname2", "b", "nachname2", gleich},  // the stale name in the hidden box counts here
        {5, "a", "b", "", "Sie müssen ein Trennzeichen angeben, nach\rdem das Feld geteilt werden soll."}};
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.meldung.toStdString() + '/' + fall.eins.toStdString());
        seite().cbxSplittenTypus->setCurrentIndex(fall.typ);
        namen(fall.eins, fall.zwei, fall.drei);
        erwarte(fall.meldung);
        weiter();
        EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
        EXPECT_EQ(gRahmen, 31);
    }
}

TEST_F(Splitten, WasDieDateiNichtAufnimmtWirdVorDemLaufGesagt) {
    bisTabelle();
    QStringList felder;
    for (int i = 0; i < 254; ++i) felder << QStringLiteral("F%1").arg(i);
    tabelleAnlegen(QStringLiteral("Breit"), felder);
    RahmenWechseln(3, 3, false, true);
    tabelleWaehlen(QStringLiteral("Breit"));
    weiter();
    vorgangWaehlen(1);
    weiter();
    ASSERT_EQ(gRahmen, 31);
    namen(QStringLiteral("Weg"), QStringLiteral("N.r"));
    erwarte(
        QStringLiteral("Der Feldname 'N.r' kann nicht verwendet werden. Wählen Sie einen Namen aus 1 bis 64 "
                       "Zeichen ohne ! . [ ] `, ohne Steuerzeichen und ohne Leerzeichen am Anfang."));
    weiter();
    EXPECT_EQ(gRahmen, 31);
    namen(QStringLiteral("Weg"), QStringLiteral("Nr"));
    erwarte(QStringLiteral(
        "Eine Tabelle nimmt höchstens 255 Felder auf, mit den neuen wären es 256. Entfernen Sie "
        "Felder aus der Ausgangstabelle."));
    weiter();
    EXPECT_EQ(gRahmen, 31);
}

TEST_F(Splitten, EinAlterNameImVerborgenenFeldStoertSonstNicht) {
    bisSplitten();
    namen(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("Nachname"));
    EXPECT_TRUE(seite().pruefen());
    namen(QStringLiteral(" a "), QStringLiteral("b "), QStringLiteral("B"));
    EXPECT_TRUE(seite().pruefen());
    EXPECT_EQ(seite().tbxSplitten1->text(), u"a");
}

TEST_F(Splitten, ZurueckPrueftNichtsUndBehaeltAlles) {
    bisSplitten();
    seite().cbxSplittenTypus->setCurrentIndex(5);
    namen(QString(), QStringLiteral("b"));
    zurueck();
    EXPECT_EQ(gRahmen, 4);
    weiter();
    EXPECT_EQ(seite().tbxSplitten2->text(), u"b");
    EXPECT_EQ(seite().cbxSplittenTypus->currentIndex(), 0);
}

TEST_F(Splitten, LaeuftBisZumErgebnis) {
    bisSplitten();
    seite().cbxSplitten1->setCurrentText(QStringLiteral("Straße"));
    seite().cbxSplittenTypus->setCurrentIndex(1);
    namen(QStringLiteral("Weg"), QStringLiteral("Nr"));
    weiter();
    EXPECT_EQ(gRahmen, 32);
    EXPECT_EQ(haupt().btnWeiter->text(), u"Fertig");
    const QList<QLabel*> texte = haupt().freRahmen(32)->findChildren<QLabel*>();
    ASSERT_EQ(texte.size(), 1);
    EXPECT_EQ(texte[0]->text(), u"Splitten erfolgreich abgeschlossen.");
    weiter();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_TRUE(tabellen().contains(gZielTabelle));
}

class Verschmelzen : public Assistent {
  protected:
    void bisVerschmelzen() {
        bisVorgang();
        vorgangWaehlen(0);
        ASSERT_EQ(gRahmen, 4);
        weiter();
        ASSERT_EQ(gRahmen, 41);
    }
    RahmenVerschmelzen& seite() { return *haupt().rahmenVerschmelzen; }
};

TEST_F(Verschmelzen, TexteUndAnfangswerte) {
    bisVerschmelzen();
    EXPECT_EQ(seite().otnTrennzeichen[0]->text(), u"             als Trennzeichen verwendet.");
    EXPECT_EQ(seite().otnTrennzeichen[1]->text().remove(u'&'), u"keine Trennzeichen verwendet.");
    EXPECT_EQ(seite().chkVerschmelzenLöschen->text().remove(u'&'),
              u"Die ursprünglichen Felder werden gelöscht.");
    EXPECT_TRUE(seite().otnTrennzeichen[0]->isChecked());
    EXPECT_EQ(seite().cbxVerschmelzen1->currentIndex(), 0);
    EXPECT_EQ(seite().cbxVerschmelzen2->currentIndex(), 0);
    EXPECT_EQ(seite().optionen().trennzeichen, QStringLiteral(" "));
    seite().otnTrennzeichen[1]->setChecked(true);
    EXPECT_EQ(seite().optionen().trennzeichen, std::nullopt);
    EXPECT_FALSE(seite().tbxTrennzeichen->isEnabled());
}

// The box stands over the blanks in front of the text.
TEST_F(Verschmelzen, DasTrennzeichenStehtInDerLuecke) {
    bisVerschmelzen();
    const QRadioButton* wahl = seite().otnTrennzeichen[0];
    const QRect feld = seite().tbxTrennzeichen->geometry();
    const int blanks = wahl->fontMetrics().horizontalAdvance(QString(13, u' '));
    EXPECT_GT(feld.left(), 0);
    EXPECT_LE(feld.width(), blanks);
    EXPECT_GT(feld.width(), blanks / 2);
    EXPECT_TRUE(wahl->rect().contains(feld));
}

TEST_F(Verschmelzen, WasAbgelehntWird) {
    bisVerschmelzen();
    const QString selbst = QStringLiteral("Ein Feld kann nicht mit sich selbst verschmolzen werden.");
    const QString leer = QStringLiteral("Geben sie einen Namen für das verschmolzene Feld an.");
    struct Fall {
        int zweites;
        QString name, meldung;
    };
    for (const Fall& fall : {Fall{0, "neu", selbst}, Fall{1, " ", leer}, Fall{1, " NACHNAME ", kVorhanden}}) {
        seite().cbxVerschmelzen2->setCurrentIndex(fall.zweites);
        seite().tbxVerschmolzen->setText(fall.name);
        erwarte(fall.meldung);
        weiter();
        EXPECT_EQ(gRahmen, 41);
    }
    EXPECT_EQ(seite().tbxVerschmolzen->text(), u"NACHNAME");
}

TEST_F(Verschmelzen, WasDieDateiNichtAufnimmtWirdVorDemLaufGesagt) {
    bisVerschmelzen();
    seite().cbxVerschmelzen2->setCurrentIndex(1);
    seite().tbxVerschmolzen->setText(QStringLiteral("N.r"));
    erwarte(
        QStringLiteral("Der Feldname 'N.r' kann nicht verwendet werden. Wählen Sie einen Namen aus 1 bis 64 "
                       "Zeichen ohne ! . [ ] `, ohne Steuerzeichen und ohne Leerzeichen am Anfang."));
    weiter();
    EXPECT_EQ(gRahmen, 41);
}

TEST_F(Verschmelzen, LaeuftBisZumErgebnis) {
    bisVerschmelzen();
    seite().cbxVerschmelzen1->setCurrentText(QStringLiteral("Vorname"));
    seite().cbxVerschmelzen2->setCurrentText(QStringLiteral("Nachname"));
    seite().tbxVerschmolzen->setText(QStringLiteral("Name"));
    weiter();
    EXPECT_EQ(gRahmen, 42);
    const QList<QLabel*> texte = haupt().freRahmen(42)->findChildren<QLabel*>();
    ASSERT_EQ(texte.size(), 1);
    EXPECT_EQ(texte[0]->text(), u"Verschmelzen erfolgreich abgeschlossen.");
}

}  // namespace
