// Recordsets: the keyset, moving, reading, adding, changing, finding.
#include <numeric>

#include "engine/dao/werkbank.h"

namespace {

class RecordsetTest : public Werkbank {
  protected:
    RecordsetTest() { oeffnen(); }
    std::unique_ptr<dao::Recordset> satz(const char16_t* quelle = u"Kunden") {
        return db->OpenRecordset(QString::fromUtf16(quelle));
    }
    static int nr(dao::Recordset& r) { return int(r.Fields(QStringLiteral("Nr")).Value().ganzzahl()); }
};

TEST_F(RecordsetTest, NatuerlicheOrdnungIstDieDerDatei) {
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 2 3 4 5");
}

TEST_F(RecordsetTest, OeffnetMitJedemTyp) {
    for (int typ : {dao::dbOpenVorgabe, dao::dbOpenTable, dao::dbOpenDynaset})
        EXPECT_EQ(db->OpenRecordset(QStringLiteral("kunden"), typ)->RecordCount(), 5);
    EXPECT_EQ(tabelle(u"Kunden").OpenRecordset()->RecordCount(), 5);
}

TEST_F(RecordsetTest, ZeilenWerdenErstBeimErstenGebrauchUndNurEinmalGelesen) {
    EXPECT_TRUE(inhalt.protokoll.isEmpty());
    satz();
    satz();
    EXPECT_EQ(inhalt.protokoll, QStringList{QStringLiteral("lesen Kunden")});
}

TEST_F(RecordsetTest, UnbekannteTabelleIst3011) {
    EXPECT_EQ(fehlerVon([&] { satz(u"Fehlt"); }), kNichtGefunden);
    EXPECT_EQ(fehlerVon([&] { satz(u"SELECT * FROM [Fehlt]"); }), kNichtGefunden);
    EXPECT_EQ(fehlerVon([&] { db->Execute(QStringLiteral("DELETE * FROM [Fehlt] WHERE [A] = 1")); }),
              kNichtGefunden);
}

TEST_F(RecordsetTest, FelderNachStelleUndNameOhneGrossUndKlein) {
    auto r = satz();
    ASSERT_EQ(r->FieldsCount(), 4);
    EXPECT_EQ(r->Fields(1).Name(), u"Name");
    EXPECT_EQ(r->Fields(1).Type(), dao::dbText);
    EXPECT_EQ(r->Fields(1).Size(), 20);
    EXPECT_EQ(r->Fields(0).Attributes(), dao::dbAutoIncrField);
    EXPECT_EQ(r->Fields(QStringLiteral("oRT")).Value(), Wert(u"Bonn"));
    EXPECT_EQ(r->fieldPosition(QStringLiteral("ORT")), 2);
    EXPECT_EQ(r->fieldPosition(QStringLiteral("Fehlt")), -1);
}

TEST_F(RecordsetTest, UnbekanntesFeldIst3265) {
    auto r = satz();
    EXPECT_EQ(fehlerVon([&] { r->Fields(4); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { r->Fields(-1); }), kNichtInListe);
    EXPECT_EQ(fehlerVon([&] { r->Fields(QStringLiteral("Fehlt")); }), kNichtInListe);
}

TEST_F(RecordsetTest, BewegungIstRechnen) {
    auto r = satz();
    struct Fall {
        qint64 von, weite, nach;  // positions from 1; 6 is EOF
    };
    for (const Fall& fall : {Fall{1, 4, 5},
                             {1, 5, 6},
                             {1, 1000, 6},
                             {5, -4, 1},
                             {3, 0, 3},
                             {2, 2, 4},
                             {1, std::numeric_limits<qint64>::max(), 6}}) {
        SCOPED_TRACE(fall.weite);
        r->MoveFirst();
        r->Move(fall.von - 1);
        r->Move(fall.weite);
        if (fall.nach == 6)
            EXPECT_TRUE(r->Eof());
        else
            EXPECT_EQ(nr(*r), fall.nach);
    }
}

TEST_F(RecordsetTest, VomEndeFuehrtMinusEinsZumLetztenSatz) {
    auto r = satz();
    r->MoveLast();
    r->MoveNext();
    ASSERT_TRUE(r->Eof());
    r->Move(-1);
    EXPECT_EQ(nr(*r), 5);
}

TEST_F(RecordsetTest, VorDemErstenSatzIstKeinAktueller) {
    for (qint64 weite : {qint64(-1), qint64(-1000), std::numeric_limits<qint64>::min()}) {
        auto r = satz();
        r->Move(weite);
        EXPECT_FALSE(r->Eof());
        EXPECT_EQ(fehlerVon([&] { r->Fields(0).Value(); }), kKeinDatensatz);
        EXPECT_EQ(fehlerVon([&] { r->Move(-1); }), kKeinDatensatz);
        EXPECT_EQ(fehlerVon([&] { r->GetRows(1); }), kKeinDatensatz);
        r->MoveNext();
        EXPECT_EQ(nr(*r), 1);
    }
}

TEST_F(RecordsetTest, AmEndeIst3021) {
    auto r = satz();
    r->MoveLast();
    r->MoveNext();
    EXPECT_EQ(fehlerVon([&] { r->Fields(0).Value(); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->Edit(); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->MoveNext(); }), kKeinDatensatz);
    EXPECT_TRUE(r->Eof());
}

TEST_F(RecordsetTest, LeerIstAmEndeUndBewegtSichNicht) {
    auto r = satz(u"Leer");
    EXPECT_TRUE(r->Eof());
    EXPECT_EQ(r->RecordCount(), 0);
    EXPECT_EQ(fehlerVon([&] { r->MoveFirst(); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->MoveLast(); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->MoveNext(); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->Move(-1); }), kKeinDatensatz);
    EXPECT_EQ(fehlerVon([&] { r->Move(0); }), 0);
}

TEST_F(RecordsetTest, NeuerSatzStehtAmEndeUndDerAktuelleBleibt) {
    auto r = satz();
    r->Move(1);
    r->AddNew();
    EXPECT_TRUE(r->Fields(1).Value().istNull());
    r->Fields(1).setValue(Wert(u"Neu"));
    EXPECT_EQ(r->RecordCount(), 5);
    r->Update();
    EXPECT_EQ(nr(*r), 2);
    EXPECT_EQ(r->RecordCount(), 6);
    r->MoveLast();
    EXPECT_EQ(r->Fields(1).Value(), Wert(u"Neu"));
    EXPECT_TRUE(r->Fields(2).Value().istNull());
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Name"), u"Zimmer Äcker Adler adam Meyer Neu");
}

TEST_F(RecordsetTest, AmEndeBleibtAmEndeWennEinSatzDazukommt) {
    auto r = satz(u"Leer");
    for (int i = 0; i < 2; ++i) {
        r->AddNew();
        r->Fields(0).setValue(Wert(u"x"));
        r->Update();
        EXPECT_TRUE(r->Eof());
    }
    r->MoveFirst();
    EXPECT_FALSE(r->Eof());
    EXPECT_EQ(r->RecordCount(), 2);
}

TEST_F(RecordsetTest, ZaehlfeldGehtNachDerGroesstenZahlWeiter) {
    auto r = satz();
    r->AddNew();
    EXPECT_EQ(nr(*r), 6);
    r->Update();
    r->AddNew();
    r->Fields(0).setValue(Wert(40));
    r->Update();
    r->AddNew();
    EXPECT_EQ(nr(*r), 41);
    r->Update();
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 2 3 4 5 6 40 41");
}

TEST_F(RecordsetTest, GleicheSchluesselWerdenBeimSpeichernNichtGeprueft) {
    auto r = satz();
    r->AddNew();
    r->Fields(0).setValue(Wert(1));
    r->Update();
    r->AddNew();
    r->Fields(0).setValue(Wert::null());
    r->Update();
    EXPECT_EQ(spalte(QStringLiteral("Kunden"), u"Nr"), u"1 2 3 4 5 1 -");
}

TEST_F(RecordsetTest, EditAendertNurWasGeschriebenWurde) {
    auto r = satz();
    auto anderer = satz();
    r->Edit();
    r->Fields(2).setValue(Wert(u"Köln"));
    EXPECT_EQ(r->Fields(2).Value(), Wert(u"Köln"));
    EXPECT_EQ(anderer->Fields(2).Value(), Wert(u"Bonn"));
    anderer->Edit();
    anderer->Fields(1).setValue(Wert(u"Anders"));
    anderer->Update();
    r->Update();
    EXPECT_EQ(anderer->Fields(1).Value(), Wert(u"Anders"));
    EXPECT_EQ(anderer->Fields(2).Value(), Wert(u"Köln"));
}

TEST_F(RecordsetTest, NullLeertEinFeldUndLeerIstNull) {
    auto r = satz();
    for (const Wert& wert : {Wert::null(), Wert()}) {
        r->Edit();
        r->Fields(2).setValue(Wert(u"x"));
        r->Fields(2).setValue(wert);
        r->Update();
        EXPECT_TRUE(r->Fields(2).Value().istNull());
    }
}

TEST_F(RecordsetTest, LeererTextImZahlenfeldIstNull) {
    auto r = satz();
    r->Edit();
    r->Fields(3).setValue(Wert(u""));
    r->Update();
    EXPECT_TRUE(r->Fields(3).Value().istNull());
}

TEST_F(RecordsetTest, LeererTextWoErErlaubtIstBleibtLeererText) {
    auto r = satz();
    r->Edit();
    r->Fields(1).setValue(Wert(u""));
    r->Update();
    EXPECT_EQ(r->Fields(1).Value(), Wert(u""));
}

TEST_F(RecordsetTest, LeererTextWoErNichtErlaubtIstIst3315UndDerEntwurfBleibt) {
    auto r = satz();
    r->Edit();
    r->Fields(2).setValue(Wert(u""));
    EXPECT_EQ(fehlerVon([&] { r->Update(); }), kLeereZeichenfolge);
    r->Fields(2).setValue(Wert(u"Ulm"));
    r->Update();
    EXPECT_EQ(r->Fields(2).Value(), Wert(u"Ulm"));
}

TEST_F(RecordsetTest, ZuLangerTextIst3163UndAendertNichts) {
    auto r = satz();
    r->Edit();
    EXPECT_EQ(fehlerVon([&] { r->Fields(1).setValue(Wert(QString(21, u'x'))); }), kFeldZuKlein);
    r->Fields(1).setValue(Wert(QString(20, u'x')));
    r->Update();
    EXPECT_EQ(r->Fields(1).Value(), Wert(QString(20, u'x')));
}

TEST_F(RecordsetTest, UnverwandelbarerWertIst3421) {
    auto r = satz();
    r->Edit();
    EXPECT_EQ(fehlerVon([&] { r->Fields(0).setValue(Wert(u"zwölf")); }), kUmwandlung);
}

TEST_F(RecordsetTest, SchreibenOhneEntwurfIst3020) {
    auto r = satz();
    EXPECT_EQ(fehlerVon([&] { r->Fields(1).setValue(Wert(u"x")); }), kAktualisierenOhneEdit);
    EXPECT_EQ(fehlerVon([&] { r->Update(); }), kAktualisierenOhneEdit);
    r->Edit();
    r->Update();
    EXPECT_EQ(fehlerVon([&] { r->Update(); }), kAktualisierenOhneEdit);
}

TEST_F(RecordsetTest, EineBewegungLaesstDenEntwurfFallen) {
    auto r = satz();
    r->AddNew();
    r->Fields(1).setValue(Wert(u"Neu"));
    r->MoveNext();
    EXPECT_EQ(fehlerVon([&] { r->Update(); }), kAktualisierenOhneEdit);
    EXPECT_EQ(r->RecordCount(), 5);
    EXPECT_EQ(r->Fields(1).Value(), Wert(u"Äcker"));
}

TEST_F(RecordsetTest, SatzDerNichtMehrPasstBleibtBisRequery) {
    auto r = satz(u"SELECT * FROM [Kunden] WHERE [Nr] = 2 OR [Nr] = 3");
    r->Edit();
    r->Fields(0).setValue(Wert(99));
    r->Update();
    EXPECT_EQ(r->RecordCount(), 2);
    EXPECT_EQ(nr(*r), 99);
    r->MoveLast();
    r->Requery();
    EXPECT_EQ(r->RecordCount(), 1);
    EXPECT_EQ(nr(*r), 3);
}

TEST_F(RecordsetTest, NeueSaetzeAndererKommenErstMitRequery) {
    auto r = satz();
    auto anderer = satz();
    anderer->AddNew();
    anderer->Update();
    EXPECT_EQ(r->RecordCount(), 5);
    r->Requery();
    EXPECT_EQ(r->RecordCount(), 6);
    EXPECT_EQ(nr(*r), 1);
}

TEST_F(RecordsetTest, RequeryOhneTrefferIstAmEnde) {
    auto r = satz(u"SELECT * FROM [Kunden] WHERE [Nr] = 2");
    r->Edit();
    r->Fields(0).setValue(Wert(99));
    r->Update();
    r->Requery();
    EXPECT_TRUE(r->Eof());
    EXPECT_EQ(r->RecordCount(), 0);
}

TEST_F(RecordsetTest, GeloeschterSatzZaehltBisRequeryUndLiestSichAls3167) {
    auto r = satz();
    EXPECT_EQ(db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 1")), 1);
    EXPECT_EQ(r->RecordCount(), 5);
    EXPECT_EQ(fehlerVon([&] { r->Fields(1).Value(); }), 3167);
    r->MoveNext();
    EXPECT_EQ(nr(*r), 2);
    r->Requery();
    EXPECT_EQ(r->RecordCount(), 4);
}

TEST_F(RecordsetTest, GetRowsLiefertNachFeldUndZeileUndStehtDahinter) {
    auto r = satz();
    r->Move(1);
    const dao::Block block = r->GetRows(2);
    ASSERT_EQ(block.spalten(), 4);
    ASSERT_EQ(block.zeilen(), 2);
    EXPECT_EQ(block(0, 0), Wert(2));
    EXPECT_EQ(block(1, 1), Wert(u"Adler"));
    EXPECT_TRUE(block(2, 1).istNull());
    EXPECT_EQ(nr(*r), 4);
}

TEST_F(RecordsetTest, GetRowsEndetAmLetztenSatz) {
    auto r = satz();
    r->Move(3);
    EXPECT_EQ(r->GetRows(100).zeilen(), 2);
    EXPECT_TRUE(r->Eof());
    EXPECT_EQ(r->GetRows(100).zeilen(), 0);
    r->MoveFirst();
    EXPECT_EQ(r->GetRows(0).zeilen(), 0);
    EXPECT_EQ(r->GetRows(-3).zeilen(), 0);
    EXPECT_EQ(nr(*r), 1);
}

TEST_F(RecordsetTest, GetRowsNimmtNurDieGewaehltenFelder) {
    auto r = satz(u"SELECT [Ort],* FROM [Kunden]");
    const dao::Block block = r->GetRows(1);
    ASSERT_EQ(block.spalten(), 5);
    EXPECT_EQ(block(0, 0), Wert(u"Bonn"));
    EXPECT_EQ(block(1, 0), Wert(1));
    EXPECT_EQ(block(3, 0), Wert(u"Bonn"));
}

TEST_F(RecordsetTest, GetColumnLiefertEinFeldUndStehtDahinter) {
    for (const char16_t* quelle : {u"Kunden", u"SELECT * FROM [Kunden] ORDER BY [Nr]"}) {
        auto r = satz(quelle);
        r->Move(1);
        EXPECT_EQ(r->GetColumn(2, 2), (std::vector<Wert>{Wert(u"Ulm"), Wert::null()}));
        EXPECT_EQ(nr(*r), 4);
        EXPECT_EQ(r->GetColumn(0, 100), (std::vector<Wert>{Wert(4), Wert(5)}));
        EXPECT_TRUE(r->Eof());
        EXPECT_TRUE(r->GetColumn(0, 1).empty());
        r->MoveFirst();
        EXPECT_TRUE(r->GetColumn(0, -1).empty());
        EXPECT_EQ(fehlerVon([&] { r->GetColumn(4, 1); }), kNichtInListe);
    }
}

TEST_F(RecordsetTest, GetColumnFolgtDerReihenfolgeDerAuswahl) {
    auto r = satz(u"SELECT * FROM [Kunden] ORDER BY [Name]");
    EXPECT_EQ(r->GetColumn(0, 5), (std::vector<Wert>{Wert(2), Wert(4), Wert(3), Wert(5), Wert(1)}));
}

TEST_F(RecordsetTest, MehrereAufEinmalMeldenJedenGeloeschtenSatz) {
    for (int geloescht = 1; geloescht <= 5; ++geloescht) {
        SCOPED_TRACE(geloescht);
        oeffnen();
        auto r = satz();
        db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = %1").arg(geloescht));
        EXPECT_EQ(fehlerVon([&] { r->GetColumn(0, 5); }), 3167);
        EXPECT_EQ(fehlerVon([&] { r->GetRows(5); }), 3167);
        EXPECT_EQ(nr(*satz()), geloescht == 1 ? 2 : 1);
    }
}

TEST_F(RecordsetTest, BookmarksKennenEinenSatzInJederAuswahl) {
    const auto alle = satz()->Bookmarks(5);
    ASSERT_EQ(alle.size(), 5u);
    for (const qint64 marke : alle) EXPECT_GE(marke, 1);
    auto sortiert = satz(u"SELECT * FROM [Kunden] ORDER BY [Name]");
    EXPECT_EQ(sortiert->Bookmarks(100), (std::vector<qint64>{alle[1], alle[3], alle[2], alle[4], alle[0]}));
    EXPECT_EQ(nr(*sortiert), 2);  // no move
    sortiert->Move(3);
    EXPECT_EQ(sortiert->Bookmarks(1), std::vector<qint64>{alle[4]});
}

TEST_F(RecordsetTest, EinGeloeschterSatzVererbtSeinBookmarkNicht) {
    const auto vorher = satz()->Bookmarks(5);
    db->Execute(QStringLiteral("DELETE * FROM [Kunden] WHERE [Nr] = 5"));
    auto r = satz();
    r->AddNew();
    r->Update();
    r->Requery();
    const auto nachher = r->Bookmarks(5);
    ASSERT_EQ(nachher.size(), 5u);
    EXPECT_EQ(std::count(vorher.begin(), vorher.end(), nachher.back()), 0);
}

// Who goes from one record to the next is served from rows read ahead. They must not outlive a change.
class Vorausgelesen : public RecordsetTest {
  protected:
    Vorausgelesen() { anlegen(u"Zahlen", {1, 2, 3, 4, 5, 6}); }
    static qint64 zahl(dao::Recordset& r) { return r.Fields(0).Value().ganzzahl(); }
    static void schreiben(dao::Recordset& r, int wert) {
        r.Edit();
        r.Fields(0).setValue(Wert(wert));
        r.Update();
    }
    // On the third record, with those behind it already read.
    std::unique_ptr<dao::Recordset> aufDemDritten() {
        auto r = satz(u"Zahlen");
        for (int i = 1; i < 3; ++i) {
            EXPECT_EQ(zahl(*r), i);
            r->MoveNext();
        }
        EXPECT_EQ(zahl(*r), 3);
        return r;
    }
};

TEST_F(Vorausgelesen, EineFremdeAenderungIstDa) {
    auto r = aufDemDritten();
    auto anderer = satz(u"Zahlen");
    anderer->Move(3);
    schreiben(*anderer, 44);
    r->MoveNext();
    EXPECT_EQ(zahl(*r), 44);
    r->MoveNext();
    EXPECT_EQ(zahl(*r), 5);
}

TEST_F(Vorausgelesen, DieEigeneAenderungIstDa) {
    auto r = aufDemDritten();
    schreiben(*r, 33);
    EXPECT_EQ(zahl(*r), 33);
    r->MoveNext();
    EXPECT_EQ(zahl(*r), 4);
}

TEST_F(Vorausgelesen, WerSatzFuerSatzAendertSiehtEigenesUndFremdes) {
    auto r = satz(u"Zahlen");
    auto anderer = satz(u"Zahlen");
    anderer->Move(4);
    for (int i = 1; i <= 6; ++i, r->MoveNext()) {
        EXPECT_EQ(zahl(*r), i == 5 ? 55 : i);
        schreiben(*r, i * 10);
        EXPECT_EQ(zahl(*r), i * 10);
        if (i != 3) continue;
        schreiben(*anderer, 55);
    }
    for (int i = 6; i >= 1; --i) {
        r->Move(-1);
        EXPECT_EQ(zahl(*r), i * 10);
    }
    EXPECT_EQ(spalte(QStringLiteral("Zahlen"), u"Z"), u"10 20 30 40 50 60");
}

TEST_F(Vorausgelesen, EineEigeneAenderungDieVerworfenWirdIstNichtDa) {
    bereich->BeginTrans();
    auto r = aufDemDritten();
    schreiben(*r, 33);
    bereich->Rollback();
    EXPECT_EQ(zahl(*r), 3);
}

TEST_F(Vorausgelesen, AuchEinUpdateDasNichtsAendertMerktDassDerSatzFehlt) {
    auto r = aufDemDritten();
    r->Edit();
    db->Execute(QStringLiteral("DELETE * FROM [Zahlen] WHERE [Z] = 3"));
    EXPECT_EQ(fehlerVon([&] { r->Update(); }), 3167);
}

TEST_F(Vorausgelesen, EinGeloeschterSatzIst3167) {
    for (int geloescht : {4, 5, 6}) {
        SCOPED_TRACE(geloescht);
        oeffnen();
        anlegen(u"Zahlen", {1, 2, 3, 4, 5, 6});
        auto r = aufDemDritten();
        db->Execute(QStringLiteral("DELETE * FROM [Zahlen] WHERE [Z] = %1").arg(geloescht));
        for (int i = 4; i <= 6; ++i) {
            r->MoveNext();
            if (i == geloescht)
                EXPECT_EQ(fehlerVon([&] { zahl(*r); }), 3167);
            else
                EXPECT_EQ(zahl(*r), i);
        }
    }
}

TEST_F(Vorausgelesen, EineVerworfeneAenderungIstNichtDa) {
    bereich->BeginTrans();
    auto anderer = satz(u"Zahlen");
    anderer->Move(3);
    schreiben(*anderer, 44);
    auto r = aufDemDritten();
    bereich->Rollback();
    r->MoveNext();
    EXPECT_EQ(zahl(*r), 4);
}

TEST_F(Vorausgelesen, EinEigenerNeuerSatzStehtAmEndeUndStoertNicht) {
    auto r = aufDemDritten();
    r->AddNew();
    r->Fields(0).setValue(Wert(7));
    r->Update();
    EXPECT_EQ(zahl(*r), 3);
    auto anderer = satz(u"Zahlen");
    anderer->Move(4);
    schreiben(*anderer, 55);
    for (int erwartet : {4, 55, 6, 7}) {
        r->MoveNext();
        EXPECT_EQ(zahl(*r), erwartet);
    }
}

TEST_F(Vorausgelesen, AufEinemWeitenWegFehltNurWasGeloeschtIst) {
    constexpr int kSaetze = 300, kFehlt = 150;
    std::vector<int> zahlen(kSaetze);
    std::iota(zahlen.begin(), zahlen.end(), 1);
    anlegen(u"Viele", zahlen);
    auto r = satz(u"Viele");
    db->Execute(QStringLiteral("DELETE * FROM [Viele] WHERE [Z] = %1").arg(kFehlt));
    for (int i = 1; i <= kSaetze; ++i, r->MoveNext())
        if (i == kFehlt)
            EXPECT_EQ(fehlerVon([&] { zahl(*r); }), 3167);
        else
            EXPECT_EQ(zahl(*r), i);
    EXPECT_TRUE(r->Eof());
}

TEST_F(Vorausgelesen, LueckenUndAndereFolgenLesenSichWieSieStehen) {
    db->Execute(QStringLiteral("DELETE * FROM [Zahlen] WHERE [Z] = 4"));
    EXPECT_EQ(spalte(QStringLiteral("Zahlen"), u"Z"), u"1 2 3 5 6");
    anlegen(u"Gestreut", {2, 6, 4, 5, 3, 1});
    EXPECT_EQ(spalte(QStringLiteral("SELECT * FROM [Gestreut] ORDER BY [Z]"), u"Z"), u"1 2 3 4 5 6");
}

TEST_F(RecordsetTest, FeldDasZweimalStehtIstNurEinmalDa) {
    auto r = satz(u"SELECT [Ort],* FROM [Kunden]");
    EXPECT_EQ(r->fieldPosition(QStringLiteral("Ort")), 0);
    r->Edit();
    r->Fields(0).setValue(Wert(u"Trier"));
    EXPECT_EQ(r->Fields(3).Value(), Wert(u"Trier"));
    r->Update();
    EXPECT_EQ(r->Fields(3).Value(), Wert(u"Trier"));
}

TEST_F(RecordsetTest, FindFirstFindetDenErstenDerReihenfolge) {
    auto r = satz(u"SELECT * FROM [Kunden] ORDER BY [Name]");
    r->FindFirst(QStringLiteral("[Nr] = 5"));
    EXPECT_FALSE(r->NoMatch());
    EXPECT_EQ(r->Fields(1).Value(), Wert(u"Meyer"));
    r->FindFirst(QStringLiteral("[Nr]=1 OR [Nr]=3"));
    EXPECT_EQ(r->Fields(1).Value(), Wert(u"Adler"));
}

TEST_F(RecordsetTest, FindFirstOhneTrefferBleibtStehen) {
    auto r = satz(u"SELECT * FROM [Kunden] WHERE [Nr] = 2 OR [Nr] = 4");
    r->MoveLast();
    r->FindFirst(QStringLiteral("[Nr] = 3"));
    EXPECT_TRUE(r->NoMatch());
    EXPECT_EQ(nr(*r), 4);
    r->FindFirst(QStringLiteral("[Nr] = 2"));
    EXPECT_FALSE(r->NoMatch());
    EXPECT_EQ(nr(*r), 2);
}

TEST_F(RecordsetTest, FindFirstMitUnsinnMeldetUndBleibtStehen) {
    auto r = satz();
    r->Move(2);
    EXPECT_EQ(fehlerVon([&] { r->FindFirst(QStringLiteral("[Nr] = ")); }), kSyntaxfehler);
    EXPECT_EQ(fehlerVon([&] { r->FindFirst(QStringLiteral("[Fehlt] = 1")); }), kParameterFehlt);
    EXPECT_EQ(nr(*r), 3);
}

TEST_F(RecordsetTest, ZweiterUeberDenselbenSaetzenInDerselbenFolge) {
    auto r = satz(u"SELECT * FROM [Kunden] ORDER BY [Name]");
    r->MoveLast();
    auto zweiter = r->OpenRecordset();
    EXPECT_EQ(spalte(*zweiter, u"Nr"), spalte(*r, u"Nr"));
    zweiter->MoveFirst();
    r->MoveLast();
    EXPECT_EQ(zweiter->Fields(1).Value(), Wert(u"Äcker"));
    zweiter->Close();
    EXPECT_EQ(r->Fields(1).Value(), Wert(u"Zimmer"));
}

TEST_F(RecordsetTest, GeschlossenIstAlles3420) {
    auto r = satz();
    r->Close();
    EXPECT_EQ(fehlerVon([&] { r->Eof(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { r->RecordCount(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { r->MoveFirst(); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { r->Fields(0); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { r->Close(); }), kObjektUngueltig);
}

TEST_F(RecordsetTest, SatzEinerGeloeschtenTabelleIst3420) {
    auto r = satz();
    db->TableDefs().Delete(QStringLiteral("Kunden"));
    EXPECT_EQ(fehlerVon([&] { r->Fields(0); }), kObjektUngueltig);
}

TEST_F(RecordsetTest, SatzUeberlebtSeineDatenbankAls3420) {
    auto r = satz();
    db->Close();
    EXPECT_EQ(fehlerVon([&] { r->Eof(); }), kObjektUngueltig);
    db.reset();
    EXPECT_EQ(fehlerVon([&] { r->MoveFirst(); }), kObjektUngueltig);
}

}  // namespace
