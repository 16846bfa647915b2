// The duplicate review on real widgets: loading, moves, questions, the ways out.
#include "ui/frmdublettenbearbeiten.h"

#include <QTimer>

#include "ui/nachbearbeitung.h"
#include "ui/nachbearbeitungsabfragen.h"

namespace {

const QString kAnfang = QStringLiteral("12: 101 102 103 | 13: 2 3 4 5 6 7 8");

TEST(Dublettenabfragen, LautenGenauSo) {
    const QString t = QStringLiteral("A b");
    const QString g = QStringLiteral("7");
    EXPECT_EQ(AbfrageAngereichert(t), u"SELECT * FROM [A b] WHERE [TEMP_DSS] = 12");
    EXPECT_EQ(AnzeigeAngereichert(t), u"SELECT [TEMP_AMK],* FROM [A b]WHERE [TEMP_DSS] = 12");
    EXPECT_EQ(AbfrageUebernehmen(t), u"SELECT * FROM [A b]WHERE [TEMP_DSS] = 21 OR [TEMP_DSS] = 22");
    EXPECT_EQ(AnzeigeUebernehmen(t),
              u"SELECT [TEMP_AMK],* FROM [A b]WHERE [TEMP_DSS] = 21 OR [TEMP_DSS] = 22");
    EXPECT_EQ(AbfrageDublette(t, g), u"SELECT * FROM [A b]WHERE [TEMP_DSS] = 13AND [TEMP_BN] = 7");
    EXPECT_EQ(AnzeigeDublette(t, g), u"SELECT [TEMP_AMK],* FROM [A b]WHERE [TEMP_DSS] = 13AND [TEMP_BN] = 7");
    EXPECT_EQ(AnzeigeDubletteLeer(t), u"SELECT [TEMP_AMK],* FROM [A b]WHERE 1 = 2");
    EXPECT_EQ(AnzeigeDubletteLeerNachZeilenwechsel(t), u"SELECT [TEMP_AMK],* FROM [A b]WHERE 1=2");
    EXPECT_EQ(BedingungSatz(g), u"[TEMP_DSN] = 7");
}

TEST_F(Nachbearbeitung, OeffnetMitDemErstenAngereichertenSatz) {
    zeigen();
    EXPECT_EQ(frm->windowTitle(), u" Nachbearbeitung der Dubletten");
    EXPECT_EQ(nummern(frm->dgdAngereichert), u"101 102 103");
    EXPECT_EQ(nummern(frm->dgdDublette), u"2 3");
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"");
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 0);
    EXPECT_EQ(frm->lblGruppe->text(), u"Gruppe 1 von 3");
}

TEST_F(Nachbearbeitung, DieDatensteuerungenBekommenVerbindungUndAbfrage) {
    zeigen();
    for (const Datensteuerung* daten : {frm->adoAngereichert, frm->adoDublette, frm->adoÜbernehmen})
        EXPECT_EQ(daten->ConnectionString(), u"Provider=Test;");
    EXPECT_EQ(frm->adoAngereichert->RecordSource(), AnzeigeAngereichert(gZielTabelle));
    EXPECT_EQ(frm->adoDublette->RecordSource(), AnzeigeDublette(gZielTabelle, QStringLiteral("1")));
    EXPECT_EQ(frm->adoÜbernehmen->RecordSource(), AnzeigeUebernehmen(gZielTabelle));
}

// Moves. Each row: what is done, and the table afterwards.
TEST_F(Nachbearbeitung, EinRechtsklickUebernimmtDenAngereichertenSatz) {
    zeigen();
    waehlen(frm->dgdAngereichert, 1);
    rechts(frm->dgdAngereichert, 1);
    EXPECT_EQ(stand(), u"12: 101 103 | 13: 2 3 4 5 6 7 8 | 21: 102");
    EXPECT_EQ(nummern(frm->dgdAngereichert), u"101 103");
    EXPECT_EQ(nummern(frm->dgdDublette), u"7 8");  // the next record has taken its place
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"102");
}

