// Long values written.
#include "engine/jet/langwertbau.h"

#include <algorithm>

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/seitenvergabe.h"

namespace jet {
namespace {

constexpr quint32 kInlineBit = 0x80000000;
constexpr quint32 kEinzelnBit = 0x40000000;
constexpr int kFeldBytes = 12;

QByteArray feldKopf(quint32 laengeUndArt, Zeilenort ort) {
    QByteArray feld;
    u32Anhaengen(feld, laengeUndArt);
    u32Anhaengen(feld, zeilenortWert(ort));
    u32Anhaengen(feld, 0);
    return feld;
}

void einordnen(std::vector<quint32>& seiten, quint32 seite) {
    const auto stelle = std::lower_bound(seiten.begin(), seiten.end(), seite);
    if (stelle == seiten.end() || *stelle != seite) seiten.insert(stelle, seite);
}

void streichen(std::vector<quint32>& seiten, quint32 seite) {
    const auto stelle = std::lower_bound(seiten.begin(), seiten.end(), seite);
    if (stelle != seiten.end() && *stelle == seite) seiten.erase(stelle);
}

}  // namespace

Langwertbau::Langwertbau(Seitendatei& datei, Seitenvergabe& vergabe, std::vector<quint32> besitz,
                         std::vector<quint32> frei)
    : datei_(datei), vergabe_(vergabe), besitz_(std::move(besitz)), frei_(std::move(frei)) {}

qsizetype Langwertbau::feldlaenge(qsizetype inhalt, int inlineGrenze) {
    return inhalt <= inlineGrenze ? kFeldBytes + inhalt : kFeldBytes;
}

QByteArray Langwertbau::feld(const QByteArray& inhalt, int inlineGrenze) {
    const quint32 laenge = quint32(inhalt.size());
    if (inhalt.size() <= inlineGrenze) return feldKopf(laenge | kInlineBit, {}) + inhalt;
    if (inhalt.size() <= datei_.format().langEinzeln)
        return feldKopf(laenge | kEinzelnBit, zeileAblegen(inhalt));
    return feldKopf(laenge, ketteAblegen(inhalt));
}

// From the last piece to the first, since each one names its successor.
Zeilenort Langwertbau::ketteAblegen(const QByteArray& inhalt) {
    const qsizetype stueck = datei_.format().langStueck;
    Zeilenort naechstes;
    for (qsizetype ab = (inhalt.size() - 1) / stueck * stueck; ab >= 0; ab -= stueck) {
        QByteArray zeile;
        u32Anhaengen(zeile, zeilenortWert(naechstes));
        naechstes = zeileAblegen(zeile + inhalt.mid(ab, stueck));
    }
    return naechstes;
}

Zeilenort Langwertbau::zeileAblegen(const QByteArray& bytes) {
    if (!bau_ || !bau_->passt(bytes.size())) {
        const bool ersteSeite = !bau_;
        abschliessen();
        if (!ersteSeite || !freieSeiteOeffnen(bytes.size())) neueSeiteOeffnen();
    }
    return {offen_, quint8(bau_->anfuegen(bytes))};
}

// Only once, before anything else: pages that this writer leaves behind are full.
bool Langwertbau::freieSeiteOeffnen(qsizetype laenge) {
    for (const quint32 seite : frei_) {
        const QByteArray bytes = datei_.seite(seite, kDatenseite, u"Memoseite");
        if (besitzerLesen(bytes) != kBesitzerLang) continue;
        Datenseitenbau bau(datei_.format(), bytes, seite);
        if (!bau.passt(laenge)) continue;
        offen_ = seite;
        bau_ = std::move(bau);
        return true;
    }
    return false;
}

void Langwertbau::neueSeiteOeffnen() {
    if (offen_ != 0) streichen(frei_, offen_);
    offen_ = vergabe_.belegen();
    bau_ = Datenseitenbau(datei_.format(), kBesitzerLang);
    einordnen(besitz_, offen_);
    einordnen(frei_, offen_);
}

void Langwertbau::loeschen(const std::vector<Zeilenort>& stuecke) {
    abschliessen();
    for (const Zeilenort ort : stuecke) stueckLoeschen(ort);
    bau_.reset();
    offen_ = 0;
}

void Langwertbau::stueckLoeschen(Zeilenort ort) {
    const QByteArray bytes = datei_.seite(ort.seite, kDatenseite, u"Memoseite");
    if (besitzerLesen(bytes) != kBesitzerLang) beschaedigt(u"Memoseite", ort.seite);
    Datenseitenbau bau(datei_.format(), bytes, ort.seite);
    if (ort.zeile >= bau.slots()) beschaedigt(u"Memoseite", ort.seite);
    bau.loeschen(ort.zeile);
    datei_.schreiben(ort.seite, bau.bytes());
    if (!std::binary_search(besitz_.begin(), besitz_.end(), ort.seite)) return;
    if (!bau.leer()) return einordnen(frei_, ort.seite);
    streichen(besitz_, ort.seite);
    streichen(frei_, ort.seite);
    vergabe_.freigeben(ort.seite);
}

void Langwertbau::abschliessen() {
    if (bau_) datei_.schreiben(offen_, bau_->bytes());
}

}  // namespace jet
