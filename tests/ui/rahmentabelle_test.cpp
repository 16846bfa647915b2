// Frames 2 and 3: opening a database; its tables, their details, deleting and renaming.
#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "base/fehler.h"
#include "engine/dao/oeffner.h"
#include "engine/jet/mdbdatei.h"
#include "ui/assistent.h"

namespace {

using Datenbankwahl = Assistent;

QByteArray inhaltVon(const QString& name) {
    QFile datei(name);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

TEST_F(Datenbankwahl, EineDateiDieEsNichtGibt) {
    bisDatenbank();
    haupt().rahmenDatenbank->tbxDatenbankName->setText(ordner.filePath("fehlt.mdb"));
    erwarte(QStringLiteral("Datei kann nicht geöffnet werden."));
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
    EXPECT_EQ(gRahmen, 2);
    EXPECT_TRUE(haupt().freRahmen(2)->isVisible());
}

TEST_F(Datenbankwahl, DasPasswortBleibtVerborgen) {
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankPasswort->echoMode(), QLineEdit::Password);
}

TEST_F(Datenbankwahl, EineDateiDieKeineDatenbankIst) {
    const QString datei = ordner.filePath("unsinn.mdb");
    QFile unsinn(datei);
    ASSERT_TRUE(unsinn.open(QIODevice::WriteOnly));
    unsinn.write("keine Datenbank");
    unsinn.close();
    bisDatenbank();
    haupt().rahmenDatenbank->tbxDatenbankName->setText(datei);
    int gemeldet = 0;
    DialogantwortenSetzen({[&](const Meldung& meldung) {
                               ++gemeldet;
                               EXPECT_EQ(meldung.titel, u" Achtung!");
                               return meldung.vorwahl;
                           },
                           {},
                           {}});
    weiter();
    EXPECT_EQ(gemeldet, 1);
    EXPECT_EQ(gRahmen, 2);
}

TEST_F(Datenbankwahl, DerDateidialogNenntDieFormateUndMerktDenOrdner) {
    bisDatenbank();
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    ASSERT_EQ(dateifragen.size(), 1u);
    EXPECT_EQ(dateifragen[0].filter,
              (QStringList{"Alle Datendateien (*.mdb;*.xls;*.dbf)", "Microsoft Access Datenbank (*.mdb)",
                           "Microsoft Excel Tabelle (*.xls)", "dBase 5 Datenbank (*.dbf)",
                           "dBase IV Datenbank (*.dbf)", "dBase III Datenbank (*.dbf)"}));
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankName->text(), QString());
    dateiwahl = Dateiwahl{kopie(), 2};
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankName->text(), dateiwahl->datei);
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    EXPECT_EQ(QDir(dateifragen[2].ordner), QDir(ordner.path()));
}

TEST_F(Datenbankwahl, BeimErstenStartHatDerDialogKeinenOrdner) {
    bisDatenbank();
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    ASSERT_EQ(dateifragen.size(), 1u);
    EXPECT_EQ(dateifragen[0].ordner, QString());
    EXPECT_EQ(dateifragen[0].filterIndex, 1);
}

TEST_F(Datenbankwahl, EineZahlInDerAblageIstKeinOrdner) {
    bisDatenbank();
    RegWertSchreiben(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel, QStringLiteral("SV"), kRegZahl,
                     Wert(5));
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    ASSERT_EQ(dateifragen.size(), 1u);
    EXPECT_EQ(dateifragen[0].ordner, QString());
}

// One row off the list of the filters; the last one sets nothing.
TEST_F(Datenbankwahl, JederFilterSetztSeinFormat) {
    bisDatenbank();
    const QStringList formate{"Access", "Dbase 5;", "Dbase IV;", "Dbase III;", "Excel 5.0;", "alt"};
    for (int filter = 1; filter <= 6; ++filter) {
        gDatenbankFormat = QStringLiteral("alt");
        dateiwahl = Dateiwahl{ordner.filePath("x.mdb"), filter};
        QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
        EXPECT_EQ(gDatenbankFormat, formate[filter - 1]) << filter;
    }
}

TEST_F(Datenbankwahl, EinAbgebrochenerDialogAendertNichts) {
    bisDatenbank();
    dateiwahl = Dateiwahl{ordner.filePath("x.mdb"), 2};
    QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    dateiwahl.reset();
    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(haupt().rahmenDatenbank->btnDatenbankAuswählen, Qt::LeftButton);
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankName->text(), ordner.filePath("x.mdb"));
    EXPECT_EQ(gDatenbankFormat, u"Dbase 5;");
    EXPECT_EQ(dateifragen[2].ordner, dateifragen[1].ordner);
}

