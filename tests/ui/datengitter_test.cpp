// The grids of the review: layout, lazily read rows, marks, keys, sizes.
#include "ui/datengitter.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <cstdio>
#include <ctime>

#include "base/atempause.h"
#include "ui/bausteine.h"
#include "ui/nachbearbeitung.h"

namespace {

QStringList sichtbareSpalten(const Datengitter* gitter) {
    QStringList titel;
    for (int i = 0; i < gitter->model()->columnCount(); ++i)
        if (!gitter->isColumnHidden(i)) titel << gitter->model()->headerData(i, Qt::Horizontal).toString();
    return titel;
}

QList<Datengitter*> alle(const FrmDublettenBearbeiten& frm) {
    return {frm.dgdAngereichert, frm.dgdDublette, frm.dgdÜbernehmen};
}

// The texts of the cells of a row that are marked.
QStringList markiert(const Datengitter* gitter, int zeile) {
    QStringList texte;
    const QAbstractItemModel& daten = *gitter->model();
    for (int i = 0; i < daten.columnCount(); ++i)
        if (daten.index(zeile, i).data(Datensteuerung::kAbweichung).toBool())
            texte << daten.index(zeile, i).data().toString();
    return texte;
}

TEST_F(Nachbearbeitung, DieGitterZeigenAnmerkungUndEigeneFelder) {
    zeigen();
    for (const Datengitter* gitter : alle(*frm)) {
        SCOPED_TRACE(gitter->objectName().toStdString());
        EXPECT_EQ(gitter->model()->columnCount(), 7);
        EXPECT_EQ(sichtbareSpalten(gitter), (QStringList{QStringLiteral("--< Anmerkungen >--"),
                                                         QStringLiteral("Firma"), QStringLiteral("Ort")}));
        EXPECT_EQ(gitter->columnWidth(0), PixelAusTwips(1600, gitter));
    }
    EXPECT_EQ(frm->dgdAngereichert->model()->index(0, 0).data(), QStringLiteral("Anmerkung 101"));
}

TEST_F(Nachbearbeitung, SechzehnhundertTwipsSindEinNeuntelVonZehnZoll) {
    zeigen();
    EXPECT_EQ(PixelAusTwips(1600, frm.get()), 10 * frm->logicalDpiX() / 9);
}

TEST_F(Nachbearbeitung, JedesAuffrischenLegtDasGitterNeuAus) {
    zeigen();
    frm->dgdAngereichert->setColumnWidth(0, 300);
    frm->dgdAngereichert->setColumnWidth(1, 222);
    rechts(frm->dgdAngereichert);
    EXPECT_EQ(frm->dgdAngereichert->columnWidth(0), PixelAusTwips(1600, frm.get()));
    EXPECT_EQ(frm->dgdAngereichert->columnWidth(1), 222);  // the user's own stays
    EXPECT_EQ(sichtbareSpalten(frm->dgdAngereichert).size(), 3);
}

// What counts is "TEMP_" anywhere in a name, what is hidden are the last ones.
TEST_F(Nachbearbeitung, EinFeldMitTempImNamenVerstecktEineSpalteMehr) {
    inhalt.tabellen[0].def =
        tabelle({QStringLiteral("MEINTEMP_FELD"), QStringLiteral("temp_klein"), QStringLiteral("Zuletzt")});
    inhalt.tabellen[0].zeilen.clear();
    zeile(101, 12, 1, u"Müller KG", u"Köln");
    zeigen();
    EXPECT_EQ(
        sichtbareSpalten(frm->dgdAngereichert),
        (QStringList{QStringLiteral("--< Anmerkungen >--"), QStringLiteral("Firma"), QStringLiteral("Ort"),
                     QStringLiteral("MEINTEMP_FELD"), QStringLiteral("temp_klein")}));
}

TEST_F(Nachbearbeitung, DieGitterSindNurZumLesenUndWaehlenGanzeZeilen) {
    zeigen();
    for (const Datengitter* gitter : alle(*frm)) {
        EXPECT_EQ(gitter->editTriggers(), QAbstractItemView::NoEditTriggers);
        EXPECT_EQ(gitter->selectionBehavior(), QAbstractItemView::SelectRows);
        EXPECT_FALSE(gitter->tabKeyNavigation());
    }
}

TEST_F(Nachbearbeitung, AbweichungenVomAngereichertenSatzSindMarkiert) {
    zeigen();
    EXPECT_EQ(markiert(frm->dgdDublette, 0), QStringList{QStringLiteral("Müller")});
    EXPECT_EQ(markiert(frm->dgdDublette, 1), QStringList());
    waehlen(frm->dgdAngereichert, 1);
    EXPECT_EQ(markiert(frm->dgdDublette, 0), QStringList{QStringLiteral("Ulm")});
    EXPECT_EQ(markiert(frm->dgdDublette, 1), (QStringList{QStringLiteral("Aecker"), QStringLiteral("Ulm")}));
    klick(frm->btnDublette);
    EXPECT_EQ(markiert(frm->dgdÜbernehmen, 0), QStringList{QStringLiteral("Ulm")});
    waehlen(frm->dgdAngereichert, 2);  // another group has nothing to do with them
    EXPECT_EQ(markiert(frm->dgdÜbernehmen, 0), QStringList());
}

TEST_F(Nachbearbeitung, MarkierteZellenSindGetoentAuchInDerGewaehltenZeile) {
    zeile(9, 13, 1, u"Müller", u"Köln");
    zeigen();
    const auto grundVon = [this](int zeile, int spalte) {
        const QRect zelle = frm->dgdDublette->visualRect(frm->dgdDublette->model()->index(zeile, spalte));
        return frm->dgdDublette->viewport()->grab().toImage().pixelColor(zelle.bottomRight() - QPoint(4, 4));
    };
    const QColor gewaehlt = grundVon(0, 2);
    EXPECT_NE(grundVon(0, 1), gewaehlt);
    EXPECT_EQ(grundVon(1, 1), frm->palette().color(QPalette::Base));
    const QColor getoent = grundVon(2, 1);
    EXPECT_NE(getoent, grundVon(1, 1));
    EXPECT_NE(getoent, gewaehlt);
}

TEST_F(Nachbearbeitung, MarkierteZellenSindFett) {
    zeigen();
    const auto gemalt = [this](bool mitMarken) {
        if (!mitMarken) frm->adoDublette->vergleichen(Datensteuerung(), QString(), {});
        const QRect zelle = frm->dgdDublette->visualRect(frm->dgdDublette->model()->index(0, 1));
        const QImage bild = frm->dgdDublette->viewport()->grab(zelle).toImage();
        const QColor grund = bild.pixelColor(zelle.width() - 4, zelle.height() - 4);
        int punkte = 0;
        for (int x = 0; x < bild.width() - 2; ++x)
            for (int y = 2; y < bild.height() - 2; ++y) punkte += bild.pixelColor(x, y) != grund;
        return punkte;
    };
    const int fett = gemalt(true);
    EXPECT_GT(fett, gemalt(false));
}

TEST_F(Nachbearbeitung, DieGitterRollenGemeinsamUndTeilenDieSpaltenbreiten) {
    QStringList weitere;
    for (int i = 0; i < 30; ++i) weitere << QStringLiteral("Feld %1").arg(i);
    inhalt.tabellen[0].def = tabelle(weitere);
    inhalt.tabellen[0].zeilen.clear();
    zeile(101, 12, 1, u"Müller KG", u"Köln");
    zeile(102, 12, 2, u"Äcker", u"Ulm");
    zeile(2, 13, 1, u"Müller", u"Köln");
    zeigen();
    QTest::qWait(0);
    for (Datengitter* gitter : alle(*frm)) {
        SCOPED_TRACE(gitter->objectName().toStdString());
        ASSERT_GT(gitter->horizontalScrollBar()->maximum(), 150);
        const int stelle = gitter->horizontalScrollBar()->value() + 40;
        gitter->horizontalScrollBar()->setValue(stelle);
        for (Datengitter* anderes : alle(*frm)) EXPECT_EQ(anderes->horizontalScrollBar()->value(), stelle);
        gitter->horizontalHeader()->resizeSection(2, 100 + stelle);
        for (Datengitter* anderes : alle(*frm)) EXPECT_EQ(anderes->columnWidth(2), 100 + stelle);
    }
    const int stelle = frm->dgdAngereichert->horizontalScrollBar()->value();
    waehlen(frm->dgdAngereichert, 1);
    rechts(frm->dgdAngereichert);
    EXPECT_EQ(frm->dgdAngereichert->horizontalScrollBar()->value(), stelle);  // a refresh leaves it there
}

TEST_F(Nachbearbeitung, DerStandZaehltDieSaetzeDerListen) {
    zeigen();
    rechts(frm->dgdDublette);
    EXPECT_EQ(frm->lblStand->text(), u"Angereichert: 3   Dubletten der Gruppe: 1   Zu übernehmen: 1");
}

TEST_F(Nachbearbeitung, AllesIstMitTabUndKuerzelnErreichbar) {
    zeigen();
    QStringList folge;
    for (QWidget* w = frm->nextInFocusChain(); w != frm.get(); w = w->nextInFocusChain())
        if ((w->focusPolicy() & Qt::TabFocus) && !w->objectName().startsWith(u"qt_"))
            folge << w->objectName();
    EXPECT_EQ(folge.join(u' '),
              u"dgdAngereichert btnAngereichert dgdDublette btnDublette dgdÜbernehmen btnÜbernehmen btnHilfe "
              u"btnFertig btnAbbrechen");
    for (QPushButton* bild : {frm->btnAngereichert, frm->btnDublette, frm->btnÜbernehmen}) {
        EXPECT_FALSE(bild->icon().isNull());
        EXPECT_EQ(bild->text(), QString());
        EXPECT_FALSE(bild->toolTip().isEmpty());
        EXPECT_FALSE(bild->accessibleName().isEmpty());
        EXPECT_FALSE(bild->shortcut().isEmpty());
    }
}

TEST_F(Nachbearbeitung, DieBeschriftungenFuehrenZuIhrenGittern) {
    zeigen();
    const std::vector<std::tuple<const char*, QString, QWidget*>> tabelle{
        {"Label1", QStringLiteral("Angereicherte Datensätze:"), frm->dgdAngereichert},
        {"Label2", QStringLiteral("Zugeordnete Dubletten:"), frm->dgdDublette},
        {"Label3", QStringLiteral("Tatsächlich zu übernehmende Datensätze:"), frm->dgdÜbernehmen}};
    for (const auto& [name, text, gitter] : tabelle) {
        auto* label = frm->findChild<QLabel*>(QString::fromLatin1(name));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text().remove(u'&'), text);
        EXPECT_EQ(label->buddy(), gitter);
    }
    EXPECT_EQ(frm->btnFertig->text().remove(u'&'), u"Fertig");
    EXPECT_EQ(frm->btnAbbrechen->text().remove(u'&'), u"Abbrechen");
    EXPECT_EQ(frm->btnHilfe->text().remove(u'&'), u"Hilfe");
}