TEST_F(Nachbearbeitung, DerRechtsklickVerschiebtDenAktuellenSatzNichtDenUnterDemZeiger) {
    zeigen();
    rechts(frm->dgdAngereichert, 2);
    EXPECT_EQ(stand({12, 21}), u"12: 102 103 | 21: 101");
}

TEST_F(Nachbearbeitung, BtnAngereichertUebernimmtAlleAngereicherten) {
    zeigen();
    klick(frm->btnAngereichert);
    EXPECT_EQ(stand(), u"13: 2 3 4 5 6 7 8 | 21: 101 102 103");
    EXPECT_EQ(nummern(frm->dgdAngereichert), u"");
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"101 102 103");
}

TEST_F(Nachbearbeitung, EinRechtsklickUebernimmtDieDublette) {
    zeigen();
    waehlen(frm->dgdAngereichert, 1);
    waehlen(frm->dgdDublette, 2);
    rechts(frm->dgdDublette, 2);
    EXPECT_EQ(stand(), u"12: 101 102 103 | 13: 2 3 4 5 7 8 | 22: 6");
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 1);
    EXPECT_EQ(nummern(frm->dgdDublette), u"4 5");
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"6");
}

TEST_F(Nachbearbeitung, BtnDubletteUebernimmtAlleDublettenDerGruppe) {
    zeigen();
    waehlen(frm->dgdAngereichert, 1);
    klick(frm->btnDublette);
    EXPECT_EQ(stand(), u"12: 101 102 103 | 13: 2 3 7 8 | 22: 4 5 6");
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 1);
    EXPECT_EQ(nummern(frm->dgdDublette), u"");
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"4 5 6");
}

TEST_F(Nachbearbeitung, EinRechtsklickLegtDenSatzZurueckWoherErKam) {
    zeile(9, 22, 2, u"Acker", u"Ulm");
    zeile(104, 21, 4, u"Voß", u"Kiel");
    zeigen();
    rechts(frm->dgdÜbernehmen);
    EXPECT_EQ(stand(), u"12: 101 102 103 | 13: 2 3 4 5 6 7 8 9 | 21: 104");
    rechts(frm->dgdÜbernehmen);
    EXPECT_EQ(stand(), u"12: 101 102 103 104 | 13: 2 3 4 5 6 7 8 9");
    EXPECT_EQ(nummern(frm->dgdAngereichert), u"101 102 103 104");
}

TEST_F(Nachbearbeitung, BtnUebernehmenLegtAlleZurueck) {
    zeile(9, 22, 2, u"Acker", u"Ulm");
    zeile(104, 21, 4, u"Voß", u"Kiel");
    zeigen();
    klick(frm->btnÜbernehmen);
    EXPECT_EQ(stand(), u"12: 101 102 103 104 | 13: 2 3 4 5 6 7 8 9");
    EXPECT_EQ(nummern(frm->dgdÜbernehmen), u"");
}

TEST_F(Nachbearbeitung, EinAndererStatusBleibtBeimZuruecklegen) {
    zeile(9, 22, 2, u"Acker", u"Ulm");
    zeigen();
    // Changed behind the open list, which goes on holding the record.
    Datensteuerung& daten = *frm->adoÜbernehmen;
    const auto saetze = gDatenbank->OpenRecordset(gZielTabelle);
    saetze->FindFirst(QStringLiteral("[TEMP_DSN] = 9"));
    saetze->Edit();
    saetze->Fields(QStringLiteral("TEMP_DSS")).setValue(14);
    saetze->Update();
    ASSERT_FALSE(daten.Eof());
    rechts(frm->dgdÜbernehmen);
    EXPECT_EQ(stand({14}), u"14: 9");
}

