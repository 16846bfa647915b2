// Headers and records that are unusual, bent or broken.
#include "engine/dbase/kopf.h"

#include <gtest/gtest.h>

#include "bauteile.h"
#include "dbasebank.h"
#include "engine/dbase/tabelle.h"

namespace {

using namespace dbase;
using bauteile::Feld;

bauteile::Tabelle einfach() {
    bauteile::Tabelle t;
    t.felder = {{"NAME", 'C', 6}, {"NR", 'N', 4}};
    t.saetze = {"Anna     1", "Bernd    2", "Carla   -3"};
    return t;
}

struct Gelesene {
    Tabelle tabelle;
    QStringList zeilen;
};

Gelesene lesen(const QByteArray& bytes, const QByteArray& memo = QByteArray(),
               const QByteArray& cpg = QByteArray()) {
    Tabellenquelle quelle{std::make_shared<Speicherquelle>(bytes), {}};
    if (!memo.isEmpty()) quelle.memo = std::make_shared<Speicherquelle>(memo);
    Gelesene gelesen{tabelleLesen(QStringLiteral("T"), quelle, cpg), {}};
    Tabellenleser leser(gelesen.tabelle, quelle, {});
    for (engine::Zeile zeile; leser.naechste(zeile);) gelesen.zeilen << dbasebank::zeileText(zeile);
    return gelesen;
}

const QStringList kDrei{QStringLiteral("Anna|1"), QStringLiteral("Bernd|2"), QStringLiteral("Carla|-3")};

TEST(DbaseKopf, HeileTabelle) {
    const Gelesene g = lesen(einfach().bytes());
    EXPECT_EQ(g.zeilen, kDrei);
    EXPECT_FALSE(g.tabelle.beschaedigt());
}

TEST(DbaseKopf, HarmloseAbweichungen) {
    std::vector<bauteile::Tabelle> faelle;
    faelle.push_back(einfach());
    faelle.back().nachKopf = QByteArray(1, '\0');  // some clones of dBase III
    faelle.push_back(einfach());
    faelle.back().ende = {};
    faelle.push_back(einfach());
    faelle.back().ende = "\x1A\x1A rubbish";
    faelle.push_back(einfach());
    faelle.back().feldende = 0x0A;
    faelle.push_back(einfach());
    faelle.back().saetze[1][0] = 'B';
    for (const auto& fall : faelle) {
        const Gelesene g = lesen(fall.bytes());
        EXPECT_EQ(g.zeilen, kDrei);
        EXPECT_FALSE(g.tabelle.beschaedigt());
    }
}

TEST(DbaseKopf, MehrSaetzeAlsAngegebenSindEinAbgebrochenesAnhaengen) {
    bauteile::Tabelle t = einfach();
    t.anzahl = 2;
    const Gelesene g = lesen(t.bytes());
    EXPECT_EQ(g.zeilen, kDrei.mid(0, 2));
    EXPECT_FALSE(g.tabelle.beschaedigt());
}

TEST(DbaseKopf, GeloeschtIstNurDerStern) {
    bauteile::Tabelle t = einfach();
    t.saetze = {"*Anna     1", QByteArray("\0", 1) + "Bernd    2", " Carla   -3"};
    EXPECT_EQ(lesen(t.bytes()).zeilen, kDrei.mid(1));
}

TEST(DbaseKopf, SchadenWirdGelesenUndGemerkt) {
    std::vector<std::pair<bauteile::Tabelle, qsizetype>> faelle;
    const auto fall = [&](auto biegen, qsizetype zeilen = 3) {
        faelle.emplace_back(einfach(), zeilen);
        biegen(faelle.back().first);
    };
    fall([](auto& t) { t.anzahl = 4; });
    fall([](auto& t) { t.anzahl = 0xFFFFFFFF; });
    fall([](auto& t) { t.satzlaenge = 0; });
    fall([](auto& t) { t.satzlaenge = 10; });
    fall([](auto& t) { t.kopflaenge = 0; });
    fall([](auto& t) { t.kopflaenge = 60000; });
    for (const auto& [t, zeilen] : faelle) {
        const Gelesene g = lesen(t.bytes());
        EXPECT_EQ(g.zeilen, kDrei.mid(0, zeilen));
        EXPECT_TRUE(g.tabelle.beschaedigt());
        EXPECT_EQ(g.tabelle.hinweise.size(), 1u);
    }
}

TEST(DbaseKopf, HalberLetzterSatzFaelltWeg) {
    QByteArray bytes = einfach().bytes();
    bytes.chop(5);
    const Gelesene g = lesen(bytes);
    EXPECT_EQ(g.zeilen, kDrei.mid(0, 2));
    EXPECT_TRUE(g.tabelle.beschaedigt());
}

TEST(DbaseKopf, LaengererSatzAlsDieFelderWirdUebersprungen) {
    bauteile::Tabelle t = einfach();
    t.satzlaenge = t.breite() + 3;
    for (QByteArray& satz : t.saetze) satz = ' ' + satz + "xyz";
    EXPECT_EQ(lesen(t.bytes()).zeilen, kDrei);
}

TEST(DbaseKopf, LangeTexteVonFoxpro) {
    bauteile::Tabelle t;
    t.felder = {{"TEXT", 'C', 300 - 256, 1}, {"NR", 'N', 4}};
    t.satzlaenge = 305;
    t.saetze = {QByteArray(" ") + QByteArray(300, 'a') + "   7"};
    const Gelesene g = lesen(t.bytes());
    EXPECT_EQ(g.zeilen, QStringList(QString(300, u'a') + QStringLiteral("|7")));
    EXPECT_EQ(g.tabelle.def.felder[0].typ, dao::dbMemo);
    // Old decimals in a text field that is as short as it says.
    t.felder[0].laenge = 6;
    t.satzlaenge = -1;
    t.saetze = {"Anna     1"};
    EXPECT_EQ(lesen(t.bytes()).zeilen, kDrei.mid(0, 1));
}

TEST(DbaseKopf, FeldOhneBreiteBekommtDieFehlendenBytes) {
    bauteile::Tabelle t = einfach();
    t.felder[0].laenge = 0;
    t.satzlaenge = 11;
    for (QByteArray& satz : t.saetze) satz.prepend(' ');
    EXPECT_EQ(lesen(t.bytes()).zeilen, kDrei);
}

TEST(DbaseKopf, KeineTabelle) {
    struct {
        const char* was;
        std::function<void(QByteArray&)> biegen;
        const char16_t* grund;
    } faelle[] = {
        {"kurz", [](QByteArray& b) { b.truncate(32); }, u"zu kurz"},
        {"leer", [](QByteArray& b) { b.clear(); }, u"zu kurz"},
        {"dBase II", [](QByteArray& b) { b[0] = 0x02; }, u"zu alt"},
        {"dBase 7", [](QByteArray& b) { b[0] = char(0x8C); }, u"zu neu"},
        {"HiPer-Six", [](QByteArray& b) { b[0] = char(0xE5); }, u"0xe5"},
        {"Text", [](QByteArray& b) { b = QByteArray("Name;Ort\r\n").repeated(40); }, u"0x4e"},
        {"verschlüsselt", [](QByteArray& b) { b[15] = 1; }, u"verschlüsselt"},
        {"ohne Felder", [](QByteArray& b) { b[32] = 0x0D; }, u"keine Felder"},
        {"Satzlänge",
         [](QByteArray& b) {
             b[10] = 9;
             b[97] = 'x';
         },
         u"Satzlänge"},
        {"Kopflänge",
         [](QByteArray& b) {
             b[8] = 0;
             b[9] = 0;
             b[96] = ' ';
         },
         u"Kopflänge"},
    };
    for (const auto& fall : faelle) {
        QByteArray bytes = einfach().bytes();
        fall.biegen(bytes);
        QString text;
        EXPECT_EQ(fehlerVon([&] { lesen(bytes); }, &text), kDateiNichtLesbar) << fall.was;
        EXPECT_TRUE(text.contains(QString::fromUtf16(fall.grund))) << fall.was << ": " << text.toStdString();
    }
}

// Some programs write none; the header's length then says where the only field ends.
TEST(DbaseKopf, EinEinzigesFeldOhneEndmarke) {
    bauteile::Tabelle t;
    t.felder = {{"NAME", 'C', 6}};
    t.saetze = {"Anna  ", "Bernd "};
    QByteArray bytes = t.bytes();
    bytes.remove(64, 1);
    bytes[8] = 64;
    const Gelesene g = lesen(bytes);
    EXPECT_EQ(g.zeilen, (QStringList{QStringLiteral("Anna"), QStringLiteral("Bernd")}));
    EXPECT_FALSE(g.tabelle.beschaedigt());
}

TEST(DbaseKopf, FelderDieNiemandLesenKann) {
    bauteile::Tabelle t = einfach();
    t.felder.push_back({"BILD", 'G', 10});
    for (QByteArray& satz : t.saetze) satz += "         3";
    const Gelesene g = lesen(t.bytes());
    EXPECT_EQ(g.zeilen[0], QStringLiteral("Anna|1|-"));
    EXPECT_EQ(g.tabelle.hinweise.size(), 1u);
    EXPECT_FALSE(g.tabelle.beschaedigt());
}

TEST(DbaseKopf, BreitenDieZurArtNichtPassen) {
    bauteile::Tabelle t;
    t.felder = {{"JA", 'L', 3}, {"TAG", 'D', 6}, {"TEXT", 'M', 6}};
    t.version = 0x83;
    t.saetze = {"T  991231     1"};
    const QByteArray memo = QByteArray(512, '\0') + "Hallo\x1A\x1A";
    EXPECT_EQ(lesen(t.bytes(), memo).zeilen, QStringList(QStringLiteral("Wahr|991231|Hallo")));
}

TEST(DbaseKopf, NullbytesImText) {
    bauteile::Tabelle t;
    t.felder = {{"A", 'C', 6}, {"B", 'C', 6}, {"C", 'C', 3}};
    t.saetze = {QByteArray("ab\0\0\0\0cd\0ef \0\0\0", 15), QByteArray("  ab    \x01   \0\0\0", 15)};
    const Gelesene g = lesen(t.bytes());
    EXPECT_EQ(g.zeilen, (QStringList{QStringLiteral("ab|cd ef|-"), QStringLiteral("  ab|  \x01|-")}));
}

TEST(DbaseKopf, ZeichensatzNachByteDannCpgDannSchaetzung) {
    bauteile::Tabelle t;
    t.felder = {{"A", 'C', 6}};
    t.saetze = {"M\x81ller"};
    const auto text = [&](quint8 byte, const char* cpg) {
        t.sprachbyte = byte;
        return lesen(t.bytes(), {}, cpg).zeilen[0];
    };
    EXPECT_EQ(text(0x02, "1252"), QStringLiteral("Müller"));
    EXPECT_EQ(text(0x00, "850"), QStringLiteral("Müller"));
    EXPECT_EQ(text(0x00, "1252"), QStringLiteral("M\u0081ller"));
    EXPECT_EQ(text(0x00, ""), QStringLiteral("Müller"));
    EXPECT_EQ(text(0xF0, ""), QStringLiteral("Müller"));
    t.saetze = {"M\xFCller"};
    EXPECT_EQ(text(0x00, ""), QStringLiteral("Müller"));
    t.saetze = {"M\xC3\xBCll "};
    EXPECT_EQ(text(0x02, "UTF-8"), QStringLiteral("Müll"));
    EXPECT_EQ(text(0x00, ""), QStringLiteral("Müll"));
}

QByteArray memoVier(quint32 laenge, const QByteArray& text) {
    QByteArray block("\xFF\xFF\x08\x00\0\0\0\0", 8);
    qToLittleEndian<quint32>(laenge, block.data() + 4);
    QByteArray kopf(512, '\0');
    kopf[21] = 2;
    return kopf + block + text;
}

TEST(DbaseKopf, MemoMitFalschenAngaben) {
    bauteile::Tabelle t;
    t.felder = {{"TEXT", 'M', 10}};
    t.version = 0x8B;
    const auto text = [&](const char* block, const QByteArray& memo) {
        t.saetze = {QByteArray(block).rightJustified(10)};
        return lesen(t.bytes(), memo).zeilen[0];
    };
    EXPECT_EQ(text("1", memoVier(13, "Hallo")), QStringLiteral("Hallo"));
    EXPECT_EQ(text("1", memoVier(0x7FFFFFFF, "Hallo")), QStringLiteral("Hallo"));
    EXPECT_EQ(text("1", memoVier(7, "Hallo")), QStringLiteral("-"));
    EXPECT_EQ(text("1", memoVier(8, "Hallo")), QStringLiteral("-"));
    for (const char* block : {"0", "2", "-1", "9999999999", "abc", ""})
        EXPECT_EQ(text(block, memoVier(13, "Hallo")), QStringLiteral("-")) << block;
    EXPECT_EQ(text("1", QByteArray(512, '\0') + "Form von III\x1A\x1A"), QStringLiteral("Form von III"));
    t.version = 0x83;
    EXPECT_EQ(text("1", QByteArray(512, '\0') + "eins\x1A"), QStringLiteral("eins"));
    EXPECT_EQ(text("1", QByteArray(512, '\0') + "ohne Ende"), QStringLiteral("ohne Ende"));
    EXPECT_EQ(text("1", QByteArray(512, '\0') + "weich\x8D\nhart\r\nzu\x8D\x1A"),
              QStringLiteral("weichhart\r\nzu\u00EC"));
}

TEST(DbaseKopf, VieleSaetzeAufEinenMemoblockOhneEnde) {
    bauteile::Tabelle t;
    t.felder = {{"TEXT", 'M', 10}};
    t.version = 0x83;
    t.saetze.assign(1000, "         1");
    const Gelesene g = lesen(t.bytes(), QByteArray(512, '\0') + QByteArray(2 << 20, 'x'));
    qint64 summe = 0;
    for (const QString& zeile : g.zeilen) summe += zeile.size();
    EXPECT_LE(summe, 5 * (2 << 20));
    EXPECT_GE(summe, 1 << 20);
}

}  // namespace
