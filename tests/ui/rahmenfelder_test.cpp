// Frame 7: the field list, its menu, and what the wizard remembers of it.
#include "ui/assistent.h"

namespace {

class Felder : public Assistent {
  protected:
    RahmenFelder& seite() { return *haupt().rahmenFelder; }
    QString zeile(int stelle) { return seite().lstFelder->item(stelle)->text(); }
    QMenu* menue() { return seite().mnuFeldArten; }
    void klick(int stelle, Qt::MouseButton knopf) {
        QListWidget* liste = seite().lstFelder;
        const QPoint wo = liste->visualItemRect(liste->item(stelle)).center();
        QTest::mouseClick(liste->viewport(), knopf, Qt::NoModifier, wo);
    }
    void waehlen(const char* name) {
        auto* eintrag = menue()->findChild<QAction*>(QString::fromUtf8(name));
        ASSERT_NE(eintrag, nullptr) << name;
        eintrag->trigger();
        menue()->close();
    }
};

TEST_F(Felder, DerTitelNenntDieTabelle) {
    bisFelder();
    EXPECT_EQ(seite().title(), u" Zuordnung der Felder von 'Adressen' ");
}

TEST_F(Felder, EineZeileJeFeldInEinerFestenBreite) {
    bisFelder();
    const dao::Fields& felder = gDatenbank->TableDefs().Item(QStringLiteral("Adressen")).Fields();
    ASSERT_EQ(seite().lstFelder->count(), felder.Count());
    EXPECT_EQ(gFeldAnzahl, felder.Count());
    for (int i = 0; i < felder.Count(); ++i) {
        const QString name = felder.Item(i).Name();
        EXPECT_EQ(zeile(i).size(), 59) << i;
        EXPECT_TRUE(zeile(i).startsWith(u' ' + name + u'.')) << i;
        EXPECT_TRUE(zeile(i).endsWith(u')')) << i;
    }
    EXPECT_EQ(seite().lstFelder->font().family(), u"Courier New");
}

// Name, group, mask and label of every entry, in the menu's order.
TEST_F(Felder, JederEintragOrdnetSeineArtZu) {
    bisFelder();
    struct Eintrag {
        const char* name;
        const char* aufschrift;
        int gruppe, maske;
        const char* beschriftung;
    };
    const Eintrag eintraege[] = {
        {"smnFeldArten_0", "Ignorieren", 0, 1, "(Ignorieren)"},
        {"smnFeldArten_1", "Index", 1, 1, "(Index)"},
        {"smnUnternehmen_0", "Firmenname", 2, 1, "(Firmenname)"},
        {"smnUnternehmen_1", "Rechtsform", 2, 2, "(Rechtsform)"},
        {"smnUnternehmen_2", "Firmenname+Rechtsform", 2, 3, "(Firmenname,Rechtsform)"},
        {"smnUnternehmen_3", "Branche", 2, 4, "(Branche)"},
        {"smnAdresse_0", "Straße", 3, 1, "(Straße)"},
        {"smnAdresse_1", "Hausnummer", 3, 2, "(Hausnummer)"},
        {"smnAdresse_2", "Straße+Hausnummer", 3, 3, "(Straße,Hausnummer)"},
        {"smnAdresse_3", "Postleitzahl", 3, 4, "(Postleitzahl)"},
        {"smnAdresse_4", "Ort", 3, 8, "(Ort)"},
        {"smnAdresse_5", "Postleitzahl+Ort", 3, 12, "(Postleitzahl,Ort)"},
        {"smnKontakt_0", "Anrede", 4, 1, "(Anrede)"},
        {"smnKontakt_1", "Vorname", 4, 2, "(Vorname)"},
        {"smnKontakt_2", "Nachname", 4, 4, "(Nachname)"},
        {"smnKontakt_3", "Vorname+Nachname", 4, 6, "(Vorname,Nachname)"},
        {"smnKontakt_4", "Anrede+Nachname", 4, 5, "(Anrede,Nachname)"},
        {"smnKontakt_5", "Anrede+Vorname+Nachname", 4, 7, "(Anrede,Vorname,Nachname)"},
        {"smnKontakt_6", "Abteilung/Position", 4, 8, "(Abteilung/Position)"},
        {"smnKommunikation_0", "Vorwahl", 5, 1, "(Vorwahl)"},
        {"smnKommunikation_1", "Telefon", 5, 2, "(Telefon)"},
        {"smnKommunikation_2", "Telefax", 5, 4, "(Telefax)"},
        {"smnKommunikation_3", "Vorwahl+Telefon", 5, 3, "(Vorwahl,Telefon)"},
        {"smnKommunikation_4", "Vorwahl+Telefax", 5, 5, "(Vorwahl,Telefax)"},
        {"smnInternet_0", "Emailadresse", 6, 1, "(Emailadresse)"},
        {"smnInternet_1", "Internetadresse", 6, 2, "(Internetadresse)"}};
    QStringList gefunden;
    for (const QAction* eintrag : menue()->findChildren<QAction*>())
        if (!eintrag->objectName().isEmpty()) gefunden << eintrag->objectName();
    EXPECT_EQ(gefunden.size(), std::ssize(eintraege));
    seite().lstFelder->setCurrentRow(2);
    const QString nachbar = zeile(3);
    for (const Eintrag& e : eintraege) {
        SCOPED_TRACE(e.name);
        EXPECT_EQ(finde<QAction>(e.name)->text(), QString::fromUtf8(e.aufschrift));
        waehlen(e.name);
        EXPECT_EQ(gFeldZuordnungen[2].Gruppe, e.gruppe);
        EXPECT_EQ(gFeldZuordnungen[2].Maske, e.maske);
        EXPECT_TRUE(zeile(2).endsWith(u'.' + QString::fromUtf8(e.beschriftung)));
        EXPECT_EQ(zeile(2).size(), 59);
        EXPECT_EQ(zeile(3), nachbar);
    }
}

TEST_F(Felder, DieUntermenuesStehenInIhrerReihenfolge) {
    bisFelder();
    QStringList oben;
    for (const QAction* eintrag : menue()->actions()) oben << eintrag->text();
    EXPECT_EQ(oben, (QStringList{"Ignorieren", "Index", "Unternehmen", "Adresse", "Kontakt", "Kommunikation",
                                 "Internet"}));
}

TEST_F(Felder, DieLinkeTasteOeffnetDasMenueDieRechteNicht) {
    bisFelder();
    klick(4, Qt::RightButton);
    EXPECT_FALSE(menue()->isVisible());
    klick(4, Qt::LeftButton);
    EXPECT_TRUE(menue()->isVisible());
    EXPECT_EQ(seite().lstFelder->currentRow(), 4);
    menue()->close();
}

TEST_F(Felder, DasMenueStehtMittigUnterDemZeiger) {
    bisFelder();
    const QListWidget* liste = seite().lstFelder;
    klick(4, Qt::LeftButton);
    const int zeiger = liste->viewport()->mapToGlobal(liste->visualItemRect(liste->item(4)).center()).x();
    EXPECT_NEAR(menue()->geometry().center().x(), zeiger, 1);
    menue()->close();
}

TEST_F(Felder, OhneMausOeffnenEsLeertasteEingabeUndMenuetaste) {
    bisFelder();
    seite().lstFelder->setCurrentRow(3);
    for (const Qt::Key taste : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Menu}) {
        QTest::keyClick(seite().lstFelder, taste);
        EXPECT_TRUE(menue()->isVisible()) << taste;
        menue()->close();
    }
    QTest::keyClick(seite().lstFelder, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(menue()->isVisible());
    menue()->close();
    EXPECT_EQ(gRahmen, 7);
}

// 58 characters of name and label leave no points; a longer name is told and changes nothing.
TEST_F(Felder, LangeNamen) {
    bisTabelle();
    const QString genau(58 - QStringLiteral("(Abteilung/Position)").size(), u'n');
    tabelleAnlegen(QStringLiteral("Lang"), {genau, genau + u'n'});
    RahmenWechseln(3, 3, false, true);
    tabelleWaehlen(QStringLiteral("Lang"));
    weiter();
    vorgangWaehlen(3);
    ASSERT_EQ(gRahmen, 7);
    seite().lstFelder->setCurrentRow(0);
    waehlen("smnKontakt_6");
    EXPECT_EQ(zeile(0), u' ' + genau + QStringLiteral("(Abteilung/Position)"));
    seite().lstFelder->setCurrentRow(1);
    const QString vorher = zeile(1);
    DialogantwortenSetzen({[this](const Meldung& meldung) {
                               meldungen.push_back(meldung);
                               return Knopf::Ok;
                           },
                           {},
                           {}});
    waehlen("smnKontakt_6");
    ASSERT_EQ(meldungen.size(), 1u);
    EXPECT_EQ(meldungen[0].titel, u" Achtung!");
    EXPECT_EQ(zeile(1), vorher);
}

TEST_F(Felder, ZurueckVomZielBehaeltDieKorrekturen) {
    bisFelder();
    seite().lstFelder->setCurrentRow(1);
    waehlen("smnInternet_0");
    const QString korrigiert = zeile(1);
    weiter();
    EXPECT_EQ(gRahmen, 4);
    EXPECT_EQ(gZuordnungenTabelle1[1].Gruppe, 6);
    zurueck();
    EXPECT_EQ(gRahmen, 7);
    EXPECT_EQ(zeile(1), korrigiert);
}

TEST_F(Felder, NeuVonDerVorgangsseiteKommtEinNeuerVorschlag) {
    bisFelder();
    const QString vorschlag = zeile(1);
    seite().lstFelder->setCurrentRow(1);
    waehlen("smnInternet_0");
    ASSERT_NE(zeile(1), vorschlag);
    zurueck();
    EXPECT_EQ(gRahmen, 5);
    vorgangWaehlen(3);
    EXPECT_EQ(zeile(1), vorschlag);
}

}  // namespace