TEST_F(Nachbearbeitung, NurDerStatusAendertSich) {
    zeigen();
    const auto werte = [] {
        QStringList texte;
        const auto saetze = gDatenbank->OpenRecordset(gZielTabelle);
        for (; !saetze->Eof(); saetze->MoveNext())
            for (int i = 0; i < saetze->FieldsCount(); ++i)
                if (saetze->Fields(i).Name() != u"TEMP_DSS") texte << saetze->Fields(i).Value().alsText();
        return texte;
    };
    const QStringList vorher = werte();
    klick(frm->btnDublette);
    klick(frm->btnAngereichert);
    rechts(frm->dgdÜbernehmen);
    klick(frm->btnÜbernehmen);
    EXPECT_EQ(werte(), vorher);
    EXPECT_EQ(stand(), kAnfang);
}

// Where nothing is to be done.
TEST_F(Nachbearbeitung, OhneAngereichertenSatzIstDieDublettenlisteLeerUndBtnDubletteTutNichts) {
    zeigen();
    klick(frm->btnAngereichert);
    EXPECT_EQ(nummern(frm->dgdDublette), u"");
    EXPECT_EQ(frm->adoDublette->RecordSource(), AnzeigeDubletteLeer(gZielTabelle));
    const QString vorher = stand();
    klick(frm->btnDublette);
    EXPECT_EQ(stand(), vorher);
    maus(frm->dgdAngereichert, Qt::LeftButton, 0);  // no row, no row change
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Down);
    EXPECT_EQ(frm->adoDublette->RecordSource(), AnzeigeDubletteLeerNachZeilenwechsel(gZielTabelle));
    EXPECT_FALSE(frm->tmrAnsicht->isActive());
    EXPECT_EQ(frm->lblGruppe->text(), u"");
}

TEST_F(Nachbearbeitung, EinRechtsklickAufEinLeeresGitterTutNichts) {
    zeigen();
    rechts(frm->dgdÜbernehmen);
    EXPECT_EQ(stand(), kAnfang);
    klick(frm->btnAngereichert);
    const QString vorher = stand();
    rechts(frm->dgdAngereichert);
    rechts(frm->dgdDublette);
    EXPECT_EQ(stand(), vorher);
}

TEST_F(Nachbearbeitung, EinLinksklickVerschiebtNichts) {
    zeile(9, 22, 2, u"Acker", u"Ulm");
    zeigen();
    const QString vorher = stand();
    for (Datengitter* gitter : {frm->dgdAngereichert, frm->dgdDublette, frm->dgdÜbernehmen})
        for (Qt::MouseButton knopf : {Qt::LeftButton, Qt::MiddleButton}) maus(gitter, knopf, 0);
    EXPECT_EQ(stand(), vorher);
}

TEST_F(Nachbearbeitung, BtnUebernehmenMitLeererListeTutNichts) {
    zeigen();
    waehlen(frm->dgdAngereichert, 1);
    klick(frm->btnÜbernehmen);
    EXPECT_EQ(stand(), kAnfang);
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 1);  // nothing was refreshed
}

TEST_F(Nachbearbeitung, BtnDubletteOhneDublettenTutNichts) {
    zeigen();
    klick(frm->btnDublette);
    const QString vorher = stand();
    klick(frm->btnDublette);
    EXPECT_EQ(stand(), vorher);
    EXPECT_TRUE(frm->btnFertig->isEnabled());
}

TEST_F(Nachbearbeitung, DieDublettenBleibenBei13UndFehlenMitIhremAngereichertenSatz) {
    zeigen();
    rechts(frm->dgdAngereichert);  // group 1 is gone
    EXPECT_EQ(stand({13}), u"13: 2 3 4 5 6 7 8");
    EXPECT_EQ(nummern(frm->dgdDublette), u"4 5 6");
    klick(frm->btnAngereichert);
    EXPECT_EQ(stand({13}), u"13: 2 3 4 5 6 7 8");
    EXPECT_EQ(nummern(frm->dgdDublette), u"");
}

