// Where the values of an enriched record came from, in words and in the tool tips of the review.
#include "ui/herkunft.h"

#include "ui/nachbearbeitung.h"

namespace {

struct Fall {
    const char* wert;
    QStringList mitglieder;  // their values; they are called A, B, C ...
    const char* text;
};

TEST(Herkunft, InWorten) {
    const Fall faelle[] = {
        {"", {"x", "y"}, ""},
        {"Köln", {"Köln", "Köln"}, "So in allen Datensätzen der Gruppe."},
        {"Müller KG", {"Müller", "Müller KG"}, "Aus: B"},
        {"Bonn", {"Bonn", "", "Bonn"}, "Aus: A, C"},
        {"x", {"x", "x", "x", "x", "x", ""}, "Aus: A, B, C, D und 1 weiteren"},
        {"Hauptstraße 12",
         {"Hauptstraße 1", "Hauptstr. 12"},
         "Zusammengesetzt.\n„Hauptstraße“ aus: A\n„12“ aus: B"},
        {"0228 / 5551", {"0228 4", "0221 / 5551"}, "Zusammengesetzt.\n„0228“ aus: A\n„/ 5551“ aus: B"},
        {"Frau Dr. Anna Groß",
         {"Frau Anna", "Dr. Anna Groß"},
         "Zusammengesetzt.\n„Frau“ aus: A\n„Dr. Anna Groß“ aus: B"},
        {"neu", {"a", "b"}, "Aus den Angaben der Gruppe gebildet."},
        {"a", {}, ""},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.wert);
        QList<Mitgliedswert> mitglieder;
        for (const QString& wert : fall.mitglieder)
            mitglieder << Mitgliedswert{QString(QChar(u'A' + char16_t(mitglieder.size()))), wert};
        EXPECT_EQ(HerkunftText(QString::fromUtf8(fall.wert), mitglieder), QString::fromUtf8(fall.text));
    }
}

QString hinweis(const Datengitter* gitter, int zeile, int spalte) {
    return gitter->model()->index(zeile, spalte).data(Qt::ToolTipRole).toString();
}

TEST_F(Nachbearbeitung, DerHinweisNenntDieHerkunftEinesAngereichertenWertes) {
    zeigen();
    EXPECT_EQ(hinweis(frm->dgdAngereichert, 0, 1),
              u"<p>Müller KG</p><p>Aus: 2. Dublette (Firma Müller KG)</p>");
    EXPECT_EQ(hinweis(frm->dgdAngereichert, 0, 2), u"<p>Köln</p><p>So in allen Datensätzen der Gruppe.</p>");
    // Another row than the current one has another group.
    EXPECT_EQ(hinweis(frm->dgdAngereichert, 2, 1), u"<p>Groß</p><p>Aus: 1. Dublette (Firma Groß)</p>");
    EXPECT_EQ(hinweis(frm->dgdAngereichert, 0, 0), u"<p>Anmerkung 101</p>");
}

TEST_F(Nachbearbeitung, DieHerkunftBleibtBekanntWennSichDatensaetzeVerschieben) {
    zeigen();
    waehlen(frm->dgdDublette, 1);
    rechts(frm->dgdDublette);
    EXPECT_EQ(hinweis(frm->dgdAngereichert, 0, 1),
              u"<p>Müller KG</p><p>Aus: übernommene Dublette (Firma Müller KG)</p>");
    rechts(frm->dgdAngereichert);
    const Datengitter* unten = frm->dgdÜbernehmen;
    ASSERT_EQ(nummern(unten), u"3 101");
    EXPECT_EQ(hinweis(unten, 0, 1), u"<p>Müller KG</p>");  // no enriched record
    EXPECT_EQ(hinweis(unten, 1, 1), u"<p>Müller KG</p><p>Aus: übernommene Dublette (Firma Müller KG)</p>");
}

TEST_F(Nachbearbeitung, DerHinweisEinerAbweichungNenntDenAngereichertenWert) {
    zeigen();
    EXPECT_EQ(hinweis(frm->dgdDublette, 0, 1), u"<p>Müller</p><p>Angereichert: „Müller KG“</p>");
    EXPECT_EQ(hinweis(frm->dgdDublette, 1, 1), u"<p>Müller KG</p>");
}

TEST_F(Nachbearbeitung, NachEinemVerschiebenGehtEsAnDerselbenStelleWeiter) {
    zeigen();
    waehlen(frm->dgdAngereichert, 1);
    frm->dgdAngereichert->setFocus();
    rechts(frm->dgdAngereichert);
    EXPECT_EQ(frm->adoAngereichert->Fields(QStringLiteral("TEMP_DSN")).alsText(), u"103");  // the next one
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 1);
    EXPECT_EQ(nummern(frm->dgdDublette), u"7 8");
    rechts(frm->dgdÜbernehmen);  // 102 comes back above it
    EXPECT_EQ(frm->adoAngereichert->Fields(QStringLiteral("TEMP_DSN")).alsText(), u"103");
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 2);
    rechts(frm->dgdAngereichert);  // the last one: the one before it is current
    EXPECT_EQ(frm->adoAngereichert->Fields(QStringLiteral("TEMP_DSN")).alsText(), u"102");
    waehlen(frm->dgdDublette, 1);
    rechts(frm->dgdDublette);
    EXPECT_EQ(nummern(frm->dgdDublette), u"4 6");
    EXPECT_EQ(frm->adoDublette->Fields(QStringLiteral("TEMP_DSN")).alsText(), u"6");
    // Another group begins with its first record.
    waehlen(frm->dgdAngereichert, 0);
    EXPECT_EQ(frm->adoDublette->position(), 0);
}

TEST_F(Nachbearbeitung, DerFokusBleibtNachJedemVerschieben) {
    zeigen();
    QApplication::setActiveWindow(frm.get());
    for (Datengitter* gitter : {frm->dgdAngereichert, frm->dgdDublette, frm->dgdÜbernehmen}) {
        gitter->setFocus();
        QTest::keyClick(gitter, Qt::Key_Menu);
        EXPECT_TRUE(gitter->hasFocus()) << qPrintable(gitter->objectName());
    }
    frm->btnDublette->setFocus();
    QTest::keyClick(frm->btnDublette, Qt::Key_Space);
    EXPECT_TRUE(frm->btnDublette->hasFocus());
}

TEST_F(Nachbearbeitung, EineGerollteListeBleibtStehen) {
    for (int i = 200; i < 300; ++i) zeile(i, 12, i, u"Müller", u"Köln");
    zeigen();
    frm->dgdAngereichert->setCurrentIndex(frm->dgdAngereichert->model()->index(54, 1));
    frm->dgdAngereichert->scrollTo(frm->dgdAngereichert->model()->index(55, 0));
    const int oben = frm->dgdAngereichert->rowAt(0);
    ASSERT_GT(oben, 10);
    QTest::keyClick(frm->dgdAngereichert, Qt::Key_Menu);
    EXPECT_EQ(frm->dgdAngereichert->rowAt(0), oben);
    EXPECT_EQ(frm->dgdAngereichert->currentIndex().row(), 54);
}

}  // namespace
