// The target table's default name and the names that a format refuses.
#include "data/zielname.h"

#include <gtest/gtest.h>

#include <vector>

#include "data/datenzugriff.h"

namespace {

const QDate kTag(2001, 7, 3);

TEST(Zielname, StammZaehlerUndDatumOhneFuehrendeNullen) {
    EXPECT_EQ(ZielnameBilden("Adressen", {}, kTag), u"Adressen _#1__3_7_2001");
    EXPECT_EQ(ZielnameBilden("Adressen", {"Adressen"}, QDate(2026, 11, 21)), u"Adressen _#1__21_11_2026");
}

TEST(Zielname, DollarFaelltWeg) {
    EXPECT_EQ(ZielnameBilden("Adressen$", {}, kTag), u"Adressen _#1__3_7_2001");
    EXPECT_EQ(ZielnameBilden("$A$B", {}, kTag), u"AB _#1__3_7_2001");
}

TEST(Zielname, EinErgebnisGibtDenStammSeinerQuelle) {
    EXPECT_EQ(ZielnameBilden("Adressen _#1__3_7_2001", {}, QDate(2002, 1, 1)), u"Adressen _#1__1_1_2002");
    EXPECT_EQ(ZielnameBilden("A _#1 _#2", {}, kTag), u"A _#1__3_7_2001");
    EXPECT_EQ(ZielnameBilden("A_#1", {}, kTag), u"A_#1 _#1__3_7_2001");
    EXPECT_EQ(ZielnameBilden("A _$#1", {}, kTag), u"A _#1__3_7_2001");
}

TEST(Zielname, ZweiterLaufAmSelbenTagZaehltWeiter) {
    EXPECT_EQ(ZielnameBilden("Adressen", {"Adressen _#1__3_7_2001"}, kTag), u"Adressen _#2__3_7_2001");
    EXPECT_EQ(
        ZielnameBilden("Adressen",
                       {"Adressen _#1__3_7_2001", "Adressen _#2__3_7_2001", "Adressen _#4__3_7_2001"}, kTag),
        u"Adressen _#3__3_7_2001");
}

TEST(Zielname, VorhandenIstAuchAndereSchreibungDesNamens) {
    EXPECT_EQ(ZielnameBilden("Straße", {"STRASSE _#1__3_7_2001"}, kTag), u"Straße _#2__3_7_2001");
}

TEST(Zielname, ProzentzeichenImNamenBleiben) {
    EXPECT_EQ(ZielnameBilden("%1 %2", {}, kTag), u"%1 %2 _#1__3_7_2001");
}

TEST(Zielname, FuerDbaseEinKurzerDerPasst) {
    const QString dbase = QString::fromUtf16(kFormatDbase5);
    const std::vector<std::pair<QString, QString>> faelle = {
        {"ADRESSEN", "ADRESS_1"},
        {"Kd", "Kd_1"},
        {"Neue Kunden", "NeueKu_1"},
        {"Müller & Co", "Müller_1"},
        {"KUNDEN _#1__3_7_2001", "KUNDEN_1"},
        {"+-", "_1"},
    };
    for (const auto& [tabelle, erwartet] : faelle) {
        const auto name = KurzerZielname(dbase, tabelle, {});
        EXPECT_EQ(name, erwartet) << tabelle.toStdString();
        EXPECT_EQ(ZielnamePruefen(dbase, *name), std::nullopt);
    }
    QStringList vorhandene{"adress_1"};
    EXPECT_EQ(KurzerZielname(dbase, "ADRESSEN", vorhandene), u"ADRESS_2");
    for (int i = 2; i < 10; ++i) vorhandene << QStringLiteral("ADRESS_%1").arg(i);
    EXPECT_EQ(KurzerZielname(dbase, "ADRESSEN", vorhandene), u"ADRES_10");
    EXPECT_EQ(KurzerZielname(QString::fromUtf16(kFormatExcel5), "ADRESSEN", {}), std::nullopt);
    EXPECT_EQ(KurzerZielname(";PWD=;", "ADRESSEN", {}), std::nullopt);
}

struct Format {
    QString name;
    int laenge;
    QString verboten;
    QString erlaubt;
    QString meldung;
};

const std::vector<Format>& formate() {
    static const QString dbase =
        "Der Name enthält ungültige Zeichen ( / \\ ? : [ ] * ) für die Bezeichnung\r"
        "einer dBase-Datenbank, oder ist länger als 8 Zeichen oder leer.";
    static const QString excel =
        "Der Name enthält ungültige Zeichen ( / \\ ? : [ ] * $ ) für die Bezeichnung\r"
        "eines Excel-Tabellenblattes, oder ist länger als 31 Zeichen oder leer.";
    static const QString access =
        "Der Name enthält ungültige Zeichen ( ! . [ ] ' \" ) für die Bezeichnung\r"
        "einer Access-Datenbanktabelle, oder ist länger als 64 Zeichen oder leer.";
    static const std::vector<Format> alle = {
        {"Dbase III;", 8, ":/\\*?[]", "!.$' \"", dbase}, {"Dbase IV;", 8, ":/\\*?[]", "!.$' \"", dbase},
        {"Dbase 5;", 8, ":/\\*?[]", "!.$' \"", dbase},   {"Excel 5.0;", 31, ":/\\*?[]$", "!.' \"", excel},
        {"Access", 64, "!.[]'\"", ":/\\*?$ ", access},   {"", 64, "!.[]'\"", ":/\\*?$ ", access},
    };
    return alle;
}

TEST(ZielnamePruefen, LaengeBisZurGrenze) {
    for (const Format& f : formate()) {
        EXPECT_EQ(ZielnamePruefen(f.name, QString(f.laenge, u'x')), std::nullopt) << qPrintable(f.name);
        EXPECT_EQ(ZielnamePruefen(f.name, QString(f.laenge + 1, u'x')), f.meldung) << qPrintable(f.name);
        EXPECT_EQ(ZielnamePruefen(f.name, "x"), std::nullopt);
    }
}

TEST(ZielnamePruefen, LeererNameWirdVonJedemFormatAbgelehnt) {
    for (const Format& f : formate()) {
        EXPECT_EQ(ZielnamePruefen(f.name, ""), f.meldung) << qPrintable(f.name);
        EXPECT_EQ(ZielnamePruefen(f.name, "   "), f.meldung) << qPrintable(f.name);
    }
}

TEST(ZielnamePruefen, BlankenUmDenNamenZaehlenNicht) {
    EXPECT_EQ(ZielnamePruefen("Dbase 5;", "  12345678  "), std::nullopt);
}

TEST(ZielnamePruefen, JedesZeichenDerListe) {
    for (const Format& f : formate()) {
        for (QChar c : f.verboten)
            EXPECT_EQ(ZielnamePruefen(f.name, QString("a%1b").arg(c)), f.meldung) << qPrintable(f.name + c);
        for (QChar c : f.erlaubt)
            EXPECT_EQ(ZielnamePruefen(f.name, QString("a%1b").arg(c)), std::nullopt)
                << qPrintable(f.name + c);
    }
}

}  // namespace