TEST_F(Nachbearbeitung, EineDubletteKommtNurInDieListeIhrerGruppeZurueck) {
    zeile(9, 22, 2, u"Acker", u"Ulm");
    zeigen();
    rechts(frm->dgdÜbernehmen);
    EXPECT_EQ(nummern(frm->dgdDublette), u"2 3");  // group 1 is the current one
    waehlen(frm->dgdAngereichert, 1);
    EXPECT_EQ(nummern(frm->dgdDublette), u"4 5 6 9");
}

TEST_F(Nachbearbeitung, EineVeralteteDublettenzeileVerschiebtKeinenAnderenSatz) {
    zeigen();
    maus(frm->dgdAngereichert, Qt::LeftButton, 1);  // the duplicates have not followed yet
    ASSERT_EQ(nummern(frm->dgdDublette), u"2 3");
    rechts(frm->dgdDublette);
    EXPECT_EQ(stand(), kAnfang);
    EXPECT_EQ(nummern(frm->dgdDublette), u"4 5 6");
}

// The row change.
TEST_F(Nachbearbeitung, DieDublettenFolgenMitZehnMillisekundenUndEinmal) {
    zeigen();
    int male = 0;
    QObject::connect(frm->tmrAnsicht, &QTimer::timeout, frm.get(), [&] { ++male; });
    maus(frm->dgdAngereichert, Qt::LeftButton, 2);
    EXPECT_EQ(frm->tmrAnsicht->interval(), 10);
    EXPECT_TRUE(frm->tmrAnsicht->isActive());
    ASSERT_TRUE(QTest::qWaitFor([&] { return male > 0; }));
    EXPECT_EQ(nummern(frm->dgdDublette), u"7 8");
    EXPECT_EQ(frm->adoDublette->RecordSource(), AnzeigeDublette(gZielTabelle, QStringLiteral("3")));
    QTest::qWait(50);
    EXPECT_EQ(male, 1);
}

TEST_F(Nachbearbeitung, EinZeilenwechselVorEinerFrageWirdDanachNachgeholt) {
    zeigen();
    fenster.sonst = [](const Meldung&) {
        QTest::qWait(40);  // the timer fires in here
        return Knopf::Nein;
    };
    maus(frm->dgdAngereichert, Qt::LeftButton, 1);
    klick(frm->btnFertig);
    EXPECT_TRUE(QTest::qWaitFor([&] { return nummern(frm->dgdDublette) == u"4 5 6"; }));
}

TEST_F(Nachbearbeitung, TastenFuehrenDieDublettenNach) {
    zeigen();
    const std::vector<std::pair<Qt::Key, QString>> tasten{{Qt::Key_Down, QStringLiteral("4 5 6")},
                                                          {Qt::Key_PageDown, QStringLiteral("7 8")},
                                                          {Qt::Key_Up, QStringLiteral("4 5 6")},
                                                          {Qt::Key_PageUp, QStringLiteral("2 3")}};
    for (const auto& [taste, erwartet] : tasten) {
        SCOPED_TRACE(int(taste));
        QTest::keyClick(frm->dgdAngereichert, taste);
        EXPECT_TRUE(frm->tmrAnsicht->isActive());
        const QString soll = erwartet;
        EXPECT_TRUE(QTest::qWaitFor([&] { return nummern(frm->dgdDublette) == soll; }));
    }
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_PageUp);  // already there, the key still counts
    EXPECT_TRUE(frm->tmrAnsicht->isActive());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !frm->tmrAnsicht->isActive(); }));
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Right);
    EXPECT_FALSE(frm->tmrAnsicht->isActive());
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return nummern(frm->dgdDublette) == u"7 8"; }));
    EXPECT_EQ(frm->lblGruppe->text(), u"Gruppe 3 von 3");
}

