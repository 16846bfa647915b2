// The rule table of the junk search, row by row.
#include "junk/muellregel.h"

#include <gtest/gtest.h>

#include "fields/einstellungen.h"

namespace {

const Wert kNull = Wert::null();

// Every box set.
Muelloptionen alles() {
    return {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
}
Muelloptionen nichts() {
    return {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

using Kaestchen = int Muelloptionen::*;

struct Muellfall {
    const char* name;
    FeldZuordnung zuordnung;
    Wert wert;
    const char* anmerkungen;           // with every box set
    std::vector<Kaestchen> tore = {};  // without any of them there is no remark
};

class Muellregel : public testing::TestWithParam<Muellfall> {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
    QString anmerkungen(const Muelloptionen& optionen) {
        return MuellAnmerkungen(GetParam().zuordnung, GetParam().wert, optionen).join(QString());
    }
};

TEST_P(Muellregel, Anmerkungen) {
    EXPECT_EQ(anmerkungen(alles()), QString::fromUtf8(GetParam().anmerkungen));
}

TEST_P(Muellregel, JedesTorSchliesst) {
    for (const Kaestchen tor : GetParam().tore)
        for (const int wert : {0, 2, -1}) {
            Muelloptionen optionen = alles();
            optionen.*tor = wert;
            EXPECT_EQ(anmerkungen(optionen), QString()) << wert;
        }
}

TEST_P(Muellregel, NurMitSeinenToren) {
    Muelloptionen optionen = nichts();
    for (const Kaestchen tor : GetParam().tore) optionen.*tor = 1;
    EXPECT_EQ(anmerkungen(optionen), QString::fromUtf8(GetParam().anmerkungen));
}

using M = Muelloptionen;
const std::vector<Kaestchen> kFirmaTor{&M::firmenname}, kRechtsformTor{&M::firmenname, &M::rechtsform},
    kBrancheTor{&M::branche}, kPostTor{&M::postalisch}, kHausTor{&M::postalisch, &M::hausnummer},
    kAnredeTor{&M::kontakt, &M::anrede}, kVornameTor{&M::kontakt, &M::vorname},
    kNachnameTor{&M::kontakt, &M::nachname}, kAbteilungTor{&M::kontakt, &M::abteilung}, kTelTor{&M::telefon},
    kFaxTor{&M::telefon, &M::fax}, kMailTor{&M::email}, kNetzTor{&M::internet};

INSTANTIATE_TEST_SUITE_P(
    Zeilen, Muellregel,
    testing::Values(
        Muellfall{"IndexNull", {1, 1}, kNull, " k. Index;"}, Muellfall{"IndexLeererText", {1, 1}, u"", ""},
        Muellfall{"IgnoriertesFeld", {0, 1}, kNull, ""}, Muellfall{"FremdeGruppe", {7, 1}, kNull, ""},
        Muellfall{"FirmaNull", {2, 1}, kNull, " k. Firmenn.;", kFirmaTor},
        Muellfall{"FirmaLeererTextGehtDurch", {2, 1}, u"", ""},
        Muellfall{"FirmaZahl", {2, 1}, u"12345", " Firmenn. unvernünftig;", kFirmaTor},
        Muellfall{"FirmaZahlwert", {2, 1}, 12345, " Firmenn. unvernünftig;", kFirmaTor},
        Muellfall{"FirmaGut", {2, 1}, u"Meyer GmbH", ""},
        Muellfall{"RechtsformFehlt", {2, 2}, u"Meyer", " k. Rechtsform;", kRechtsformTor},
        Muellfall{"RechtsformNull", {2, 2}, kNull, " k. Rechtsform;", kRechtsformTor},
        Muellfall{"RechtsformDa", {2, 2}, u"Meyer GmbH", ""},
        Muellfall{"BrancheNull", {2, 4}, kNull, " k. Branche;", kBrancheTor},
        Muellfall{"BrancheLeererTextGehtDurch", {2, 4}, u"", ""},
        Muellfall{"BrancheZahl", {2, 4}, u"7", " Branche unvernünftig;", kBrancheTor},
        Muellfall{"StrasseNull", {3, 1}, kNull, " k. Straße;", kPostTor},
        Muellfall{"StrasseNurZiffern", {3, 1}, u"12", " k. Straße;", kPostTor},
        Muellfall{"StrasseAlsZahl", {3, 1}, u"-1", " Straße unvernünftig;", kPostTor},
        Muellfall{"HausnummerFehlt", {3, 2}, u"Hauptstr.", " k. Hausnr.;", kHausTor},
        Muellfall{"StrasseUndHausnummerNurBuchstaben", {3, 3}, u"Hauptstr.", " k. Hausnr.;", kHausTor},
        Muellfall{"PlzNull", {3, 4}, kNull, " k. PLZ;", kPostTor},
        Muellfall{"PlzZuKurz", {3, 4}, u"531", " k. PLZ;", kPostTor},
        Muellfall{"PlzGut", {3, 4}, u"53111", ""}, Muellfall{"OrtNull", {3, 8}, kNull, " k. Ort;", kPostTor},
        Muellfall{"OrtNurZiffern", {3, 8}, u"53111", " k. Ort;", kPostTor},
        Muellfall{"OrtAlsZahl", {3, 8}, u"1,5", " Ort unvernünftig;", kPostTor},
        Muellfall{"PlzUndOrtNull", {3, 12}, kNull, " k. PLZ; k. Ort;", kPostTor},
        Muellfall{"AnredeFehlt", {4, 1}, u"Meyer", " k. Anrede;", kAnredeTor},
        Muellfall{"VornameFehlt", {4, 2}, kNull, " k. Vorname;", kVornameTor},
        Muellfall{"NachnameFehlt", {4, 4}, kNull, " k. Nachname;", kNachnameTor},
        Muellfall{"NachnameDa", {4, 4}, u"Meyer", ""},
        Muellfall{"AbteilungNull", {4, 8}, kNull, " k. Abteilung;", kAbteilungTor},
        Muellfall{"AbteilungLeererTextGehtDurch", {4, 8}, u"", ""},
        Muellfall{"VorwahlFehlt", {5, 1}, u"123456", " k. Vorwahl;", kTelTor},
        Muellfall{"TelefonNull", {5, 2}, kNull, " k. Telefonnr.;", kTelTor},
        Muellfall{"TelefonDa", {5, 2}, u"0228/123456", ""},
        Muellfall{"TelefonNurVorwahlMitSechsZeichen", {5, 2}, u"022812", " k. Telefonnr.;", kTelTor},
        Muellfall{"TelefonNurVorwahlMitSiebenZeichen", {5, 2}, u"0228123", ""},
        Muellfall{"FaxFehlt", {5, 4}, kNull, " k. Faxnr.;", kFaxTor},
        Muellfall{"MailNull", {6, 1}, kNull, " k. Emailadr.;", kMailTor},
        Muellfall{"MailOhneKlammeraffe", {6, 1}, u"hans.meyer", " Emailadr. unvernünftig;", kMailTor},
        Muellfall{"MailMitKlammeraffe", {6, 1}, u"@", ""},
        Muellfall{"MailLeererText", {6, 1}, u"", " Emailadr. unvernünftig;", kMailTor},
        Muellfall{"NetzNull", {6, 2}, kNull, " k. Internetadr.;", kNetzTor},
        Muellfall{"NetzOhnePunkt", {6, 2}, u"meyer", " Internetadr. unvernünftig;", kNetzTor},
        Muellfall{"NetzZahlMitPunkt", {6, 2}, u"1.5", " Internetadr. unvernünftig;", kNetzTor},
        Muellfall{"NetzGut", {6, 2}, u"www.meyer.de", ""}),
    [](const auto& fall) { return std::string(fall.param.name); });

class Muelltore : public testing::Test {
  protected:
    void SetUp() override { EinstellungenAnwenden({}); }
};

// The department is tested only where the field holds nothing else.
TEST_F(Muelltore, AbteilungMitEinerAnderenArtZusammenNicht) {
    Muelloptionen optionen = nichts();
    optionen.kontakt = optionen.abteilung = 1;
    EXPECT_EQ(MuellAnmerkungen({4, 8}, kNull, optionen), QStringList{QStringLiteral(" k. Abteilung;")});
    EXPECT_EQ(MuellAnmerkungen({4, 12}, kNull, optionen), QStringList());
}

TEST_F(Muelltore, BrancheBrauchtKeinenFirmennamen) {
    Muelloptionen optionen = nichts();
    optionen.branche = 1;
    EXPECT_EQ(MuellAnmerkungen({2, 4}, kNull, optionen).size(), 1);
    EXPECT_EQ(MuellAnmerkungen({2, 3}, kNull, optionen).size(), 0);
}

TEST_F(Muelltore, OhneKaestchenZaehltNurDerIndex) {
    for (int gruppe = 0; gruppe <= 6; ++gruppe)
        EXPECT_EQ(MuellAnmerkungen({qint16(gruppe), 15}, kNull, nichts()).size(), gruppe == 1 ? 1 : 0)
            << gruppe;
}

}  // namespace
