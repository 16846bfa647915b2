// The code page of a table.
#include "engine/dbase/zeichensatz.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>
#include <map>

#include "engine/dbase/zeichentafeln.h"

namespace dbase {
namespace {

struct Sprachbyte {
    quint8 byte;
    int seite;
};

// The first row of a page is the byte that is written for it. Pages above 900 that are not Windows' have two
// bytes a character or no published table; they are known by number only.
constexpr Sprachbyte kSprachbytes[] = {
    {0x01, 437},   {0x09, 437},   {0x0B, 437},  {0x0D, 437},  {0x0F, 437},   {0x11, 437},  {0x15, 437},
    {0x18, 437},   {0x19, 437},   {0x1B, 437},  {0x02, 850},  {0x0A, 850},   {0x0E, 850},  {0x10, 850},
    {0x12, 850},   {0x14, 850},   {0x16, 850},  {0x1A, 850},  {0x1D, 850},   {0x25, 850},  {0x37, 850},
    {0x03, 1252},  {0x57, 1252},  {0x58, 1252}, {0x59, 1252}, {0x04, 10000}, {0x24, 860},  {0x6C, 863},
    {0x1C, 863},   {0xC8, 1250},  {0xC9, 1251}, {0xCA, 1254}, {0xCB, 1253},  {0xCC, 1257}, {0x7D, 1255},
    {0x7E, 1256},  {0x64, 852},   {0x1F, 852},  {0x22, 852},  {0x23, 852},   {0x40, 852},  {0x87, 852},
    {0x65, 866},   {0x26, 866},   {0x66, 865},  {0x08, 865},  {0x17, 865},   {0x67, 861},  {0x6A, 737},
    {0x86, 737},   {0x6B, 857},   {0x88, 857},  {0x7B, 932},  {0x13, 932},   {0x7A, 936},  {0x4D, 936},
    {0x79, 949},   {0x4E, 949},   {0x78, 950},  {0x4F, 950},  {0x7C, 874},   {0x50, 874},  {0x96, 10007},
    {0x97, 10029}, {0x98, 10006}, {0x68, 895},  {0x69, 790}};

constexpr QByteArrayView kDosUmlaute = "\x84\x94\x81\x8E\x99\x9A\xE1";
constexpr QByteArrayView kWindowsUmlaute = "\xE4\xF6\xFC\xC4\xD6\xDC\xDF";

enum Zeichenart : quint8 { Sonst, Buchstabe, Dos, Windows };

std::array<quint8, 256> zeichenarten() {
    std::array<quint8, 256> arten{};
    for (int c = 'A'; c <= 'Z'; ++c) arten[size_t(c)] = arten[size_t(c + 'a' - 'A')] = Buchstabe;
    for (const char c : kDosUmlaute) arten[quint8(c)] = Dos;
    for (const char c : kWindowsUmlaute) arten[quint8(c)] = Windows;
    return arten;
}

bool istUtf8(const char* bytes, qsizetype anzahl) {
    QStringDecoder leser(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = leser(QByteArrayView(bytes, anzahl));
    return !leser.hasError();
}

}  // namespace

int seiteFuerSprachbyte(quint8 byte) {
    for (const Sprachbyte& eintrag : kSprachbytes)
        if (eintrag.byte == byte) return eintrag.seite;
    return 0;
}

quint8 sprachbyteFuerSeite(int seite) {
    for (const Sprachbyte& eintrag : kSprachbytes)
        if (eintrag.seite == seite) return eintrag.byte;
    return 0;
}

int seiteFuerCpg(const QByteArray& text) {
    QByteArray wort = text.left(text.indexOf('\n') < 0 ? text.size() : text.indexOf('\n')).toUpper();
    for (const char c : {' ', '\r', '\t', '-', '_'}) wort.replace(c, "");
    if (wort == "UTF8") return kSeiteUtf8;
    if (wort.startsWith("LDID/")) return seiteFuerSprachbyte(quint8(wort.mid(5).toUInt()));
    if (wort == "ISO88591" || wort == "88591") return 28591;
    if (wort == "ISO885915" || wort == "885915") return 28605;
    for (const char* vorsatz : {"CP", "IBM", "ANSI", "OEM", "WINDOWS"})
        if (wort.startsWith(vorsatz)) wort = wort.mid(qsizetype(std::strlen(vorsatz)));
    const int seite = wort.toInt();
    return seite == kSeiteUtf8 || zeichentafelSuchen(seite) ? seite : 0;
}

void Seitenschaetzer::feld(const char* bytes, qsizetype anzahl) {
    static const std::array<quint8, 256> arten = zeichenarten();
    const auto art = [&](qsizetype i) {
        return i < 0 || i >= anzahl ? quint8(Sonst) : arten[quint8(bytes[i])];
    };
    bool hoch = false;
    for (qsizetype i = 0; i < anzahl; ++i) {
        if (quint8(bytes[i]) < 0x80) continue;
        hoch = true;
        const quint8 a = art(i);
        // Frames of boxes and typographic quotes have no letters beside them.
        if (a < Dos || (art(i - 1) == Sonst && art(i + 1) == Sonst)) continue;
        ++(a == Dos ? dos_ : windows_);
    }
    if (!hoch) return;
    mehrbyte_ = true;
    nurUtf8_ = nurUtf8_ && istUtf8(bytes, anzahl);
}

int Seitenschaetzer::seite() const {
    if (mehrbyte_ && nurUtf8_) return kSeiteUtf8;
    return windows_ > dos_ ? kSeite1252 : kSeite850;
}

std::shared_ptr<const Zeichensatz::Tafeln> Zeichensatz::tafelnFuer(int seite) {
    static std::map<int, std::shared_ptr<const Tafeln>> fertige;  // made here when first asked for
    auto& platz = fertige[seite];
    if (platz) return platz;
    const Zeichentafel* oben = zeichentafelSuchen(seite);
    auto neu = std::make_shared<Tafeln>();
    neu->bytes.resize(0x10000);
    for (int byte = 255; byte >= 0; --byte) {
        const char16_t zeichen = byte < 128 ? char16_t(byte) : oben->oben[byte - 128];
        neu->zeichen[size_t(byte)] = zeichen;
        neu->bytes[zeichen] = quint8(byte);
    }
    platz = std::move(neu);
    return platz;
}

Zeichensatz::Zeichensatz(int seite)
    : seite_(seite),
      bekannt_(seite == kSeiteUtf8 || zeichentafelSuchen(seite)),
      tafeln_(tafelnFuer(bekannt_ && seite != kSeiteUtf8 ? seite : kSeite1252)) {}

QString Zeichensatz::text(const char* bytes, qsizetype anzahl) const {
    if (seite_ == kSeiteUtf8) return QString::fromUtf8(bytes, anzahl);
    QString text(anzahl, Qt::Uninitialized);
    auto* ziel = reinterpret_cast<char16_t*>(text.data());
    const auto& zeichen = tafeln_->zeichen;
    for (qsizetype i = 0; i < anzahl; ++i) ziel[i] = zeichen[quint8(bytes[i])];
    return text;
}

qsizetype Zeichensatz::schreiben(QStringView text, char* ziel) const {
    const char16_t* zeichen = text.utf16();
    const qsizetype anzahl = text.size();
    const quint8* bytes = tafeln_->bytes.data();
    unsigned luecken = 0;
    for (qsizetype i = 0; i < anzahl; ++i) {
        const quint8 byte = bytes[zeichen[i]];
        ziel[i] = char(byte);
        luecken |= byte == 0;
    }
    if (luecken == 0) return -1;
    return std::find_if(zeichen, zeichen + anzahl, [&](char16_t c) { return bytes[c] == 0; }) - zeichen;
}

bool Zeichensatz::anhaengen(QStringView text, QByteArray& ziel, qsizetype& fehlend) const {
    const qsizetype vorher = ziel.size();
    ziel.resize(vorher + text.size());
    fehlend = schreiben(text, ziel.data() + vorher);
    return fehlend < 0;
}

}  // namespace dbase
