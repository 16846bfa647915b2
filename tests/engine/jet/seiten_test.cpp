// Page files: header, encoding, passwords, refusals, writing.
#include <QBuffer>
#include <QTemporaryFile>

#include "engine/jet/bytes.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/kopf.h"
#include "proben.h"

using jet::Seitendatei;

namespace {

constexpr qsizetype kVersion = 0x14;

QByteArray mitByte(QByteArray bytes, qsizetype ab, char byte) {
    bytes[ab] = byte;
    return bytes;
}

// Masks a changed header again.
QByteArray mitKlarByte(const QByteArray& bytes, qsizetype ab, char byte) {
    const jet::Format& format = jet::formatErkennen(bytes);
    QByteArray klar = jet::kopfEntmaskieren(format, bytes);
    klar[ab] = byte;
    const QByteArray maskiert = jet::kopfEntmaskieren(format, klar);
    QByteArray neu = bytes;
    jet::bytesSetzen(neu, 0, maskiert);
    return neu;
}

int oeffnenFehler(const QByteArray& bytes) {
    return fehlerVon([&] { Seitendatei datei(bytes); });
}

}  // namespace

TEST(JetSeiten, KopfJederProbe) {
    struct Fall {
        const char16_t* name;
        int version;
        quint32 schluessel;
        QString passwort;
    };
    const Fall faelle[] = {{u"jet3-typen.mdb", 0, 0, {}},
                           {u"jet3-kodiert.mdb", 0, 0xA7E0C0FE, {}},
                           {u"jet4-relationen.mdb", 1, 0, {}},
                           {u"jet4-kodiert.mdb", 1, 0xA7B773E0, {}},
                           {u"jet4-passwort.mdb", 1, 0, u"password"_qs},
                           {u"ace-2007.accdb", 2, 0, {}}};
    for (const Fall& f : faelle) {
        const QString name = QString::fromUtf16(f.name);
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        const auto datei = proben::oeffnen(name);
        EXPECT_EQ(datei->kopf().version, f.version);
        EXPECT_EQ(datei->format().ace, f.version > 1);
        EXPECT_EQ(datei->kopf().schluessel, f.schluessel);
        EXPECT_EQ(datei->kopf().passwort, f.passwort);
        EXPECT_EQ(datei->kopf().codepage, 1252);
        EXPECT_EQ(datei->kopf().sortierung, 0x0409);
        EXPECT_EQ(datei->format().seite, f.version == 0 ? 2048 : 4096);
        EXPECT_FALSE(datei->endetAngebrochen());
    }
}

TEST(JetSeiten, KodierteSeitenWerdenEntschluesselt) {
    for (const QString& name : {u"jet3-kodiert.mdb"_qs, u"jet4-kodiert.mdb"_qs}) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        const auto datei = proben::oeffnen(name);
        const QByteArray roh = proben::bytes(name).mid(2 * datei->format().seite, 2);
        EXPECT_NE(roh, QByteArray("\x02\x01"));
        EXPECT_EQ(datei->seite(2).left(2), QByteArray("\x02\x01"));
    }
}

TEST(JetSeiten, PasswortFalschFehltStimmt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-passwort.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-passwort.mdb"_qs);
    QString fehlt;
    QString falsch;
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(*datei, u""_qs); }, &fehlt), kPasswortFalsch);
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(*datei, u"Password"_qs); }, &falsch), kPasswortFalsch);
    EXPECT_NE(fehlt, falsch);
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(*datei, u"password"_qs); }), 0);
}

TEST(JetSeiten, DateiOhnePasswortNimmtJedes) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(*datei, u"egal"_qs); }), 0);
}

TEST(JetSeiten, PasswortVonJet3StehtImKlartextHinterDerMaske) {
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet3-typen.mdb"_qs);
    bytes = mitKlarByte(mitKlarByte(bytes, 0x42, 'g'), 0x43, char(0xFC));
    EXPECT_EQ(Seitendatei(bytes).kopf().passwort, u"gü"_qs);
}

TEST(JetSeiten, UngueltigesDatumGibtMusterNull) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-leer-adox.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-leer-adox.mdb"_qs);
    for (int i = 0; i < 40; ++i) bytes = mitKlarByte(bytes, 0x42 + i, i == 0 ? 'x' : 0);
    for (int i = 0; i < 8; ++i) bytes = mitKlarByte(bytes, 0x72 + i, char(0xFF));
    EXPECT_EQ(Seitendatei(bytes).kopf().passwort, u"x"_qs);
}

