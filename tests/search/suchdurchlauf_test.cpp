// One pass: sort order, blocks, slices, neighbours; the pair list; the way out.
#include "search/suchdurchlauf.h"

#include "gemeinsam/instrumentiert.h"
#include "search/bereich.h"
#include "search/puffer.h"
#include "search/suchbank.h"
#include "search/vergleich.h"
#include "search/zufallsadressen.h"

namespace {

class Durchlauf : public Suchbank {
  protected:
    void laufen(int spalte, int laenge, const QString& sortierung, bool quick = false) {
        Bereichsvergleich vergleich;
        SuchdurchlaufAusfuehren(spalte, laenge, sortierung, quick, vergleich);
    }
};

std::vector<std::pair<qint32, qint32>> paarliste() {
    std::vector<std::pair<qint32, qint32>> liste;
    for (const Paar& paar : Paare()) liste.emplace_back(paar.erster, paar.zweiter);
    return liste;
}

using Paarliste = std::vector<std::pair<qint32, qint32>>;

std::vector<Wert> satz(const char16_t* firma, const char16_t* plz = u"50667", const char16_t* ort = u"Köln") {
    return {firma, u"", plz, ort};
}

TEST_F(Durchlauf, PairsOfABlockByTheirRecordNumbers) {
    adressen({satz(u"Schulz"), satz(u"Meyer"), satz(u"Anton"), satz(u"Meyer")});
    pufferFuellen();
    gRelevanz = 0.73f;
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ((Paarliste{{2, 4}}), paarliste());
    EXPECT_EQ(1, gFortschrittWert);
    EXPECT_EQ(1, gFortschrittMax);
    EXPECT_EQ(
        (QStringList{QStringLiteral("Tabelle öffnen ..."), QStringLiteral("Berechne notwendige Zeit ..."),
                     QStringLiteral("Durchsuche die Tabelle nach Dubletten ... \r\nUnter Sortierung der "
                                    "Tabelle nach \"[Firma]\".")}),
        f().informationen.mid(1));
}

TEST_F(Durchlauf, OnlyRecordsWithTheSameFirstCharactersMeet) {
    adressen({satz(u"Meyer"), satz(u"Mayer")});
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 1, QStringLiteral("[Firma]"));
    EXPECT_EQ(1u, Paare().size());
    PaareLeeren();
    f().erwarte(QStringLiteral(
        "Kein Vergleich notwendig.\r\nVersuchen sie es eventuell noch einmal mit dem Quicksuche-Modus."));
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_TRUE(gAbbruch) << "nothing to compare ends the search as an abort";
    EXPECT_TRUE(Paare().empty());
}

TEST_F(Durchlauf, ABlockLengthBeyondTheValueLetsOnlyEqualValuesMeet) {
    adressen({satz(u"Ab"), satz(u"Abc"), satz(u"Ab")});
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 5, QStringLiteral("[Firma]"));
    EXPECT_EQ((Paarliste{{1, 3}}), paarliste());
}

TEST_F(Durchlauf, ATableOfOneRecord) {
    adressen({satz(u"Meyer")});
    pufferFuellen();
    laufen(0, 2, QStringLiteral("[Firma]"), true);
    EXPECT_FALSE(Angehalten());
    EXPECT_TRUE(Paare().empty());
    f().erwarte(QStringLiteral(
        "Kein Vergleich notwendig.\r\nVersuchen sie es eventuell noch einmal mit dem Quicksuche-Modus."));
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_TRUE(gAbbruch);
}

TEST_F(Durchlauf, TheSamePairOfTwoPassesIsListedOnce) {
    adressen({satz(u"Meyer"), satz(u"Meyer")});
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 2, QStringLiteral("[Firma]"));
    laufen(3, 2, QStringLiteral("[Ort]"));
    EXPECT_EQ((Paarliste{{1, 2}}), paarliste());
}

TEST_F(Durchlauf, QuickModeComparesNeighboursAndNotesThePercentage) {
    adressen({satz(u"Meyer"), satz(u"Anton", u"1", u"x"), satz(u"Meyer", u"50668"), satz(u"Meyer")});
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 2, QStringLiteral("[Firma],[PLZ]"), true);
    // Sorted 2, 1, 4, 3: 260 and 240 of 285, since the empty street is a blank and takes part.
    EXPECT_EQ((Paarliste{{1, 4}, {4, 3}}), paarliste());
    EXPECT_EQ((QStringList{QStringLiteral("91%"), QString(QStringLiteral("")), QStringLiteral("84%"),
                           QStringLiteral("84%")}),
              spalte(arbeit, QStringLiteral("TEMP_AMK")))
        << "a later hit overwrites an earlier one";
    EXPECT_EQ(3, gFortschrittWert);
    EXPECT_TRUE(
        f().informationen.last().endsWith(QStringLiteral("nach \"[Firma],[PLZ]\" im Quicksuch-Modus.")));
}