TEST_F(Nachbearbeitung, MenuetasteUndUmschaltF10SindDerRechtsklickDerTastatur) {
    zeigen();
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Down);
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Menu);
    EXPECT_EQ(stand({12, 21}), u"12: 101 103 | 21: 102");
    QTest::keyClick(frm->dgdÜbernehmen, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(stand({12, 21}), u"12: 101 102 103");
    QTest::keyClick(frm->dgdDublette, Qt::Key_F10);
    EXPECT_EQ(stand(), kAnfang);
}

// A key that follows at once must not move what the first one was meant for to another group.
TEST_F(Nachbearbeitung, DieKuerzelDerKnoepfeWirkenSofort) {
    zeigen();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frm.get()));
    QTest::keyClick(frm.get(), Qt::Key_2, Qt::AltModifier);
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Down);
    EXPECT_EQ(stand({13, 22}), u"13: 4 5 6 7 8 | 22: 2 3");
    QTest::keyClick(frm.get(), Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(stand({21, 22}), u"21: 101 102 103 | 22: 2 3");
    QTest::keyClick(frm.get(), Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(stand(), kAnfang);
}

// The end.
TEST_F(Nachbearbeitung, FertigMitLeererListeStelltZweiFragen) {
    zeigen();
    fenster.erwarte(kAlleLoeschen, Knopf::Ja);
    fenster.erwarte(kLoeschen, Knopf::Ja);
    klick(frm->btnFertig);
    EXPECT_FALSE(offen());
    EXPECT_FALSE(gAbbruch);
    EXPECT_EQ(gAnzahlAngereichert, 3);
    EXPECT_EQ(stand(), kAnfang);
    ASSERT_EQ(fenster.meldungen.size(), 2u);
    const Meldung erste = fenster.meldungen[0];
    const Meldung zweite = fenster.meldungen[1];
    for (const Meldung& meldung : {erste, zweite}) {
        EXPECT_EQ(meldung.titel, QString());
        EXPECT_EQ(meldung.symbol, Symbol::Information);
        EXPECT_EQ(meldung.knoepfe, Knoepfe::JaNein);
    }
    EXPECT_EQ(erste.vorwahl, Knopf::Nein);
    EXPECT_EQ(zweite.vorwahl, Knopf::Ja);
}

TEST_F(Nachbearbeitung, FertigMitGefuellterListeStelltNurDieZweiteFrage) {
    zeigen();
    rechts(frm->dgdDublette);
    fenster.erwarte(kLoeschen, Knopf::Ja);
    klick(frm->btnFertig);
    EXPECT_FALSE(offen());
}

TEST_F(Nachbearbeitung, EinNeinBleibtImFenster) {
    zeigen();
    gAnzahlAngereichert = -1;
    fenster.erwarte(kAlleLoeschen, Knopf::Nein);
    klick(frm->btnFertig);
    EXPECT_TRUE(offen());
    fenster.erwarte(kAlleLoeschen, Knopf::Ja);
    fenster.erwarte(kLoeschen, Knopf::Nein);
    klick(frm->btnFertig);
    EXPECT_TRUE(offen());
    EXPECT_EQ(gAnzahlAngereichert, -1);
    rechts(frm->dgdAngereichert);  // and the window goes on working
    EXPECT_EQ(stand({21}), u"21: 101");
}

TEST_F(Nachbearbeitung, DieAnzahlIstDieDerLetztenAbfrageUndEnthaeltVerschobene) {
    zeigen();
    rechts(frm->dgdAngereichert);
    rechts(frm->dgdAngereichert);  // asked anew in front of the second move
    ASSERT_EQ(stand({12}), u"12: 103");
    fenster.erwarte(kLoeschen, Knopf::Ja);
    klick(frm->btnFertig);
    EXPECT_EQ(gAnzahlAngereichert, 2);
}

TEST_F(Nachbearbeitung, AbbrechenFragtNichtUndLaesstVerschobenesStehen) {
    zeigen();
    rechts(frm->dgdDublette);
    klick(frm->btnAbbrechen);
    EXPECT_FALSE(offen());
    EXPECT_TRUE(gAbbruch);
    EXPECT_EQ(stand({22}), u"22: 2");
}

TEST_F(Nachbearbeitung, AbbrechenNimmtZurueckWasDerLaufOffenHat) {
    zeigen();
    gArbeitsbereich->BeginTrans();
    gDatenbank->Execute(QStringLiteral("DELETE * FROM [%1] WHERE [TEMP_DSS] = 13").arg(gZielTabelle));
    klick(frm->btnAbbrechen);
    EXPECT_EQ(stand(), kAnfang);
    EXPECT_THROW(gArbeitsbereich->Rollback(), EngineFehler);
}

TEST_F(Nachbearbeitung, EscapeTutNichts) {
    zeigen();
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Escape);
    QTest::keyClick(frm.get(), Qt::Key_Escape);
    EXPECT_TRUE(offen());
    EXPECT_FALSE(gAbbruch);
}

