// Every page of the wizard and every box, as they look: in three text sizes, light and dark, with the longest
// names and with many fields.
#include "ui/ansicht.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QTimer>

#include "ui/assistent.h"
#include "ui/frmhilfe.h"
#include "ui/frminfo.h"

namespace {

const QString kLangerName(46, u'W');  // with the shortest kind it just fits a line of the field list

class Ansichten : public Assistent, public testing::WithParamInterface<Ansicht> {
  protected:
    void SetUp() override {
        ansicht = std::make_unique<MitAnsicht>(GetParam());
        Assistent::SetUp();
    }
    void TearDown() override {
        Assistent::TearDown();
        ansicht.reset();
    }
    QString bildname(const QString& was) const {
        return QStringLiteral("%1-%2").arg(was, Ansichtsname(GetParam()));
    }
    // An open database with a table of `anzahl` fields that have long names.
    void mitFeldern(int anzahl) {
        bisTabelle();
        QStringList felder;
        for (int i = 0; i < anzahl; ++i)
            felder << QStringLiteral("%1 ").arg(i) + kLangerName.mid(QString::number(i).size() + 1);
        gAusgangsTabelle = gZielTabelle = gZweiteTabelle = gZuordnungsTabelle = QString(64, u'W');
        tabelleAnlegen(gAusgangsTabelle, felder, 3);
        gDublettenAnzahl = gMuellAnzahl = 2;
        gAnzahlAngereichert = 1;
        gZuordnungenTabelle1 = FeldZuordnungen(size_t(anzahl));
    }
    void einenLaufVortaeuschen() {
        fenster().information(
            QStringLiteral("Bereite Tabelle auf Vergleich vor und erstelle Sicherungskopie ..."));
        fenster().datensaetze(QStringLiteral("3000000 Datensätze insgesamt"));
        fenster().dauer(QStringLiteral("Geschätzte Dauer : 10:00:00"));
        fenster().verbleibendeZeit(QStringLiteral("Verbleibende Zeit  : 9:59:59"));
        fenster().teilFortschritt(37);
        fenster().teilFortschrittText(QStringLiteral("37 %"));
    }

