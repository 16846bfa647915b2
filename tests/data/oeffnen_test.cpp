// Opening and closing a database, what is told about it, and the small questions to it.
#include <QFile>

#include "gemeinsam/speicherbank.h"

namespace {

class Oeffnen : public Speicherbank {
  protected:
    void SetUp() override {
        tabelleAnlegen(QStringLiteral("Adressen"), {{u"Ort"}}, {{Wert(u"Köln")}});
        oeffnen();
        gDatenbank->Close();
        gDatenbank.reset();
    }
    void oeffnenWieImFenster() {
        DatenbankOeffnen(ordner.filePath(QStringLiteral("test.mdb")), QString(), gDatenbank);
        EXPECT_FALSE(gFehler);
        EXPECT_EQ(TabellenNamen(), QStringList{QStringLiteral("Adressen")});
    }
};

TEST_F(Oeffnen, OhneHinweiseKommtKeinKasten) {
    oeffnenWieImFenster();
    EXPECT_TRUE(f().meldungen.empty());
}

TEST_F(Oeffnen, AlleHinweiseStehenInEinemKasten) {
    inhalt.oeffnungshinweise = {QStringLiteral("Eins."), QStringLiteral("Zwei.")};
    f().erwarte(QStringLiteral("Eins.\rZwei."));
    oeffnenWieImFenster();
}

TEST_F(Oeffnen, VonVielenHinweisenWirdDerRestGezaehlt) {
    QStringList erwartet;
    for (int i = 1; i <= 20; ++i) {
        inhalt.oeffnungshinweise.push_back(QStringLiteral("Hinweis %1.").arg(i));
        if (i <= 8) erwartet << inhalt.oeffnungshinweise.back();
    }
    erwartet << QStringLiteral("(und 12 weitere Hinweise)");
    f().erwarte(erwartet.join(u'\r'));
    oeffnenWieImFenster();
}

// All formats open the same tables and remember what they were asked for.
class Endungen : public Speicherbank {
  protected:
    void SetUp() override {
        tabelleAnlegen(QStringLiteral("Adressen"), {{u"Ort"}}, {{Wert(u"Köln")}, {Wert(u"Ulm")}});
        for (const dao::Dateiart art : kArten)
            dao::DateiOeffnerSetzen(art, [this, art](const QString& ort, const QString& passwort) {
                gefragt = Anfrage{art, ort, passwort};
                if (fehler) throw EngineFehler(*fehler);
                return std::make_unique<Speicherdatei>(inhalt);
            });
    }
    void TearDown() override {
        gDatenbank.reset();
        for (const dao::Dateiart art : kArten) dao::DateiOeffnerSetzen(art, nullptr);
    }
    QString datei(const QString& name) {
        const QString pfad = ordner.filePath(name);
        EXPECT_TRUE(QFile(pfad).open(QIODevice::WriteOnly));
        return pfad;
    }
    static void oeffnen(const QString& pfad, const QString& passwort = QString()) {
        DatenbankOeffnen(pfad, passwort, gDatenbank);
    }
    static QString verbindung(const QString& pfad, const QString& passwort) {
        return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + pfad +
               QStringLiteral(";Jet OLEDB:Database Password=") + passwort + u';';
    }

    struct Anfrage {
        dao::Dateiart art;
        QString ort, passwort;
        bool operator==(const Anfrage&) const = default;
    };
    static constexpr dao::Dateiart kArten[] = {dao::Dateiart::Access, dao::Dateiart::Excel,
                                               dao::Dateiart::Dbase};
    std::optional<Anfrage> gefragt;
    std::optional<EngineFehler> fehler;
    const QString kFehlschlag = QStringLiteral(
        "Fehler beim Öffnen der Datenbank.\rDas Datenbankformat wird nicht unterstützt oder\r"
        "das eingegebene Passwort ist nicht korrekt.");
};

TEST_F(Endungen, EntscheidenUeberNameFormatUndPasswort) {
    using dao::Dateiart;
    struct Fall {
        QString name, passwort, format;
        Dateiart art;
        QString engine;  // the password that reaches the engine
        bool ordner = false;
    };
    const Fall faelle[] = {
        {"a.mdb", "", ";PWD=;", Dateiart::Access, ""},
        {"a.mdb", "geheim", ";PWD=geheim;", Dateiart::Access, "geheim"},
        {"a.mdb", "x;y", ";PWD=x;y;", Dateiart::Access, "x;y"},  // nothing is escaped
        {"A.MdB", "", ";PWD=;", Dateiart::Access, ""},           // any letter case
        {"b.xls", "geheim", "Excel 5.0;", Dateiart::Excel, ""},
        {"b.XLS", "", "Excel 5.0;", Dateiart::Excel, ""},
        {"c.dbf", "geheim", "Dbase 5;", Dateiart::Dbase, "", true},
        {"c.Dbf", "", "Dbase 5;", Dateiart::Dbase, "", true},
        {"ohne", "geheim", "", Dateiart::Access, ""},  // no dot, no connect text
        {"d.accdb", "", "", Dateiart::Access, ""},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.name.toStdString() + '/' + fall.passwort.toStdString());
        const QString pfad = datei(fall.name);
        gFehler = true;
        oeffnen(pfad, fall.passwort);
        EXPECT_FALSE(gFehler);
        EXPECT_EQ(gDatenbankPfad, pfad);
        EXPECT_EQ(gDatenbankName, fall.ordner ? ordner.path() : pfad);
        EXPECT_EQ(gDatenbankFormat, fall.format);
        EXPECT_EQ(gDatenbankPasswort, fall.passwort);
        EXPECT_EQ(gVerbindungstext, verbindung(pfad, fall.passwort));
        EXPECT_EQ(gefragt, (Anfrage{fall.art, gDatenbankName, fall.engine}));
        EXPECT_FALSE(f().sanduhrAn);
        gDatenbank.reset();
    }
}

