// Texts of BIFF8.
#include "engine/excel/ketten.h"

#include <algorithm>

#include "engine/excel/bytes.h"

namespace excel {
namespace {

constexpr int kBreit = 0x01;
constexpr int kPhonetisch = 0x04;
constexpr int kLaeufe = 0x08;

void anfuegen(QString& text, QByteArrayView bytes, bool breit) {
    if (breit)
        text.append(reinterpret_cast<const QChar*>(bytes.data()), bytes.size() / 2);
    else
        text.append(QLatin1String(bytes.data(), bytes.size()));
}

}  // namespace

bool Kettenleser::amEnde() {
    while (stelle_.stueck < stuecke_.size() && stelle_.ort >= stuecke_[stelle_.stueck].size()) {
        ++stelle_.stueck;
        stelle_.ort = 0;
    }
    return stelle_.stueck >= stuecke_.size();
}

// -1 when there is none.
int Kettenleser::byte() {
    return amEnde() ? -1 : quint8(stuecke_[stelle_.stueck][stelle_.ort++]);
}

int Kettenleser::zweiBytes() {
    const int tief = byte();
    const int hoch = byte();
    return tief < 0 || hoch < 0 ? -1 : tief | hoch << 8;
}

bool Kettenleser::zeichenLesen(int anzahl, bool breit, QString* text) {
    while (anzahl > 0) {
        if (stelle_.stueck >= stuecke_.size()) return false;
        const QByteArrayView rest = stuecke_[stelle_.stueck].sliced(stelle_.ort);
        const int breite = breit ? 2 : 1;
        const int passend = int(std::min<qsizetype>(anzahl, rest.size() / breite));
        if (text) anfuegen(*text, rest.first(qsizetype(passend) * breite), breit);
        anzahl -= passend;
        stelle_.ort += quint32(passend * breite);
        if (anzahl == 0) break;
        // Half a character at a piece's end is damage; it counts as nothing.
        stelle_ = {stelle_.stueck + 1, 0};
        if (amEnde()) return false;
        breit = byte() & kBreit;
    }
    return true;
}

void Kettenleser::ueberspringen(qint64 anzahl) {
    while (anzahl > 0 && !amEnde()) {
        const qint64 schritt = std::min<qint64>(anzahl, stuecke_[stelle_.stueck].size() - stelle_.ort);
        stelle_.ort += quint32(schritt);
        anzahl -= schritt;
    }
}

Kettenleser::Kopf Kettenleser::lesen(QString* text) {
    if (text) text->clear();
    Kopf kopf;
    const int laenge = zweiBytes();
    const int merkmale = byte();
    if (merkmale < 0) return {0, false, false};
    qint64 anhang = 0;
    if (merkmale & kLaeufe) {
        kopf.schlicht = false;
        anhang += 4 * qint64(std::max(0, zweiBytes()));
    }
    if (merkmale & kPhonetisch) {
        kopf.schlicht = false;
        const int tief = std::max(0, zweiBytes());
        anhang += tief + (qint64(std::max(0, zweiBytes())) << 16);
    }
    kopf.laenge = laenge;
    kopf.ganz = zeichenLesen(laenge, merkmale & kBreit, text);
    ueberspringen(anhang);
    return kopf;
}

QString zeichen8(QByteArrayView daten, qsizetype ab, int anzahl, bool breit) {
    QString text;
    anfuegen(text, teil(daten, ab, qsizetype(anzahl) * (breit ? 2 : 1)), breit);
    return text;
}

QByteArray zeichenBytes8(QStringView text) {
    const bool breit = std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    QByteArray bytes(1, char(breit));
    if (breit) return bytes.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    for (const QChar c : text) bytes += char(c.unicode());
    return bytes;
}

}  // namespace excel