TEST_F(Datenbankwahl, EineExcelTabelleWirdGeoeffnetUndIhrNachteilGesagt) {
    bisDatenbank();
    dao::DateiOeffnerSetzen(dao::Dateiart::Excel, jet::mdbOeffnen);  // whatever stands in the file
    haupt().rahmenDatenbank->tbxDatenbankName->setText(kopie(QStringLiteral("a.xls")));
    erwarte(
        QStringLiteral("Sie verwenden eine Excel-Tabelle.\r"
                       "Es wird empfohlen, diese mit dem entsprechenden Programm in \r"
                       "eine Access-Datenbank zu konvertieren, da jene ein erheblich\r"
                       "besseres Leistungsverhalten aufweisen."));
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Hinweis");
    EXPECT_EQ(letzteMeldung().symbol, Symbol::Information);
    EXPECT_EQ(gRahmen, 3);
}

// Writing into a file that somebody else has changed since it was opened is refused: only a file that was
// opened anew takes the new name.
// What is dragged, and whether the frame takes it.
TEST_F(Datenbankwahl, EineDateiLaesstSichAufDieSeiteZiehen) {
    bisDatenbank();
    RahmenDatenbank* seite = haupt().rahmenDatenbank;
    const QUrl datei = QUrl::fromLocalFile(kopie());
    const QUrl ordnerUrl = QUrl::fromLocalFile(ordner.path());
    const std::pair<QList<QUrl>, bool> faelle[] = {{{ordnerUrl}, false},
                                                   {{datei, datei}, false},
                                                   {{QUrl("https://a.example/b.mdb")}, false},
                                                   {{}, false},
                                                   {{datei}, true}};
    for (QWidget* worauf :
         std::initializer_list<QWidget*>{seite->tbxDatenbankPasswort, seite, seite->tbxDatenbankName}) {
        seite->tbxDatenbankName->clear();
        for (const auto& [urls, genommen] : faelle) {
            QMimeData daten;
            daten.setUrls(urls);
            QDragEnterEvent hinein(QPoint(2, 2), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
            hinein.ignore();
            QApplication::sendEvent(worauf, &hinein);
            EXPECT_EQ(hinein.isAccepted(), genommen);
            if (!genommen) continue;
            QDropEvent fallen(QPointF(2, 2), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(worauf, &fallen);
        }
        EXPECT_EQ(seite->tbxDatenbankName->text(), datei.toLocalFile());
        EXPECT_EQ(seite->tbxDatenbankPasswort->text(), QString());
    }
    weiter();
    EXPECT_EQ(gRahmen, 3);
}

TEST_F(Datenbankwahl, ZurueckUndWeiterOeffnetNeu) {
    bisTabelle();
    QFile datei(ordner.filePath("a.mdb"));
    ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        datei.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime));
    datei.close();
    zurueck();
    zurueck();
    EXPECT_EQ(gRahmen, 1);
    weiter();
    EXPECT_EQ(gRahmen, 2);
    EXPECT_EQ(haupt().rahmenDatenbank->tbxDatenbankName->text(), datei.fileName());
    weiter();
    EXPECT_EQ(gRahmen, 3);
    tabelleWaehlen(QStringLiteral("Interessenten"));
    eingabe = QStringLiteral("Anfragen");
    QTest::mouseClick(haupt().rahmenTabelle->cmdTabelleUmbenennen, Qt::LeftButton);
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Anfragen"}));
}

TEST_F(Datenbankwahl, OhneNeuesOeffnenWirdEineFremdeAenderungNichtUeberschrieben) {
    bisTabelle();
    QFile datei(ordner.filePath("a.mdb"));
    ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        datei.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime));
    datei.close();
    const QByteArray vorher = inhaltVon(datei.fileName());
    DialogantwortenSetzen({[this](const Meldung& meldung) {
                               meldungen.push_back(meldung);
                               return Knopf::Abbrechen;
                           },
                           {},
                           {}});
    tabelleWaehlen(QStringLiteral("Interessenten"));
    ASSERT_FALSE(meldungen.empty());
    EXPECT_EQ(meldungen[0].titel, u" Fehler!");
    haupt().close();
    EXPECT_EQ(inhaltVon(datei.fileName()), vorher);
}

