// Long values fetched piece by piece.
#include "engine/jet/langwert.h"

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"

namespace jet {
namespace {

constexpr quint32 kLaenge = 0x3FFFFFFF;
constexpr quint32 kInline = 0x80000000;
constexpr quint32 kEinzeln = 0x40000000;
constexpr int kFeld = 12;

void einzelnLesen(const Seitendatei& datei, Zeilenort ort, QStringView struktur, Langwert& wert) {
    const Zeilenbytes roh = zeileHolen(datei, ort, false, struktur);
    wert.stuecke.push_back(ort);
    wert.bytes = roh.bytes.first(std::min<qsizetype>(roh.bytes.size(), wert.angekuendigt)).toByteArray();
}

// A chain cannot have more pieces than the file has rows on pages; a ring is noticed at that bound or at
// the announced length, whichever comes first.
void ketteLesen(const Seitendatei& datei, Zeilenort ort, QStringView struktur, Langwert& wert) {
    while (ort.seite != 0 && wert.bytes.size() < wert.angekuendigt) {
        if (wert.stuecke.size() >= datei.seitenzahl()) beschaedigt(struktur, ort.seite);
        const Zeilenbytes roh = zeileHolen(datei, ort, false, struktur);
        const Sicht stueck(roh.bytes, struktur, ort.seite);
        wert.stuecke.push_back(ort);
        const qsizetype rest = wert.angekuendigt - wert.bytes.size();
        ort = zeilenortVon(stueck.u32(0));
        wert.bytes.append(stueck.bytes().sliced(4).first(std::min(rest, stueck.groesse() - 4)));
    }
}

}  // namespace

Langwert langwertLesen(const Seitendatei& datei, QByteArrayView feld, QStringView struktur) {
    Langwert wert;
    if (feld.isEmpty()) return wert;
    const Sicht sicht(feld, struktur, 0);
    const quint32 kopf = sicht.u32(0);
    const Zeilenort ort = zeilenortVon(sicht.u32(4));
    wert.angekuendigt = kopf & kLaenge;
    if (kopf & kInline) {
        const qsizetype da = sicht.teil(kFeld, sicht.groesse() - kFeld).size();
        wert.bytes = feld.sliced(kFeld, std::min<qsizetype>(da, wert.angekuendigt)).toByteArray();
        return wert;
    }
    if (wert.angekuendigt > quint64(datei.seitenzahl()) * quint64(datei.format().seite)) sicht.kaputt(0);
    wert.form = kopf & kEinzeln ? Langform::Einzeln : Langform::Kette;
    if (wert.form == Langform::Einzeln)
        einzelnLesen(datei, ort, struktur, wert);
    else
        ketteLesen(datei, ort, struktur, wert);
    return wert;
}

}  // namespace jet