TEST_F(Nachbearbeitung, EineGrosseListeLiestNurWasManSieht) {
    constexpr int kSaetze = 120000;
    inhalt.tabellen[0].zeilen.clear();
    for (int i = 1; i <= kSaetze; ++i) zeile(i, 12, i, u"Müller", u"Köln");
    oeffnen();
    gDatenbank->OpenRecordset(gZielTabelle);  // the rows are in the working store
    QElapsedTimer uhr;
    uhr.start();
    zeigen();
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_End, Qt::ControlModifier);
    frm->grab();
    EXPECT_LT(uhr.elapsed(), 5000);
    EXPECT_EQ(frm->lblGruppe->text(), u"Gruppe 120000 von 120000");
    const QAbstractItemModel& daten = *frm->dgdAngereichert->model();
    EXPECT_EQ(daten.index(kSaetze - 1, 0).data(), QStringLiteral("Anmerkung 120000"));
    EXPECT_EQ(daten.index(77, 0).data(), QStringLiteral("Anmerkung 78"));
}

// The data control on its own.
// The steps of a review; with the number of groups in LINDGARN_GRUPPEN it tells how long each takes.
TEST_F(Nachbearbeitung, VieleGruppenLassenNichtWarten) {
    const int verlangt = qEnvironmentVariableIntValue("LINDGARN_GRUPPEN");
    const int gruppen = verlangt > 0 ? verlangt : 3000;
    inhalt.tabellen[0].zeilen.clear();
    for (int i = 0; i < gruppen; ++i)
        for (int k = 0; k < 9; ++k)
            zeile(9 * i + k + 1, k < 2 ? 13 : 11, k < 2 ? i + 1 : 0, u"Müller", u"Köln");
    for (int i = 0; i < gruppen; ++i) zeile(9 * gruppen + i + 1, 12, i + 1, u"Müller KG", u"Köln");
    oeffnen();
    gDatenbank->OpenRecordset(gZielTabelle);  // the rows are in the working store
    inhalt.tabellen[0].zeilen.clear();
    const auto messen = [&](const char* was, const auto& schritt) {
        const std::clock_t anfang = std::clock();  // processor time, so that a busy machine does no harm
        schritt();
        const int ms = int((std::clock() - anfang) * 1000 / CLOCKS_PER_SEC);
        if (verlangt > 0) std::printf("%-12s %6d ms\n", was, ms);
        EXPECT_LT(ms, 1000) << was;
    };
    messen("oeffnen", [&] {
        zeigen();
        frm->grab();
    });
    messen("gruppe", [&] { waehlen(frm->dgdAngereichert, 2); });
    messen("ende", [&] {
        QTest::keyClick(frm->dgdAngereichert, Qt::Key_End, Qt::ControlModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !frm->tmrAnsicht->isActive(); }));
        frm->grab();
    });
    EXPECT_EQ(frm->adoDublette->RecordCount(), 2);
    messen("hinweis", [&] { frm->dgdAngereichert->model()->index(5, 1).data(Qt::ToolTipRole); });
    messen("dublette", [&] { rechts(frm->dgdDublette); });
    EXPECT_EQ(frm->adoÜbernehmen->RecordCount(), 1);
    messen("angereichert", [&] { QTest::keyClick(frm->dgdAngereichert, Qt::Key_Menu); });
    EXPECT_EQ(frm->adoÜbernehmen->RecordCount(), 2);
    messen("zurueck", [&] { rechts(frm->dgdÜbernehmen); });
    EXPECT_EQ(frm->adoÜbernehmen->RecordCount(), 1);
}

