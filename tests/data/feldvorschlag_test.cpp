// The proposal of kinds for the fields of a table: which values are sampled, the list, and its failures.
#include "data/feldvorschlag.h"

#include "gemeinsam/speicherbank.h"
#include "run/schritte.h"

namespace {

class Feldvorschlaege : public Speicherbank {
  protected:
    // A table with one field of these values.
    void tabelle(const char16_t* feld, const std::vector<Wert>& werte) {
        std::vector<std::vector<Wert>> saetze;
        for (const Wert& wert : werte) saetze.push_back({wert});
        tabelleAnlegen(name, {{feld}}, saetze);
        oeffnen();
    }
    void vorschlagen(const QString& wofuer) {
        FeldArtenVorschlagen(wofuer, gFeldZuordnungen, gFeldAnzahl, zeilen);
    }
    // The labels that come up for the only field in so many proposals, each once.
    QStringList beschriftungen(int anzahl) {
        QStringList alle;
        for (int i = 0; i < anzahl; ++i) {
            ZufallStarten(quint32(i));
            vorschlagen(name);
            const QString beschriftung = zeilen.value(0).section(u'.', -1);
            if (!alle.contains(beschriftung)) alle << beschriftung;
        }
        return alle;
    }

    const QString name = QStringLiteral("Adressen");
    QStringList zeilen;
};

// So many values without a digit, but for one with a digit at this place (from 0).
std::vector<Wert> strassen(int anzahl, int mitNummer) {
    std::vector<Wert> werte(size_t(anzahl), Wert(u"Am Markt"));
    werte[size_t(mitNummer)] = Wert(u"Am Markt 1");
    return werte;
}

// Which of the records are sampled, seen by whether the only value with a digit ever comes up.
struct Stichprobe {
    const char* name;
    int anzahl;     // of records
    int mitNummer;  // the place of that value
    int aufrufe;
    QStringList erwartet;
};

class Stichproben : public Feldvorschlaege, public testing::WithParamInterface<Stichprobe> {};

TEST_P(Stichproben, GebenDieseBeschriftungen) {
    const Stichprobe& fall = GetParam();
    tabelle(u"Straße", strassen(fall.anzahl, fall.mitNummer));
    QStringList gefunden = beschriftungen(fall.aufrufe);
    gefunden.sort();
    EXPECT_EQ(gefunden, fall.erwartet);
}

const QStringList kNie = texte({u"(Straße)"});
const QStringList kManchmal = texte({u"(Straße)", u"(Straße,Hausnummer)"});
const QStringList kImmer = texte({u"(Straße,Hausnummer)"});

INSTANTIATE_TEST_SUITE_P(Faelle, Stichproben,
                         testing::Values(Stichprobe{"ZweiGebenImmerDenErsten", 2, 0, 30, kImmer},
                                         Stichprobe{"DerZweiteVonZweienKommtNie", 2, 1, 30, kNie},
                                         Stichprobe{"EinEinzigerGibtLeereTexte", 1, 0, 30, kNie},
                                         Stichprobe{"DieLetztenZweiKommenNie", 20, 18, 50, kNie},
                                         Stichprobe{"DerDrittletzteKommtManchmal", 20, 17, 50, kManchmal},
                                         Stichprobe{"NachDreihundertKommtKeiner", 1000, 300, 150, kNie},
                                         Stichprobe{"DerDreihundertsteKommtManchmal", 1000, 299, 150,
                                                    kManchmal}),
                         [](const auto& fall) { return fall.param.name; });

TEST_F(Feldvorschlaege, OhneDatensatzGibtEsNurLeereTexte) {
    tabelle(u"Straße", {});
    EXPECT_EQ(beschriftungen(3), texte({u"(Straße)"}));
}

TEST_F(Feldvorschlaege, EinNullIstKeinFehler) {
    tabelle(u"Nachname", std::vector<Wert>(5, Wert::null()));
    EXPECT_EQ(beschriftungen(3), texte({u"(Nachname)"}));
}

TEST_F(Feldvorschlaege, JederAufrufFaengtVonVornAn) {
    tabelleAnlegen(name, {{u"PLZ"}, {u"Notiz"}}, {});
    oeffnen();
    gFeldZuordnungen = {{6, 1}, {6, 1}, {6, 1}};
    zeilen << QStringLiteral("alt");
    vorschlagen(name);
    EXPECT_EQ(gFeldZuordnungen, (FeldZuordnungen{{3, 4}, {0, 1}}));
    EXPECT_EQ(gFeldAnzahl, 2);
    EXPECT_EQ(zeilen,
              (QStringList{QStringLiteral(" PLZ") + QString(41, u'.') + QStringLiteral("(Postleitzahl)"),
                           QStringLiteral(" Notiz") + QString(41, u'.') + QStringLiteral("(Ignorieren)")}));
}

class LangerFeldname : public Feldvorschlaege {
  protected:
    LangerFeldname() {
        // With its label the first name fills the line, the second one is longer by one.
        tabelleAnlegen(name,
                       {{u"genaunnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"},
                        {u"zulangnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"},
                        {u"Ort"}},
                       {});
        oeffnen();
        // The engine has failed before, as the box of a failure that is none of its own shows.
        FehlerUebergehen([] { gDatenbank->TableDefs().Item(QStringLiteral("Fehlt")); });
    }
    const QString meldung = QStringLiteral("Fehler beim Öffnen des Feldes 1.");
};

TEST_F(LangerFeldname, FuehrtZumFehlerkastenUndFehltDannInDerListe) {
    erwarteFehler(meldung, Knopf::Wiederholen);
    erwarteFehler(meldung, Knopf::Ignorieren);
    vorschlagen(name);
    EXPECT_FALSE(gFehler);
    ASSERT_EQ(zeilen.size(), 2);
    EXPECT_FALSE(zeilen[0].contains(u'.'));
    EXPECT_EQ(zeilen[0].size(), 59);
    EXPECT_TRUE(zeilen[1].startsWith(QStringLiteral(" Ort.")));
    EXPECT_EQ(gFeldZuordnungen.size(), 3u);
}

TEST_F(LangerFeldname, LaesstSichAbbrechen) {
    erwarteFehler(meldung, Knopf::Abbrechen);
    vorschlagen(name);
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(zeilen.size(), 1);
}

TEST_F(Feldvorschlaege, EineTabelleDieEsNichtGibt) {
    tabelle(u"Ort", {});
    erwarteFehler(QStringLiteral("Fehler beim Öffnen des Feldes ."), Knopf::Abbrechen);
    vorschlagen(QStringLiteral("fehlt"));
    EXPECT_TRUE(gFehler);
}

}  // namespace