TEST_F(Endungen, DbUndTxtOeffnenDenOrdnerUndLassenDasFormat) {
    for (const char* name : {"a.db", "a.TXT"}) {
        gDatenbankFormat = QString::fromUtf16(kFormatDbase4);
        oeffnen(datei(QString::fromUtf8(name)));
        EXPECT_FALSE(gFehler);
        EXPECT_EQ(gDatenbankName, ordner.path() + u'/');
        EXPECT_EQ(gDatenbankFormat, u"Dbase IV;");
        gDatenbank.reset();
    }
}

TEST_F(Endungen, DasFormatAccessBleibtNurBeiDbUndTxt) {
    gDatenbankFormat = QString::fromUtf16(kFormatAccess);
    f().erwarte(kFehlschlag);  // and names no format that the engine has
    oeffnen(datei(QStringLiteral("a.db")));
    EXPECT_EQ(gDatenbankFormat, u"Access");
    for (const char* name : {"a.mdb", "a.xls", "a.dbf", "a.xyz"}) {
        gDatenbankFormat = QString::fromUtf16(kFormatAccess);
        oeffnen(datei(QString::fromUtf8(name)));
        EXPECT_NE(gDatenbankFormat, u"Access") << name;
        gDatenbank.reset();
    }
}

TEST_F(Endungen, LangeNamenWerdenNurBeiDenAltenDbaseFormatenBemaengelt) {
    tabelleAnlegen(QStringLiteral("Adressen9"), {{u"Ort"}}, {});
    tabelleAnlegen(QStringLiteral("Lieferanten"), {{u"Ort"}}, {});
    const QString rat = QStringLiteral(
        "Bitte geben sie der Tabelle \"Adressen9\"\reinen Namen mit maximal 8 Zeichen Länge, sonst\r"
        "können bei diesen älteren Formaten Probleme auftreten.");
    for (const char16_t* format : {kFormatDbase3, kFormatDbase4}) {
        gDatenbankFormat = QString::fromUtf16(format);
        f().erwarte(rat);
        oeffnen(datei(QStringLiteral("a.txt")));
        EXPECT_TRUE(gFehler);
        EXPECT_NE(gDatenbank, nullptr);  // it stays open
        EXPECT_FALSE(f().sanduhrAn);
        EXPECT_EQ(f().meldungen.back().titel, u"Lindgarn");
        EXPECT_EQ(f().meldungen.back().symbol, Symbol::Keines);
        gDatenbank.reset();
    }
    for (const char* name : {"a.dbf", "a.mdb"}) {
        gDatenbankFormat = QString::fromUtf16(kFormatDbase4);
        oeffnen(datei(QString::fromUtf8(name)));
        EXPECT_FALSE(gFehler) << name;
        gDatenbank.reset();
    }
}

TEST_F(Endungen, AchtZeichenGenuegenDenAltenFormaten) {
    gDatenbankFormat = QString::fromUtf16(kFormatDbase3);
    oeffnen(datei(QStringLiteral("a.db")));
    EXPECT_FALSE(gFehler);
}

TEST_F(Endungen, EinFehlschlagWirdGesagtUndLaesstKeineDatenbank) {
    fehler = EngineFehler(kPasswortFalsch, QStringLiteral("Das Passwort stimmt nicht."));
    f().erwarte(kFehlschlag);
    oeffnen(datei(QStringLiteral("a.mdb")), QStringLiteral("falsch"));
    EXPECT_TRUE(gFehler);
    EXPECT_EQ(gDatenbank, nullptr);
    EXPECT_FALSE(f().sanduhrAn);
    EXPECT_EQ(f().meldungen[0].titel, u" Achtung!");
}

