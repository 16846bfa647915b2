// Mixing on a database in memory: fields, origins, counters, and every way out.
#include "tables/mischen.h"

#include <QSet>

#include "gemeinsam/speicherbank.h"

namespace {

class Mischen : public Speicherbank {
  protected:
    void erste(const std::vector<Spaltenvorgabe>& spalten, const std::vector<std::vector<Wert>>& zeilen) {
        tabelleAnlegen(QStringLiteral("Eins"), spalten, zeilen);
        for (const Spaltenvorgabe& spalte : spalten) zuordnung1.push_back(spalte.zuordnung);
    }
    void zweite(const std::vector<Spaltenvorgabe>& spalten, const std::vector<std::vector<Wert>>& zeilen) {
        tabelleAnlegen(QStringLiteral("Zwei"), spalten, zeilen);
        for (const Spaltenvorgabe& spalte : spalten) zuordnung2.push_back(spalte.zuordnung);
        oeffnen();
    }
    void mischen() {
        TabellenMischen(QStringLiteral("Eins"), QStringLiteral("Zwei"), misch, zuordnung1, zuordnung2,
                        ergebnis);
    }
    QStringList gemischt(const char16_t* feld) { return spalte(misch, QString::fromUtf16(feld)); }
    void gewoehnlich() {
        erste({{u"Nr", {1, 1}, dao::dbLong, 4},
               {u"Strasse", {3, 3}},
               {u"PLZ", {3, 4}},
               {u"Notiz", {0, 1}},
               {u"Mail", {6, 1}}},
              {{7, u"Weg 1", u"53111", u"alt", Wert::null()}});
        zweite({{u"Str", {3, 1}}, {u"Hausnr", {3, 2}}, {u"Ort", {3, 12}}, {u"Notiz", {0, 1}}},
               {{u"Gasse", u"2", u"10115 Berlin", u"neu"}, {u"Allee", Wert::null(), Wert::null(), u"neu"}});
    }

