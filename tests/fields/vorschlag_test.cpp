// The proposal of kinds by a field's name and its samples.
#include "fields/vorschlag.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <vector>

#include "fields/einstellungen.h"

namespace {

class Vorschlag : public ::testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden(std::nullopt); }

    // The label for a name, with the same sample in every draw.
    QString beschriftung(const QString& name, const QString& probe = QString()) {
        return FeldArtVorschlagen(name,
                                  [&] {
                                      ++gezogen;
                                      return probe;
                                  })
            .beschriftung;
    }
    // The label for a name, with these samples one after the other.
    QString beschriftungMit(const QString& name, const QStringList& proben) {
        return FeldArtVorschlagen(name, [&] { return proben.value(gezogen++); }).beschriftung;
    }
    int gezogen = 0;
};

QStringList lange(int anzahl) {
    return QStringList(anzahl, QStringLiteral("0221 12345")) +
           QStringList(10 - anzahl, QStringLiteral("123456789"));
}

TEST_F(Vorschlag, NamenOhneStichprobe) {
    const std::vector<std::pair<QString, QString>> faelle = {
        // stage 1
        {"Kundennummer", "(Index)"},
        {"index", "(Index)"},
        {"ID", "(Index)"},
        {"Kunden-Nr", "(Index)"},
        {"KundenNr.", "(Index)"},
        {"Postcode", "(Index)"},
        {"Provider", "(Index)"},
        {"Nummer", "(Index)"},
        {"Rechnungsnummer", "(Index)"},
        {"Hausnummer", "(Hausnummer)"},
        // stage 2
        {"Name", "(Firmenname,Rechtsform)"},
        {"Firma", "(Firmenname,Rechtsform)"},
        {"FIRM", "(Firmenname,Rechtsform)"},
        {"Unternehmen", "(Firmenname,Rechtsform)"},
        {"Betrieb", "(Firmenname,Rechtsform)"},
        {"Branche", "(Branche)"},
        {"Firmenbranche", "(Firmenname,Branche,Rechtsform)"},
        {"Branche Recht", "(Branche,Rechtsform)"},
        {"Rechtsform", "(Rechtsform)"},
        {"Gesellschaftsform", "(Rechtsform)"},
        {"Rechte", "(Rechtsform)"},
        {"Firmenkunde", "(Ignorieren)"},
        {"NONAME", "(Ignorieren)"},
        // stage 3
        {"Haus", "(Hausnummer)"},
        {"PLZ", "(Postleitzahl)"},
        {"Postleitzahl", "(Postleitzahl)"},
        {"Ort", "(Ort)"},
        {"PLZ/Ort", "(Postleitzahl,Ort)"},
        {"Ort und PLZ und Haus", "(Hausnummer,Postleitzahl,Ort)"},
        {"Sortierung", "(Ort)"},
        {"Str", "(Ignorieren)"},
        // stage 4
        {"Anrede", "(Anrede)"},
        {"Titel", "(Anrede)"},
        {"Vorname", "(Vorname)"},
        {"Kontakt", "(Anrede,Vorname,Nachname)"},
        {"Abteilung", "(Abteilung/Position)"},
        {"Position", "(Abteilung/Position)"},
        {"Position und Anrede", "(Anrede,Abteilung/Position)"},
        {"Vorname Titel", "(Anrede,Vorname)"},
        // stage 5
        {"Vorwahl", "(Vorwahl)"},
        {"Durchwahl", "(Telefon)"},
        {"Vorwahl Durchwahl", "(Vorwahl,Telefon)"},
        {"Tel.", "(Ignorieren)"},
        {"Tel1", "(Ignorieren)"},
        // stage 6
        {"EMail", "(Emailadresse)"},
        {"Internet", "(Internetadresse)"},
        {"Web", "(Internetadresse)"},
        {"Web/Mail", "(Emailadresse,Internetadresse)"},
        {"Homepage", "(Ignorieren)"},
        {"", "(Ignorieren)"},
    };
    for (const auto& [name, text] : faelle)
        EXPECT_EQ(beschriftung(name, "Am Haus 1 2 3 4"), text) << qPrintable(name);
    EXPECT_EQ(gezogen, 0);
}

TEST_F(Vorschlag, NummerOhneHausTelefonUndFaxIstIndex) {
    EXPECT_EQ(beschriftung("Telefonnummer"), u"(Telefon)");
    EXPECT_EQ(beschriftung("Faxnummer"), u"(Telefax)");
    EXPECT_EQ(beschriftung("Handynummer"), u"(Index)");
    EXPECT_EQ(beschriftung("Kundennummer/Fax"), u"(Index)");
}

TEST_F(Vorschlag, EineFruehereStufeSchliesstDieSpaeterenAus) {
    EXPECT_EQ(beschriftung("Firmenort"), u"(Firmenname,Rechtsform)");
    EXPECT_EQ(beschriftung("Ort/Telefon"), u"(Ort)");
    EXPECT_EQ(beschriftung("Telefon/Mail"), u"(Telefon)");
    EXPECT_EQ(beschriftung("Webcode"), u"(Index)");
}

