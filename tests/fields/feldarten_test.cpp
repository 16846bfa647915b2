// The table of field kinds and the assignment of a field.
#include "fields/feldarten.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>
#include <vector>

#include "base/fehler.h"
#include "fields/einstellungen.h"

namespace {

class Feldarten : public ::testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden(std::nullopt); }
};

int fehlerNummer(const std::function<void()>& tun) {
    try {
        tun();
    } catch (const EngineFehler& fehler) {
        return fehler.nummer();
    }
    return 0;
}

TEST_F(Feldarten, VolleTabelle) {
    struct Zeile {
        int nummer;
        QString bezeichnung;
        int code, relevanz, signifikanz;
    };
    const std::vector<Zeile> zeilen = {
        {1, "Ignorieren", 1, 0, 0},
        {11, "Index", 1, 0, 0},
        {21, "Firmenname", 1, 20, 100},
        {22, "Rechtsform", 2, 5, 10},
        {23, "Branche", 4, 20, 50},
        {31, "Straße", 1, 40, 60},
        {32, "Hausnummer", 2, 20, 40},
        {33, "Postleitzahl", 4, 100, 20},
        {34, "Ort", 8, 80, 20},
        {41, "Anrede", 1, 10, 10},
        {42, "Vorname", 2, 20, 50},
        {43, "Nachname", 4, 30, 60},
        {44, "Abteilung/Position", 8, 10, 50},
        {51, "Vorwahl", 1, 80, 80},
        {52, "Telefon", 2, 80, 80},
        {53, "Telefax", 4, 80, 80},
        {61, "Emailadresse", 1, 70, 30},
        {62, "Internetadresse", 2, 70, 50},
    };
    size_t naechste = 0;
    for (int nummer = kErsteFeldart; nummer <= kLetzteFeldart; ++nummer) {
        SCOPED_TRACE(nummer);
        const Feldart& art = gFeldArten[size_t(nummer)];
        if (naechste < zeilen.size() && zeilen[naechste].nummer == nummer) {
            const Zeile& zeile = zeilen[naechste++];
            EXPECT_EQ(art.Bezeichnung, zeile.bezeichnung);
            EXPECT_EQ(art.Code, zeile.code);
            EXPECT_EQ(art.RelevanzFaktor, zeile.relevanz);
            EXPECT_EQ(art.SignifikanzFaktor, zeile.signifikanz);
        } else {
            EXPECT_EQ(art.Bezeichnung, u"");
            EXPECT_EQ(art.Code, -1);
            EXPECT_EQ(art.RelevanzFaktor, 0);
            EXPECT_EQ(art.SignifikanzFaktor, 0);
        }
    }
    EXPECT_EQ(naechste, zeilen.size());
}

TEST_F(Feldarten, GruppenNamen) {
    const QStringList namen = {"Allgemeines", "Indices",       "Unternehmen", "Adresse",
                               "Kontakt",     "Kommunikation", "Internet"};
    ASSERT_EQ(size_t(namen.size()), gFeldGruppen.size());
    for (qsizetype i = 0; i < namen.size(); ++i) EXPECT_EQ(gFeldGruppen[size_t(i)].Bezeichnung, namen[i]);
}

TEST_F(Feldarten, SchwellenSindDieNaechstenEinfachenZahlen) {
    EXPECT_EQ(gRelevanz, 0.8f);
    EXPECT_EQ(gSignifikanz, 0.6f);
}

TEST_F(Feldarten, GruppeIstDieErsteZiffer) {
    EXPECT_EQ(FeldGruppeVon(1), 0);
    EXPECT_EQ(FeldGruppeVon(9), 0);
    EXPECT_EQ(FeldGruppeVon(10), 1);
    EXPECT_EQ(FeldGruppeVon(11), 1);
    EXPECT_EQ(FeldGruppeVon(21), 2);
    EXPECT_EQ(FeldGruppeVon(53), 5);
    EXPECT_EQ(FeldGruppeVon(62), 6);
    EXPECT_EQ(FeldGruppeVon(345), 3);
    EXPECT_EQ(FeldGruppeVon(0), 0);
    EXPECT_EQ(FeldGruppeVon(-21), 0);
}

TEST_F(Feldarten, EnthaltenVergleichtDenCode) {
    EXPECT_TRUE(FeldartEnthalten(7, 42));
    EXPECT_FALSE(FeldartEnthalten(5, 42));
    EXPECT_TRUE(FeldartEnthalten(12, 34));
    EXPECT_FALSE(FeldartEnthalten(0, 1));
}

TEST_F(Feldarten, EnthaltenErkenntEineFremdeGruppeNicht) {
    EXPECT_TRUE(FeldartEnthalten(1, 21));
    EXPECT_TRUE(FeldartEnthalten(1, 61));
}

TEST_F(Feldarten, EnthaltenAusserhalbDerTabelleScheitert) {
    EXPECT_EQ(fehlerNummer([] { FeldartEnthalten(1, 0); }), 9);
    EXPECT_EQ(fehlerNummer([] { FeldartEnthalten(1, 70); }), 9);
}