TEST_F(Durchlauf, BlockModeNotesNoPercentage) {
    adressen({satz(u"Meyer"), satz(u"Meyer")});
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_EQ((QStringList{QString(QStringLiteral("")), QString(QStringLiteral(""))}),
              spalte(arbeit, QStringLiteral("TEMP_AMK")));
}

TEST_F(Durchlauf, AnIgnoredColumnInFrontMovesTheBlockColumn) {
    // Sorted by town, cut into blocks by what stands one column further on in the work table: the street.
    adressen({{u"Egal", {0, 1}}, {u"Ort", {3, 8}}, {u"Name", {2, 1}}, {u"Rest", {0, 0}}},
             {{u"", u"Köln", u"Meyer", u""}, {u"", u"Bonn", u"Meyer", u""}, {u"", u"Köln", u"Schulz", u""}});
    pufferFuellen();
    gRelevanz = 0.1f;
    laufen(1, 2, QStringLiteral("[Ort]"));
    // By town 2, 1, 3 with the names Meyer, Meyer, Schulz.
    EXPECT_EQ((Paarliste{{2, 1}}), paarliste());
}

TEST_F(Durchlauf, AnIgnoredColumnAsSortFieldIsReported) {
    adressen({{u"Egal", {0, 1}}, {u"Ort", {3, 8}}}, {{u"", u"Köln"}, {u"", u"Köln"}});
    pufferFuellen();
    for (const bool quick : {false, true}) {
        gFehler = false;
        erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche im Bereich 0 bis 0."), Knopf::Abbrechen);
        laufen(0, 2, QStringLiteral("[Egal]"), quick);
        EXPECT_TRUE(gFehler);
    }
}

TEST_F(Durchlauf, ABlockColumnBehindTheWorkTableIsReported) {
    // Of ten columns the work table has the last one and the four control columns.
    std::vector<Spaltenvorgabe> spalten;
    for (const char16_t* name : {u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H", u"I"})
        spalten.push_back({name, {0, 1}});
    spalten.push_back({u"Ort", {3, 8}});
    adressen(spalten, {std::vector<Wert>(10, u"Köln"), std::vector<Wert>(10, u"Köln")});
    pufferFuellen();
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche im Bereich 1 bis 0."), Knopf::Abbrechen);
    laufen(9, 2, QStringLiteral("[Ort]"));
    EXPECT_TRUE(gFehler);
}

// Two blocks, the second one without its last record by the time it is to be read.
class DurchlaufMitLuecke : public Durchlauf {
  protected:
    DurchlaufMitLuecke() {
        adressen({satz(u"Anton"), satz(u"Anton"), satz(u"Meyer"), satz(u"Meyer"), satz(u"Meyer")});
        pufferFuellen();
        gRelevanz = 0.9f;
        f().beimEreignis = [this] {
            if (!f().informationen.last().startsWith(QStringLiteral("Durchsuche"))) return;
            gDatenbank->Execute(QStringLiteral("DELETE * FROM [TEMP_DS] WHERE [TEMP_DSN] = 5"));
        };
    }
};

// By the letter, which reads each record when its turn has come.
TEST_F(DurchlaufMitLuecke, ABlockThatCannotBeReadIsReportedWithItsPlace) {
    gRelevanz = 0;
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche im Bereich 3 bis 5\ran der Stelle 3."),
                  Knopf::Abbrechen);
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche im Bereich 3 bis 5."), Knopf::Abbrechen);
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_TRUE(gFehler);
}

TEST_F(DurchlaufMitLuecke, ANeighbourThatCannotBeReadIsReportedWithItsPlace) {
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche (Quickmodus) an der Stelle 5."),
                  Knopf::Abbrechen);
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche an der Position 5."), Knopf::Abbrechen);
    laufen(0, 2, QStringLiteral("[Firma]"), true);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ((Paarliste{{1, 2}, {3, 4}}), paarliste());
}

TEST_F(Durchlauf, AnAbortLeavesTheLoops) {
    std::vector<std::vector<Wert>> zeilen(3000, satz(u"Meyer"));
    adressen(zeilen);
    pufferFuellen();
    gRelevanz = 0.9f;
    for (const bool quick : {false, true}) {
        gAbbruch = false;
        f().beimEreignis = [] { gAbbruch = gAbbruch || (gFortschrittMax != 3000 && gFortschrittWert > 100); };
        laufen(0, 2, QStringLiteral("[Firma]"), quick);
        EXPECT_TRUE(gAbbruch);
        EXPECT_LT(gFortschrittWert, gFortschrittMax);
    }
}