TEST_F(Vorschlag, GruppeUndMaskeGehoerenZurBeschriftung) {
    const auto zuordnung = [](const QString& name) {
        return FeldArtVorschlagen(name, [] { return QString(); }).zuordnung;
    };
    EXPECT_EQ(zuordnung("Kundennummer"), (FeldZuordnung{1, 1}));
    EXPECT_EQ(zuordnung("Firma"), (FeldZuordnung{2, 3}));
    EXPECT_EQ(zuordnung("PLZ/Ort"), (FeldZuordnung{3, 12}));
    EXPECT_EQ(zuordnung("Kontakt"), (FeldZuordnung{4, 7}));
    EXPECT_EQ(zuordnung("Telefon/Fax"), (FeldZuordnung{5, 6}));
    EXPECT_EQ(zuordnung("Web"), (FeldZuordnung{6, 2}));
    EXPECT_EQ(zuordnung("Homepage"), (FeldZuordnung{0, 1}));
}

TEST_F(Vorschlag, EszettIstEinGewoehnlicherBuchstabe) {
    EXPECT_EQ(beschriftung("STRAßE"), u"(Straße)");
    EXPECT_EQ(beschriftung("Strasse"), u"(Straße)");
    EXPECT_EQ(beschriftung("Str. "), u"(Straße)");
    EXPECT_EQ(beschriftung("Anschrift"), u"(Straße)");
}

TEST_F(Vorschlag, StrasseMitZifferHatHausnummer) {
    EXPECT_EQ(beschriftung("Straße", "Am Markt"), u"(Straße)");
    EXPECT_EQ(gezogen, 10);
    gezogen = 0;
    EXPECT_EQ(beschriftung("Straße", "Am Markt 1"), u"(Straße,Hausnummer)");
    EXPECT_EQ(gezogen, 1);
    gezogen = 0;
    EXPECT_EQ(beschriftungMit("Straße", QStringList(9, "Am Markt") + QStringList{"1"}),
              u"(Straße,Hausnummer)");
    EXPECT_EQ(gezogen, 10);
    EXPECT_EQ(beschriftung("Straße/PLZ Ort", "Am Markt 1"), u"(Straße,Hausnummer,Postleitzahl,Ort)");
}

TEST_F(Vorschlag, NachnameMitBlankeHatAnredeUndVorname) {
    for (const QString& name : {QString("Kundenname"), QString("Nachname"), QString("Ansprechpartner")}) {
        gezogen = 0;
        EXPECT_EQ(beschriftung(name, "Meyer"), u"(Nachname)") << qPrintable(name);
        EXPECT_EQ(gezogen, 10);
        gezogen = 0;
        EXPECT_EQ(beschriftungMit(name, {"Meyer", "Hans Meyer"}), u"(Anrede,Vorname,Nachname)")
            << qPrintable(name);
        EXPECT_EQ(gezogen, 2);
    }
}

TEST_F(Vorschlag, VornameNebenNachnameZiehtKeineStichprobe) {
    EXPECT_EQ(beschriftung("Vorname/Nachname", "Hans Meyer"), u"(Vorname,Nachname)");
    EXPECT_EQ(gezogen, 0);
    EXPECT_EQ(beschriftung("Ansprechpartner Vorname", "Hans Meyer"), u"(Vorname)");
    EXPECT_EQ(beschriftung("Ansprech-Noname", "Hans Meyer"), u"(Ignorieren)");
}

TEST_F(Vorschlag, TelefonMitMehrheitLangerWerteHatVorwahl) {
    for (const QString& name :
         {QString("Telefon"), QString("Tel"), QString("TEL"), QString("Phone"), QString("Mobiltelefon")}) {
        gezogen = 0;
        EXPECT_EQ(beschriftungMit(name, lange(5)), u"(Telefon)") << qPrintable(name);
        EXPECT_EQ(gezogen, 10);
        gezogen = 0;
        EXPECT_EQ(beschriftungMit(name, lange(6)), u"(Vorwahl,Telefon)") << qPrintable(name);
        EXPECT_EQ(gezogen, 10);
    }
}

TEST_F(Vorschlag, TelefaxMitMehrheitLangerWerteHatVorwahl) {
    EXPECT_EQ(beschriftungMit("Telefax", lange(5)), u"(Telefax)");
    gezogen = 0;
    EXPECT_EQ(beschriftungMit("Fax", lange(6)), u"(Vorwahl,Telefax)");
}

TEST_F(Vorschlag, TelefonUndFaxZiehenJeZehn) {
    EXPECT_EQ(beschriftungMit("Telefon/Fax", lange(5) + lange(5)), u"(Telefon,Telefax)");
    EXPECT_EQ(gezogen, 20);
    gezogen = 0;
    EXPECT_EQ(beschriftungMit("Telefon/Fax", lange(0) + lange(6)), u"(Vorwahl,Telefon,Telefax)");
}

}  // namespace
