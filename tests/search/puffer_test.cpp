// The work table and the result table.
#include "search/puffer.h"

#include "search/suchbank.h"

namespace {

using Zeilen = std::vector<std::vector<Wert>>;

class Puffer : public Suchbank {};

QString indexmeldung(const QString& feld) {
    return QStringLiteral("Bei dem Feld \"") + feld +
           QStringLiteral(
               "\" handelt es sich vermutlich im ein Indexfeld.\r"
               "Bitte markieren sie dieses als solches und starten sie erneut.");
}

TEST_F(Puffer, WorkTableHoldsPreparedAndResultTableOriginalValues) {
    adressen({{u"Nr", {1, 1}, dao::dbLong, 4},
              {u"Firma", {2, 3}},
              {u"Egal", {0, 1}},
              {u"Strasse", {3, 3}},
              {u"Frei", {0, 0}},
              {u"PLZ", {3, 4}, dao::dbLong, 4},
              {u"Tel", {5, 2}},
              {u"Seit", {4, 1}, dao::dbDate, 8}},
             {{7, u"Meyer GmbH", u"x", u"Hauptstraße 12a", u"Ä!", 50667, u"0221 / 123456", DatumZeit{1.5}},
              {8, Wert::null(), Wert::null(), u"An der Allee 5", u"", Wert::null(), u"0221", Wert::null()}});
    pufferFuellen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ((QStringList{QStringLiteral("Nr"), QStringLiteral("Firma"), QStringLiteral("Strasse"),
                           QStringLiteral("Frei"), QStringLiteral("PLZ"), QStringLiteral("Tel"),
                           QStringLiteral("Seit"), QStringLiteral("TEMP_DSS"), QStringLiteral("TEMP_DSN"),
                           QStringLiteral("TEMP_BN"), QStringLiteral("TEMP_AMK")}),
              felder(arbeit));
    EXPECT_EQ(
        (QStringList{QStringLiteral("Nr"), QStringLiteral("Firma"), QStringLiteral("Egal"),
                     QStringLiteral("Strasse"), QStringLiteral("Frei"), QStringLiteral("PLZ"),
                     QStringLiteral("Tel"), QStringLiteral("Seit"), QStringLiteral("TEMP_DSS"),
                     QStringLiteral("TEMP_DSN"), QStringLiteral("TEMP_BN"), QStringLiteral("TEMP_AMK")}),
        felder(ziel));
    EXPECT_EQ((QStringList{QStringLiteral("meyer GmbH"), QStringLiteral(" ")}),
              spalte(arbeit, QStringLiteral("Firma")));
    EXPECT_EQ((QStringList{QStringLiteral("haupt 12"), QStringLiteral(" 5")}),
              spalte(arbeit, QStringLiteral("Strasse")));
    EXPECT_EQ((QStringList{QStringLiteral("Ä!"), QStringLiteral("")}),
              spalte(arbeit, QStringLiteral("Frei")));
    EXPECT_EQ((QStringList{QStringLiteral("50667"), QStringLiteral("-")}),
              spalte(arbeit, QStringLiteral("PLZ")))
        << "an empty text is no number";
    EXPECT_EQ((QStringList{QStringLiteral("123456"), QStringLiteral("-")}),
              spalte(arbeit, QStringLiteral("Tel")))
        << "nothing found is stored as Null";
    EXPECT_EQ((QStringList{QStringLiteral("31.12.1899 12:00:00"), QStringLiteral("-")}),
              spalte(arbeit, QStringLiteral("Seit")));
    EXPECT_EQ((QStringList{QStringLiteral("Meyer GmbH"), QStringLiteral("-")}),
              spalte(ziel, QStringLiteral("Firma")));
    EXPECT_EQ((QStringList{QStringLiteral("x"), QStringLiteral("-")}), spalte(ziel, QStringLiteral("Egal")));
    for (const QString& tabelle : {arbeit, ziel}) {
        EXPECT_EQ((QStringList{QStringLiteral("11"), QStringLiteral("11")}),
                  spalte(tabelle, QStringLiteral("TEMP_DSS")));
        EXPECT_EQ((QStringList{QStringLiteral("1"), QStringLiteral("2")}),
                  spalte(tabelle, QStringLiteral("TEMP_DSN")));
        EXPECT_EQ((QStringList{QStringLiteral("0"), QStringLiteral("0")}),
                  spalte(tabelle, QStringLiteral("TEMP_BN")));
        EXPECT_EQ((QStringList{QStringLiteral(""), QStringLiteral("")}),
                  spalte(tabelle, QStringLiteral("TEMP_AMK")));
        const dao::Fields& f = gDatenbank->TableDefs().Item(tabelle).Fields();
        const int dss = f.position(QStringLiteral("TEMP_DSS"));
        EXPECT_EQ(dao::dbByte, f.Item(dss).Type());
        EXPECT_EQ(dao::dbLong, f.Item(dss + 1).Type());
        EXPECT_EQ(dao::dbLong, f.Item(dss + 2).Type());
        EXPECT_EQ(dao::dbText, f.Item(dss + 3).Type());
        EXPECT_EQ(30, f.Item(dss + 3).Size());
        EXPECT_TRUE(f.Item(dss + 3).AllowZeroLength());
    }
    EXPECT_EQ(QStringLiteral("Bereite Tabelle auf Vergleich vor und erstelle Sicherungskopie ..."),
              f().informationen.first());
    EXPECT_EQ(QStringLiteral("2 Datensätze insgesamt"), f().datensatzText);
    EXPECT_EQ((QStringList{QStringLiteral("Meyer GmbH"), QStringLiteral("-")}),
              spalte(quelle, QStringLiteral("Firma")))
        << "the source is untouched";
}

TEST_F(Puffer, AnIgnoredColumnInAnIndexStopsTheRunBeforeTheTargetIsMade) {
    adressen({{u"Kennung", {0, 1}}, {u"Ort", {3, 8}}}, {{u"a", u"Köln"}}, {QStringLiteral("Kennung")});
    f().erwarte(indexmeldung(QStringLiteral("Kennung")));
    pufferFuellen();
    EXPECT_TRUE(gFehler);
    EXPECT_FALSE(vorhanden(ziel));
    ASSERT_EQ(1u, f().meldungen.size());
    EXPECT_EQ(QString(), f().meldungen[0].titel);
    EXPECT_EQ(Symbol::Ausrufezeichen, f().meldungen[0].symbol);
}

TEST_F(Puffer, ControlColumnsOfTheSourceAreMadeNew) {
    adressen({{u"TEMP_DSS", {0, 0}, dao::dbText, 5},
              {u"TEMP_DSN", {0, 0}, dao::dbLong, 4},
              {u"TEMP_BN", {0, 0}, dao::dbLong, 4},
              {u"TEMP_AMK", {0, 0}},
              {u"Ort", {0, 0}}},
             {{u"7", 99, 5, u"alt", u"Köln"}});
    pufferFuellen();
    EXPECT_FALSE(Angehalten());
    for (const QString& tabelle : {arbeit, ziel}) {
        EXPECT_EQ((QStringList{QStringLiteral("Ort"), QStringLiteral("TEMP_DSS"), QStringLiteral("TEMP_DSN"),
                               QStringLiteral("TEMP_BN"), QStringLiteral("TEMP_AMK")}),
                  felder(tabelle));
        EXPECT_EQ(QStringList{QStringLiteral("11")}, spalte(tabelle, QStringLiteral("TEMP_DSS")));
        EXPECT_EQ(QStringList{QStringLiteral("1")}, spalte(tabelle, QStringLiteral("TEMP_DSN")));
        EXPECT_EQ(QStringList{QStringLiteral("0")}, spalte(tabelle, QStringLiteral("TEMP_BN")));
        EXPECT_EQ(QStringList{QStringLiteral("")}, spalte(tabelle, QStringLiteral("TEMP_AMK")));
    }
}

TEST_F(Puffer, ASourceWithoutARecordIsReported) {
    adressen(Zeilen{});
    erwarteFehler(QStringLiteral("Fehler beim Erstellen des Suchpuffers."), Knopf::Abbrechen);
    pufferFuellen();
    EXPECT_TRUE(gFehler);
}

Zeilen viele(int anzahl) {
    Zeilen zeilen;
    for (int i = 0; i < anzahl; ++i) zeilen.push_back({QStringLiteral("Firma %1").arg(i), u"", u"", u"Köln"});
    return zeilen;
}

TEST_F(Puffer, EveryThousandthRecordEndsATransaction) {
    adressen(viele(1500));
    f().beimEreignis = [] {
        if (gFortschrittWert == 1499) gArbeitsbereich->Rollback();
    };
    f().sonst = [](const Meldung&) { return Knopf::Ignorieren; };
    pufferFuellen();
    // What was rolled back behind the last record began with the one after the thousandth.
    EXPECT_EQ(1000, gDatenbank->OpenRecordset(arbeit)->RecordCount());
    EXPECT_EQ(1000, gDatenbank->OpenRecordset(ziel)->RecordCount());
}

TEST_F(Puffer, AnAbortOnTheWayDropsBothTables) {
    adressen(viele(1500));
    f().beimEreignis = [] { gAbbruch = gAbbruch || gFortschrittWert == 1200; };
    pufferFuellen();
    EXPECT_TRUE(gAbbruch);
    EXPECT_FALSE(vorhanden(arbeit));
    EXPECT_FALSE(vorhanden(ziel));
    EXPECT_TRUE(f().informationen.contains(QStringLiteral("Breche Suchvorgang ab ...")));
    EXPECT_EQ(1500, gDatenbank->OpenRecordset(quelle)->RecordCount());
}

TEST_F(Puffer, AFailingPreparationNamesRecordFieldAndValue) {
    // Area code and number together have no room in the column.
    adressen({{u"Ort", {3, 8}}, {u"Tel", {5, 3}, dao::dbText, 6}}, {{u"Köln", u"+49221"}, {u"Bonn", u""}});
    const QString meldung =
        QStringLiteral("Fehler beim Aufbereiten des Datensatzes 'köln' im Feld 'Tel' mit dem Wert '+49221'.");
    erwarteFehler(meldung, Knopf::Wiederholen);
    erwarteFehler(meldung, Knopf::Ignorieren);
    pufferFuellen();
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ((QStringList{QStringLiteral("+49221"), QStringLiteral(" ")}),
              spalte(arbeit, QStringLiteral("Tel")));
}

TEST_F(Puffer, GivingUpAtThePreparationEndsTheFilling) {
    adressen({{u"Ort", {3, 8}}, {u"Tel", {5, 3}, dao::dbText, 6}}, {{u"Köln", u"+49221"}, {u"Bonn", u""}});
    f().sonst = [](const Meldung&) { return Knopf::Abbrechen; };
    pufferFuellen();
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(1u, f().meldungen.size());
    EXPECT_FALSE(gErgebnisDaten);
    EXPECT_FALSE(gArbeitsDaten);
}

TEST_F(Puffer, ArbeitstabelleLoeschenIgnoresThatThereIsNone) {
    adressen(Zeilen{{u"a", u"b", u"1", u"c"}});
    pufferFuellen();
    ASSERT_TRUE(vorhanden(arbeit));
    ArbeitstabelleLoeschen();
    EXPECT_FALSE(vorhanden(arbeit));
    ArbeitstabelleLoeschen();
}

}  // namespace