    std::unique_ptr<MitAnsicht> ansicht;
};

TEST_P(Ansichten, JedeSeite) {
    mitFeldern(5);
    QSize groesse;
    for (const int rahmen : RahmenNummern()) {
        RahmenWechseln(gRahmen, rahmen, false, true);
        if (rahmen == 3) haupt().rahmenTabelle->lstTabellen->setCurrentRow(0);
        if (rahmen == 6) einenLaufVortaeuschen();
        AnsichtPruefen(&haupt(), bildname(QStringLiteral("rahmen-%1").arg(rahmen)));
        // Nothing jumps from page to page.
        if (groesse.isEmpty()) groesse = haupt().size();
        EXPECT_EQ(haupt().size(), groesse) << rahmen;
    }
    RahmenWechseln(gRahmen, 3, false, true);
}

TEST_P(Ansichten, JederTypDesSplittens) {
    mitFeldern(5);
    RahmenWechseln(gRahmen, 31, false, true);
    QComboBox* typ = haupt().rahmenSplitten->cbxSplittenTypus;
    const QLineEdit* name = haupt().rahmenSplitten->tbxSplitten1;
    const QRect ort = typ->geometry(), namensort = name->geometry();
    for (int i = 0; i < typ->count(); ++i) {
        typ->setCurrentIndex(i);
        AnsichtPruefen(&haupt(), bildname(QStringLiteral("splitten-%1").arg(i)));
        EXPECT_EQ(typ->geometry(), ort) << i;
        EXPECT_EQ(name->geometry(), namensort) << i;
    }
}

// What a run says can hold names of any length.
TEST_P(Ansichten, EinLaufMitLangenNamen) {
    mitFeldern(5);
    RahmenWechseln(gRahmen, 6, false, true);
    einenLaufVortaeuschen();
    const QSize groesse = haupt().size();
    const QString name(64, u'W');
    const QStringList texte{
        QStringLiteral("Mische '%1' mit Tabelle '%1' ...").arg(name),
        QStringLiteral("Durchsuche die Tabelle nach Dubletten ... \r\n"
                       "Unter Sortierung der Tabelle nach \"[%1],[%1],[%1]\" im Quicksuch-Modus.")
            .arg(name)};
    for (const QString& text : texte) {
        fenster().information(text);
        AnsichtPruefen(&haupt(), bildname(QStringLiteral("lauf-%1").arg(texte.indexOf(text))));
        EXPECT_EQ(haupt().size(), groesse);
    }
    RahmenWechseln(gRahmen, 3, false, true);
}

TEST_P(Ansichten, ZweihundertfuenfzigFelder) {
    mitFeldern(250);
    for (const int rahmen : {7, 11, 31, 41}) {
        RahmenWechseln(gRahmen, rahmen, false, true);
        AnsichtPruefen(&haupt(), bildname(QStringLiteral("felder-250-%1").arg(rahmen)));
        const QListWidget* felder = haupt().rahmenFelder->lstFelder;
        if (rahmen == 7) {
            EXPECT_EQ(felder->visualItemRect(felder->item(0)).top(), 0);
        }
    }
}

TEST_P(Ansichten, HilfeUndInfo) {
    ProgrammOrdnerSetzen(QStringLiteral(LINDGARN_QUELLE "/resources"));
    FrmHilfe hilfe(&haupt(), QString());
    hilfe.show();
    AnsichtPruefen(&hilfe, bildname(QStringLiteral("hilfe")));
    FrmInfo info(&haupt());
    info.show();
    AnsichtPruefen(&info, bildname(QStringLiteral("info")));
}

TEST_P(Ansichten, DieKaesten) {
    DialogantwortenSetzen({});
    const QString lang(64, u'W');
    const std::vector<Meldung> kaesten{
        {QStringLiteral(" Hinweis"), QStringLiteral("Es wurden keine Dubletten gefunden."),
         Symbol::Information, Knoepfe::Ok, Knopf::Ok},
        {QString(),
         QStringLiteral("Sind sie sich sicher, dass sie die Tabelle \"%1\"\rinklusive sämtlicher enthaltener "
                        "Datensätze löschen möchten?")
             .arg(lang),
         Symbol::Information, Knoepfe::JaNein, Knopf::Nein},
        {QStringLiteral(" Fehler!"),
         QStringLiteral("Fehler beim Öffnen des Rahmens 7.\rSystemmeldung:\rDas Feld gibt es nicht."),
         Symbol::Kritisch, Knoepfe::AbbrechenWiederholenIgnorieren, Knopf::Ignorieren}};
    int nummer = 0;
    for (const Meldung& meldung : kaesten) {
        QTimer::singleShot(0, &haupt(), [&] {
            auto* kasten = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(kasten, nullptr);
            AnsichtPruefen(kasten, bildname(QStringLiteral("kasten-%1").arg(++nummer)));
            kasten->done(0);
        });
        MeldungAnzeigen(meldung);
    }
    EXPECT_EQ(nummer, 3);
}

TEST_F(Assistent, TausendTabellenSehenOrdentlichAus) {
    bisTabelle();
    for (int i = 0; i < 1000; ++i) {
        auto def = gDatenbank->CreateTableDef();
        def->setName(QStringLiteral("Tabelle %1").arg(i));
        def->Fields().Append(def->CreateField(QStringLiteral("Feld"), dao::dbText, 50));
        gDatenbank->TableDefs().Append(std::move(def));
    }
    for (const int rahmen : {3, 51, 61}) {
        RahmenWechseln(gRahmen, rahmen, false, true);
        AnsichtPruefen(&haupt(), QStringLiteral("tabellen-1000-%1").arg(rahmen));
    }
    RahmenWechseln(gRahmen, 3, false, true);
}

INSTANTIATE_TEST_SUITE_P(Ansicht, Ansichten, AlleAnsichten(), Fallname);

}  // namespace