TEST_F(Nachbearbeitung, DieSchliesstasteFragtUndBrichtDannAb) {
    zeigen();
    fenster.erwarte(kAbbruchfrage, Knopf::Nein);
    frm->close();
    EXPECT_TRUE(offen());
    EXPECT_FALSE(gAbbruch);
    fenster.erwarte(kAbbruchfrage, Knopf::Ja);
    frm->close();
    EXPECT_FALSE(offen());
    EXPECT_TRUE(gAbbruch);
}

TEST_F(Nachbearbeitung, EnterImGitterBeendetNichtsUndDruecktNurDenKnopfMitDemFokus) {
    zeigen();
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Return);
    EXPECT_TRUE(offen());
    frm->activateWindow();
    frm->btnAngereichert->setFocus();
    QTest::keyClick(frm->btnAngereichert, Qt::Key_Return);
    EXPECT_EQ(stand({21}), u"21: 101 102 103");
}

// Re-entry: a move of all records yields after each of them.
TEST_F(Nachbearbeitung, WaehrendEinesVerschiebensSindDieKnoepfeGesperrt) {
    for (auto knopf : {&FrmDublettenBearbeiten::btnAngereichert, &FrmDublettenBearbeiten::btnDublette,
                       &FrmDublettenBearbeiten::btnÜbernehmen}) {
        gDatenbank.reset();
        zeigen();
        rechts(frm->dgdDublette);  // so that each button has something to move
        fenster.ereignisse = 0;
        fenster.beimEreignis = [&] {
            for (QPushButton* gesperrt :
                 {frm->btnFertig, frm->btnAngereichert, frm->btnDublette, frm->btnÜbernehmen})
                EXPECT_FALSE(gesperrt->isEnabled());
            EXPECT_TRUE(frm->btnAbbrechen->isEnabled());
            EXPECT_TRUE(frm->btnHilfe->isEnabled());
        };
        klick(frm.get()->*knopf);
        EXPECT_GT(fenster.ereignisse, 0);
        for (QPushButton* frei : {frm->btnFertig, frm->btnAngereichert, frm->btnDublette, frm->btnÜbernehmen})
            EXPECT_TRUE(frei->isEnabled());
        fenster.beimEreignis = nullptr;
    }
}

TEST_F(Nachbearbeitung, EinVerschiebenGibtNachJedemSatzAb) {
    zeigen();
    fenster.ereignisse = 0;
    klick(frm->btnAngereichert);
    EXPECT_EQ(fenster.ereignisse, 3);
}