// A query lets the window breathe, in whose middle no row can be read.
TEST_F(Nachbearbeitung, WasWaehrendEinerAbfrageGemaltWirdIstNichtKaputt) {
    for (int i = 1000; i < 40000; ++i) zeile(i, i < 1100 ? 12 : 11, i < 1100 ? i : 0, u"Müller", u"Köln");
    oeffnen();
    gDatenbank->OpenRecordset(gZielTabelle);
    zeigen();
    frm->grab();
    constexpr int kNichtGezeigt = 90;
    const auto firma = [&] { return frm->adoAngereichert->text(kNichtGezeigt, QStringLiteral("Firma")); };
    Datensteuerung lang;
    lang.setRecordSource(QStringLiteral("SELECT * FROM [%1] WHERE [TEMP_DSS] = 11").arg(gZielTabelle));
    QStringList mittendrin;
    AtempauseSetzen([&] {
        for (Datengitter* gitter : alle(*frm)) gitter->viewport()->repaint();
        mittendrin << firma();
    });
    lang.Refresh();
    ASSERT_FALSE(mittendrin.isEmpty());
    EXPECT_EQ(mittendrin.constFirst(), u"#Fehler");  // the first breath is one of the query
    rechts(frm->dgdAngereichert);
    AtempauseSetzen({});
    EXPECT_EQ(firma(), u"Müller");
}

