// Taking and giving back pages by the global map.
#include "engine/jet/seitenvergabe.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/karte.h"
#include "engine/jet/kartenbau.h"
#include "engine/jet/seitenbau.h"

namespace jet {
namespace {

constexpr Zeilenort kGlobaleKarte{1, 0};
constexpr int kWischBytes = 4;

}  // namespace

Seitenvergabe::Seitenvergabe(Seitendatei& datei) : datei_(datei), frei_(datei.seitenzahl(), false) {
    for (const quint32 seite : karteLesen(datei, kGlobaleKarte, u"Freiliste").seiten) frei_[seite] = true;
}

quint32 Seitenvergabe::belegen() {
    geaendert_ = true;
    while (!nurAmEnde_ && sucheAb_ < frei_.size()) {
        const quint32 seite = sucheAb_++;
        if (!frei_[seite]) continue;
        frei_[seite] = false;
        return seite;
    }
    const quint32 seite = datei_.anhaengen();
    frei_.push_back(false);
    sucheAb_ = std::max(sucheAb_, seite + 1);
    return seite;
}

void Seitenvergabe::freigeben(quint32 seite) {
    if (seite == 0 || seite >= frei_.size() || frei_[seite]) beschaedigt(u"Freiliste", seite);
    geaendert_ = true;
    frei_[seite] = true;
    sucheAb_ = std::min(sucheAb_, seite);
    QByteArray bytes = datei_.seite(seite);
    bytesSetzen(bytes, 0, QByteArray(kWischBytes, '\0'));
    datei_.schreiben(seite, bytes);
}

bool Seitenvergabe::istFrei(quint32 seite) const {
    return seite < frei_.size() && frei_[seite];
}

void Seitenvergabe::schreiben() {
    if (!geaendert_) return;
    geaendert_ = false;
    const Format& format = datei_.format();
    const Datenseitenbau eins(format, datei_.seite(1), 1);
    const QByteArray alt = eins.zeile(0);
    const bool verwiesen = alt[0] != 0;
    const qsizetype noetig = (qsizetype(frei_.size()) + 31) / 32 * 4;
    const qsizetype bitBytes =
        std::max({noetig, qsizetype(format.karteBits), verwiesen ? 0 : alt.size() - kKartenkopf});
    if (!verwiesen && eins.passtStatt(0, kKartenkopf + bitBytes))
        alsZeile(bitBytes);
    else
        alsVerweise(alt);
}

void Seitenvergabe::alsZeile(qsizetype bitBytes) {
    QByteArray zeile(kKartenkopf + bitBytes, '\0');
    for (qsizetype bit = 0; bit < bitBytes * 8; ++bit)
        if (size_t(bit) >= frei_.size() || frei_[size_t(bit)]) bitSetzen(zeile, kKartenkopf, bit);
    Datenseitenbau eins(datei_.format(), datei_.seite(1), 1);
    eins.ersetzen(0, zeile);
    datei_.schreiben(1, eins.bytes());
}

void Seitenvergabe::alsVerweise(const QByteArray& alteZeile) {
    const Format& format = datei_.format();
    QByteArray zeile(format.kartenZeile, '\0');
    if (alteZeile[0] != 0)
        bytesSetzen(zeile, 0, QByteArrayView(alteZeile).first(std::min(alteZeile.size(), zeile.size())));
    u8Setzen(zeile, 0, 1);
    const qsizetype jeSeite = format.seitenJeTyp5();
    // The pages of the map are pages of the file themselves: taking one may call for another.
    for (qsizetype i = 0; i * jeSeite < qsizetype(frei_.size()); ++i) {
        if (i >= format.karteVerweise)
            throw EngineFehler(kSystemgrenze,
                               u"Die Datenbankdatei würde größer, als das Dateiformat zulässt."_qs);
        const qsizetype stelle = 1 + 4 * i;
        if (Sicht(zeile, u"Freiliste", 1).u32(stelle) != 0) continue;
        u32Setzen(zeile, stelle, datei_.anhaengen());
        frei_.push_back(false);
    }
    for (qsizetype i = 0; i * jeSeite < qsizetype(frei_.size()); ++i) {
        QByteArray seite = leereKartenseite(format);
        for (qsizetype bit = 0; bit < jeSeite; ++bit) {
            const size_t nummer = size_t(i * jeSeite + bit);
            if (nummer >= frei_.size() || frei_[nummer]) bitSetzen(seite, kKartenseitenkopf, bit);
        }
        datei_.schreiben(Sicht(zeile, u"Freiliste", 1).u32(1 + 4 * i), seite);
    }
    Datenseitenbau eins(format, datei_.seite(1), 1);
    eins.ersetzen(0, zeile);
    datei_.schreiben(1, eins.bytes());
}

}  // namespace jet