TEST_F(Nachbearbeitung, AbbrechenMittenImVerschiebenNimmtEsZurueck) {
    for (auto knopf : {&FrmDublettenBearbeiten::btnAngereichert, &FrmDublettenBearbeiten::btnDublette,
                       &FrmDublettenBearbeiten::btnÜbernehmen}) {
        gDatenbank.reset();
        gAbbruch = false;
        zeigen();
        rechts(frm->dgdDublette);
        rechts(frm->dgdAngereichert);
        const QString vorher = stand();
        int noch = 2;
        fenster.beimEreignis = [&] {
            if (--noch == 0) klick(frm->btnAbbrechen);
        };
        klick(frm.get()->*knopf);
        EXPECT_EQ(noch, 0);  // the loop ended with the window
        EXPECT_FALSE(offen());
        EXPECT_TRUE(gAbbruch);
        EXPECT_EQ(stand(), vorher);
        EXPECT_THROW(gArbeitsbereich->Rollback(), EngineFehler);
        fenster.beimEreignis = nullptr;
    }
}

TEST_F(Nachbearbeitung, DieSchliesstasteMittenImVerschiebenFragt) {
    zeigen();
    fenster.erwarte(kAbbruchfrage, Knopf::Nein);
    fenster.erwarte(kAbbruchfrage, Knopf::Ja);
    int noch = 2;
    fenster.beimEreignis = [&] {
        if (noch-- > 0) frm->close();
    };
    klick(frm->btnAngereichert);
    EXPECT_FALSE(offen());
    EXPECT_EQ(stand(), kAnfang);
}

TEST_F(Nachbearbeitung, EinRechtsklickMittenImVerschiebenTutNichts) {
    zeigen();
    bool schon = false;
    fenster.beimEreignis = [&] {
        if (std::exchange(schon, true)) return;
        for (Datengitter* gitter : {frm->dgdAngereichert, frm->dgdDublette, frm->dgdÜbernehmen})
            rechts(gitter);
    };
    klick(frm->btnAngereichert);
    EXPECT_TRUE(schon);
    EXPECT_EQ(stand(), u"13: 2 3 4 5 6 7 8 | 21: 101 102 103");
}

TEST_F(Nachbearbeitung, EinZeilenwechselMittenImVerschiebenStoertNicht) {
    zeigen();
    fenster.beimEreignis = [&] {
        QTest::keyClick(frm->dgdAngereichert, Qt::Key_Down);
        QTest::qWait(30);  // the timer fires in here
    };
    klick(frm->btnDublette);
    EXPECT_EQ(stand({22}), u"22: 2 3");
    EXPECT_EQ(nummern(frm->dgdDublette), u"7 8");
}

// Failures.
TEST_F(Nachbearbeitung, EinFehlerBeimVerschiebenWirdGesagtUndZurueckgenommen) {
    zeigen();
    fenster.sonst = [](const Meldung&) { return Knopf::Ok; };
    bool schon = false;
    fenster.beimEreignis = [&] {
        // The record to be moved next is gone.
        if (!std::exchange(schon, true))
            gDatenbank->Execute(
                QStringLiteral("DELETE * FROM [%1] WHERE [TEMP_DSN] = 102").arg(gZielTabelle));
    };
    klick(frm->btnAngereichert);
    ASSERT_EQ(fenster.meldungen.size(), 1u);
    EXPECT_EQ(fenster.meldungen[0].titel, u" Achtung!");
    EXPECT_EQ(stand(), kAnfang);
    EXPECT_TRUE(frm->btnFertig->isEnabled());
    fenster.beimEreignis = nullptr;
    klick(frm->btnAngereichert);
    EXPECT_EQ(stand({21}), u"21: 101 102 103");
}

