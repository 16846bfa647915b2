// What the tests of the duplicate review share: a result table in memory with three groups, and short ways to
// look into it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <map>

#include "engine/dao/speicherdatei.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"
#include "ui/frmdublettenbearbeiten.h"

class Nachbearbeitung : public testing::Test {
  protected:
    static constexpr char16_t kTabelle[] = u"Kunden _#1__3_2_2001";

    // Groups 1 to 3 with the enriched records 101 to 103; 1 is a record without duplicates.
    Nachbearbeitung() {
        ZustandZuruecksetzen();
        inhalt.tabellen.push_back({tabelle({}), {}});
        zeile(1, 11, 0, u"Zimmer", u"Bonn");
        zeile(2, 13, 1, u"Müller", u"Köln");
        zeile(3, 13, 1, u"Müller KG", u"Köln");
        zeile(4, 13, 2, u"Äcker", u"Ulm");
        zeile(5, 13, 2, u"Aecker", u"Ulm");
        zeile(6, 13, 2, u"Äcker", u"Ulm-Söflingen");
        zeile(7, 13, 3, u"Groß", u"Hof");
        zeile(8, 13, 3, u"Gross", u"Hof");
        zeile(101, 12, 1, u"Müller KG", u"Köln");
        zeile(102, 12, 2, u"Äcker", u"Ulm-Söflingen");
        zeile(103, 12, 3, u"Groß", u"Hof");
    }
    ~Nachbearbeitung() override {
        frm.reset();
        gDatenbank.reset();
        gArbeitsbereich.reset();
        dao::DateiOeffnerSetzen(dao::Dateiart::Access, nullptr);
        ZustandZuruecksetzen();
    }

    // Firma, Ort, the fields of `weitere`, then the control columns.
    static engine::TabellenDef tabelle(const QStringList& weitere) {
        engine::TabellenDef def;
        def.name = QString::fromUtf16(kTabelle);
        def.felder = {feld(QStringLiteral("Firma"), dao::dbText, 50),
                      feld(QStringLiteral("Ort"), dao::dbText, 50)};
        for (const QString& name : weitere) def.felder.push_back(feld(name, dao::dbText, 50));
        def.felder.push_back(feld(QStringLiteral("TEMP_DSS"), dao::dbByte, 1));
        def.felder.push_back(feld(QStringLiteral("TEMP_DSN"), dao::dbLong, 4));
        def.felder.push_back(feld(QStringLiteral("TEMP_BN"), dao::dbLong, 4));
        def.felder.push_back(feld(QStringLiteral("TEMP_AMK"), dao::dbText, 100));
        return def;
    }
    static engine::FeldDef feld(const QString& name, int typ, int groesse) {
        engine::FeldDef def;
        def.name = name;
        def.typ = typ;
        def.groesse = groesse;
        return def;
    }
    void zeile(int nummer, int status, int gruppe, const char16_t* firma, const char16_t* ort) {
        engine::Zeile werte{Wert(firma), Wert(ort)};
        const size_t weitere = inhalt.tabellen[0].def.felder.size() - 6;
        for (size_t i = 0; i < weitere; ++i) werte.push_back(Wert::null());
        for (int zahl : {status, nummer, gruppe}) werte.push_back(Wert(zahl));
        werte.push_back(Wert(QStringLiteral("Anmerkung %1").arg(nummer)));
        inhalt.tabellen[0].zeilen.push_back(werte);
    }

    void oeffnen() {
        dao::DateiOeffnerSetzen(dao::Dateiart::Access, [this](const QString&, const QString&) {
            return std::make_unique<Speicherdatei>(inhalt);
        });
        const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
        QFile datei(pfad);
        ASSERT_TRUE(datei.open(QIODevice::WriteOnly));
        gArbeitsbereich = dao::DBEngine::CreateWorkspace({}, QStringLiteral("Admin"), {}, 2);
        gDatenbank = gArbeitsbereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
        gZielTabelle = QString::fromUtf16(kTabelle);
        gVerbindungstext = QStringLiteral("Provider=Test;");
        gRahmen = 12;
    }
    // The window on show, without the loop that waits for its end.
    FrmDublettenBearbeiten& zeigen() {
        if (!gDatenbank) oeffnen();
        frm = std::make_unique<FrmDublettenBearbeiten>();
        EXPECT_TRUE(frm->laden());
        frm->show();
        return *frm;
    }

    // "12: 101 102 | 13: 2 3" as the table holds it; the states in `status` only.
    static QString stand(std::initializer_list<int> status = {12, 13, 21, 22}) {
        std::map<int, QStringList> nummern;
        const auto saetze = gDatenbank->OpenRecordset(gZielTabelle);
        for (; !saetze->Eof(); saetze->MoveNext())
            nummern[int(saetze->Fields(QStringLiteral("TEMP_DSS")).Value().ganzzahl())]
                << saetze->Fields(QStringLiteral("TEMP_DSN")).Value().alsText();
        QStringList teile;
        for (int s : status)
            if (nummern.count(s)) teile << QStringLiteral("%1: %2").arg(s).arg(nummern[s].join(u' '));
        return teile.join(QStringLiteral(" | "));
    }
    // The record numbers that a grid shows, in its order.
    static QString nummern(const Datengitter* gitter) {
        const QAbstractItemModel& daten = *gitter->model();
        const int spalte = daten.columnCount() - 3;
        QStringList texte;
        for (int i = 0; i < daten.rowCount(); ++i) texte << daten.index(i, spalte).data().toString();
        return texte.join(u' ');
    }
    static void maus(Datengitter* gitter, Qt::MouseButton knopf, int zeile) {
        const QModelIndex ziel = gitter->model()->index(zeile, 1);
        QTest::mouseClick(gitter->viewport(), knopf, {},
                          ziel.isValid() ? gitter->visualRect(ziel).center() : QPoint(5, 5));
    }
    static void rechts(Datengitter* gitter, int zeile = 0) { maus(gitter, Qt::RightButton, zeile); }
    // A left click, and the time its timer takes.
    void waehlen(Datengitter* gitter, int zeile) {
        maus(gitter, Qt::LeftButton, zeile);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !frm->tmrAnsicht->isActive(); }));
    }
    static void klick(QPushButton* knopf) { QTest::mouseClick(knopf, Qt::LeftButton); }
    bool offen() const { return frm->isVisible(); }

    Fensterattrappe fenster;
    QTemporaryDir ordner;
    Speicherinhalt inhalt;
    std::unique_ptr<FrmDublettenBearbeiten> frm;

    const QString kAlleLoeschen = QStringLiteral(
        "Sie haben keine Datensätze zum Übernehmen ausgewählt!\rAlle angezeigten Datensätze werden gelöscht. "
        "Sind sie sicher?\r\r(beim Datenabgleich ist dies der Normalfall)");
    const QString kLoeschen = QStringLiteral(
        "Sollen wirklich sämtliche in den Ordnern 'Angereicherte Datensätze'\r und 'Dubletten' befindliche "
        "Datensätze gelöscht werden?");
    const QString kAbbruchfrage = QStringLiteral("Wollen sie den aktuellen Vorgang wirklich abbrechen?");
};