TEST_F(Nachbearbeitung, DieDatensteuerungHatEinenAktuellenSatz) {
    oeffnen();
    Datensteuerung daten;
    EXPECT_TRUE(daten.Eof());
    EXPECT_EQ(daten.RecordCount(), 0);
    daten.setRecordSource(QStringLiteral("SELECT * FROM [%1] WHERE [TEMP_DSS] = 12").arg(gZielTabelle));
    daten.Refresh();
    EXPECT_EQ(daten.RecordCount(), 3);
    EXPECT_EQ(daten.Fields(QStringLiteral("TEMP_DSN")), Wert(101));
    daten.setPosition(2);
    EXPECT_EQ(daten.Fields(QStringLiteral("TEMP_DSN")), Wert(103));
    EXPECT_THROW(daten.Fields(QStringLiteral("gibtsnicht")), EngineFehler);
    daten.Refresh();
    EXPECT_EQ(daten.position(), 0);
    daten.setPosition(3);
    EXPECT_TRUE(daten.Eof());
    EXPECT_THROW(daten.Fields(QStringLiteral("TEMP_DSN")), EngineFehler);
}

TEST_F(Nachbearbeitung, EinFehlschlagLaesstDieZeilenStehen) {
    oeffnen();
    Datensteuerung daten;
    daten.setRecordSource(QStringLiteral("SELECT * FROM [%1] WHERE [TEMP_DSS] = 12").arg(gZielTabelle));
    daten.Refresh();
    daten.setRecordSource(QStringLiteral("SELECT * FROM [fehlt]"));
    EXPECT_THROW(daten.Refresh(), EngineFehler);
    EXPECT_EQ(daten.RecordCount(), 3);
    EXPECT_FALSE(daten.wirdErneuert());
    EXPECT_EQ(daten.index(1, 0).data(), QStringLiteral("Äcker"));
}

TEST_F(Nachbearbeitung, EinGeloeschterSatzZeigtSichInSeinenZellen) {
    zeigen();
    gDatenbank->Execute(QStringLiteral("DELETE * FROM [%1] WHERE [TEMP_DSN] = 3").arg(gZielTabelle));
    frm->adoDublette->setPosition(1);
    Datensteuerung frisch;
    frisch.setRecordSource(frm->adoDublette->RecordSource());
    frisch.Refresh();
    EXPECT_EQ(frisch.RecordCount(), 1);
    gDatenbank->Execute(QStringLiteral("DELETE * FROM [%1] WHERE [TEMP_DSN] = 2").arg(gZielTabelle));
    EXPECT_EQ(frisch.index(0, 1).data(), QStringLiteral("#Fehler"));
}

}  // namespace
