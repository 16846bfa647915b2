// The whole wizard on real widgets, with a script of answers in the place of the boxes.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <deque>

#include "data/registry.h"
#include "data/start.h"
#include "programm/zusammenbau.h"
#include "run/rahmen.h"
#include "run/zustand.h"
#include "ui/dialoge.h"

class Assistent : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(ordner.isValid());
        RegAblageSetzen(ordner.filePath(QStringLiteral("ablage")));
        ProgrammOrdnerSetzen(ordner.filePath(QStringLiteral("programm")));
        gAusgangsTabelle = gZielTabelle = gZweiteTabelle = gDatenbankFormat = QString();
        DialogantwortenSetzen({[this](const Meldung& meldung) { return meldungBeantworten(meldung); },
                               [this](const Eingabefrage& frage) { return eingabeBeantworten(frage); },
                               [this](const Dateifrage& frage) { return dateiBeantworten(frage); }});
        programm = std::make_unique<Programm>();
    }
    void TearDown() override {
        EXPECT_TRUE(antworten.empty()) << "nicht erschienen: " << qPrintable(antworten.front().text);
        programm->hauptfenster().close();
        programm.reset();
        DialogantwortenSetzen({});
        ProgrammOrdnerSetzen(QString());
        RegAblageSetzen(QString());
    }

    FrmHaupt& haupt() { return programm->hauptfenster(); }
    template <typename Art>
    Art* finde(const char* name) {
        auto* gefunden = haupt().findChild<Art*>(QString::fromUtf8(name));
        if (!gefunden) ADD_FAILURE() << "fehlt: " << name;
        return gefunden;
    }
    void weiter() { QTest::mouseClick(haupt().btnWeiter, Qt::LeftButton); }
    void zurueck() { QTest::mouseClick(haupt().btnZurück, Qt::LeftButton); }

    // The next box must have this text; it is answered with the button.
    void erwarte(const QString& text, Knopf knopf = Knopf::Ok) { antworten.push_back({text, knopf}); }
    const Meldung& letzteMeldung() const { return meldungen.back(); }

    QString kopie(const QString& name = QStringLiteral("a.mdb")) {
        const QString ziel = ordner.filePath(name);
        EXPECT_TRUE(QFile::copy(QStringLiteral(LINDGARN_BEISPIELE "/adressen.mdb"), ziel));
        return ziel;
    }
    void bisDatenbank() {
        weiter();
        weiter();
        ASSERT_EQ(gRahmen, 2);
    }
    void bisTabelle() {
        bisDatenbank();
        haupt().rahmenDatenbank->tbxDatenbankName->setText(kopie());
        weiter();
        ASSERT_EQ(gRahmen, 3);
    }
    void tabelleWaehlen(const QString& name) {
        QListWidget* liste = haupt().rahmenTabelle->lstTabellen;
        const QList<QListWidgetItem*> zeilen = liste->findItems(name, Qt::MatchExactly);
        ASSERT_EQ(zeilen.size(), 1);
        liste->setCurrentItem(zeilen[0]);
    }
    void bisVorgang(const QString& tabelle = QStringLiteral("Adressen")) {
        bisTabelle();
        tabelleWaehlen(tabelle);
        weiter();
        ASSERT_EQ(gRahmen, 5);
    }
    void vorgangWaehlen(int index) {
        QTest::mouseClick(haupt().rahmenVorgang->btnAuswahl[size_t(index)], Qt::LeftButton);
    }
    void bisFelder() {
        bisVorgang();
        vorgangWaehlen(3);
        ASSERT_EQ(gRahmen, 7);
    }
    void bisZiel() {
        bisFelder();
        weiter();
        ASSERT_EQ(gRahmen, 4);
    }
    void bisSuche() {
        bisZiel();
        weiter();
        ASSERT_EQ(gRahmen, 11);
    }
    // A new table of the open database with one text field and as many rows, "" when there is none.
    void tabelleAnlegen(const QString& name, const QStringList& felder, int zeilen = 1) {
        auto def = gDatenbank->CreateTableDef();
        def->setName(name);
        for (const QString& feld : felder) def->Fields().Append(def->CreateField(feld, dao::dbText, 50));
        gDatenbank->TableDefs().Append(std::move(def));
        const auto satz = gDatenbank->OpenRecordset(name);
        for (int i = 0; i < zeilen; ++i) {
            satz->AddNew();
            satz->Fields(0).setValue(Wert(QString::number(i)));
            satz->Update();
        }
        satz->Close();
    }
    QStringList tabellen() {
        QStringList namen;
        for (int i = 0; i < haupt().rahmenTabelle->lstTabellen->count(); ++i)
            namen << haupt().rahmenTabelle->lstTabellen->item(i)->text();
        return namen;
    }

    struct Antwort {
        QString text;
        Knopf knopf;
    };
    QTemporaryDir ordner;
    std::deque<Antwort> antworten;
    std::vector<Meldung> meldungen;
    std::vector<Eingabefrage> eingabefragen;
    std::vector<Dateifrage> dateifragen;
    std::optional<QString> eingabe;      // the answer to every input box
    std::optional<Dateiwahl> dateiwahl;  // the answer to every file dialog
    std::unique_ptr<Programm> programm;

  private:
    Knopf meldungBeantworten(const Meldung& meldung) {
        meldungen.push_back(meldung);
        if (antworten.empty()) {
            ADD_FAILURE() << "unerwartet: " << qPrintable(meldung.text);
            return meldung.vorwahl;
        }
        const Antwort antwort = antworten.front();
        antworten.pop_front();
        EXPECT_EQ(meldung.text, antwort.text);
        return antwort.knopf;
    }
    std::optional<QString> eingabeBeantworten(const Eingabefrage& frage) {
        eingabefragen.push_back(frage);
        return eingabe;
    }
    std::optional<Dateiwahl> dateiBeantworten(const Dateifrage& frage) {
        dateifragen.push_back(frage);
        return dateiwahl;
    }
};