TEST(JetSeiten, WasKeineDatenbankIstWirdAbgelehnt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const QByteArray gut = proben::bytes(u"jet4-relationen.mdb"_qs);
    QByteArray geld = gut;
    geld.replace(4, 15, "MSISAM Database");
    struct Fall {
        const char* was;
        QByteArray bytes;
        int fehler;
    };
    const Fall faelle[] = {{"leer", QByteArray(), kBeschaedigt},
                           {"kurz", gut.left(100), kBeschaedigt},
                           {"drei Seiten", gut.left(3 * 4096), kBeschaedigt},
                           {"Text", QByteArray(8192, 'x'), kDateiNichtLesbar},
                           {"Money", geld, kDateiNichtLesbar},
                           {"Version 4", mitByte(gut, kVersion, 4), kDateiNichtLesbar},
                           {"Version 7", mitByte(gut, kVersion, 7), kDateiNichtLesbar},
                           {"andere Anordnung", mitKlarByte(gut, 0x20, 3), kDateiNichtLesbar},
                           {"falscher Schlüssel", mitKlarByte(gut, 0x3E, 1), kBeschaedigt},
                           {"Seite 2 zerstört", mitByte(gut, 2 * 4096, 9), kBeschaedigt},
                           {"vier Seiten", gut.left(4 * 4096), 0},
                           {"unversehrt", gut, 0}};
    for (const Fall& f : faelle) {
        SCOPED_TRACE(f.was);
        EXPECT_EQ(oeffnenFehler(f.bytes), f.fehler);
    }
}

TEST(JetSeiten, OfficeVerschluesselungWirdAbgelehnt) {
    PROBE_ODER_UEBERSPRINGEN(u"ace-2007.accdb"_qs);
    const QByteArray bytes = mitByte(proben::bytes(u"ace-2007.accdb"_qs), 2 * 4096, 0x77);
    QString text;
    EXPECT_EQ(fehlerVon([&] { Seitendatei datei(bytes); }, &text), kSystemgrenze);
    EXPECT_TRUE(text.contains(u"Kennwort")) << text.toStdString();
}

TEST(JetSeiten, AngebrocheneLetzteSeiteBleibtLesbar) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    Seitendatei datei(proben::bytes(u"jet4-relationen.mdb"_qs) + QByteArray(100, 'x'));
    EXPECT_TRUE(datei.endetAngebrochen());
    EXPECT_EQ(datei.seitenzahl(), 72u);
}

TEST(JetSeiten, UnbekannteSortierungUndZeichensatzWerdenAbgelehnt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    PROBE_ODER_UEBERSPRINGEN(u"jet4-leer-adox.mdb"_qs);
    const QByteArray polnisch = mitKlarByte(proben::bytes(u"jet3-typen.mdb"_qs), 0x3C, char(0xE2));
    Seitendatei jet3(polnisch);
    EXPECT_EQ(jet3.kopf().codepage, 1250);
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(jet3, {}); }), kSystemgrenze);

    // The record of the column Name in the definition of MSysObjects: its version of the sort order.
    QByteArray bytes = proben::bytes(u"jet4-leer-adox.mdb"_qs);
    const jet::Tabelle objekte = jet::tdefLesen(Seitendatei(bytes), 2);
    const int ort = objekte.spalteMitName(u"Name");
    const qsizetype ab = 2 * 4096 + bytes.mid(2 * 4096).indexOf(objekte.spalten[size_t(ort)].roh);
    Seitendatei neu(mitByte(bytes, ab + jet::kJet4.spalteSortVersion, 1));
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(neu, {}); }), kSystemgrenze);
    Seitendatei alt(bytes);
    EXPECT_EQ(fehlerVon([&] { jet::oeffnenPruefen(alt, {}); }), 0);
}

TEST(JetSeiten, SeiteJenseitsDesEndes) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(fehlerVon([&] { datei->seite(72); }), kBeschaedigt);
    QString text;
    EXPECT_EQ(fehlerVon([&] { datei->seite(0, jet::kDatenseite, u"Probe"); }, &text), kBeschaedigt);
    EXPECT_TRUE(text.contains(u"Probe")) << text.toStdString();
    EXPECT_EQ(fehlerVon([&] { datei->seite(2, jet::kDatenseite, u"Probe"); }), kBeschaedigt);
}

TEST(JetSeiten, SchreibenUndAnhaengenKodiert) {
    for (const QString& name : {u"jet4-kodiert.mdb"_qs, u"jet3-kodiert.mdb"_qs, u"jet4-leer-adox.mdb"_qs}) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        const QByteArray vorher = proben::bytes(name);
        Seitendatei datei(vorher);
        const quint32 ende = datei.seitenzahl();
        EXPECT_EQ(datei.anhaengen(), ende);
        const QByteArray neu(datei.format().seite, 'q');
        datei.schreiben(ende, neu);
        EXPECT_EQ(datei.seite(ende), neu);
        EXPECT_EQ(datei.bytes().left(vorher.size()), vorher);
        EXPECT_EQ(datei.bytes().mid(vorher.size()) == neu, datei.kopf().schluessel == 0);
        EXPECT_EQ(Seitendatei(datei.bytes()).seite(ende), neu);
    }
}

TEST(JetSeiten, NurZumLesenGeoeffnet) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-leer-adox.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-leer-adox.mdb"_qs);
    EXPECT_EQ(fehlerVon([&] { datei->schreiben(5, datei->seite(5)); }), kSchreibgeschuetzt);
}