    FeldZuordnungen zuordnung1, zuordnung2, ergebnis;
    const QString misch = QStringLiteral("TEMP_DA");
};

TEST_F(Mischen, DieZweiteTabelleStehtInDenFeldernDerErsten) {
    gewoehnlich();
    mischen();
    ASSERT_FALSE(Angehalten());
    EXPECT_EQ(felder(misch), texte({u"Nr", u"Strasse", u"PLZ", u"Notiz", u"Mail", u"TEMP_DSQ"}));
    EXPECT_EQ(gemischt(u"TEMP_DSQ"), texte({u"1", u"2", u"2"}));
    EXPECT_EQ(gemischt(u"Strasse"), texte({u"Weg 1", u"Gasse 2", u"Allee"}));
    EXPECT_EQ(gemischt(u"PLZ"), texte({u"53111", u"10115", u"-"}));
    EXPECT_EQ(f().datensatzText, u"3 Datensätze insgesamt");
    EXPECT_EQ(f().informationen,
              texte({u"Bereite Tabelle 'Eins' vor ...", u"Mische 'Eins' mit Tabelle 'Zwei' ..."}));
    EXPECT_EQ(gFortschrittWert, 3);
    EXPECT_EQ(gFortschrittMax, 3);
}

TEST_F(Mischen, EinIndexfeldIstBeiDerZweitenNull) {
    gewoehnlich();
    mischen();
    EXPECT_EQ(gemischt(u"Nr"), texte({u"7", u"-", u"-"}));
}

TEST_F(Mischen, EinIgnoriertesFeldKommtNurVonDerErsten) {
    gewoehnlich();
    mischen();
    EXPECT_EQ(gemischt(u"Notiz"), texte({u"alt", u"-", u"-"}));
}

TEST_F(Mischen, EineArtDieDerZweitenFehltIstNull) {
    gewoehnlich();
    mischen();
    EXPECT_EQ(gemischt(u"Mail"), texte({u"-", u"-", u"-"}));
}

TEST_F(Mischen, DieZuordnungBekommtEinElementFuerDieHerkunft) {
    gewoehnlich();
    mischen();
    FeldZuordnungen soll = zuordnung1;
    soll.push_back({0, 2});
    EXPECT_EQ(ergebnis, soll);
}

TEST_F(Mischen, DasErsteFeldEinerArtZaehlt) {
    erste({{u"Ort", {3, 8}}}, {{u"Bonn"}});
    zweite({{u"Ort1", {3, 8}}, {u"Ort2", {3, 8}}}, {{u"Ulm", u"Hof"}});
    mischen();
    EXPECT_EQ(gemischt(u"Ort"), texte({u"Bonn", u"Ulm"}));
}

TEST_F(Mischen, EinFeldMitZweiArtenDientBeiden) {
    erste({{u"Str", {3, 1}}, {u"Nr", {3, 2}}}, {{u"Weg", u"1"}});
    zweite({{u"Adresse", {3, 3}}}, {{u"Gasse 2"}});
    mischen();
    EXPECT_EQ(gemischt(u"Str"), texte({u"Weg", u"Gasse"}));
    EXPECT_EQ(gemischt(u"Nr"), texte({u"1", u"2"}));
}

TEST_F(Mischen, EinZaehlerZaehltSelbst) {
    erste({{u"Nr", {0, 1}, dao::dbLong, 4, dao::dbAutoIncrField}, {u"Ort", {3, 8}}},
          {{17, u"Bonn"}, {5, u"Hof"}});
    zweite({{u"Ort", {3, 8}}}, {{u"Ulm"}});
    mischen();
    EXPECT_EQ(gemischt(u"Ort"), texte({u"Bonn", u"Hof", u"Ulm"}));
    const QStringList nummern = gemischt(u"Nr");
    EXPECT_FALSE(nummern.contains(QStringLiteral("-")));
    EXPECT_EQ(QSet<QString>(nummern.begin(), nummern.end()).size(), 3);
    EXPECT_NE(nummern[0], u"17");
}

TEST_F(Mischen, EineHerkunftDerErstenTabelleWirdErsetzt) {
    erste({{u"TEMP_DSQ", {0, 1}}, {u"Ort", {3, 8}}}, {{u"alt", u"Bonn"}});
    zweite({{u"Ort", {3, 8}}}, {{u"Ulm"}});
    f().sonst = [](const Meldung&) { return Knopf::Ignorieren; };
    mischen();
    EXPECT_EQ(felder(misch), texte({u"Ort", u"TEMP_DSQ"}));
}

TEST_F(Mischen, EineLeereZweiteTabelleFuehrtZumFehlerkasten) {
    erste({{u"Ort", {3, 8}}}, {{u"Bonn"}});
    zweite({{u"Ort", {3, 8}}}, {});
    erwarteFehler(QStringLiteral("Fehler beim Erstellen der gemischten Tabelle."), Knopf::Abbrechen);
    mischen();
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(misch));
}

TEST_F(Mischen, EineTabelleDieSichNichtOeffnenLaesst) {
    gewoehnlich();
    erwarteFehler(QStringLiteral("Fehler beim Erstellen der gemischten Tabelle."), Knopf::Abbrechen);
    TabellenMischen(QStringLiteral("Eins"), QStringLiteral("fehlt"), misch, zuordnung1, zuordnung2, ergebnis);
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(misch));
}

TEST_F(Mischen, EinZuLangerWertFuehrtZumFehlerkastenDesDatensatzes) {
    erste({{u"Nr", {1, 1}, dao::dbLong, 4}, {u"Ort", {3, 8}, dao::dbText, 4}}, {{1, u"Bonn"}});
    zweite({{u"Kennung", {0, 1}}, {u"Ort", {3, 8}}}, {{u"K7", u"Berlin"}, {u"K8", u"Ulm"}});
    erwarteFehler(QStringLiteral("Fehler beim Ergänzen des Datensatzes 'K7' im Feld 'Ort'."),
                  Knopf::Ignorieren);
    mischen();
    EXPECT_EQ(gemischt(u"Ort"), texte({u"Bonn", u"-", u"Ulm"}));
}

