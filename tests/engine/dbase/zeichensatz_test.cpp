// Code pages against the tables of Python, their recognition, and the guess.
#include "engine/dbase/zeichensatz.h"

#include <gtest/gtest.h>

#include "dbasebank.h"

namespace {

using namespace dbase;

QByteArray alleBytes() {
    QByteArray bytes(256, '\0');
    for (int i = 0; i < 256; ++i) bytes[i] = char(i);
    return bytes;
}

// Python's own decoders are the witness; what they leave open is shown as U+FFFD there.
TEST(DbaseZeichensatz, JedeSeiteWieInPython) {
    const std::pair<int, const char*> seiten[] = {
        {437, "cp437"},       {737, "cp737"},          {850, "cp850"},        {852, "cp852"},
        {857, "cp857"},       {860, "cp860"},          {861, "cp861"},        {863, "cp863"},
        {865, "cp865"},       {866, "cp866"},          {874, "cp874"},        {1250, "cp1250"},
        {1251, "cp1251"},     {1252, "cp1252"},        {1253, "cp1253"},      {1254, "cp1254"},
        {1255, "cp1255"},     {1256, "cp1256"},        {1257, "cp1257"},      {10000, "mac_roman"},
        {10006, "mac_greek"}, {10007, "mac_cyrillic"}, {10029, "mac_latin2"}, {28591, "iso8859-1"},
        {28605, "iso8859-15"}};
    for (const auto& eintrag : seiten) {
        const QString fremd = QString::fromUtf8(dbasebank::aufrufen(
            QStringLiteral("python3"),
            {QStringLiteral("-c"),
             QStringLiteral("import sys; sys.stdout.buffer.write(bytes(range(256)).decode('%1', "
                            "'replace').encode('utf-8'))")
                 .arg(QLatin1String(eintrag.second))}));
        const Zeichensatz satz(eintrag.first);
        ASSERT_TRUE(satz.schreibbar()) << eintrag.second;
        const QByteArray bytes = alleBytes();
        const QString eigen = satz.text(bytes.constData(), 256);
        ASSERT_EQ(fremd.size(), 256) << eintrag.second;
        for (int i = 0; i < 256; ++i)
            if (fremd[i] != QChar(0xFFFD)) {
                EXPECT_EQ(eigen[i], fremd[i]) << eintrag.second << " " << i;
            }
        // Every byte survives a copy, also one that the page leaves open; the zero byte is no character.
        QByteArray zurueck;
        qsizetype fehlend = 0;
        EXPECT_TRUE(satz.anhaengen(QStringView(eigen).mid(1), zurueck, fehlend))
            << eintrag.second << " " << fehlend;
        EXPECT_EQ(zurueck, bytes.mid(1)) << eintrag.second;
    }
}

TEST(DbaseZeichensatz, FehlendesZeichenWirdGenannt) {
    QByteArray ziel;
    qsizetype stelle = 0;
    EXPECT_FALSE(Zeichensatz(850).anhaengen(u"10 €", ziel, stelle));
    EXPECT_EQ(stelle, 3);
    ziel.clear();
    EXPECT_TRUE(Zeichensatz(1252).anhaengen(u"10 €", ziel, stelle));
    EXPECT_EQ(ziel, "10 \x80");
    EXPECT_FALSE(Zeichensatz(1252).anhaengen(QStringView(u"a\0b", 3), ziel, stelle));
}

TEST(DbaseZeichensatz, SeitenOhneTafelSindNichtSchreibbar) {
    for (const int seite : {kSeiteUtf8, 932, 936, 895, 790})
        EXPECT_FALSE(Zeichensatz(seite).schreibbar()) << seite;
    EXPECT_TRUE(Zeichensatz(kSeiteUtf8).bekannt());
    EXPECT_FALSE(Zeichensatz(790).bekannt());
}

TEST(DbaseZeichensatz, Sprachbytes) {
    const std::pair<int, int> faelle[] = {{0x01, 437},  {0x02, 850}, {0x03, 1252}, {0x57, 1252}, {0xC8, 1250},
                                          {0xC9, 1251}, {0x64, 852}, {0x00, 0},    {0xF0, 0}};
    for (const auto& fall : faelle)
        EXPECT_EQ(seiteFuerSprachbyte(quint8(fall.first)), fall.second) << fall.first;
    for (const int seite : {437, 850, 852, 1250, 1251, 1252, 866, 865})
        EXPECT_EQ(seiteFuerSprachbyte(sprachbyteFuerSeite(seite)), seite);
    EXPECT_EQ(sprachbyteFuerSeite(28591), 0);
}

TEST(DbaseZeichensatz, CpgTexte) {
    const std::pair<const char*, int> faelle[] = {
        {"1252", 1252},    {"850\r\n", 850},       {"CP437", 437},
        {"cp1252", 1252},  {"IBM850", 850},        {"ANSI 1252", 1252},
        {"OEM 850", 850},  {"UTF-8", 65001},       {"utf8", 65001},
        {"65001", 65001},  {"ISO-8859-1", 28591},  {"ISO 88591", 28591},
        {"8859-1", 28591}, {"ISO 8859-15", 28605}, {"LDID/87", 1252},
        {"LDID/0", 0},     {"unsinn", 0},          {"", 0},
        {"9999", 0}};
    for (const auto& fall : faelle) EXPECT_EQ(seiteFuerCpg(fall.first), fall.second) << fall.first;
}

int geschaetzt(std::initializer_list<QByteArray> felder) {
    Seitenschaetzer schaetzer;
    for (const QByteArray& feld : felder) schaetzer.feld(feld.constData(), feld.size());
    return schaetzer.seite();
}

TEST(DbaseZeichensatz, Schaetzung) {
    EXPECT_EQ(geschaetzt({"Mueller"}), 850);
    EXPECT_EQ(geschaetzt({"M\x81ller", "K\x94ln"}), 850);
    EXPECT_EQ(geschaetzt({"M\xFCller", "K\xF6ln"}), 1252);
    EXPECT_EQ(geschaetzt({"M\xC3\xBCller"}), kSeiteUtf8);
    EXPECT_EQ(geschaetzt({"M\xC3\xBCller", "K\xF6ln"}), 1252);
    // Typographic quotes of 1252 stand between blanks, frames of 850 in rows.
    EXPECT_EQ(geschaetzt({" \x84 Haus \x94 ", " \x84 Hof \x94 ", "K\xF6ln"}), 1252);
}

}  // namespace