QString vieleWoerter(int anzahl) {
    return QStringLiteral("x ").repeated(anzahl - 1) + u'x';
}

TEST_F(Durchlauf, TooManyWordsAreReportedByTheComparisonItself) {
    const Wert lang(vieleWoerter(200));
    adressen({{u"Nr", {1, 1}, dao::dbLong, 4}, {u"Ort", {3, 8}, dao::dbText, 1000}, {u"PLZ", {3, 4}}},
             {{1, lang, u"1"}, {2, lang, u"1"}});
    pufferFuellen();
    gRelevanz = 0.5f;
    const QString meldung =
        QStringLiteral("Fehler beim Vergleichen der Datensätze '1' und '2' im Feld 2 mit den Werten '") +
        lang.text() + QStringLiteral("' und '") + lang.text() + QStringLiteral("'.");
    erwarteFehler(meldung, Knopf::Wiederholen);
    erwarteFehler(meldung, Knopf::Ignorieren);
    laufen(2, 1, QStringLiteral("[PLZ]"));
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ((Paarliste{{1, 2}}), paarliste()) << "100 of 180 without the row that failed";
    PaareLeeren();
    erwarteFehler(meldung, Knopf::Abbrechen);
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche im Bereich 1 bis 2."), Knopf::Abbrechen);
    laufen(2, 1, QStringLiteral("[PLZ]"));
    EXPECT_TRUE(gFehler);
    EXPECT_TRUE(Paare().empty());
    gFehler = false;
    erwarteFehler(meldung, Knopf::Abbrechen);
    // Both records have been fetched by then.
    erwarteFehler(QStringLiteral("Fehler bei der Dublettensuche an der Position 2."), Knopf::Abbrechen);
    laufen(2, 1, QStringLiteral("[PLZ]"), true);
    EXPECT_TRUE(gFehler);
}