TEST_F(Mischen, AbbrechenImFehlerkastenLaesstKeineMischtabelle) {
    erste({{u"Ort", {3, 8}, dao::dbText, 4}}, {{u"Bonn"}});
    zweite({{u"Ort", {3, 8}}}, {{u"Berlin"}});
    erwarteFehler(QStringLiteral("Fehler beim Ergänzen des Datensatzes 'Berlin' im Feld 'Ort'."),
                  Knopf::Abbrechen);
    mischen();
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(misch));
    EXPECT_EQ(f().informationen.last(), u"Breche Mischvorgang ab ...");
    EXPECT_TRUE(ergebnis.empty());
}

TEST_F(Mischen, AbbruchInBeidenTabellen) {
    std::vector<std::vector<Wert>> zeilen(1500, {u"Bonn"});
    erste({{u"Ort", {3, 8}}}, zeilen);
    zweite({{u"Ort", {3, 8}}}, zeilen);
    for (const int ereignis : {1, 1400, 1501, 2900}) {
        SCOPED_TRACE(ereignis);
        const int ziel = f().ereignisse + ereignis;
        f().beimEreignis = [this, ziel] { gAbbruch = gAbbruch || f().ereignisse == ziel; };
        mischen();
        EXPECT_TRUE(gAbbruch);
        EXPECT_FALSE(vorhanden(misch));
        EXPECT_FALSE(f().takt);
        EXPECT_TRUE(f().zurueckKnopfAktiv);
    }
}

// What could not be saved is told before the work: records, fields and characters, the first eight of them.
TEST_F(Mischen, ZeichenDieDieErsteTabelleNichtHatWerdenVorherGesagt) {
    inhalt.fehlendesZeichen = u'ł';
    erste({{u"Ort", {3, 8}}, {u"Notiz", {0, 1}}}, {{u"Bonn", u"Stanisław"}});
    std::vector<std::vector<Wert>> zeilen{{u"Ulm", u"ł"}, {u"Wrocław", Wert::null()}};
    for (int i = 0; i < 9; ++i) zeilen.push_back({u"Włocławek", Wert::null()});
    zweite({{u"Stadt", {3, 8}}, {u"Notiz", {0, 1}}}, zeilen);
    QString text =
        u"Die Tabelle 'Zwei' enthält Zeichen, die es im Zeichensatz der Tabelle 'Eins' nicht gibt.\r"
        u"Das Ergebnis könnte damit nicht gespeichert werden.\r\r"
        u"Datensatz 2, für das Feld 'Ort': 'ł' (U+0142) in 'Wrocław'\r"_qs;
    for (int i = 3; i <= 9; ++i)
        text += QStringLiteral("Datensatz %1, für das Feld 'Ort': 'ł' (U+0142) in 'Włocławek'\r").arg(i);
    text +=
        u"(und 2 weitere Stellen)\r\r"
        u"Ersetzen Sie diese Zeichen in der Tabelle 'Zwei', oder speichern Sie die Tabelle 'Eins'\r"
        u"in einem Zeichensatz, der sie enthält."_qs;
    f().erwarte(text);
    mischen();
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(misch));
    EXPECT_EQ(f().informationen.last(), u"Breche Mischvorgang ab ...");
}

TEST_F(Mischen, ZeichenDieNichtInDieMischungKommenStoerenNicht) {
    inhalt.fehlendesZeichen = u'ł';
    erste({{u"Ort", {3, 8}}}, {{u"Bonn"}});
    zweite({{u"Stadt", {3, 8}}, {u"Name", {4, 4}}}, {{u"Ulm", u"Stanisław"}});
    mischen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(gemischt(u"Ort"), texte({u"Bonn", u"Ulm"}));
}

}  // namespace