// A wrong password and an unknown format are told in the same words and no more; all else has its reason.
TEST_F(Endungen, WasAnDerDateiLiegtWirdDazugesagt) {
    for (const int nummer :
         {int(kDateiGesperrt), int(kSchreibgeschuetzt), int(kSystemgrenze), int(kBeschaedigt),
          int(kDateifehler), int(kDateiFehlt), int(kDatentraegerVoll)}) {
        fehler = EngineFehler(nummer, QStringLiteral("Der Grund."));
        f().erwarte(kFehlschlag + QStringLiteral("\r\rDer Grund."));
        oeffnen(datei(QStringLiteral("a.mdb")));
        EXPECT_TRUE(gFehler) << nummer;
    }
    for (const int nummer : {int(kPasswortFalsch), int(kDateiNichtLesbar)}) {
        fehler = EngineFehler(nummer, QStringLiteral("Der Grund."));
        f().erwarte(kFehlschlag);
        oeffnen(datei(QStringLiteral("a.mdb")));
    }
}

TEST_F(Endungen, EinZweitesOeffnenErsetztAllesUndSchliesstDasErste) {
    oeffnen(datei(QStringLiteral("a.mdb")), QStringLiteral("eins"));
    const auto satz = gDatenbank->OpenRecordset(QStringLiteral("Adressen"));
    DatenbankSchliessen(gDatenbank);
    EXPECT_EQ(gDatenbank, nullptr);
    EXPECT_THROW(satz->MoveFirst(), EngineFehler);
    const QString zweite = datei(QStringLiteral("b.dbf"));
    oeffnen(zweite, QStringLiteral("zwei"));
    EXPECT_NE(gDatenbank, nullptr);
    EXPECT_EQ(gDatenbankPfad, zweite);
    EXPECT_EQ(gDatenbankName, ordner.path());
    EXPECT_EQ(gDatenbankFormat, u"Dbase 5;");
    EXPECT_EQ(gDatenbankPasswort, u"zwei");
    EXPECT_EQ(gVerbindungstext, verbindung(zweite, QStringLiteral("zwei")));
}

TEST_F(Endungen, SchliessenOhneDatenbankIstErlaubt) {
    DatenbankSchliessen(gDatenbank);
    oeffnen(datei(QStringLiteral("a.mdb")));
    gDatenbank->Close();  // a second close fails, which does not matter
    DatenbankSchliessen(gDatenbank);
    EXPECT_EQ(gDatenbank, nullptr);
}

TEST_F(Endungen, ZaehlenLaesstDenErstenSatzZurueck) {
    tabelleAnlegen(QStringLiteral("Leer"), {{u"Ort"}}, {});
    oeffnen(datei(QStringLiteral("a.mdb")));
    const auto satz = gDatenbank->OpenRecordset(QStringLiteral("Adressen"));
    satz->MoveNext();
    EXPECT_EQ(DatensaetzeZaehlen(*satz), 2);
    EXPECT_EQ(satz->Fields(0).Value(), Wert(u"Köln"));
    satz->MoveLast();
    satz->MoveNext();
    EXPECT_EQ(DatensaetzeZaehlen(*satz), 0);  // at EOF nothing moves
    EXPECT_TRUE(satz->Eof());
    EXPECT_EQ(DatensaetzeZaehlen(*gDatenbank->OpenRecordset(QStringLiteral("Leer"))), 0);
}

TEST_F(Endungen, TabelleVorhandenNenntDieStelle) {
    tabelleAnlegen(QStringLiteral("Straßen"), {{u"Ort"}}, {});
    oeffnen(datei(QStringLiteral("a.mdb")));
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("Adressen")), 0);
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("aDRESSEN")), 0);
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("STRASSEN")), 1);
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("straßen")), 1);
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("Adresse")), -1);
    EXPECT_EQ(TabelleVorhanden(QString()), -1);
}

TEST_F(Endungen, NurBenutzertabellenWerdenAngeboten) {
    tabelleAnlegen(QStringLiteral("System"), {{u"Ort"}}, {});
    inhalt.tabellen.back().def.attribute = -2147483646;
    tabelleAnlegen(QStringLiteral("Verknüpft"), {{u"Ort"}}, {});
    inhalt.tabellen.back().def.attribute = 0x40000000;
    tabelleAnlegen(QStringLiteral("Versteckt"), {{u"Ort"}}, {});
    inhalt.tabellen.back().def.attribute = 1;
    tabelleAnlegen(QStringLiteral("Kunden"), {{u"Ort"}}, {});
    oeffnen(datei(QStringLiteral("a.mdb")));
    EXPECT_EQ(TabellenNamen(), texte({u"Adressen", u"Kunden"}));
    EXPECT_EQ(TabelleVorhanden(QStringLiteral("System")), 1);  // its name is taken all the same
}

}  // namespace