// A file with a hole: 1 GB in Access 97, 2 GB in later ones.
TEST(JetSeiten, HinterDerGroesstenDateiKommtKeineSeite) {
    for (const auto& [name, grenze] : std::vector<std::pair<QString, qint64>>{
             {u"jet3-typen.mdb"_qs, qint64(1) << 30}, {u"jet4-leer-adox.mdb"_qs, qint64(1) << 31}}) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        QTemporaryFile voll;
        ASSERT_TRUE(voll.open() && voll.write(proben::bytes(name)) > 0);
        const auto oeffnen = [&](qint64 groesse) {
            EXPECT_TRUE(voll.resize(groesse));
            auto geraet = std::make_unique<QFile>(voll.fileName());
            EXPECT_TRUE(geraet->open(QIODevice::ReadWrite));
            return std::make_unique<Seitendatei>(std::move(geraet));
        };
        const auto datei = oeffnen(grenze);
        QString text;
        EXPECT_EQ(fehlerVon([&] { datei->anhaengen(); }, &text), kSystemgrenze);
        EXPECT_TRUE(text.contains(u"komprimieren")) << text.toStdString();
        EXPECT_EQ(voll.size(), grenze);
        const qint64 zuGross = grenze + datei->format().seite;
        EXPECT_EQ(fehlerVon([&] { oeffnen(zuGross); }, &text), kBeschaedigt);
        EXPECT_TRUE(text.contains(u"Sicherungskopie")) << text.toStdString();
        EXPECT_EQ(oeffnen(grenze - datei->format().seite)->anhaengen(), datei->seitenzahl() - 1);
    }
}

TEST(JetSeiten, AbgerissenesGeraetIstEinDateifehler) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-leer-adox.mdb"_qs);
    auto puffer = std::make_unique<QBuffer>();
    puffer->setData(proben::bytes(u"jet4-leer-adox.mdb"_qs));
    puffer->open(QIODevice::ReadOnly);
    QBuffer* geraet = puffer.get();
    Seitendatei datei(std::move(puffer));
    geraet->buffer().truncate(8 * 4096);
    EXPECT_EQ(fehlerVon([&] { datei.seite(12); }), kDateifehler);
}

TEST(JetText, LaengeIstDieZahlDerGelesenenZeichen) {
    for (const char* hex : {"", "41", "4142", "414200", "FF", "FFFE", "FFFE41", "FFFE4142", "FFFE41003130",
                            "FFFE4100313042", "FFFE410031300042", "FFFE4100", "FFFE00FFFE", "4100E400DF00"})
        for (const jet::Format* format : {&jet::kJet3, &jet::kJet4}) {
            SCOPED_TRACE(hex);
            const QByteArray bytes = QByteArray::fromHex(hex);
            EXPECT_EQ(jet::textLaenge(*format, bytes), jet::textLesen(*format, bytes).size());
        }
}

TEST(JetText, Komprimiert) {
    const auto lesen = [](QByteArray b) { return jet::textLesen(jet::kJet4, b); };
    EXPECT_EQ(lesen(QByteArray("\xFF\xFE"
                               "foo0")),
              u"foo0"_qs);
    EXPECT_EQ(lesen(QByteArray("\xFF\xFE"
                               "\xE4")),
              u"ä"_qs);
    EXPECT_EQ(lesen(QByteArray("a\0b\0", 4)), u"ab"_qs);
    // A byte 0 switches to pairs and, where a pair would start, back.
    EXPECT_EQ(lesen(QByteArray("\xFF\xFE"
                               "a\0\xAC\x20\0b",
                               8)),
              u"a€b"_qs);
    EXPECT_EQ(lesen(QByteArray("\xFF\xFE"
                               "a\0\xAC",
                               5)),
              u"a"_qs);
    EXPECT_EQ(lesen(QByteArray("\xFF\xFE", 2)), QString());
    EXPECT_EQ(lesen(QByteArray("a\0b", 3)), u"a"_qs);
    EXPECT_EQ(lesen(QByteArray()), QString());
}

TEST(JetText, Windows1252HinUndZurueck) {
    QByteArray alle;
    for (int b = 0; b < 256; ++b) alle.append(char(b));
    const QString text = jet::textLesen(jet::kJet3, alle);
    EXPECT_EQ(text[0x80], QChar(u'€'));
    EXPECT_EQ(text[0x81], QChar(0x81));
    EXPECT_EQ(text[0xDF], QChar(u'ß'));
    bool ok = false;
    EXPECT_EQ(jet::text1252(text, &ok), alle);
    EXPECT_TRUE(ok);
    jet::text1252(u"Łódź", &ok);
    EXPECT_FALSE(ok);
}

TEST(JetRc4, BekannterStrom) {
    QByteArray bytes(16, '\0');
    jet::rc4(QByteArrayView("Key", 3), bytes.data(), 10);
    EXPECT_EQ(bytes.left(10).toHex(), QByteArray("eb9f7781b734ca72a719"));
}
