// Boxes as the user meets them: texts, buttons, keys, what the close button does.
#include "ui/dialoge.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

// Carries out an action on the box once it is on show; then presses a button if the box is still there.
void amKasten(const std::function<void(QMessageBox&)>& aktion, const QString& danach) {
    QTimer::singleShot(0, qApp, [=] {
        auto* kasten = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(kasten, nullptr);
        aktion(*kasten);
        if (!kasten->isVisible()) return;
        for (QAbstractButton* knopf : kasten->buttons())
            if (knopf->text().remove(u'&') == danach) QTest::mouseClick(knopf, Qt::LeftButton);
    });
}

const Meldung kFrage{QString(), QStringLiteral("Zeile eins\rZeile zwei <b>\r\nZeile drei"),
                     Symbol::Ausrufezeichen, Knoepfe::JaNein, Knopf::Nein};
const Meldung kFehler{QStringLiteral(" Fehler!"), QStringLiteral("Text"), Symbol::Kritisch,
                      Knoepfe::AbbrechenWiederholenIgnorieren, Knopf::Ignorieren};
const Meldung kHinweis{QStringLiteral(" Hinweis"), QStringLiteral("Text"), Symbol::Information, Knoepfe::Ok,
                       Knopf::Ok};

TEST(Dialoge, EineFrageZeigtIhrenTextWieErDasteht) {
    amKasten(
        [](QMessageBox& kasten) {
            EXPECT_EQ(kasten.text(), u"Zeile eins\nZeile zwei <b>\nZeile drei");
            EXPECT_EQ(kasten.textFormat(), Qt::PlainText);
            EXPECT_EQ(kasten.icon(), QMessageBox::Warning);
            EXPECT_EQ(kasten.windowTitle(), QString());
            QStringList texte;
            for (QAbstractButton* knopf : kasten.buttons()) texte << knopf->text().remove(u'&');
            EXPECT_EQ(texte, (QStringList{QStringLiteral("Ja"), QStringLiteral("Nein")}));
            EXPECT_EQ(kasten.defaultButton()->text().remove(u'&'), u"Nein");
        },
        QStringLiteral("Ja"));
    EXPECT_EQ(MeldungAnzeigen(kFrage), Knopf::Ja);
}

TEST(Dialoge, DieEingabetasteNimmtDieVorwahl) {
    amKasten([](QMessageBox& kasten) { QTest::keyClick(&kasten, Qt::Key_Return); }, QStringLiteral("Ja"));
    EXPECT_EQ(MeldungAnzeigen(kFrage), Knopf::Nein);
}

TEST(Dialoge, EscapeUndSchliessenBeantwortenKeineFrage) {
    for (const Meldung& meldung : {kFrage, kFehler}) {
        SCOPED_TRACE(meldung.titel.toStdString());
        const Knopf letzter = KnoepfeVon(meldung.knoepfe).constLast();
        amKasten(
            [](QMessageBox& kasten) {
                QTest::keyClick(&kasten, Qt::Key_Escape);
                EXPECT_TRUE(kasten.isVisible());
                kasten.close();
                EXPECT_TRUE(kasten.isVisible());
            },
            KnopfText(letzter));
        EXPECT_EQ(MeldungAnzeigen(meldung), letzter);
    }
}

TEST(Dialoge, EscapeUndSchliessenSindInEinemHinweisOk) {
    amKasten(
        [](QMessageBox& kasten) {
            QTest::keyClick(&kasten, Qt::Key_Escape);
            EXPECT_FALSE(kasten.isVisible());
        },
        QStringLiteral("OK"));
    EXPECT_EQ(MeldungAnzeigen(kHinweis), Knopf::Ok);
    amKasten(
        [](QMessageBox& kasten) {
            kasten.close();
            EXPECT_FALSE(kasten.isVisible());
        },
        QStringLiteral("OK"));
    EXPECT_EQ(MeldungAnzeigen(kHinweis), Knopf::Ok);
}

TEST(Dialoge, DerFehlerkastenHatDreiKnoepfeUndWaehltIgnorieren) {
    amKasten(
        [](QMessageBox& kasten) {
            QStringList texte;
            for (QAbstractButton* knopf : kasten.buttons()) texte << knopf->text().remove(u'&');
            EXPECT_EQ(texte, (QStringList{QStringLiteral("Abbrechen"), QStringLiteral("Wiederholen"),
                                          QStringLiteral("Ignorieren")}));
            EXPECT_EQ(kasten.defaultButton()->text().remove(u'&'), u"Ignorieren");
        },
        QStringLiteral("Wiederholen"));
    EXPECT_EQ(MeldungAnzeigen(kFehler), Knopf::Wiederholen);
}

QStringList dateienIn(const QFileDialog& dialog) {
    const auto* liste = dialog.findChild<QListView*>(QStringLiteral("listView"));
    QStringList namen;
    for (int i = 0; i < liste->model()->rowCount(liste->rootIndex()); ++i)
        namen << liste->model()->index(i, 0, liste->rootIndex()).data().toString();
    return namen;
}

TEST(Dialoge, DerDateidialogZeigtDieFilterWieSieDastehen) {
    const QStringList filter{QStringLiteral("Alle Datendateien (*.mdb;*.xls;*.dbf)"),
                             QStringLiteral("Microsoft Excel Tabelle (*.xls)"),
                             QStringLiteral("dBase 5 Datenbank (*.dbf)")};
    QTemporaryDir ordner;
    for (const char* name : {"A.XLS", "b.mdb", "c.txt"})
        ASSERT_TRUE(QFile(ordner.filePath(QString::fromUtf8(name))).open(QIODevice::WriteOnly));
    QTimer::singleShot(0, qApp, [&] {
        auto* dialog = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* liste = dialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        QStringList gezeigt;
        for (int i = 0; i < liste->count(); ++i) gezeigt << liste->itemText(i);
        EXPECT_EQ(gezeigt, filter);
        EXPECT_EQ(liste->currentIndex(), 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return dateienIn(*dialog) == QStringList{"A.XLS", "b.mdb"}; }));
        dialog->selectNameFilter(dialog->nameFilters().at(1));
        EXPECT_TRUE(QTest::qWaitFor([&] { return dateienIn(*dialog) == QStringList{"A.XLS"}; }));
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QStringLiteral("A.XLS"));
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
        if (dialog->isVisible()) dialog->reject();
    });
    const std::optional<Dateiwahl> wahl = DateiErfragen({filter, 1, ordner.path()});
    ASSERT_TRUE(wahl);
    EXPECT_EQ(wahl->datei, ordner.filePath("A.XLS"));
    EXPECT_EQ(wahl->filterIndex, 2);
}

TEST(Dialoge, EineEingabeKommtZurueckOderNichts) {
    const Eingabefrage frage{QString(), QStringLiteral("\"A & B\" umbennen in: "), QString()};
    const auto antworten = [](QDialog::DialogCode ende) {
        QTimer::singleShot(0, qApp, [ende] {
            auto* kasten = dynamic_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(kasten, nullptr);
            QTest::keyClicks(kasten->findChild<QLineEdit*>(), QStringLiteral("Neu"));
            kasten->done(ende);
        });
    };
    antworten(QDialog::Accepted);
    EXPECT_EQ(EingabeErfragen(frage), QStringLiteral("Neu"));
    antworten(QDialog::Rejected);
    EXPECT_EQ(EingabeErfragen(frage), std::nullopt);
}

}  // namespace
