// Start and end of the program.
#include "data/start.h"

#include "data/registry.h"
#include "fields/feldarten.h"
#include "gemeinsam/speicherbank.h"

namespace {

class Start : public Speicherbank {
  protected:
    Start() {
        RegAblageSetzen(ordner.filePath(QStringLiteral("ablage")));
        ProgrammOrdnerSetzen(ordner.path());
        gArbeitsbereich.reset();
    }
    ~Start() override {
        ProgrammOrdnerSetzen(QString());
        RegAblageSetzen(QString());
    }
};

TEST_F(Start, ProgrammStartenStelltAllesBereit) {
    gSystemmeldungZeigen = false;
    ProgrammStarten();
    EXPECT_TRUE(gSystemmeldungZeigen);
    EXPECT_NE(gArbeitsbereich, nullptr);
    EXPECT_EQ(gRegistrySchluessel, u"Software\\Tessmark\\Lindgarn\\1.0");
    EXPECT_TRUE(f().meldungen.empty());
}

// Writing a value does not make its key.
TEST_F(Start, NachDemStartGibtEsDenSchluesselFuerDenOrdner) {
    ProgrammStarten();
    RegWertSchreiben(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel, QStringLiteral("SV"), kRegText,
                     Wert(u"C:\\Daten\\"));
    EXPECT_EQ(RegWertLesen(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel, QStringLiteral("SV")),
              Wert(u"C:\\Daten\\"));
}

TEST_F(Start, ProgrammBeendenSchliesstDatenbankUndArbeitsbereich) {
    tabelleAnlegen(QStringLiteral("Adressen"), {{u"Ort"}}, {});
    ProgrammStarten();
    oeffnen();
    const auto satz = gDatenbank->OpenRecordset(QStringLiteral("Adressen"));
    ProgrammBeenden();
    EXPECT_EQ(gDatenbank, nullptr);
    EXPECT_EQ(gArbeitsbereich, nullptr);
    EXPECT_THROW(satz->MoveFirst(), EngineFehler);
}

TEST_F(Start, ProgrammBeendenOhneDatenbank) {
    ProgrammStarten();
    ProgrammBeenden();
    ProgrammBeenden();
    EXPECT_EQ(gArbeitsbereich, nullptr);
    EXPECT_TRUE(f().meldungen.empty());
}

}  // namespace
