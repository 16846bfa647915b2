// The working store: rows, order, columns, transactions, savepoints, a full disk, large tables.
#include "engine/store/speicher.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <functional>
#include <utility>

#include "base/atempause.h"
#include "base/fehler.h"
#include "gemeinsam/fehlernummer.h"
#include "gemeinsam/instrumentiert.h"

namespace {

using store::Spaltenart;
using Punkt = store::Speicher::Sicherungspunkt;

class SpeicherTest : public testing::Test {
  protected:
    SpeicherTest() { speicher.tabelleAnlegen(1, {Spaltenart::Ganzzahl, Spaltenart::Text}); }
    qint64 hinzu(int zahl, const char16_t* text = u"x") {
        return speicher.zeileAnhaengen(1, {0, 1}, {Wert(zahl), Wert(text)});
    }
    std::vector<int> zahlen() {
        std::vector<Wert> werte;
        speicher.zeilenLesen(1, {0}, 0, 1000, werte);
        std::vector<int> liste;
        for (const Wert& wert : werte) liste.push_back(int(wert.ganzzahl()));
        return liste;
    }
    // Rows until the disk is full; the number of the failure.
    int fuellen() {
        return fehlerVon([&] {
            for (int i = 0; i < 100000; ++i) speicher.zeileAnhaengen(1, {1}, {Wert(QString(3000, u'x'))});
        });
    }
    store::Speicher speicher;
};

TEST_F(SpeicherTest, NummernVonEinsAnUndNieZweimal) {
    EXPECT_EQ(hinzu(1), 1);
    EXPECT_EQ(hinzu(2), 2);
    speicher.zeilenEntfernen(1, {2});
    EXPECT_EQ(speicher.naechsteId(1), 3);
    EXPECT_EQ(hinzu(3), 3);
    EXPECT_EQ(speicher.neueNummer(), 1);
    EXPECT_EQ(speicher.neueNummer(), 2);
}

TEST_F(SpeicherTest, NichtGenannteSpaltenSindNull) {
    std::vector<Wert> zeile;
    ASSERT_TRUE(speicher.zeileLesen(1, {1, 0}, speicher.zeileAnhaengen(1, {0}, {Wert(7)}), zeile));
    EXPECT_TRUE(zeile[0].istNull());
    EXPECT_EQ(zeile[1], Wert(7));
}

TEST_F(SpeicherTest, AendernTrifftNurDieGenanntenSpalten) {
    const qint64 id = hinzu(1, u"a");
    EXPECT_TRUE(speicher.zeileAendern(1, id, {0}, {Wert(9)}));
    std::vector<Wert> zeile;
    ASSERT_TRUE(speicher.zeileLesen(1, {0, 1}, id, zeile));
    EXPECT_EQ(zeile, (std::vector<Wert>{Wert(9), Wert(u"a")}));
    EXPECT_FALSE(speicher.zeileAendern(1, 99, {0}, {Wert(9)}));
    EXPECT_FALSE(speicher.zeileLesen(1, {0}, 99, zeile));
}

TEST_F(SpeicherTest, StandWechseltMitJedemSchreiben) {
    quint64 vorher = speicher.stand(1);
    const auto neuer = [&] {
        const quint64 davor = std::exchange(vorher, speicher.stand(1));
        return vorher != davor;
    };
    const qint64 id = hinzu(1);
    EXPECT_TRUE(neuer());
    speicher.zeileAendern(1, id, {0}, {Wert(2)});
    EXPECT_TRUE(neuer());
    speicher.zeilenEntfernen(1, {id});
    EXPECT_TRUE(neuer());
    speicher.zeilenzahl(1);
    EXPECT_FALSE(neuer());
    speicher.beginnen();
    speicher.verwerfen();
    EXPECT_TRUE(neuer());
}

TEST_F(SpeicherTest, BlockweiseLesenKommtAnsEnde) {
    for (int i = 1; i <= 5; ++i) hinzu(i);
    speicher.zeilenEntfernen(1, {2});
    std::vector<Wert> werte;
    EXPECT_EQ(speicher.zeilenLesen(1, {0}, 0, 3, werte), 4);
    EXPECT_EQ(werte, (std::vector<Wert>{Wert(1), Wert(3), Wert(4)}));
    EXPECT_EQ(speicher.zeilenLesen(1, {0}, 4, 3, werte), 5);
    EXPECT_EQ(speicher.zeilenLesen(1, {0}, 5, 3, werte), 5);
    EXPECT_TRUE(werte.empty());
}

TEST_F(SpeicherTest, AuswahlMitBedingungUndOrdnung) {
    hinzu(2, u"b");
    hinzu(1, u"b");
    hinzu(3, u"a");
    hinzu(1, u"B");
    EXPECT_EQ(speicher.auswaehlen({1, {}, {}}), (std::vector<qint64>{1, 2, 3, 4}));
    EXPECT_EQ(speicher.auswaehlen({1, {}, {1}}), (std::vector<qint64>{3, 1, 2, 4}));
    EXPECT_EQ(speicher.auswaehlen({1, {}, {1, 0}}), (std::vector<qint64>{3, 2, 4, 1}));
    EXPECT_EQ(speicher.auswaehlen({1, store::gleich(0, Spaltenart::Ganzzahl, Wert(1)), {1}}),
              (std::vector<qint64>{2, 4}));
}

// A large table is selected from through an index, which has to know of every later change.
TEST_F(SpeicherTest, DieAuswahlAusEinerGrossenTabelleKenntJedeAenderung) {
    constexpr int kZeilen = 60000;
    for (int i = 1; i <= kZeilen; ++i) hinzu(i % 20000);
    const auto ids = [&](int zahl) {
        return speicher.auswaehlen({1, store::gleich(0, Spaltenart::Ganzzahl, Wert(zahl)), {}});
    };
    using Ids = std::vector<qint64>;
    EXPECT_EQ(ids(7), (Ids{7, 20007, 40007}));
    hinzu(7);
    speicher.zeileAendern(1, 20007, {0}, {Wert(8)});
    speicher.zeilenEntfernen(1, {7});
    EXPECT_EQ(ids(7), (Ids{40007, 60001}));
    EXPECT_EQ(ids(8), (Ids{8, 20007, 20008, 40008}));
    speicher.beginnen();
    speicher.zeileAendern(1, 40007, {0}, {Wert(9)});
    EXPECT_EQ(ids(7), (Ids{60001}));
    speicher.verwerfen();
    EXPECT_EQ(ids(7), (Ids{40007, 60001}));
    speicher.tabelleEntfernen(1);
    speicher.tabelleAnlegen(1, {Spaltenart::Ganzzahl, Spaltenart::Text});
    EXPECT_EQ(ids(7), Ids{});
}

// Zeros are not in the index, nor are cells without a value.
TEST_F(SpeicherTest, AuchNullenUndLeereZellenWerdenInEinerGrossenTabelleRichtigGezaehlt) {
    constexpr int kDrittel = 20000;
    speicher.beginnen();
    for (int i = 0; i < kDrittel; ++i) {
        hinzu(0);
        hinzu(7);
        speicher.zeileAnhaengen(1, {1}, {Wert(u"x")});
    }
    speicher.festschreiben();
    const auto anzahl = [&](const QByteArray& davor, int zahl, const QByteArray& danach) {
        store::Bedingung bedingung = store::gleich(0, Spaltenart::Ganzzahl, Wert(zahl));
        bedingung.text = davor + "(" + bedingung.text + ")" + danach;
        return speicher.auswaehlen({1, bedingung, {}}).size();
    };
    const QByteArray null = store::gleich(0, Spaltenart::Ganzzahl, Wert(0)).text;
    EXPECT_EQ(anzahl("", 7, ""), kDrittel);
    EXPECT_EQ(anzahl("", 0, ""), kDrittel);
    EXPECT_EQ(anzahl("NOT ", 7, ""), kDrittel);
    EXPECT_EQ(anzahl("NOT ", 0, ""), kDrittel);
    EXPECT_EQ(anzahl("NOT ", 8, ""), 2 * kDrittel);
    EXPECT_EQ(anzahl("", 7, " OR (" + null + ")"), 2 * kDrittel);
}

TEST_F(SpeicherTest, EineAuswahlUnterEinigenIdsLaesstDieAnderenAus) {
    constexpr int kZeilen = 120000;
    speicher.beginnen();
    for (int i = 1; i <= kZeilen; ++i) hinzu(i % 20000);
    speicher.festschreiben();
    const auto ids = [&](qint64 von, qint64 bis) {
        return speicher.auswaehlen({1, store::gleich(0, Spaltenart::Ganzzahl, Wert(7)), {}, von, bis});
    };
    using Ids = std::vector<qint64>;
    EXPECT_EQ(ids(20008, 60006), (Ids{40007}));  // few rows, that are walked through
    EXPECT_EQ(ids(20007, 100007), (Ids{20007, 40007, 60007, 80007, 100007}));
    EXPECT_EQ(ids(20008, 60006), (Ids{40007}));
    EXPECT_EQ(ids(8, 20006), Ids{});
}

TEST_F(SpeicherTest, EineVolleScheibeVerhindertKeineAuswahl) {
    for (int i = 1; i <= 60000; ++i) hinzu(i);
    speicher.hoechstensSeiten(1);  // no more than there are
    EXPECT_EQ(speicher.auswaehlen({1, store::gleich(0, Spaltenart::Ganzzahl, Wert(7)), {}}),
              std::vector<qint64>{7});
}

TEST_F(SpeicherTest, NeueSpalteIstNullUndBeschreibbar) {
    const qint64 id = hinzu(1);
    const int spalte = speicher.spalteAnhaengen(1, Spaltenart::DatumZeit);
    EXPECT_EQ(spalte, 2);
    std::vector<Wert> zeile;
    ASSERT_TRUE(speicher.zeileLesen(1, {spalte}, id, zeile));
    EXPECT_TRUE(zeile[0].istNull());
    speicher.zeileAendern(1, id, {spalte}, {Wert(DatumZeit{5})});
    ASSERT_TRUE(speicher.zeileLesen(1, {spalte}, id, zeile));
    EXPECT_EQ(zeile[0], Wert(DatumZeit{5}));
}

TEST_F(SpeicherTest, GroessteZahlUndZeilenzahl) {
    EXPECT_EQ(speicher.groessteZahl(1, 0), 0);
    hinzu(-5);
    EXPECT_EQ(speicher.groessteZahl(1, 0), -5);
    hinzu(40);
    hinzu(7);
    EXPECT_EQ(speicher.groessteZahl(1, 0), 40);
    EXPECT_EQ(speicher.groessteZahl(1, 1), 0);
    EXPECT_EQ(speicher.zeilenzahl(1), 3);
}

TEST_F(SpeicherTest, EntfernteTabelleMeldetSichAlsUngueltig) {
    hinzu(1);
    speicher.tabelleEntfernen(1);
    EXPECT_FALSE(speicher.tabelleVorhanden(1));
    EXPECT_EQ(speicher.naechsteId(1), 0);
    EXPECT_EQ(fehlerVon([&] { hinzu(1); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { speicher.auswaehlen({1, {}, {}}); }), kObjektUngueltig);
    EXPECT_EQ(fehlerVon([&] { speicher.zeilenzahl(77); }), kObjektUngueltig);
}

TEST_F(SpeicherTest, VerwerfenNimmtZeilenSpaltenUndTabellenZurueck) {
    hinzu(1);
    speicher.beginnen();
    hinzu(2);
    speicher.zeileAendern(1, 1, {0}, {Wert(9)});
    speicher.spalteAnhaengen(1, Spaltenart::Text);
    speicher.tabelleAnlegen(2, {Spaltenart::Text});
    speicher.verwerfen();
    EXPECT_EQ(zahlen(), std::vector<int>{1});
    EXPECT_FALSE(speicher.tabelleVorhanden(2));
    EXPECT_EQ(speicher.spalteAnhaengen(1, Spaltenart::Text), 2);
    EXPECT_EQ(hinzu(3), 3);
}

TEST_F(SpeicherTest, VerwerfenBringtEineEntfernteTabelleZurueck) {
    hinzu(1);
    speicher.beginnen();
    speicher.tabelleEntfernen(1);
    speicher.verwerfen();
    EXPECT_EQ(zahlen(), std::vector<int>{1});
}

TEST_F(SpeicherTest, FestschreibenBehaelt) {
    speicher.beginnen();
    EXPECT_TRUE(speicher.inTransaktion());
    hinzu(1);
    speicher.festschreiben();
    EXPECT_FALSE(speicher.inTransaktion());
    speicher.beginnen();
    speicher.verwerfen();
    EXPECT_EQ(zahlen(), std::vector<int>{1});
}

TEST_F(SpeicherTest, SicherungspunktInUndAusserhalbEinerTransaktion) {
    for (bool inTransaktion : {false, true}) {
        SCOPED_TRACE(inTransaktion);
        store::Speicher s;
        s.tabelleAnlegen(1, {Spaltenart::Ganzzahl});
        if (inTransaktion) s.beginnen();
        s.zeileAnhaengen(1, {0}, {Wert(1)});
        {
            Punkt punkt(s);
            s.zeileAnhaengen(1, {0}, {Wert(2)});
            s.tabelleAnlegen(2, {Spaltenart::Text});
        }
        EXPECT_EQ(s.zeilenzahl(1), 1);
        EXPECT_FALSE(s.tabelleVorhanden(2));
        {
            Punkt punkt(s);
            s.zeileAnhaengen(1, {0}, {Wert(3)});
            punkt.behalten();
        }
        if (inTransaktion) s.festschreiben();
        EXPECT_EQ(s.zeilenzahl(1), 2);
    }
}

TEST_F(SpeicherTest, SicherungspunkteLassenSichSchachteln) {
    {
        Punkt aussen(speicher);
        hinzu(1);
        {
            Punkt innen(speicher);
            hinzu(2);
        }
        hinzu(3);
        {
            Punkt innen(speicher);
            hinzu(4);
            innen.behalten();
        }
        EXPECT_EQ(zahlen(), (std::vector<int>{1, 3, 4}));
    }
    EXPECT_TRUE(zahlen().empty());
}

TEST_F(SpeicherTest, VolleScheibeAusserhalbEinerTransaktionBehaeltWasGeschriebenWar) {
    for (int i = 0; i < 10; ++i) hinzu(i);
    speicher.hoechstensSeiten(40);
    EXPECT_EQ(fuellen(), kDatentraegerVoll);
    const qint64 anzahl = speicher.zeilenzahl(1);
    EXPECT_GE(anzahl, 10);
    EXPECT_EQ(anzahl, qint64(speicher.auswaehlen({1, {}, {}}).size()));
    EXPECT_EQ(speicher.naechsteId(1), anzahl + 1);
    speicher.hoechstensSeiten(100000);
    EXPECT_EQ(hinzu(99), anzahl + 1);
}

TEST_F(SpeicherTest, VolleScheibeInDerTransaktionLaesstSichZuruecknehmen) {
    for (int i = 0; i < 10; ++i) hinzu(i);
    speicher.hoechstensSeiten(40);
    speicher.beginnen();
    EXPECT_EQ(fuellen(), kDatentraegerVoll);
    speicher.verwerfen();
    EXPECT_EQ(speicher.zeilenzahl(1), 10);
    speicher.hoechstensSeiten(100000);
    speicher.beginnen();
    hinzu(10);
    speicher.festschreiben();
    EXPECT_EQ(speicher.zeilenzahl(1), 11);
}

TEST_F(SpeicherTest, VolleScheibeKannDieTransaktionKostenUndDannMeldetEsJederZugriffBisZumVerwerfen) {
    hinzu(1);
    speicher.beginnen();
    hinzu(2);
    speicher.hoechstensSeiten(40);
    {
        Punkt punkt(speicher);
        EXPECT_EQ(fuellen(), kDatentraegerVoll);
    }
    speicher.hoechstensSeiten(100000);
    EXPECT_EQ(fehlerVon([&] { speicher.zeilenzahl(1); }), kDatentraegerVoll);
    EXPECT_EQ(fehlerVon([&] { hinzu(3); }), kDatentraegerVoll);
    EXPECT_EQ(fehlerVon([&] { speicher.festschreiben(); }), kDatentraegerVoll);
    speicher.verwerfen();
    EXPECT_EQ(zahlen(), std::vector<int>{1});
}

TEST_F(SpeicherTest, VolleScheibeBeimAnlegenHinterlaesstKeineTabelle) {
    speicher.hoechstensSeiten(1);
    EXPECT_EQ(fehlerVon([&] {
                  for (int i = 2; i < 500; ++i) speicher.tabelleAnlegen(i, {Spaltenart::Text});
              }),
              kDatentraegerVoll);
    speicher.hoechstensSeiten(100000);
    qint64 vorhanden = 0;
    for (int i = 1; i < 500; ++i)
        if (speicher.tabelleVorhanden(i)) vorhanden += 1 + speicher.zeilenzahl(i);
    EXPECT_GE(vorhanden, 1);
    speicher.tabelleAnlegen(500, {Spaltenart::Text});
    EXPECT_EQ(speicher.zeilenzahl(500), 0);
}

qint64 speicherbedarf() {
    QFile datei(QStringLiteral("/proc/self/statm"));
    if (!datei.open(QIODevice::ReadOnly)) return -1;
    return datei.readAll().split(' ').value(1).toLongLong() * 4096;
}

// The open files of this process that the store made and that no folder names any more.
std::vector<struct stat> ablagen() {
    std::vector<struct stat> gefunden;
    for (const QString& nummer :
         QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System)) {
        const QString griff = QStringLiteral("/proc/self/fd/") + nummer;
        const QString ziel = QFile::symLinkTarget(griff);
        struct stat angaben {};
        if (!ziel.contains(u"/etilqs_") || ::stat(QFile::encodeName(griff).constData(), &angaben) != 0)
            continue;
        EXPECT_FALSE(QFile::exists(ziel)) << qPrintable(ziel);
        gefunden.push_back(angaben);
    }
    return gefunden;
}

TEST_F(SpeicherTest, DreihunderttausendZeilenInBegrenztemSpeicher) {
    constexpr int kZeilen = 300000;
    const QString text(200, u'ä');
    const qint64 vorher = speicherbedarf();
    ASSERT_GT(vorher, 0);
    speicher.beginnen();
    for (int i = 0; i < kZeilen; ++i) {
        speicher.zeileAnhaengen(1, {0, 1}, {Wert(kZeilen - i), Wert(text)});
        if (i % 1000 == 999) {
            speicher.festschreiben();
            speicher.beginnen();
        }
    }
    speicher.festschreiben();
    const auto ids = speicher.auswaehlen({1, {}, {0}});
    ASSERT_EQ(ids.size(), size_t(kZeilen));
    EXPECT_EQ(ids.front(), kZeilen);
    EXPECT_EQ(ids.back(), 1);
    EXPECT_EQ(speicher.zeilenzahl(1), kZeilen);
    // Nobody else can open what does not fit into the cache, and it is gone with the process.
    const auto dateien = ablagen();
    EXPECT_FALSE(dateien.empty());
    for (const struct stat& angaben : dateien) {
        EXPECT_EQ(angaben.st_mode & 0777, 0600u);
        EXPECT_EQ(angaben.st_nlink, 0u);
    }
    // The texts alone are 120 MB; the page cache of the store is 64 MB.
    if (kInstrumentiert) GTEST_SKIP() << "unter AddressSanitizer nicht messbar";
    EXPECT_LT(speicherbedarf() - vorher, 110 << 20);
}

// Sets the breathing hook for one test.
class Atemzug {
  public:
    explicit Atemzug(std::function<void()> f) { AtempauseSetzen(std::move(f)); }
    ~Atemzug() { AtempauseSetzen(nullptr); }
    Atemzug(const Atemzug&) = delete;
    Atemzug& operator=(const Atemzug&) = delete;
};

TEST_F(SpeicherTest, LangeAuswahlAtmetUndLaesstSichAbbrechen) {
    struct Abbruch {};
    speicher.beginnen();
    for (int i = 0; i < 50000; ++i) hinzu(i);
    speicher.festschreiben();
    int male = 0;
    {
        const Atemzug haken([&] {
            ++male;
            throw Abbruch();
        });
        EXPECT_THROW(speicher.auswaehlen({1, {}, {1, 0}}), Abbruch);
    }
    EXPECT_EQ(male, 1);
    EXPECT_EQ(speicher.auswaehlen({1, {}, {1, 0}}).size(), 50000u);
}

// With the index there is hardly anything left to look at: only making it takes its time.
TEST_F(SpeicherTest, AuchDerIndexEinerAuswahlLaesstSichAbbrechen) {
    struct Abbruch {};
    speicher.beginnen();
    for (int i = 1; i <= 60000; ++i) hinzu(i % 20000);
    speicher.festschreiben();
    const store::Auswahl sieben{1, store::gleich(0, Spaltenart::Ganzzahl, Wert(7)), {}};
    {
        const Atemzug haken([] { throw Abbruch(); });
        EXPECT_THROW(speicher.auswaehlen(sieben), Abbruch);
    }
    EXPECT_EQ(speicher.auswaehlen(sieben), (std::vector<qint64>{7, 20007, 40007}));
}

TEST_F(SpeicherTest, AbgebrochenesEntfernenEntferntNichts) {
    struct Abbruch {};
    speicher.beginnen();
    for (int i = 0; i < 20000; ++i) hinzu(i);
    speicher.festschreiben();
    const auto ids = speicher.auswaehlen({1, {}, {}});
    {
        const Atemzug haken([] { throw Abbruch(); });
        EXPECT_THROW(speicher.zeilenEntfernen(1, ids), Abbruch);
    }
    EXPECT_EQ(speicher.zeilenzahl(1), 20000);
    speicher.zeilenEntfernen(1, ids);
    EXPECT_EQ(speicher.zeilenzahl(1), 0);
}

TEST_F(SpeicherTest, WerInDerPauseZugreiftBekommtEineMeldungUndNichtsGehtKaputt) {
    speicher.beginnen();
    for (int i = 0; i < 50000; ++i) hinzu(i);
    speicher.festschreiben();
    int nummer = 0;
    {
        const Atemzug haken([&] { nummer = fehlerVon([&] { hinzu(7); }); });
        EXPECT_EQ(speicher.auswaehlen({1, {}, {1, 0}}).size(), 50000u);
    }
    EXPECT_EQ(nummer, kDateifehler);
    EXPECT_EQ(speicher.zeilenzahl(1), 50000);
}

}  // namespace