class Tabellenliste : public Assistent {
  protected:
    RahmenTabelle& seite() { return *haupt().rahmenTabelle; }
    // Shows the list with further tables in it.
    void mitTabellen(const std::function<void()>& anlegen) {
        bisTabelle();
        anlegen();
        RahmenWechseln(3, 3, false, true);
    }
    void loeschen() { QTest::mouseClick(seite().cmdTabelleLöschen, Qt::LeftButton); }
    void umbenennen() { QTest::mouseClick(seite().cmdTabelleUmbenennen, Qt::LeftButton); }
    static QString loeschfrage(const QString& name) {
        return QStringLiteral(
                   "Sind sie sich sicher, dass sie die Tabelle \"%1\"\rinklusive sämtlicher enthaltener "
                   "Datensätze löschen möchten?")
            .arg(name);
    }
};

TEST_F(Tabellenliste, NenntDieTabellenDerDateiOhneAuswahl) {
    gVorgang = 4;
    bisTabelle();
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten"}));
    EXPECT_TRUE(seite().lstTabellen->selectedItems().isEmpty());
    EXPECT_EQ(seite().lblGröße->text(), QString());
    EXPECT_EQ(seite().lblGeändert->text(), QString());
    EXPECT_EQ(gVorgang, 0);
}

TEST_F(Tabellenliste, DieErstePfeiltasteWaehltDieZeileMitDemFokus) {
    QApplication::setActiveWindow(&haupt());
    bisTabelle();
    QListWidget* liste = haupt().rahmenTabelle->lstTabellen;
    ASSERT_TRUE(liste->hasFocus());
    EXPECT_TRUE(liste->selectedItems().isEmpty());
    QTest::keyClick(liste, Qt::Key_Down);
    EXPECT_TRUE(liste->item(0)->isSelected());
    EXPECT_EQ(haupt().rahmenTabelle->lblGröße->text(), u"500 Datensätz(e)");
    QTest::keyClick(liste, Qt::Key_Down);
    EXPECT_TRUE(liste->item(1)->isSelected());
}

TEST_F(Tabellenliste, SystemtabellenUndVerknuepfteStehenNichtDarin) {
    mitTabellen([this] {
        for (const auto& [name, attribute] : {std::pair("Versteckt", 1), std::pair("Verknüpft", 0x40000000),
                                              std::pair("System", -2147483646)}) {
            tabelleAnlegen(QString::fromUtf8(name), {"A"});
            gDatenbank->TableDefs().Item(QString::fromUtf8(name)).setAttributes(attribute);
        }
    });
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten"}));
}

TEST_F(Tabellenliste, OhneBenutzertabelleIstSieLeer) {
    mitTabellen([] {
        gDatenbank->TableDefs().Delete(QStringLiteral("Adressen"));
        gDatenbank->TableDefs().Delete(QStringLiteral("Interessenten"));
    });
    EXPECT_EQ(tabellen(), QStringList());
    erwarte(QStringLiteral("Keine Tabelle ausgewählt."));
    weiter();
    EXPECT_EQ(gRahmen, 3);
}

TEST_F(Tabellenliste, ZeigtGroesseUndZeitDerGewaehlten) {
    bisTabelle();
    const QDateTime wann = gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).LastUpdated();
    tabelleWaehlen(QStringLiteral("Adressen"));
    EXPECT_EQ(seite().lblGröße->text(), u"500 Datensätz(e)");
    const QStringList monate{"Januar", "Februar", "März",      "April",   "Mai",      "Juni",
                             "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
    const QTime uhr = wann.time();
    EXPECT_EQ(seite().lblGeändert->text(),
              QStringLiteral("Zuletzt geändert am :\n\n%1. %2 %3\num %4.%5%6 Uhr")
                  .arg(wann.date().day())
                  .arg(monate[wann.date().month() - 1])
                  .arg(wann.date().year())
                  .arg(uhr.hour())
                  .arg(uhr.minute() < 10 ? QStringLiteral("0") : QString())
                  .arg(uhr.minute()));
}

TEST_F(Tabellenliste, EineLeereTabelleHatTrotzdemEinDatum) {
    mitTabellen([this] { tabelleAnlegen(QStringLiteral("Leer"), {"A"}, 0); });
    tabelleWaehlen(QStringLiteral("Leer"));
    EXPECT_EQ(seite().lblGröße->text(), u"Keine Datensätze vorhanden");
    EXPECT_TRUE(seite().lblGeändert->text().startsWith(u"Zuletzt geändert am :"));
    erwarte(QStringLiteral("Tabelle enthält keine Datensätze."));
    weiter();
    EXPECT_EQ(gRahmen, 3);
}