class LadenMitFehler : public Nachbearbeitung {
  protected:
    LadenMitFehler() {
        oeffnen();
        gSystemmeldungZeigen = false;
        richtig = std::exchange(gZielTabelle, QStringLiteral("fehlt"));
        fenster.sonst = [this](const Meldung& meldung) {
            EXPECT_TRUE(meldung.text.startsWith(
                QStringLiteral("Fehler beim Anzeigen der Ergebnisse der Dublettensuche.")));
            EXPECT_EQ(meldung.knoepfe, Knoepfe::AbbrechenWiederholenIgnorieren);
            if (antwort == Knopf::Wiederholen) gZielTabelle = richtig;
            return antwort;
        };
    }
    QString richtig;
    Knopf antwort = Knopf::Abbrechen;
};

TEST_F(LadenMitFehler, AbbrechenSetztGFehlerUndZeigtNichts) {
    frmDublettenBearbeitenZeigen(nullptr);
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(gAbbruch);
    EXPECT_EQ(fenster.meldungen.size(), 1u);
}

TEST_F(LadenMitFehler, WiederholenFuehrtDenSchrittNochEinmalAus) {
    antwort = Knopf::Wiederholen;
    zeigen();
    EXPECT_EQ(fenster.meldungen.size(), 1u);
    EXPECT_EQ(nummern(frm->dgdAngereichert), u"101 102 103");
}

TEST_F(LadenMitFehler, IgnorierenGehtDahinterWeiter) {
    antwort = Knopf::Ignorieren;
    zeigen();
    // Both openings, the count and the three fillings.
    EXPECT_EQ(fenster.meldungen.size(), 6u);
    EXPECT_FALSE(gFehler);
    EXPECT_EQ(frm->dgdAngereichert->model()->rowCount(), 0);
    fenster.sonst = [](const Meldung&) { return Knopf::Ok; };
    rechts(frm->dgdAngereichert);
    klick(frm->btnAngereichert);
    klick(frm->btnAbbrechen);
    EXPECT_TRUE(gAbbruch);
    EXPECT_FALSE(offen());
}

// The whole way, modal.
TEST_F(Nachbearbeitung, ZeigenWartetBisFertig) {
    oeffnen();
    fenster.erwarte(kAlleLoeschen, Knopf::Ja);
    fenster.erwarte(kLoeschen, Knopf::Ja);
    QString name;
    QTimer::singleShot(0, qApp, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        name = modal->objectName();
        klick(modal->findChild<QPushButton*>(QStringLiteral("btnFertig")));
    });
    frmDublettenBearbeitenZeigen(nullptr);
    EXPECT_EQ(name, u"frmDublettenBearbeiten");
    EXPECT_EQ(gAnzahlAngereichert, 3);
    EXPECT_FALSE(gAbbruch);
}

TEST_F(Nachbearbeitung, ZeigenKehrtAusEinemAbgebrochenenVerschiebenZurueck) {
    oeffnen();
    fenster.beimEreignis = [] { QCoreApplication::processEvents(); };
    QTimer::singleShot(0, qApp, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        QTimer::singleShot(
            0, modal, [modal] { klick(modal->findChild<QPushButton*>(QStringLiteral("btnAbbrechen"))); });
        klick(modal->findChild<QPushButton*>(QStringLiteral("btnAngereichert")));
    });
    frmDublettenBearbeitenZeigen(nullptr);
    EXPECT_TRUE(gAbbruch);
    EXPECT_EQ(stand(), kAnfang);
}

TEST_F(Nachbearbeitung, EineLeereTabelleZeigtLeereListen) {
    inhalt.tabellen[0].zeilen.clear();
    zeigen();
    for (Datengitter* gitter : {frm->dgdAngereichert, frm->dgdDublette, frm->dgdÜbernehmen})
        EXPECT_EQ(nummern(gitter), u"");
    klick(frm->btnAngereichert);
    klick(frm->btnDublette);
    klick(frm->btnÜbernehmen);
    fenster.erwarte(kAlleLoeschen, Knopf::Ja);
    fenster.erwarte(kLoeschen, Knopf::Ja);
    klick(frm->btnFertig);
    EXPECT_EQ(gAnzahlAngereichert, 0);
}

}  // namespace
