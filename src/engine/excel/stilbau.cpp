// Cell formats for added sheets.
#include "engine/excel/stilbau.h"

#include <algorithm>
#include <array>

#include "base/fehler.h"
#include "engine/excel/bytes.h"
#include "engine/excel/formate.h"
#include "engine/excel/ketten.h"

namespace excel {
namespace {

constexpr int kMaxFormate = 4000;
constexpr int kVorgabe = 15;  // the cell format of cells without one
constexpr int kErstesEigenesFormat = 164;
constexpr quint16 kStilvorlage = 0x0004;
constexpr quint8 kEigenesFormat = 0x04;
constexpr int kZeichensatz = 12;     // in FONT
constexpr int kFehlendeSchrift = 4;  // there is no font of this number
enum Xfort { kXfSchrift = 0, kXfFormat = 2, kXfBits = 4, kXfBenutzt5 = 7, kXfBenutzt8 = 9 };

constexpr int kPruefAnzahl = 14;  // in XFCRC
constexpr int kPruefsumme = 16;

constexpr std::array<quint32, 256> pruefsummentafel() {
    std::array<quint32, 256> tafel{};
    for (quint32 v = 0; v < 256; ++v) {
        quint32 rest = v << 24;
        for (int i = 0; i < 8; ++i) rest = (rest << 1) ^ (rest & 0x80000000u ? 0xAFu : 0u);
        tafel[v] = rest & 0xFFFF;
    }
    return tafel;
}

quint32 pruefsumme(const Mappe& mappe) {
    static constexpr auto kTafel = pruefsummentafel();
    quint32 summe = 0;
    for (const Satz& satz : mappe.globale()) {
        if (satz.typ != kXf) continue;
        for (const char byte : satz.daten) summe = (summe << 8) ^ kTafel[(summe >> 24) ^ quint8(byte)];
    }
    return summe;
}

int xfAnzahl(const Mappe& mappe) {
    return int(std::count_if(mappe.globale().begin(), mappe.globale().end(),
                             [](const Satz& s) { return s.typ == kXf; }));
}

bool istZellformat(const Mappe& mappe, const QByteArray& xf) {
    return xf.size() >= (mappe.biff8() ? 20 : 16) && !(u16(xf, kXfBits) & kStilvorlage);
}

}  // namespace

Stilbau::Stilbau(Mappe& mappe) : mappe_(mappe), anzahl_(xfAnzahl(mappe)), allgemein_(-1) {
    for (const bool streng : {true, false}) {
        for (int i = -1; i < anzahl_ && allgemein_ < 0; ++i) {
            const int nummer = i < 0 ? kVorgabe : i;
            if (nummer >= anzahl_) continue;
            const QByteArray& xf = mappe.globale()[xfSatz(nummer)].daten;
            if (istZellformat(mappe, xf) && (eigeneSchrift(xf) || !streng)) allgemein_ = nummer;
        }
    }
    if (allgemein_ < 0)
        throw EngineFehler(
            kSystemgrenze,
            QStringLiteral("Die Arbeitsmappe hat keine Zellformate und kann nicht geändert werden. "
                           "Öffnen Sie sie in Excel, und speichern Sie sie neu."));
    fremdeSchrift_ = !eigeneSchrift(mappe.globale()[xfSatz(allgemein_)].daten);
    const size_t summe = mappe.suchen(kXfcrc);
    pruefsummeStimmt_ = summe < mappe.globale().size() &&
                        mappe.globale()[summe].daten.size() >= kPruefsumme + 4 &&
                        u16(mappe.globale()[summe].daten, kPruefAnzahl) == anzahl_ &&
                        u32(mappe.globale()[summe].daten, kPruefsumme) == pruefsumme(mappe);
}

size_t Stilbau::xfSatz(int nummer) const {
    size_t satz = mappe_.suchen(kXf);
    while (nummer-- > 0) satz = mappe_.suchen(kXf, satz + 1);
    return satz;
}

// In BIFF5 the font of a cell can overrule the code page of the workbook.
bool Stilbau::eigeneSchrift(const QByteArray& xf) const {
    if (mappe_.biff8()) return true;
    int nummer = u16(xf, kXfSchrift);
    if (nummer == kFehlendeSchrift) return false;
    if (nummer > kFehlendeSchrift) --nummer;
    size_t satz = mappe_.suchen(kFont);
    while (nummer-- > 0) satz = mappe_.suchen(kFont, satz + 1);
    if (satz >= mappe_.globale().size() || mappe_.globale()[satz].daten.size() <= kZeichensatz) return false;
    return u8(mappe_.globale()[satz].daten, kZeichensatz) <= 1;
}

int Stilbau::formatnummer(int nummer, const QString& text) {
    if (text.isEmpty()) return nummer;
    int groesste = kErstesEigenesFormat - 1;
    for (const Satz& satz : mappe_.globale()) {
        if (satz.typ != kFormat) continue;
        const auto [n, t] = formatLesen(mappe_, satz.daten);
        if (t == text) return n;
        groesste = std::max(groesste, n);
    }
    QByteArray daten;
    anhaengen<quint16>(daten, quint16(groesste + 1));
    if (mappe_.biff8()) {
        anhaengen<quint16>(daten, quint16(text.size()));
        daten += zeichenBytes8(text);
    } else {
        const QByteArray bytes = mappe_.codeseite().schreiben(text).value_or(QByteArray());
        if (bytes.isEmpty()) return 0;
        daten.append(char(bytes.size())).append(bytes);
    }
    mappe_.einfuegen(mappe_.hinterLetztem(kFormat, mappe_.suchen(kXf)), {kFormat, daten});
    return groesste + 1;
}

int Stilbau::mitFormat(int nummer, const QString& text) {
    const int format = formatnummer(nummer, text);
    QByteArray xf = mappe_.globale()[xfSatz(allgemein_)].daten;
    if (u16(xf, kXfFormat) == format) return allgemein_;
    const int benutzt = mappe_.biff8() ? kXfBenutzt8 : kXfBenutzt5;
    setzen<quint16>(xf, kXfFormat, quint16(format));
    setzen<quint8>(xf, benutzt, u8(xf, benutzt) | kEigenesFormat);
    int i = 0;
    for (const Satz& satz : mappe_.globale()) {
        if (satz.typ != kXf) continue;
        if (satz.daten == xf) return i;
        ++i;
    }
    if (anzahl_ >= kMaxFormate)
        throw EngineFehler(kSystemgrenze,
                           QStringLiteral("Die Arbeitsmappe nimmt keine weiteren Zellformate auf. "
                                          "Entfernen Sie in Excel nicht gebrauchte Formate."));
    mappe_.einfuegen(mappe_.hinterLetztem(kXf, 0), {kXf, xf});
    return anzahl_++;
}

void Stilbau::abschliessen() {
    if (!pruefsummeStimmt_) return;
    QByteArray& daten = mappe_.daten(mappe_.suchen(kXfcrc));
    setzen<quint16>(daten, kPruefAnzahl, quint16(anzahl_));
    setzen<quint32>(daten, kPruefsumme, pruefsumme(mappe_));
}

}  // namespace excel