const char16_t* const kSpaltennamen[] = {u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H"};

std::vector<Spaltenvorgabe> spaltenFuer(const FeldZuordnungen& zuordnungen) {
    std::vector<Spaltenvorgabe> spalten;
    for (size_t i = 0; i < zuordnungen.size(); ++i) spalten.push_back({kSpaltennamen[i], zuordnungen[i]});
    return spalten;
}

// What a pass lists by the letter of the rules; a Null on the way ends no block.
Paarliste woertlicherDurchlauf(const FeldZuordnungen& zuordnungen, int spalte, int laenge,
                               const QString& sortierung) {
    const auto sortiert =
        gDatenbank->OpenRecordset(SortierteAuswahl(QString::fromUtf16(kArbeitstabelle), sortierung));
    const dao::Block alle = sortiert->GetRows(100000);
    const Vergleicher vergleicher(zuordnungen, gAnsprechpartnerDifferenzieren);
    const auto satznummer = [&](int zeile) { return qint32(alle(alle.spalten() - 3, zeile).alsZahl()); };
    const auto schluessel = [&](int zeile) { return alle(spalte, zeile).alsText().left(laenge); };
    Paarliste soll;
    for (int anfang = 0; anfang < alle.zeilen();) {
        const bool null = alle(spalte, anfang).istNull();
        int ende = anfang + 1;
        while (ende < alle.zeilen() &&
               (null || alle(spalte, ende).istNull() || schluessel(ende) == schluessel(anfang)))
            ++ende;
        const int breite = int(std::log(ende - anfang) / std::log(1.5) + 1);
        for (int s1 = anfang; s1 < ende && !null && !schluessel(anfang).isEmpty(); s1 += breite)
            for (int s2 = s1; s2 < ende; s2 += breite)
                for (int i = s1; i < std::min(s1 + breite, ende); ++i)
                    for (int j = std::max(i + 1, s2); j < std::min(s2 + breite, ende); ++j)
                        if (*vergleicher.vergleichen(&alle(0, i), &alle(0, j)) >= gRelevanz)
                            soll.emplace_back(satznummer(i), satznummer(j));
        anfang = ende;
    }
    return soll;
}

// The whole pass against the letter: the order in which pairs are listed included.
TEST_F(Durchlauf, ListsThePairsOfRandomTablesInTheOrderOfSlicesAndSweeps) {
    const FeldZuordnungen zuordnungen{{3, 8}, {2, 3}, {4, 4}, {3, 4}, {5, 3}};
    Zufallsadressen zufall(42, 4);
    std::vector<std::vector<Wert>> zeilen;
    for (Zeile& zeile : zufall.zeilen(zuordnungen, 150)) {
        // Few blocks, and a Null on the way that ends none.
        if (!zeile[0].istNull()) zeile[0] = QString(QChar(u'a' + zufall.zahl(0, 3)));
        for (Wert& wert : zeile)
            if (!wert.istNull()) wert = wert.alsText();
        zeilen.push_back(zeile);
    }
    zeilen[0][0] = Wert(u"a");
    adressen(spaltenFuer(zuordnungen), zeilen);
    pufferFuellen();
    gRelevanz = 0.5f;
    laufen(0, 1, QStringLiteral("[A],[C]"));
    const Paarliste soll = woertlicherDurchlauf(zuordnungen, 0, 1, QStringLiteral("[A],[C]"));
    EXPECT_GT(soll.size(), 50u);
    EXPECT_EQ(soll, paarliste());
}

// Three passes one after the other with one comparison, at every tolerance: a pair that an earlier pass has
// listed stays where it is.
TEST_F(Durchlauf, WholeSearchesListWhatTheLetterLists) {
    const FeldZuordnungen zuordnungen{{2, 3}, {4, 2}, {4, 4}, {3, 3}, {3, 4}, {3, 8}, {5, 3}, {6, 1}};
    struct Pass {
        int spalte;
        int laenge;
        const char16_t* sortierung;
    };
    const Pass durchlaeufe[] = {{0, 2, u"[A],[E],[D]"}, {6, 5, u"[G],[A]"}, {4, 2, u"[E],[F],[A]"}};
    Zufallsadressen zufall(7, 12);
    std::vector<std::vector<Wert>> zeilen;
    for (Zeile& zeile : zufall.zeilen(zuordnungen, kInstrumentiert ? 200 : 520)) {
        // More than half without a firm: they make one great block.
        if (zufall.zahl(0, 9) < 6) zeile[0] = Wert(u"");
        for (Wert& wert : zeile) wert = wert.alsText();
        zeilen.push_back(zeile);
    }
    adressen(spaltenFuer(zuordnungen), zeilen);
    pufferFuellen();
    for (const bool differenzieren : {false, true})
        for (const float schwelle : {0.82f, 0.73f, 0.62f, 0.5f}) {
            SCOPED_TRACE(testing::Message() << schwelle << differenzieren);
            gAnsprechpartnerDifferenzieren = differenzieren;
            gRelevanz = schwelle;
            PaareLeeren();
            Bereichsvergleich vergleich;
            Paarliste soll;
            for (const Pass& pass : durchlaeufe) {
                const QString sortierung = QString::fromUtf16(pass.sortierung);
                SuchdurchlaufAusfuehren(pass.spalte, pass.laenge, sortierung, false, vergleich);
                for (const auto& paar :
                     woertlicherDurchlauf(zuordnungen, pass.spalte, pass.laenge, sortierung)) {
                    const std::pair<qint32, qint32> gedreht(paar.second, paar.first);
                    if (std::find(soll.begin(), soll.end(), paar) == soll.end() &&
                        std::find(soll.begin(), soll.end(), gedreht) == soll.end())
                        soll.push_back(paar);
                }
            }
            EXPECT_FALSE(Angehalten());
            EXPECT_GT(soll.size(), kInstrumentiert ? 5u : 20u);
            EXPECT_EQ(soll, paarliste());
        }
    gAnsprechpartnerDifferenzieren = false;
}

TEST_F(Durchlauf, ThePairListTakesThreeMillionAndOnePairs) {
    const QString meldung = QStringLiteral(
        "Es wurden zu viele Dubletten gefunden!\rFühren sie die Suche nach Beendigung erneut aus.");
    for (qint32 i = 1; i <= 3000001; ++i) PaarEintragen(i, i + 1);
    EXPECT_EQ(3000001u, Paare().size());
    EXPECT_FALSE(PaarlisteVoll());
    f().erwarte(meldung);
    PaarEintragen(1, 2);
    EXPECT_TRUE(PaarlisteVoll());
    PaarEintragen(1, 3);
    EXPECT_EQ(3000001u, Paare().size());
    EXPECT_FALSE(PaarBekannt(1, 3));
    EXPECT_TRUE(PaarBekannt(3, 2));
    EXPECT_EQ(1u, f().meldungen.size()) << "told once";
}

TEST_F(Durchlauf, AFullListEndsTheBlockWithItsMessage) {
    adressen(std::vector<std::vector<Wert>>(2600, satz(u"Meyer")));
    pufferFuellen();
    gRelevanz = 0.5f;
    f().erwarte(QStringLiteral(
        "Es wurden zu viele Dubletten gefunden!\rFühren sie die Suche nach Beendigung erneut aus."));
    laufen(0, 2, QStringLiteral("[Firma]"));
    EXPECT_FALSE(Angehalten());
    EXPECT_EQ(3000001u, Paare().size());
    EXPECT_EQ(gFortschrittMax, gFortschrittWert);
    laufen(3, 2, QStringLiteral("[Ort]"));
    EXPECT_EQ(gFortschrittMax, gFortschrittWert);
}

}  // namespace