TEST_F(Tabellenliste, OhneAuswahlKeinWeiter) {
    bisTabelle();
    erwarte(QStringLiteral("Keine Tabelle ausgewählt."));
    weiter();
    EXPECT_EQ(letzteMeldung().titel, u" Achtung!");
    EXPECT_EQ(gRahmen, 3);
}

TEST_F(Tabellenliste, LoeschenUndUmbenennenOhneAuswahlFragenNichts) {
    bisTabelle();
    erwarte(QStringLiteral("Keine Tabelle ausgewählt."));
    loeschen();
    erwarte(QStringLiteral("Keine Tabelle ausgewählt."));
    umbenennen();
    EXPECT_TRUE(eingabefragen.empty());
}

TEST_F(Tabellenliste, LoeschenMitNeinLaesstAllesStehen) {
    bisTabelle();
    tabelleWaehlen(QStringLiteral("Interessenten"));
    const QString groesse = seite().lblGröße->text();
    erwarte(loeschfrage(QStringLiteral("Interessenten")), Knopf::Nein);
    loeschen();
    EXPECT_EQ(letzteMeldung().symbol, Symbol::Information);
    EXPECT_EQ(letzteMeldung().knoepfe, Knoepfe::JaNein);
    EXPECT_EQ(letzteMeldung().vorwahl, Knopf::Nein);
    EXPECT_EQ(letzteMeldung().titel, QString());
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten"}));
    EXPECT_EQ(seite().lblGröße->text(), groesse);
    EXPECT_EQ(seite().lstTabellen->selectedItems().value(0)->text(), u"Interessenten");
}

TEST_F(Tabellenliste, LoeschenMitJaLoeschtInDerDatei) {
    bisTabelle();
    tabelleWaehlen(QStringLiteral("Interessenten"));
    erwarte(loeschfrage(QStringLiteral("Interessenten")), Knopf::Ja);
    loeschen();
    EXPECT_EQ(tabellen(), QStringList{"Adressen"});
    EXPECT_EQ(seite().lblGröße->text(), QString());
    EXPECT_EQ(seite().lblGeändert->text(), QString());
    zurueck();
    weiter();
    EXPECT_EQ(tabellen(), QStringList{"Adressen"});
}

TEST_F(Tabellenliste, UmbenennenFragtMitLeererVorgabe) {
    bisTabelle();
    tabelleWaehlen(QStringLiteral("Interessenten"));
    for (const std::optional<QString>& antwort :
         {std::optional<QString>(), std::optional<QString>(QString())}) {
        eingabe = antwort;
        umbenennen();
        EXPECT_EQ(eingabefragen.back().text, u"\"Interessenten\" umbennen in: ");
        EXPECT_EQ(eingabefragen.back().titel, QString());
        EXPECT_EQ(eingabefragen.back().vorgabe, QString());
        EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten"}));
        EXPECT_NE(seite().lblGröße->text(), QString());
    }
}

TEST_F(Tabellenliste, NachDemUmbenennenIstNichtsGewaehlt) {
    bisTabelle();
    tabelleWaehlen(QStringLiteral("Interessenten"));
    eingabe = QStringLiteral("Anfragen");
    umbenennen();
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Anfragen"}));
    EXPECT_TRUE(seite().lstTabellen->selectedItems().isEmpty());
    EXPECT_EQ(seite().lblGröße->text(), QString());
    EXPECT_EQ(seite().lblGeändert->text(), QString());
    zurueck();
    weiter();
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Anfragen"}));
}

TEST_F(Tabellenliste, EinVergebenerNameIstEinFehlerUndLaesstAllesStehen) {
    bisTabelle();
    tabelleWaehlen(QStringLiteral("Interessenten"));
    eingabe = QStringLiteral("Adressen");
    gSystemmeldungZeigen = false;
    DialogantwortenSetzen(
        {[this](const Meldung& meldung) {
             meldungen.push_back(meldung);
             EXPECT_EQ(meldung.titel, u" Fehler!");
             EXPECT_TRUE(meldung.text.startsWith(u"Fehler beim Umbenennen der Tabelle 'Interessenten'."));
             return Knopf::Abbrechen;
         },
         [this](const Eingabefrage&) { return eingabe; },
         {}});
    gFehler = false;
    umbenennen();
    EXPECT_EQ(meldungen.size(), 1u);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten"}));
}

