// The wizard's window: texts of every frame, menus, keys, buttons, closing.
#include <QAction>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <QTimer>

#include "run/fortschritt.h"
#include "ui/assistent.h"
#include "ui/bausteine.h"

namespace {

QString ohneKuerzel(QString text) {
    return text.remove(u'&');
}

struct Textfall {
    int rahmen;
    QString text;
};

TEST_F(Assistent, DieRahmenTragenIhreTitel) {
    const std::pair<int, const char*> titel[] = {{0, ""},
                                                 {1, " Sicherheitshinweis "},
                                                 {2, " Auswahl der Datenbank "},
                                                 {3, " Auswahl der Tabelle "},
                                                 {4, " Auswahl der Zieltabelle "},
                                                 {5, " Auswahl des Vorgangs "},
                                                 {6, " Durchführung "},
                                                 {7, " Zuordnung der Felder "},
                                                 {11, " Suchoptionen "},
                                                 {12, " Nachbearbeitung "},
                                                 {13, " Protokoll "},
                                                 {21, " Mülldatensätze erkennen "},
                                                 {22, " Nachbearbeitung "},
                                                 {23, " Protokoll "},
                                                 {31, " Felder splitten "},
                                                 {32, " Protokoll "},
                                                 {41, " Felder verschmelzen "},
                                                 {42, " Protokoll "},
                                                 {51, " Daten abgleichen "},
                                                 {53, " Protokoll "},
                                                 {61, " Neue Daten einfügen "},
                                                 {63, " Protokoll "}};
    for (const auto& [nummer, text] : titel) {
        SCOPED_TRACE(nummer);
        const Rahmen* rahmen = haupt().freRahmen(nummer);
        ASSERT_NE(rahmen, nullptr);
        EXPECT_EQ(rahmen->title(), QString::fromUtf8(text));
    }
    EXPECT_EQ(haupt().windowTitle(), u" Lindgarn");
}

// Counts how often a widget is asked to lay out what is in it.
class Anordnungen : public QObject {
  public:
    explicit Anordnungen(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* ereignis) override {
        if (ereignis->type() == QEvent::LayoutRequest) ++anzahl;
        return false;
    }
    int anzahl = 0;
};

TEST_F(Assistent, EinNeuerProzentwertOrdnetDenRahmenNichtNeuAn) {
    RahmenDurchfuehrung& rahmen = *haupt().rahmenDurchfuehrung;
    RahmenOeffnen(6, true);
    QCoreApplication::processEvents();
    const Anordnungen anordnungen(rahmen);
    rahmen.lblTeilFortschritt->setText(QStringLiteral("57 %"));
    QCoreApplication::processEvents();
    EXPECT_EQ(anordnungen.anzahl, 0);
    rahmen.lblDauer->setText(QStringLiteral("anders"));
    QCoreApplication::processEvents();
    EXPECT_GT(anordnungen.anzahl, 0);
    EXPECT_GE(rahmen.lblTeilFortschritt->width(),
              rahmen.lblTeilFortschritt->fontMetrics().horizontalAdvance(QStringLiteral("100 %")));
    RahmenOeffnen(1, true);  // a run under way would ask before the window closes
}

TEST_F(Assistent, DieRahmenTragenIhreTexte) {
    const std::pair<int, const char*> texte[] = {
        {1, "Beachten sie bitte folgende Hinweise, welche generell für alle Datenbankanwendungen gelten:"},
        {1,
         "Vor jeder Benutzung der Software wird dringend empfohlen, die betreffende Datenbank zu sichern."},
        {1, "Schließen sie alle Anwendungen, welche zur Zeit Zugriff auf die Datenbank haben."},
        {2, "Wählen sie hier die zu bearbeitende Datenbank aus, oder geben sie deren Ort an."},
        {2, "Datenbankname:"},
        {2, "Passwort (falls benötigt):"},
        {3, "Wählen sie die zu bearbeitende Tabelle."},
        {3, "Tabelle löschen"},
        {3, "Tabelle umbenennen"},
        {4,
         "Bestimmen sie den Namen der Tabelle, unter der die geänderte Tabelle gespeichert werden soll. Die "
         "Ausgangstabelle wird nicht überschrieben. Aus Gründen der Sicherheit, zwecks Wiederherstellung des "
         "ursprünglichen Zustandes, ist dies erforderlich."},
        {4, "Daher muss der Name ein anderer sein als der der Ausgangstabelle."},
        {4, "Korrgierte Tabelle speichern als:"},
        {5, "Dubletten suchen"},
        {5, "Mülldatensätze entfernen"},
        {5, "Felder spitten"},
        {5, "Felder verschmelzen"},
        {5, "Datenabgleich"},
        {5, "Daten hinzufügen"},
        {6, "Fortschritt:"},
        {7, "Wählen Sie die Felder aus"},
        {7,
         "Ordnen sie den Tabellenfeldern einen Inhalt zu. Korrigieren sie gegebenenfalls die vom Programm "
         "vorgeschlagenen Inhalte (klicken mit der linken Maustaste). Genaue Angaben erhöhen den Erfolg der "
         "Suche."},
        {11, "1. Suche durchführen:"},
        {11, "2. Suche durchführen:"},
        {11, "3. Suche durchführen:"},
        {11, "Nötige Über- einstimmung:"},
        {11, "Sehr niedrig"},
        {11, "niedrig"},
        {11, "hoch"},
        {11, "Sehr hoch"},
        {11, "Quicksuch-Modus"},
        {11, "Mehrere Ansprechpartner pro Unternehmen zulassen"},
        {21, "Markieren sie die Felder, welche bei der Suche berücksichtigt werden sollen."},
        {21, "\"Postalische Kontrolle\" beinhaltet Postleitzahl, Ort und Straße."},
        {31, "Machen sie bitte die folgenden Angaben:"},
        {31, "Die Aufspaltung ist vom Typ:"},
        {31, "Die neuen Felder heißen:"},
        {41, "Machen sie bitte die folgenden Angaben:"},
        {41, "Das Feld"},
        {41, "soll mit dem Feld"},
        {41, "zu einem einzigen Feld verschmolzen werden."},
        {41, "Das neue Feld heißt:"},
        {41, "Hierbei werden"},
        {51, "Aus der aktuellen Tabelle sollen alle Datensätze entfernt werden, welche ebenfalls in"},
        {51, "enthalten sind."},
        {51,
         "Doppelt vorhandene Datensätze werden zum Löschen markiert. Falls sie die entsprechenden Datensätze "
         "doch "
         "beibehalten wollen, können sie den vom Programm automatisch generierten angereicherten Datensatz "
         "verwenden."},
        {51,
         "Dabei werden ebenfalls alle in der Ausgangstabelle enthaltenen Dubletten zum Löschen markiert."},
        {61, "Zur aktuellen Tabelle sollen die Datensätze der Tabelle"},
        {61, "hinzugefügt werden."},
        {61,
         "Doppelt vorhandene Datensätze werden als Dubletten markiert. Das Programm generiert automatisch "
         "einen "
         "neuen angereicherten Datensatz, der die wertvollsten Informationen aus den alten Datensätzen "
         "enthält."},
        {61, "Dabei werden ebenfalls alle in der Ausgangstabelle enthaltenen Dubletten zusammengeführt."},
    };
    for (const auto& [nummer, text] : texte) {
        SCOPED_TRACE(text);
        QStringList gezeigt;
        for (const QLabel* label : haupt().freRahmen(nummer)->findChildren<QLabel*>())
            gezeigt << ohneKuerzel(label->text());
        for (const QAbstractButton* knopf : haupt().freRahmen(nummer)->findChildren<QAbstractButton*>())
            gezeigt << ohneKuerzel(knopf->text());
        EXPECT_TRUE(gezeigt.contains(QString::fromUtf8(text)));
    }
}

TEST_F(Assistent, DieSechsVorgaengeStehenInIhrenSpaltenUndZeilen) {
    bisVorgang();
    // By index: column, row.
    const int soll[6][2] = {{0, 1}, {1, 1}, {0, 0}, {1, 0}, {2, 0}, {2, 1}};
    const auto& knoepfe = haupt().rahmenVorgang->btnAuswahl;
    for (size_t i = 0; i < 6; ++i)
        for (size_t j = 0; j < 6; ++j) {
            const QPoint a = knoepfe[i]->geometry().center(), b = knoepfe[j]->geometry().center();
            EXPECT_EQ(a.x() < b.x(), soll[i][0] < soll[j][0]) << i << " " << j;
            EXPECT_EQ(a.y() < b.y(), soll[i][1] < soll[j][1]) << i << " " << j;
        }
    for (const QToolButton* knopf : knoepfe) EXPECT_TRUE(knopf->isEnabled());
}

TEST_F(Assistent, DieMenues) {
    QStringList eintraege;
    for (const QAction* oben : haupt().menuBar()->actions()) {
        eintraege << ohneKuerzel(oben->text());
        for (const QAction* eintrag : oben->menu()->actions())
            eintraege << eintrag->objectName() + u' ' + ohneKuerzel(eintrag->text());
    }
    EXPECT_EQ(eintraege, (QStringList{"Programm", "mnuBeenden Beenden", "?", "mnuHilfe Hilfe", "mnuLeer1 ",
                                      "mnuInternetseite Internetseite", "mnuSupport Support", "mnuLeer2 ",
                                      "mnuInfo Info"}));
}

TEST_F(Assistent, DerMenuepunktBeendenSchliesst) {
    finde<QAction>("mnuBeenden")->trigger();
    EXPECT_FALSE(haupt().isVisible());
}

TEST_F(Assistent, DieKnoepfeAmAnfang) {
    EXPECT_EQ(gRahmen, 0);
    EXPECT_EQ(ohneKuerzel(haupt().btnHilfe->text()), u"Hilfe");
    EXPECT_EQ(haupt().btnZurück->text(), u"<<  Zurück");
    EXPECT_EQ(haupt().btnWeiter->text(), u"Weiter  >>");
    EXPECT_EQ(haupt().btnBeenden->text(), u"Beenden");
    EXPECT_FALSE(haupt().btnHilfe->isVisible());
    EXPECT_FALSE(haupt().btnZurück->isVisible());
    weiter();
    EXPECT_EQ(gRahmen, 1);
    EXPECT_TRUE(haupt().btnHilfe->isVisible());
    EXPECT_FALSE(haupt().btnZurück->isVisible());
    weiter();
    EXPECT_TRUE(haupt().btnZurück->isVisible());
    zurueck();
    EXPECT_EQ(gRahmen, 1);
}

TEST_F(Assistent, StrgFSchaltetDieSystemmeldungUm) {
    QApplication::setActiveWindow(&haupt());
    ASSERT_TRUE(gSystemmeldungZeigen);
    QTest::keyClick(&haupt(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(gSystemmeldungZeigen);
    QTest::keyClick(&haupt(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(gSystemmeldungZeigen);
    QTest::keyClick(&haupt(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(gSystemmeldungZeigen);
}

TEST_F(Assistent, DieEingabetasteGehtWeiter) {
    QTest::keyClick(&haupt(), Qt::Key_Return);
    EXPECT_EQ(gRahmen, 1);
    QTest::keyClick(&haupt(), Qt::Key_Enter);
    EXPECT_EQ(gRahmen, 2);
    haupt().rahmenDatenbank->tbxDatenbankName->setText(kopie());
    QTest::keyClick(haupt().rahmenDatenbank->tbxDatenbankName, Qt::Key_Return);
    EXPECT_EQ(gRahmen, 3);
    tabelleWaehlen(QStringLiteral("Adressen"));
    QTest::keyClick(haupt().rahmenTabelle->lstTabellen, Qt::Key_Return);
    EXPECT_EQ(gRahmen, 5);
}

TEST_F(Assistent, DieEingabetasteDruecktDenKnopfMitDemFokus) {
    QApplication::setActiveWindow(&haupt());
    bisTabelle();
    haupt().rahmenTabelle->cmdTabelleLöschen->setFocus();
    erwarte(QStringLiteral("Keine Tabelle ausgewählt."));
    QTest::keyClick(haupt().rahmenTabelle->cmdTabelleLöschen, Qt::Key_Return);
    EXPECT_EQ(gRahmen, 3);
    haupt().btnZurück->setFocus();
    QTest::keyClick(haupt().btnZurück, Qt::Key_Return);
    EXPECT_EQ(gRahmen, 2);
    weiter();
    tabelleWaehlen(QStringLiteral("Adressen"));
    weiter();
    QToolButton* dubletten = haupt().rahmenVorgang->btnAuswahl[3];
    dubletten->setFocus();
    QTest::keyClick(dubletten, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(gRahmen, 5);
    QTest::keyClick(dubletten, Qt::Key_Space);
    EXPECT_EQ(gRahmen, 7);
}

TEST_F(Assistent, AufDerVorgangsseiteGehtDieEingabetasteNichtWeiter) {
    bisVorgang();
    EXPECT_FALSE(haupt().btnWeiter->isVisible());
    QTest::keyClick(&haupt(), Qt::Key_Return);
    EXPECT_EQ(gRahmen, 5);
}

TEST_F(Assistent, AltUndPfeilBlaettern) {
    QApplication::setActiveWindow(&haupt());
    QTest::keyClick(&haupt(), Qt::Key_Left, Qt::AltModifier);  // no way back from the first page
    EXPECT_EQ(gRahmen, 0);
    QTest::keyClick(&haupt(), Qt::Key_Right, Qt::AltModifier);
    QTest::keyClick(&haupt(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(gRahmen, 2);
    QTest::keyClick(&haupt(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(gRahmen, 1);
}

TEST_F(Assistent, PfeiltastenGehenUeberDieVorgaengeWieSieStehen) {
    QApplication::setActiveWindow(&haupt());
    bisVorgang();
    const auto& knoepfe = haupt().rahmenVorgang->btnAuswahl;
    EXPECT_TRUE(knoepfe[2]->hasFocus());  // the first one
    const std::pair<Qt::Key, size_t> wege[] = {{Qt::Key_Right, 3}, {Qt::Key_Down, 1},  {Qt::Key_Down, 1},
                                               {Qt::Key_Right, 5}, {Qt::Key_Right, 5}, {Qt::Key_Up, 4},
                                               {Qt::Key_Left, 3},  {Qt::Key_Left, 2},  {Qt::Key_Left, 2}};
    for (const auto& [taste, ziel] : wege) {
        QTest::keyClick(QApplication::focusWidget(), taste);
        EXPECT_TRUE(knoepfe[ziel]->hasFocus()) << ziel;
    }
}

TEST_F(Assistent, EinBalkenBewegtSichSolangeGewartetWird) {
    QProgressBar* balken = haupt().pgbWarten;
    fenster().sanduhr(true);
    EXPECT_FALSE(balken->isVisible());  // not for what is over at once
    EXPECT_TRUE(QTest::qWaitFor([&] { return balken->isVisible(); }));
    EXPECT_EQ(balken->minimum(), balken->maximum());
    fenster().sanduhr(false);
    EXPECT_FALSE(balken->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// Behind the reviews there is no progress to be seen, while the corrected table is built and written.
TEST_F(Assistent, AufDenLeerenSeitenWirdGewartet) {
    for (const int rahmen : {12, 22}) {
        RahmenWechseln(gRahmen, rahmen, false, true);
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_TRUE(QTest::qWaitFor([&] { return haupt().pgbWarten->isVisible(); }));
        RahmenWechseln(rahmen, 1, false, true);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_FALSE(haupt().pgbWarten->isVisible());
    }
}

TEST_F(Assistent, EinLaufBewegtSichAuchOhneAnteil) {
    QProgressBar* balken = haupt().pgbWarten;
    const auto erscheint = [&] { return QTest::qWaitFor([&] { return balken->isVisible(); }); };
    RahmenWechseln(gRahmen, 6, false, true);
    EXPECT_TRUE(erscheint());
    FortschrittStarten(100, 0.3);
    EXPECT_FALSE(balken->isVisible());
    FortschrittBeenden();
    EXPECT_TRUE(erscheint());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);  // the buttons take clicks
    FortschrittStarten(100, 0.3);
    EXPECT_FALSE(balken->isVisible());
    FortschrittBeenden();
    RahmenWechseln(6, 1, false, true);
    EXPECT_FALSE(balken->isVisible());
    EXPECT_FALSE(haupt().findChild<QTimer*>(QStringLiteral("tmrWarten"))->isActive());
}

TEST_F(Assistent, F1OeffnetDieHilfe) {
    QApplication::setActiveWindow(&haupt());
    ProgrammOrdnerSetzen(QStringLiteral(LINDGARN_QUELLE "/resources"));
    QString fenster;
    QTimer::singleShot(0, &haupt(), [&] {
        QWidget* hilfe = QApplication::activeModalWidget();
        ASSERT_NE(hilfe, nullptr);
        fenster = hilfe->objectName();
        hilfe->close();
    });
    QTest::keyClick(&haupt(), Qt::Key_F1);
    EXPECT_EQ(fenster, u"frmHilfe");
}

TEST_F(Assistent, StrgQBeendet) {
    QApplication::setActiveWindow(&haupt());
    QTest::keyClick(&haupt(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(haupt().isVisible());
}

TEST_F(Assistent, EineDateiDerBefehlszeileWirdGeoeffnet) {
    programm->dateiOeffnen(kopie());
    EXPECT_EQ(gRahmen, 3);
    EXPECT_TRUE(tabellen().contains(QStringLiteral("Adressen")));
}

TEST_F(Assistent, EineFalscheDateiDerBefehlszeileEndetAufDerSeiteDerDatenbank) {
    erwarte(QStringLiteral("Datei kann nicht geöffnet werden."));
    programm->dateiOeffnen(QStringLiteral("gibtesnicht.mdb"));
    EXPECT_EQ(gRahmen, 2);
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankName->text(),
              QDir::current().absoluteFilePath(QStringLiteral("gibtesnicht.mdb")));
}

TEST_F(Assistent, SchliessenBeendetAufJedemRahmenOhneFrage) {
    bisSuche();
    for (const int rahmen : RahmenNummern()) {
        if (rahmen == 6) continue;
        SCOPED_TRACE(rahmen);
        RahmenWechseln(gRahmen, rahmen, false, false);
        haupt().show();
        EXPECT_TRUE(haupt().close());
        EXPECT_FALSE(haupt().isVisible());
    }
    EXPECT_EQ(gDatenbank, nullptr);
}

TEST_F(Assistent, BeendenOhneDatenbank) {
    QTest::mouseClick(haupt().btnBeenden, Qt::LeftButton);
    EXPECT_FALSE(haupt().isVisible());
}

TEST_F(Assistent, SchliessenWaehrendDerDurchfuehrungFragt) {
    const QString frage = QStringLiteral("Wollen sie den aktuellen Vorgang wirklich abbrechen?");
    RahmenWechseln(0, 6, false, true);
    gAbbruch = false;
    for (const Knopf antwort : {Knopf::Nein, Knopf::Ja}) {
        erwarte(frage, antwort);
        EXPECT_FALSE(haupt().close());
        EXPECT_EQ(letzteMeldung().symbol, Symbol::Ausrufezeichen);
        EXPECT_EQ(letzteMeldung().knoepfe, Knoepfe::JaNein);
        EXPECT_EQ(letzteMeldung().vorwahl, Knopf::Nein);
        EXPECT_EQ(letzteMeldung().titel, QString());
        EXPECT_EQ(gAbbruch, antwort == Knopf::Ja);
        EXPECT_TRUE(haupt().isVisible());
    }
    gAbbruch = false;
    erwarte(frage, Knopf::Ja);
    EXPECT_EQ(haupt().btnZurück->text(), u"Abbrechen");
    zurueck();
    EXPECT_TRUE(gAbbruch);
    gAbbruch = false;
    RahmenWechseln(6, 1, false, true);
    EXPECT_EQ(haupt().btnZurück->text(), u"<<  Zurück");
}

TEST_F(Assistent, LinksRechtsUndUntenIstDerRandGleich) {
    const QWidget* mitte = haupt().centralWidget();
    const Rahmen* rahmen = haupt().freRahmen(0);
    const QRect innen(rahmen->mapTo(mitte, QPoint(0, 0)), rahmen->size());
    const int rand = innen.left();
    EXPECT_GT(rand, 0);
    EXPECT_EQ(mitte->width() - (innen.right() + 1), rand);
    const int knopfUnten = haupt().btnWeiter->mapTo(mitte, QPoint(0, haupt().btnWeiter->height())).y();
    EXPECT_EQ(mitte->height() - knopfUnten, rand);
    EXPECT_EQ(knopfUnten - (innen.bottom() + 1), PixelAusTwips(600, &haupt()));
}

TEST_F(Assistent, AlleRahmenFuellenDasselbeRechteck) {
    const QRect rechteck = haupt().freRahmen(0)->geometry();
    for (const int rahmen : RahmenNummern()) {
        RahmenWechseln(gRahmen, rahmen, false, false);
        QTest::qWait(0);
        EXPECT_EQ(haupt().freRahmen(rahmen)->geometry(), rechteck) << rahmen;
    }
    RahmenWechseln(gRahmen, 0, false, false);
}

TEST_F(Assistent, DieFensterteileHabenNamenFuerHilfsmittel) {
    for (const QWidget* teil : haupt().findChildren<QWidget*>()) {
        if (teil->focusPolicy() == Qt::NoFocus || teil->objectName().isEmpty() ||
            teil->objectName().startsWith(u"qt_"))
            continue;
        const auto* knopf = qobject_cast<const QAbstractButton*>(teil);
        bool benannt = !teil->accessibleName().isEmpty() || (knopf && !knopf->text().isEmpty()) ||
                       qobject_cast<const QGroupBox*>(teil);
        for (const QLabel* label : haupt().findChildren<QLabel*>())
            benannt = benannt || label->buddy() == teil;
        EXPECT_TRUE(benannt) << qPrintable(teil->objectName());
    }
}

QString kuerzelVon(const QString& text) {
    const qsizetype stelle = text.indexOf(u'&');
    if (stelle < 0 || stelle + 1 >= text.size() || text[stelle + 1] == u'&') return QString();
    return text.mid(stelle + 1, 1).toUpper();
}

// Alt and a letter leads to one thing alone.
TEST_F(Assistent, KuerzelSindAufJedemRahmenEindeutig) {
    QStringList immer;
    for (const QAction* menue : haupt().menuBar()->actions()) immer << kuerzelVon(menue->text());
    for (const QPushButton* knopf :
         {haupt().btnHilfe, haupt().btnZurück, haupt().btnWeiter, haupt().btnBeenden})
        immer << kuerzelVon(knopf->text());
    for (int nummer = 0; nummer < 100; ++nummer) {
        const Rahmen* rahmen = haupt().freRahmen(nummer);
        if (!rahmen) continue;
        SCOPED_TRACE(nummer);
        QStringList kuerzel = immer;
        for (const QLabel* label : rahmen->findChildren<QLabel*>())
            if (label->buddy()) kuerzel << kuerzelVon(label->text());
        for (const QAbstractButton* knopf : rahmen->findChildren<QAbstractButton*>())
            kuerzel << kuerzelVon(knopf->text());
        kuerzel.removeAll(QString());
        EXPECT_EQ(QSet<QString>(kuerzel.begin(), kuerzel.end()).size(), kuerzel.size())
            << qPrintable(kuerzel.join(u' '));
    }
}

}  // namespace