const FeldZuordnungen kTabelle = {{0, 1}, {3, 3}, {2, 3}, {3, 1}, {5, 2}, {4, 7}};

TEST_F(Feldarten, SuchenGibtDasErsteFeldDasPasst) {
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 3, kStrasse), 1);
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 3, kHausnummer), 1);
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 2, kRechtsform), 2);
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 0, kIgnorieren), 0);
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 3, kOrt), -1);
    EXPECT_EQ(FeldMitArtSuchen({}, 3, kOrt), -1);
}

TEST_F(Feldarten, SuchenGehtNachDerGenanntenGruppe) {
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 4, kStrasse), 5);
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 6, kStrasse), -1);
}

TEST_F(Feldarten, SuchenNachUnbenutzterZeileFindetNieEtwas) {
    EXPECT_EQ(FeldMitArtSuchen(kTabelle, 0, 2), -1);
    EXPECT_EQ(FeldMitArtSuchen({{0, -1}}, 0, 2), -1);
}

TEST_F(Feldarten, FindenLeitetDieGruppeAb) {
    EXPECT_EQ(FeldMitArtFinden(kTabelle, kStrasse), 1);
    EXPECT_EQ(FeldMitArtFinden(kTabelle, kTelefon), 4);
    EXPECT_EQ(FeldMitArtFinden(kTabelle, kVorname), 5);
    EXPECT_EQ(FeldMitArtFinden(kTabelle, kIgnorieren), 0);
    EXPECT_EQ(FeldMitArtFinden(kTabelle, kEmailadresse), -1);
    EXPECT_EQ(FeldMitArtFinden(kTabelle, 35), -1);
}

TEST_F(Feldarten, IgnoriertIstGruppeNullMaskeEins) {
    EXPECT_TRUE(FeldIgnoriert({0, 1}));
    EXPECT_FALSE(FeldIgnoriert({0, 0}));
    EXPECT_FALSE(FeldIgnoriert({1, 1}));
}

TEST_F(Feldarten, MaskenUndBeschriftungenDerMenues) {
    struct Eintrag {
        std::vector<int> arten;
        int maske;
        QString beschriftung;
    };
    const std::vector<Eintrag> eintraege = {
        {{1}, 1, "(Ignorieren)"},
        {{11}, 1, "(Index)"},
        {{21}, 1, "(Firmenname)"},
        {{22}, 2, "(Rechtsform)"},
        {{21, 22}, 3, "(Firmenname,Rechtsform)"},
        {{23}, 4, "(Branche)"},
        {{31}, 1, "(Straße)"},
        {{32}, 2, "(Hausnummer)"},
        {{31, 32}, 3, "(Straße,Hausnummer)"},
        {{33}, 4, "(Postleitzahl)"},
        {{34}, 8, "(Ort)"},
        {{33, 34}, 12, "(Postleitzahl,Ort)"},
        {{41}, 1, "(Anrede)"},
        {{42}, 2, "(Vorname)"},
        {{43}, 4, "(Nachname)"},
        {{42, 43}, 6, "(Vorname,Nachname)"},
        {{41, 43}, 5, "(Anrede,Nachname)"},
        {{41, 42, 43}, 7, "(Anrede,Vorname,Nachname)"},
        {{44}, 8, "(Abteilung/Position)"},
        {{51}, 1, "(Vorwahl)"},
        {{52}, 2, "(Telefon)"},
        {{53}, 4, "(Telefax)"},
        {{51, 52}, 3, "(Vorwahl,Telefon)"},
        {{51, 53}, 5, "(Vorwahl,Telefax)"},
        {{61}, 1, "(Emailadresse)"},
        {{62}, 2, "(Internetadresse)"},
    };
    for (const Eintrag& e : eintraege) {
        EXPECT_EQ(FeldartBeschriftung(e.arten), e.beschriftung);
        int maske = 0;
        for (int art : e.arten) maske |= Maske({art});
        EXPECT_EQ(maske, e.maske) << qPrintable(e.beschriftung);
    }
    EXPECT_EQ(Maske({41, 42, 43}), 7);
    EXPECT_EQ(Maske({}), 0);
}

TEST_F(Feldarten, ZeileFuelltMitPunktenAuf) {
    EXPECT_EQ(FeldZeile("PLZ", "(Ort)"), QStringLiteral(" PLZ") + QString(50, u'.') + "(Ort)");
    EXPECT_EQ(FeldZeile("", "(Ort)"), u' ' + QString(53, u'.') + "(Ort)");
}

TEST_F(Feldarten, ZeileMitGenauAchtundfuenfzigHatKeinePunkte) {
    const QString name(53, u'x');
    EXPECT_EQ(FeldZeile(name, "(Ort)"), u' ' + name + "(Ort)");
}

TEST_F(Feldarten, ZeileMitNegativerPunktzahlScheitert) {
    EXPECT_EQ(fehlerNummer([] { FeldZeile(QString(54, u'x'), "(Ort)"); }), 5);
}

}  // namespace
