// The value parsers: every rule, every false hit that is kept on purpose.
#include "fields/parser.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "fields/feldarten.h"

namespace {

using Parser = Wert (*)(const Wert&);

const Wert kLeer;

struct Fall {
    const char16_t* wert;
    Wert ergebnis;
};

QString lesbar(const Wert& wert) {
    return wert.istLeer()   ? QStringLiteral("<leer>")
           : wert.istNull() ? QStringLiteral("<null>")
                            : '[' + wert.alsText() + ']';
}

void pruefen(Parser parser, const std::vector<Fall>& faelle) {
    for (const Fall& fall : faelle) {
        const Wert ergebnis = parser(Wert(fall.wert));
        EXPECT_EQ(ergebnis, fall.ergebnis)
            << qPrintable(QString::fromUtf16(fall.wert)) << ": " << qPrintable(lesbar(ergebnis)) << " statt "
            << qPrintable(lesbar(fall.ergebnis));
    }
}

const std::vector<Parser> kAlle = {
    FirmennameErmitteln, RechtsformErmitteln,   StrasseErmitteln,       HausnummerErmitteln,
    OrtErmitteln,        PostleitzahlErmitteln, AnredeErmitteln,        VornameErmitteln,
    NachnameErmitteln,   VorwahlErmitteln,      TelefonnummerErmitteln, LandesvorwahlErmitteln,
    AnredeFormErmitteln, TitelErmitteln,
};

TEST(Parser, LeerUndNullGebenLeer) {
    for (Parser parser : kAlle) {
        EXPECT_TRUE(parser(Wert()).istLeer());
        EXPECT_TRUE(parser(Wert::null()).istLeer());
    }
}

TEST(Parser, LeererTextGehtDurchDieRegel) {
    const std::map<Parser, Wert> texte = {
        {FirmennameErmitteln, Wert(u"")}, {StrasseErmitteln, Wert(u"")}, {NachnameErmitteln, Wert(u"")}};
    for (Parser parser : kAlle) {
        const auto eintrag = texte.find(parser);
        EXPECT_EQ(parser(Wert(u"")), eintrag == texte.end() ? kLeer : eintrag->second);
    }
}

TEST(Parser, ZahlenGehenUeberIhrenText) {
    EXPECT_EQ(PostleitzahlErmitteln(Wert(50667)), Wert(u"50667"));
    EXPECT_EQ(HausnummerErmitteln(Wert(12.5)), Wert(u"12,5"));
    EXPECT_EQ(TelefonnummerErmitteln(Wert(123456)), Wert(u"123456"));
    EXPECT_EQ(NachnameErmitteln(Wert(7)), Wert(u"7"));
    EXPECT_EQ(FirmennameErmitteln(Wert(4711.0)), Wert(u"4711"));
    EXPECT_EQ(StrasseErmitteln(Wert(-3)), Wert(u"-"));
    EXPECT_EQ(OrtErmitteln(Wert(12.5)), Wert(u",5"));
}

TEST(FeldInhalt, VerteiltNachDerArt) {
    const std::map<int, Wert> erwartet = {
        {21, Wert(u"Herr Dr. Hans Meyer 0221 123456")},
        {22, kLeer},
        {31, Wert(u"Herr Dr. Hans Meyer")},
        {32, Wert(u"0221 123456")},
        {33, Wert(u"0221 123456")},
        {34, Wert(u"Herr Dr. Hans Meyer 0221 123456")},
        {41, Wert(u"Herr Dr.")},
        {42, Wert(u"Hans")},
        {43, Wert(u"123456")},
        {51, kLeer},
        {52, Wert(u"123456")},
        {53, Wert(u"123456")},
    };
    const Wert wert(u"Herr Dr. Hans Meyer 0221 123456");
    for (const auto& [art, ergebnis] : erwartet) EXPECT_EQ(FeldInhaltErmitteln(wert, art), ergebnis) << art;
    EXPECT_EQ(FeldInhaltErmitteln(Wert(u"Meyer GmbH"), 22), Wert(u"GmbH"));
    EXPECT_EQ(FeldInhaltErmitteln(Wert(u"0221 1"), 51), Wert(u"0221"));
}

TEST(FeldInhalt, SechsArtenGebenDenWertWieErIst) {
    for (int art : {1, 11, 23, 44, 61, 62}) {
        for (const Wert& wert : {Wert(u" a 1 "), Wert(12.5), Wert::null(), Wert(), Wert(u""), Wert(true)})
            EXPECT_EQ(FeldInhaltErmitteln(wert, art), wert) << art;
    }
}

TEST(FeldInhalt, JedeAndereNummerGibtLeer) {
    for (int art : {0, 2, 10, 12, 24, 30, 35, 45, 54, 63, 69, 70, -1})
        EXPECT_TRUE(FeldInhaltErmitteln(Wert(u"a 1"), art).istLeer()) << art;
}

TEST(Firmenname, OhneDieWoerterDerRechtsform) {
    pruefen(FirmennameErmitteln, {
                                     {u"Meyer KG", Wert(u"Meyer")},
                                     {u"Meyer GmbH & Co. KG", Wert(u"Meyer & Co.")},
                                     {u"Meyer & Co", Wert(u"Meyer &")},
                                     {u"gmbh Meyer", Wert(u"Meyer")},
                                     {u"Meyer gbrmbh", Wert(u"Meyer")},
                                     {u"Meyer GbR mbH", Wert(u"Meyer")},
                                     {u"Meyer KGaA", Wert(u"Meyer")},
                                     {u"AG Meyer kg", Wert(u"Meyer")},
                                     {u"Meyer GmbH.", Wert(u"Meyer GmbH.")},
                                     {u"MeyerGmbH", Wert(u"MeyerGmbH")},
                                     {u"Agentur Meyer", Wert(u"Agentur Meyer")},
                                 });
}

TEST(Firmenname, DreiSchreibungenMitPunktenFallenVorherWeg) {
    pruefen(FirmennameErmitteln, {
                                     {u"Meyer G. M. B. H.", Wert(u"Meyer")},
                                     {u"Meyer g. m. b. h.", Wert(u"Meyer")},
                                     {u"Meyer G. m. b. H.", Wert(u"Meyer")},
                                     {u"G. m. b. H. Meyer G. m. b. H.", Wert(u"Meyer")},
                                     {u"Meyer g. M. b. H.", Wert(u"Meyer g. M. b. H.")},
                                     {u"Meyer G.m.b.H.", Wert(u"Meyer G.m.b.H.")},
                                 });
}

TEST(Firmenname, NurRechtsformGibtLeer) {
    pruefen(FirmennameErmitteln, {{u"AG", kLeer}, {u"GmbH KG", kLeer}, {u"co", kLeer}});
}

TEST(Firmenname, NurRechtsformMitPunktenGibtLeerenText) {
    pruefen(FirmennameErmitteln, {{u"G. m. b. H.", Wert(u"")}, {u"G. M. B. H.", Wert(u"")}});
}

TEST(Firmenname, ZweiBlankenImNamenBleiben) {
    pruefen(FirmennameErmitteln, {
                                     {u"Meyer  Bau", Wert(u"Meyer  Bau")},
                                     {u"Meyer GmbH  Bau", Wert(u"Meyer  Bau")},
                                     {u"  Meyer ", Wert(u"Meyer")},
                                     {u"AG ", Wert(u"")},
                                 });
}

TEST(Rechtsform, JedeZeileDerTabelle) {
    pruefen(RechtsformErmitteln, {
                                     {u"Meyer GmbH & Co", Wert(u"GmbH & Co.")},
                                     {u"Meyer g. m. b. h.", Wert(u"GmbH")},
                                     {u"Meyer gmbh", Wert(u"GmbH")},
                                     {u"Meyer & Co", Wert(u"Co.")},
                                     {u"Meyer GBRMBH", Wert(u"GbRmbH")},
                                     {u"Meyer Gbr", Wert(u"GbR")},
                                     {u"Meyer mbH", Wert(u"GmbH")},
                                     {u"Meyer kgaa", Wert(u"KGaA")},
                                     {u"Meyer kg", Wert(u"KG")},
                                     {u"Meyer ag", Wert(u"AG")},
                                 });
}

TEST(Rechtsform, DieTestfolgeBestimmtDieFolge) {
    pruefen(RechtsformErmitteln, {
                                     {u"Meyer GmbH & Co. KG", Wert(u"GmbH & Co. KG")},
                                     {u"Meyer Computer GmbH", Wert(u"GmbH Co.")},
                                     {u"Meyer GBR mbH", Wert(u"GbR GmbH")},
                                     {u"Meyer AG KG", Wert(u"KG AG")},
                                 });
}

TEST(Rechtsform, TeiltexteTreffenAuchWoSieNichtSollen) {
    pruefen(RechtsformErmitteln, {
                                     {u"Meyer Agentur", Wert(u"AG")},
                                     {u"Meyer Computer", Wert(u"Co.")},
                                     {u"Meyer Kgb", Wert(u"KG")},
                                 });
}

TEST(Rechtsform, OhneBlankDavorKeineRechtsform) {
    pruefen(RechtsformErmitteln,
            {{u"Meyer", kLeer}, {u"GmbH", kLeer}, {u"MeyerGmbH", kLeer}, {u"AG KG", Wert(u"KG")}});
}

TEST(Rechtsform, JedesVorkommenFaelltUndZaehltEinmal) {
    pruefen(RechtsformErmitteln, {
                                     {u"A GmbH B GmbH", Wert(u"GmbH")},
                                     {u"A GmbH & Co B GmbH", Wert(u"GmbH & Co. GmbH")},
                                     // What is left after a deletion can become a form of its own.
                                     {u"A K GmbHG", Wert(u"GmbH KG")},
                                 });
}

TEST(Strasse, VorDerErstenZiffer) {
    pruefen(StrasseErmitteln, {
                                  {u"Hauptstr. 12", Wert(u"Hauptstr.")},
                                  {u" Hauptstr.  12 a", Wert(u"Hauptstr.")},
                                  {u"Straße des 17. Juni 135", Wert(u"Straße des")},
                                  {u"12 Hauptstraße", kLeer},
                                  {u"  12", kLeer},
                                  {u" Am Markt ", Wert(u"Am Markt")},
                                  {u"  ", Wert(u"")},
                                  {u"Weg ٣", Wert(u"Weg ٣")},
                              });
}

TEST(Hausnummer, AbDerErstenZifferUngekuerzt) {
    pruefen(HausnummerErmitteln, {
                                     {u"Hauptstr. 12", Wert(u"12")},
                                     {u"Hauptstr. 12 a ", Wert(u"12 a ")},
                                     {u"Straße des 17. Juni 135", Wert(u"17. Juni 135")},
                                     {u"12 Hauptstraße", Wert(u"12 Hauptstraße")},
                                     {u"Am Markt", kLeer},
                                 });
}

TEST(Ort, AbDemErstenZeichenDasKeineZifferIst) {
    pruefen(OrtErmitteln, {
                              {u"50667 Köln", Wert(u"Köln")},
                              {u"50667 - Köln", Wert(u"Köln")},
                              {u"Köln", Wert(u"Köln")},
                              {u" Köln 1", Wert(u"Köln 1")},
                              {u"50667", kLeer},
                              {u" - 5", kLeer},
                              {u"50667 Köln ", Wert(u"Köln ")},
                              {u"50667/Köln", Wert(u"/Köln")},
                          });
}

TEST(Ort, EinLandeskennzeichenHaeltDieSucheAn) {
    pruefen(OrtErmitteln, {{u"D-50667 Köln", Wert(u"D-50667 Köln")}});
}

TEST(Postleitzahl, DieErsteZiffernfolge) {
    pruefen(PostleitzahlErmitteln, {
                                       {u"50667 Köln", Wert(u"50667")},
                                       {u"D-50667 Köln", Wert(u"50667")},
                                       {u"Köln 50667", Wert(u"50667")},
                                       {u"5066", Wert(u"5066")},
                                       {u"506", kLeer},
                                       {u"123 Köln", kLeer},
                                       {u"Köln", kLeer},
                                       {u"1a2345", kLeer},
                                       {u"1 Köln 50667", kLeer},
                                       {u"50667KÖLN", Wert(u"50667")},
                                       {u"50667ÖLN", Wert(u"50667")},
                                       {u"50667ß", Wert(u"50667")},
                                   });
}

TEST(Postleitzahl, WasKeinBuchstabeIstBleibtDarin) {
    pruefen(PostleitzahlErmitteln, {
                                       {u"50667 - Köln", Wert(u"50667 -")},
                                       {u"12345 67890", Wert(u"12345 67890")},
                                       {u"1 23", Wert(u"1 23")},
                                       {u"12, (", Wert(u"12, (")},
                                       {u"123    Köln", kLeer},
                                       {u"1234É", Wert(u"1234é")},
                                   });
}

TEST(Landesvorwahl, DreiRegelnDieErsteGilt) {
    pruefen(LandesvorwahlErmitteln, {
                                        {u"+49 221 123456", Wert(u"+49")},
                                        {u" +49221", Wert(u"+49")},
                                        {u"+49", Wert(u"+49")},
                                        {u"+4", Wert(u"+4")},
                                        {u"+ 4 1", Wert(u"+ 4")},
                                        {u"0049 221", Wert(u"+49")},
                                        {u"00492", Wert(u"+49")},
                                        {u"0221 123", kLeer},
                                        {u"(0221)", kLeer},
                                        {u"Tel", kLeer},
                                        {u"+ab", kLeer},
                                        {u"00ab", Wert(u"+00")},
                                    });
}

TEST(Landesvorwahl, ZweiZiffernUndEinTrennerReichen) {
    pruefen(LandesvorwahlErmitteln, {
                                        {u"49-221", Wert(u"+49")},
                                        {u"02 34", Wert(u"+02")},
                                        {u"49", Wert(u"+49")},
                                        {u"4", Wert(u"+4")},
                                        {u"4 a", Wert(u"+4 ")},
                                        {u"491", kLeer},
                                    });
}

TEST(Vorwahl, MitUndOhneLandesvorwahl) {
    pruefen(VorwahlErmitteln, {
                                  {u"+49 221 123456", Wert(u"0221")},
                                  {u"+49 0221 123456", Wert(u"0221")},
                                  {u"+49 (0221) 123 456", Wert(u"0221")},
                                  {u"0049 (0221) 123456", Wert(u"0221")},
                                  {u"0049/221/1", Wert(u"0221")},
                                  {u"49-221-1", Wert(u"0221")},
                                  {u"0221/123456", Wert(u"0221")},
                                  {u"(0221) 123", Wert(u"0221")},
                                  {u"123456", kLeer},
                                  {u"123", kLeer},
                                  {u"+49", kLeer},
                                  {u"49", kLeer},
                                  {u"02 34", Wert(u"034")},
                                  {u"Tel. 0221", kLeer},
                              });
}

TEST(Vorwahl, EineFuehrendeBlankeVerschiebtDenSchnitt) {
    // The prefix is found in the trimmed text but cut from the untrimmed one.
    pruefen(VorwahlErmitteln, {{u" +49 221", Wert(u"049")}, {u" 0049 221", Wert(u"049")}});
}

TEST(Telefonnummer, DasLetzteWort) {
    pruefen(TelefonnummerErmitteln, {
                                        {u"0221 123456", Wert(u"123456")},
                                        {u"0221/123456", Wert(u"123456")},
                                        {u"0221 123 456", Wert(u"123456")},
                                        {u"0221-123-45-67", Wert(u"4567")},
                                        {u"123", Wert(u"123")},
                                        {u"0221 1234", Wert(u"1234")},
                                        {u"0221 456", kLeer},
                                        {u"0221", kLeer},
                                        {u"1 22 333", Wert(u"22333")},
                                        {u" - / ", kLeer},
                                        {u"Tel. 12345", Wert(u"12345")},
                                        {u"ab 12", Wert(u"ab12")},
                                    });
}

TEST(AnredeForm, TeiltexteIrgendwo) {
    pruefen(AnredeFormErmitteln, {
                                     {u"Herr Meyer", Wert(u"Herr")},
                                     {u"Herr", Wert(u"Herr")},
                                     {u"Hr. Meyer", Wert(u"Herr")},
                                     {u"hr.", Wert(u"Herr")},
                                     {u"Frau Meyer", Wert(u"Frau")},
                                     {u"Meyer, Frau", Wert(u"Frau")},
                                     {u"fr. Meyer", Wert(u"Frau")},
                                     {u"Frau und Herr Meyer", Wert(u"Herr")},
                                     {u"Friedherr Meyer", Wert(u"Herr")},
                                     {u"Zahnarzt Fr.", Wert(u"Frau")},
                                     {u"Herren", kLeer},
                                     {u"Fraunhofer", kLeer},
                                     {u"Meyer", kLeer},
                                 });
}

TEST(Titel, JedesWortDerListe) {
    for (const char16_t* titel :
         {u"PROF.", u"DR.", u"MED.", u"RER.", u"NAT.", u"PHIL.", u"POL.", u"H.", u"C."}) {
        const QString wort = QString::fromUtf16(titel);
        EXPECT_EQ(TitelErmitteln(Wert("x " + wort.toLower() + " y")), Wert(wort.toLower()));
        EXPECT_EQ(TitelErmitteln(Wert(wort)), Wert(wort));
    }
}

TEST(Titel, WoerterZwischenBlanken) {
    pruefen(TitelErmitteln, {
                                {u"Prof. Dr. med. Meyer", Wert(u"Prof. Dr. med.")},
                                {u"Dr. h. c. Meyer Prof.", Wert(u"Dr. h. c. Prof.")},
                                {u"Dr.med. Meyer", kLeer},
                                {u"Dr Meyer", kLeer},
                                {u"Dr.  med. Meyer", Wert(u"Dr. med.")},
                                {u"Meyer", kLeer},
                            });
}

TEST(Anrede, FormUndTitel) {
    pruefen(AnredeErmitteln, {
                                 {u"Herr Dr. Hans Meyer", Wert(u"Herr Dr.")},
                                 {u"Dr. Meyer", Wert(u"Dr.")},
                                 {u"Frau Meyer", Wert(u"Frau")},
                                 {u"Meyer", kLeer},
                                 {u"Dr. Meyer Frau", Wert(u"Frau Dr.")},
                             });
}

TEST(Nachname, HinterDerLetztenBlanken) {
    pruefen(NachnameErmitteln, {
                                   {u"Meyer", Wert(u"Meyer")},
                                   {u"Hans von Meyer", Wert(u"Meyer")},
                                   {u"Hans Meyer-Schulz", Wert(u"Meyer-Schulz")},
                               });
}

TEST(Nachname, EineBlankeAmEndeGibtLeerenText) {
    pruefen(NachnameErmitteln, {{u"Hans Meyer ", Wert(u"")}, {u" ", Wert(u"")}});
}

TEST(Vorname, DasErsteWortDasWederAnredeNochTitelNochLetztesIst) {
    pruefen(VornameErmitteln, {
                                  {u"Hans Meyer", Wert(u"Hans")},
                                  {u"Herr Dr. Hans Peter Meyer", Wert(u"Hans")},
                                  {u"Hr. Hans Meyer", Wert(u"Hans")},
                                  {u"Meyer", kLeer},
                                  {u"Herr Meyer", kLeer},
                                  {u"Frau Prof. Dr. Meyer", kLeer},
                                  {u"Hans Dr. Meyer", Wert(u"Hans")},
                                  {u"Hans ", Wert(u"Hans")},
                              });
}

TEST(Vorname, EinErstesWortGleichDemLetztenWirdUebergangen) {
    pruefen(VornameErmitteln, {{u"Meyer Meyer", kLeer}, {u"Meyer Hans Meyer", Wert(u"Hans")}});
}

TEST(Vorname, ZweiBlankenSindEinLeererTreffer) {
    pruefen(VornameErmitteln, {{u"Herr  Meyer", Wert(u"")}, {u" Hans Meyer", Wert(u"")}, {u"Herr  ", kLeer}});
}

}  // namespace