// A table that has gone since it was listed.
class Verschwunden : public Tabellenliste {
  protected:
    void listen() {
        mitTabellen([this] { anlegen(); });
        gSystemmeldungZeigen = false;
        gFehler = false;
        gDatenbank->TableDefs().Delete(kName);
    }
    void anlegen() { tabelleAnlegen(kName, {"A"}, 3); }
    // Every error box is answered alike; a yes to the question.
    void antwortenMit(Knopf knopf) {
        DialogantwortenSetzen({[this, knopf](const Meldung& meldung) {
                                   if (meldung.knoepfe == Knoepfe::JaNein) return Knopf::Ja;
                                   meldungen.push_back(meldung);
                                   if (knopf == Knopf::Wiederholen) anlegen();
                                   return knopf;
                               },
                               [](const Eingabefrage&) { return QStringLiteral("Anders"); },
                               {}});
    }
    void alleMeldungenLauten(const QString& text) {
        for (const Meldung& meldung : meldungen) {
            EXPECT_EQ(meldung.text, text + u'\r');
            EXPECT_EQ(meldung.titel, u" Fehler!");
        }
        EXPECT_FALSE(gFehler);
    }
    // Chosen in the list that still shows it.
    void dennochWaehlen() {
        listen();
        antwortenMit(Knopf::Ignorieren);
        tabelleWaehlen(kName);
        meldungen.clear();
    }
    void einmalGemeldetUndNeuGelistet(const QString& text) {
        EXPECT_EQ(meldungen.size(), 1u);
        alleMeldungenLauten(text);
        EXPECT_FALSE(tabellen().contains(kName));
    }
    const QString kName = QStringLiteral("Fort");
    const QString kAnzeigen = QStringLiteral("Fehler beim Anzeigen der Tabelle 'Fort'.");
    const QString kLoeschen = QStringLiteral("Fehler beim Löschen der Tabelle 'Fort'.");
    const QString kUmbenennen = QStringLiteral("Fehler beim Umbenennen der Tabelle 'Fort'.");
};

TEST_F(Verschwunden, AbbrechenVerlaesstDasAnzeigen) {
    listen();
    antwortenMit(Knopf::Abbrechen);
    tabelleWaehlen(kName);
    EXPECT_EQ(meldungen.size(), 1u);
    alleMeldungenLauten(kAnzeigen);
}

TEST_F(Verschwunden, IgnorierenGehtBeimAnzeigenSchrittFuerSchrittWeiter) {
    listen();
    antwortenMit(Knopf::Ignorieren);
    tabelleWaehlen(kName);
    EXPECT_EQ(meldungen.size(), 4u);  // the date, the opening, the count, the closing
    alleMeldungenLauten(kAnzeigen);
}

TEST_F(Verschwunden, WiederholenZeigtSieWennSieWiederDaIst) {
    listen();
    antwortenMit(Knopf::Wiederholen);
    tabelleWaehlen(kName);
    EXPECT_EQ(meldungen.size(), 1u);
    EXPECT_EQ(seite().lblGröße->text(), u"3 Datensätz(e)");
    EXPECT_TRUE(seite().lblGeändert->text().startsWith(u"Zuletzt geändert am :"));
}

TEST_F(Verschwunden, AbbrechenVerlaesstDasLoeschen) {
    dennochWaehlen();
    antwortenMit(Knopf::Abbrechen);
    loeschen();
    EXPECT_EQ(meldungen.size(), 1u);
    alleMeldungenLauten(kLoeschen);
    EXPECT_TRUE(tabellen().contains(kName));
    EXPECT_THROW(gArbeitsbereich->Rollback(), EngineFehler);  // nothing stays open
}

TEST_F(Verschwunden, IgnorierenListetNachDemLoeschenNeu) {
    dennochWaehlen();
    loeschen();
    einmalGemeldetUndNeuGelistet(kLoeschen);
}

TEST_F(Verschwunden, IgnorierenListetNachDemUmbenennenNeu) {
    dennochWaehlen();
    umbenennen();
    einmalGemeldetUndNeuGelistet(kUmbenennen);
}

TEST_F(Tabellenliste, ZurueckVomVorgangLiestSieNeu) {
    bisVorgang();
    EXPECT_EQ(gAusgangsTabelle, u"Adressen");
    tabelleAnlegen(QStringLiteral("Neu"), {"A"});
    zurueck();
    EXPECT_EQ(gRahmen, 3);
    EXPECT_EQ(tabellen(), (QStringList{"Adressen", "Interessenten", "Neu"}));
    EXPECT_TRUE(seite().lstTabellen->selectedItems().isEmpty());
}

}  // namespace
