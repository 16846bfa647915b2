// Usage maps written.
#include "engine/jet/kartenbau.h"

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/karte.h"
#include "engine/jet/seitenbau.h"
#include "engine/jet/seitenvergabe.h"

namespace jet {
namespace {

QByteArray inlineZeile(const Format& format, quint32 erste, const std::vector<quint32>& seiten) {
    QByteArray zeile(format.kartenZeile, '\0');
    u32Setzen(zeile, 1, erste);
    for (const quint32 seite : seiten) bitSetzen(zeile, kKartenkopf, seite - erste);
    return zeile;
}

// The first page of a window that holds all pages, or nothing wide enough.
bool fensterFinden(const Format& format, const std::vector<quint32>& seiten, quint32& erste) {
    const quint32 breite = quint32(format.karteBits) * 8;
    erste = 0;
    if (seiten.empty() || seiten.back() < breite) return true;
    erste = seiten.front() / 8 * 8;
    return seiten.back() - erste < breite;
}

// Bits of `seiten` as pages of type 5, one for each range that has any.
std::vector<QByteArray> kartenseitenBauen(const Format& format, const std::vector<quint32>& seiten) {
    std::vector<QByteArray> bloecke(size_t(format.karteVerweise));
    const quint32 jeSeite = quint32(format.seitenJeTyp5());
    for (const quint32 seite : seiten) {
        QByteArray& block = bloecke.at(seite / jeSeite);
        if (block.isEmpty()) block = leereKartenseite(format);
        bitSetzen(block, kKartenseitenkopf, seite % jeSeite);
    }
    return bloecke;
}

}  // namespace

void bitSetzen(QByteArray& bytes, qsizetype ab, qsizetype bit) {
    const qsizetype stelle = ab + bit / 8;
    Q_ASSERT(stelle < bytes.size());
    bytes[stelle] = char(quint8(bytes[stelle]) | 1u << (bit % 8));
}

QByteArray leereKartenseite(const Format& format) {
    QByteArray seite(format.seite, '\0');
    u8Setzen(seite, 0, kKartenseite);
    u8Setzen(seite, 1, 1);
    return seite;
}

QByteArray kartenzeileBauen(Seitendatei& datei, Seitenvergabe& vergabe, const std::vector<quint32>& seiten,
                            std::vector<quint32> vorhandene) {
    const Format& format = datei.format();
    quint32 erste = 0;
    QByteArray zeile(format.kartenZeile, '\0');
    if (fensterFinden(format, seiten, erste)) {
        zeile = inlineZeile(format, erste, seiten);
    } else {
        u8Setzen(zeile, 0, 1);
        const std::vector<QByteArray> bloecke = kartenseitenBauen(format, seiten);
        for (size_t i = 0; i < bloecke.size(); ++i) {
            if (bloecke[i].isEmpty()) continue;
            const quint32 seite = vorhandene.empty() ? vergabe.belegen() : vorhandene.back();
            if (!vorhandene.empty()) vorhandene.pop_back();
            datei.schreiben(seite, bloecke[i]);
            u32Setzen(zeile, qsizetype(1 + 4 * i), seite);
        }
    }
    for (const quint32 seite : vorhandene) vergabe.freigeben(seite);
    return zeile;
}

void karteErsetzen(Seitendatei& datei, Seitenvergabe& vergabe, Zeilenort ort,
                   const std::vector<quint32>& seiten) {
    const Karte alt = karteLesen(datei, ort, u"Seitenkarte");
    if (alt.seiten == seiten) return;
    const QByteArray zeile = kartenzeileBauen(datei, vergabe, seiten, alt.bitmapseiten);
    Datenseitenbau bau(datei.format(), datei.seite(ort.seite), ort.seite);
    if (!bau.passtStatt(ort.zeile, zeile.size())) beschaedigt(u"Seitenkarte", ort.seite);
    bau.ersetzen(ort.zeile, zeile);
    datei.schreiben(ort.seite, bau.bytes());
}

Zeilenort Kartenseiten::anfuegen(const std::vector<std::vector<quint32>>& karten) {
    if (seite_ != 0 && zeilen_.size() + karten.size() > size_t(datei_.format().kartenJeSeite)) abschliessen();
    if (seite_ == 0) seite_ = vergabe_.belegen();
    const Zeilenort ort{seite_, quint8(zeilen_.size())};
    for (const std::vector<quint32>& seiten : karten)
        zeilen_.push_back(kartenzeileBauen(datei_, vergabe_, seiten));
    return ort;
}

void Kartenseiten::abschliessen() {
    if (seite_ == 0) return;
    Datenseitenbau bau(datei_.format(), 0);
    for (const QByteArray& zeile : zeilen_) bau.anfuegen(zeile);
    datei_.schreiben(seite_, bau.bytes());
    seite_ = 0;
    zeilen_.clear();
}

}  // namespace jet
