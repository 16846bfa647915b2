// Adding, renaming and dropping a table in every sample: the new one arrives whole, and nothing else changes.
#include <QTemporaryDir>

#include "engine/excel/behaelter.h"
#include "engine/excel/neuetabelle.h"
#include "engine/excel/proben.h"

namespace {

using neuetabelle::anlegen;
using neuetabelle::gemischteFelder;
using neuetabelle::gemischteZeilen;

const QString kNeu = "Neue Adressen _#1";
const QString kAnders = "Andere_1";

// The sheets that were there before, by name, and the names that are no table of ours.
QJsonObject ohneNeues(const QJsonObject& abzug) {
    QJsonObject rest;
    for (const QJsonValue blatt : abzug["blaetter"].toArray())
        if (blatt["name"].toString() != kNeu && blatt["name"].toString() != kAnders)
            rest["Blatt " + blatt["name"].toString()] = blatt;
    int nummer = 0;
    for (const QJsonValue name : abzug["namen"].toArray()) {
        const QString text = name["name"].toString();
        if (text != "Neue_Adressen___1" && text != kAnders) rest["Name " + QString::number(nummer++)] = name;
    }
    return rest;
}

// Names the first thing that differs.
void gleichVerlangen(const QJsonObject& ist, const QJsonObject& soll) {
    EXPECT_EQ(ist.keys(), soll.keys());
    for (const QString& schluessel : soll.keys()) {
        if (ist[schluessel] == soll[schluessel]) continue;
        ADD_FAILURE() << schluessel.toStdString() << "\nist  "
                      << QJsonDocument(ist[schluessel].toObject())
                             .toJson(QJsonDocument::Compact)
                             .left(2000)
                             .toStdString()
                      << "\nsoll "
                      << QJsonDocument(soll[schluessel].toObject())
                             .toJson(QJsonDocument::Compact)
                             .left(2000)
                             .toStdString();
    }
}

QJsonArray zellenVon(const QJsonObject& abzug, const QString& blatt) {
    for (const QJsonValue b : abzug["blaetter"].toArray())
        if (b["name"].toString() == blatt) return b["zellen"].toArray();
    return {};
}

double seriell(double tage, bool system1904) {
    return system1904 ? tage - 1462 : tage;
}

// What xlrd must see of the new sheet: row, column, kind, value.
std::map<std::pair<int, int>, std::pair<int, QJsonValue>> erwarteteZellen(
    const std::vector<engine::FeldDef>& felder, const std::vector<engine::Zeile>& zeilen, bool system1904) {
    std::map<std::pair<int, int>, std::pair<int, QJsonValue>> soll;
    for (size_t s = 0; s < felder.size(); ++s) soll[{0, int(s)}] = {1, felder[s].name};
    for (size_t z = 0; z < zeilen.size(); ++z)
        for (size_t s = 0; s < felder.size(); ++s) {
            const Wert& w = zeilen[z][s];
            auto& ziel = soll[{int(z) + 1, int(s)}];
            switch (w.art()) {
                case Wert::Art::Text:
                    ziel = {1, w.text()};
                    break;
                case Wert::Art::DatumZeit:
                    ziel = {3, seriell(w.datumZeit().tage, system1904)};
                    break;
                case Wert::Art::Wahrheit:
                    ziel = {4, int(w.wahrheit())};
                    break;
                case Wert::Art::Null:
                    soll.erase({int(z) + 1, int(s)});
                    break;
                default:
                    ziel = {2, w.alsZahl()};
            }
        }
    return soll;
}

void neuesBlattPruefen(const QJsonObject& abzug, const QString& blatt,
                       const std::vector<engine::Zeile>& zeilen) {
    const bool system1904 = abzug["datum1904"].toBool();
    auto soll = erwarteteZellen(gemischteFelder(), zeilen, system1904);
    for (const QJsonValue z : zellenVon(abzug, blatt)) {
        const auto fund = soll.find({z[0].toInt(), z[1].toInt()});
        ASSERT_NE(fund, soll.end()) << "zu viel: " << z[0].toInt() << "," << z[1].toInt();
        EXPECT_EQ(fund->second.first, z[2].toInt()) << z[0].toInt() << "," << z[1].toInt();
        EXPECT_EQ(fund->second.second, z[3]) << z[0].toInt() << "," << z[1].toInt();
        soll.erase(fund);
    }
    EXPECT_TRUE(soll.empty());
}

// Everything in the file but the workbook stream.
std::vector<excel::Behaeltereintrag> uebrigeStroeme(const QString& pfad) {
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    std::vector<excel::Behaeltereintrag> eintraege = excel::Behaelter(datei.readAll()).eintraege();
    std::erase_if(eintraege, [](const auto& e) { return e.heisst("Workbook") || e.heisst("Book"); });
    std::sort(eintraege.begin(), eintraege.end(),
              [](const auto& a, const auto& b) { return a.pfad < b.pfad; });
    return eintraege;
}

void gelesenPruefen(const QString& datei, const QString& tabelle, const std::vector<engine::Zeile>& soll) {
    excel::XlsDatei mappe(datei);
    const auto quelle = mappe.zeilenLesen(tabelle);
    engine::Zeile zeile;
    for (const engine::Zeile& erwartet : soll) {
        ASSERT_TRUE(quelle->naechste(zeile));
        EXPECT_EQ(zeile, erwartet);
    }
    EXPECT_FALSE(quelle->naechste(zeile));
}

class Schreiben : public testing::TestWithParam<QString> {
  protected:
    QTemporaryDir ordner;
};

TEST_P(Schreiben, AnlegenUmbenennenLoeschenLaesstAllesUebrige) {
    PROBE_ODER_UEBERSPRINGEN(GetParam());
    XLRD_ODER_UEBERSPRINGEN();
    const QString datei = proben::kopie(GetParam(), QDir(ordner.path()));
    if (fehlerVon([&] { excel::XlsDatei x(datei); }) != 0) GTEST_SKIP() << "wird nicht geöffnet";
    const QJsonObject vorher = ohneNeues(proben::xlrd(datei));
    const auto stroeme = uebrigeStroeme(datei);
    const auto zeilen = gemischteZeilen(60, "Strasse ");
    const auto pruefen = [&](const QString& schritt) {
        SCOPED_TRACE(schritt.toStdString());
        const QJsonObject abzug = proben::xlrd(datei);
        if (!vorher.isEmpty()) {
            gleichVerlangen(ohneNeues(abzug), vorher);
        }
        EXPECT_EQ(uebrigeStroeme(datei), stroeme);
        return abzug;
    };

    excel::XlsDatei mappe(datei);
    mappe.anwenden({anlegen(kNeu, gemischteFelder(), zeilen)});
    QJsonObject abzug = pruefen("angelegt");
    if (!abzug.isEmpty()) neuesBlattPruefen(abzug, kNeu, zeilen);
    gelesenPruefen(datei, kNeu, zeilen);

    mappe.anwenden({engine::TabelleUmbenennen{kNeu, kAnders}});
    abzug = pruefen("umbenannt");
    if (!abzug.isEmpty()) neuesBlattPruefen(abzug, kAnders, zeilen);
    gelesenPruefen(datei, kAnders, zeilen);

    mappe.anwenden({engine::TabelleLoeschen{kAnders}});
    abzug = pruefen("gelöscht");
    EXPECT_TRUE(zellenVon(abzug, kAnders).isEmpty());
    EXPECT_EQ(fehlerVon([&] { mappe.zeilenLesen(kAnders); }), kNichtGefunden);
}

INSTANTIATE_TEST_SUITE_P(Proben, Schreiben, testing::ValuesIn(proben::alle()), proben::testname);

}  // namespace
