// The check of a whole file: silent on sound files and on what healthy ones are known to have.
#include "engine/jet/pruefer.h"

#include "engine/jet/indexseite.h"
#include "schaeden.h"

using namespace schaeden;

namespace {

quint32 nachnameWurzel(const Seitendatei& d) {
    const jet::Tabelle tabelle = jet::tabelleLesen(d, u"Adressen"_qs);
    for (const jet::LogischerIndex& i : tabelle.logische)
        if (i.name == u"Nachname") return tabelle.echte[i.echter].wurzel;
    ADD_FAILURE() << "no such index";
    return 0;
}

}  // namespace

TEST(JetPruefer, SchweigtZuJederUnversehrtenDatei) {
    for (const QString& name : proben::alle()) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        const auto datei = proben::oeffnen(name);
        EXPECT_EQ(jet::maengelSuchen(*datei).join(u'\n').toStdString(), "");
        EXPECT_EQ(fehlerVon([&] { jet::dateiPruefen(*datei); }), 0);
    }
}

TEST(JetPruefer, NurNeueMaengelVerhindernEineAenderung) {
    PROBE_ODER_UEBERSPRINGEN(kBeziehungen);
    Seitendatei datei(proben::bytes(kBeziehungen));
    setzen(datei, kDefinition, datei.format().tdefZeilen, quint32(4));
    const auto bekannte = [alte = jet::maengelFinden(datei)] { return alte; };
    ASSERT_EQ(bekannte().size(), 1u);
    EXPECT_EQ(fehlerVon([&] { jet::dateiPruefen(datei, bekannte); }), 0);
    setzen(datei, kIndex, 2, quint16(3000));
    QString text;
    EXPECT_EQ(fehlerVon([&] { jet::dateiPruefen(datei, bekannte); }, &text), kBeschaedigt);
    EXPECT_TRUE(text.contains(u"3000 freie Bytes")) << text.toStdString();
}

TEST(JetPruefer, NachBekanntenMaengelnWirdNurGefragtWennEinerDaIst) {
    PROBE_ODER_UEBERSPRINGEN(kBeziehungen);
    Seitendatei datei(proben::bytes(kBeziehungen));
    int fragen = 0;
    const auto bekannte = [&] {
        ++fragen;
        return jet::maengelFinden(datei);
    };
    jet::dateiPruefen(datei, bekannte);
    EXPECT_EQ(fragen, 0);
    setzen(datei, kDefinition, datei.format().tdefZeilen, quint32(4));
    jet::dateiPruefen(datei, bekannte);
    EXPECT_EQ(fragen, 1);
}

TEST(JetPruefer, BekannteMaengelBleibenBekanntWennDieTabelleUmbenanntWird) {
    const jet::Mangel vorher{27, 60, u"kaputt"_qs, u"Alt"_qs};
    const jet::Mangel nachher{27, 60, u"kaputt"_qs, u"Neu"_qs};
    EXPECT_TRUE(vorher.gleich(nachher));
    EXPECT_EQ(nachher.zeile(), u"Neu, Seite 60: kaputt"_qs);
    EXPECT_FALSE(vorher.gleich({27, 61, u"kaputt"_qs, u"Alt"_qs}));
    EXPECT_FALSE(vorher.gleich({28, 60, u"kaputt"_qs, u"Alt"_qs}));
    EXPECT_FALSE(vorher.gleich({27, 60, u"anders"_qs, u"Alt"_qs}));
}

TEST(JetPruefer, MeldetEineAngebrocheneLetzteSeite) {
    PROBE_ODER_UEBERSPRINGEN(kBeziehungen);
    Seitendatei datei(proben::bytes(kBeziehungen) + "x");
    EXPECT_EQ(jet::maengelSuchen(datei),
              QStringList(u"Gesamtkarte, Seite 72: die letzte Seite der Datei ist nicht vollständig"_qs));
}

TEST(JetPruefer, FalscheZeilenzahlEinerSystemtabelleIstKeinMangel) {
    PROBE_ODER_UEBERSPRINGEN(kBeziehungen);
    Seitendatei datei(proben::bytes(kBeziehungen));
    setzen(datei, jet::kSeiteRechte, datei.format().tdefZeilen, quint32(4711));
    EXPECT_EQ(jet::maengelSuchen(datei), QStringList());
}

// Nachname of the sample was keyed by a library that counts ß as one letter; its letters count all the same.
TEST(JetPruefer, AndersGezaehltesScharfesSIstKeinMangelEinAndererBuchstabeSchon) {
    PROBE_ODER_UEBERSPRINGEN(u"daten/adressen-500.mdb"_qs);
    Seitendatei datei(proben::bytes(u"daten/adressen-500.mdb"_qs));
    EXPECT_EQ(jet::maengelSuchen(datei), QStringList());
    jet::Baumgang gang(datei, nachnameWurzel(datei), u"Probe"_qs);
    const auto passt = [&] {
        const QByteArrayView schluessel = jet::eintragSchluessel(gang.eintrag());
        return schluessel.contains("\x6B\x6B") && schluessel.endsWith(QByteArrayView("\x01\0", 2));
    };
    do ASSERT_TRUE(gang.weiter());
    while (!passt());
    // The last letter is the byte in front of the two that end the key and the four of the row's place.
    const QByteArray ende = gang.eintrag().last(6).toByteArray();
    const qsizetype ab = datei.seite(gang.blattnummer()).indexOf(ende) - 1;
    ASSERT_GT(ab, kEintraege);
    setzen(datei, gang.blattnummer(), int(ab), quint8(0x79));
    const QString zeilen = jet::maengelSuchen(datei).join(u'\n');
    EXPECT_TRUE(zeilen.contains(u"Index »Nachname«: der Schlüssel von Zeile")) << zeilen.toStdString();
}

TEST(JetPruefer, SeitenOhneBesitzerSindKeinMangel) {
    PROBE_ODER_UEBERSPRINGEN(kBeziehungen);
    Seitendatei datei(proben::bytes(kBeziehungen));
    bitSetzen(datei, {1, 0}, datei.anhaengen(), false);
    EXPECT_EQ(jet::maengelSuchen(datei), QStringList());
}

TEST(JetPruefer, BegrenztDieMeldungenJeTabelle) {
    PROBE_ODER_UEBERSPRINGEN(u"daten/adressen-10000.mdb"_qs);
    Seitendatei datei(proben::bytes(u"daten/adressen-10000.mdb"_qs));
    for (quint32 seite = 30; seite < datei.seitenzahl(); ++seite) setzen(datei, seite, 2, quint16(1));
    const qsizetype anzahl = jet::maengelSuchen(datei).size();
    EXPECT_GE(anzahl, 40);
    EXPECT_LE(anzahl, 200);
}
