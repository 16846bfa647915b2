// Pages of index trees.
#include "engine/jet/indexseite.h"

#include "base/atempause.h"
#include "engine/jet/bytes.h"
#include "engine/jet/kartenbau.h"

namespace jet {
namespace {

constexpr int kFreiStelle = 2;
constexpr int kBesitzerStelle = 4;

int praefixLesen(const Format& format, const Sicht& sicht) {
    return format.indexPraefixBreite == 1 ? sicht.u8(format.indexPraefix) : sicht.u16(format.indexPraefix);
}

Indexseite kopfLesen(const Format& format, const Sicht& sicht) {
    Indexseite seite;
    seite.blatt = sicht.u8(0) == kIndexblatt;
    seite.frei = sicht.u16(kFreiStelle);
    seite.besitzer = sicht.u32(kBesitzerStelle);
    seite.vorige = sicht.u32(format.indexVorige);
    seite.naechste = sicht.u32(format.indexNaechste);
    seite.letztesKind = sicht.u32(format.indexLetztesKind);
    seite.praefix = praefixLesen(format, sicht);
    seite.ebene = sicht.u8(format.indexEbene);
    return seite;
}

// Each bit of the mask is the end of an entry, counted from the start of the entry area.
std::vector<int> endenLesen(const Format& format, const Sicht& sicht) {
    std::vector<int> enden;
    for (int i = 0; i < format.indexMaskeLaenge; ++i) {
        const quint8 maske = sicht.u8(format.indexMaske + i);
        for (int bit = 0; maske >> bit != 0; ++bit)
            if (maske >> bit & 1) enden.push_back(8 * i + bit);
    }
    if (!enden.empty() && (enden.front() == 0 || enden.back() > eintragsbytes(format)))
        sicht.kaputt(format.indexMaske);
    return enden;
}

void eintraegeLesen(const Format& format, const Sicht& sicht, Indexseite& seite) {
    const int trailer = seite.blatt ? kBlattTrailer : kInnererTrailer;
    QByteArray praefix;
    int ab = 0;
    for (const int ende : endenLesen(format, sicht)) {
        const int stelle = format.indexEintraege + ab;
        QByteArray eintrag = praefix + sicht.teil(stelle, ende - ab).toByteArray();
        if (eintrag.size() < trailer) sicht.kaputt(stelle);
        if (seite.eintraege.empty()) {
            if (seite.praefix > eintrag.size()) sicht.kaputt(format.indexPraefix);
            praefix = eintrag.left(seite.praefix);
        }
        seite.eintraege.push_back(std::move(eintrag));
        ab = ende;
    }
}

void kopfSetzen(const Format& format, const Indexseitenkopf& kopf, int praefix, QByteArray& seite) {
    u8Setzen(seite, 0, kopf.blatt ? kIndexblatt : kInnereIndexseite);
    u8Setzen(seite, 1, 1);
    u32Setzen(seite, kBesitzerStelle, kopf.besitzer);
    u32Setzen(seite, format.indexVorige, kopf.vorige);
    u32Setzen(seite, format.indexNaechste, kopf.naechste);
    u32Setzen(seite, format.indexLetztesKind, kopf.letztesKind);
    if (format.indexPraefixBreite == 1)
        u8Setzen(seite, format.indexPraefix, quint8(praefix));
    else
        u16Setzen(seite, format.indexPraefix, quint16(praefix));
    u8Setzen(seite, format.indexEbene, kopf.ebene);
}

}  // namespace

Indexseite indexseiteLesen(const Seitendatei& datei, quint32 nummer, QStringView struktur) {
    const QByteArray bytes = datei.seite(nummer);
    const Sicht sicht(bytes, struktur, nummer);
    if (nummer == 0 || (sicht.u8(0) != kIndexblatt && sicht.u8(0) != kInnereIndexseite)) sicht.kaputt(0);
    Indexseite seite = kopfLesen(datei.format(), sicht);
    eintraegeLesen(datei.format(), sicht, seite);
    return seite;
}

QByteArrayView eintragSchluessel(QByteArrayView eintrag, bool blatt) {
    return eintrag.chopped(blatt ? kBlattTrailer : kInnererTrailer);
}

Zeilenort eintragZeile(QByteArrayView eintrag, bool blatt) {
    const Sicht sicht(eintrag, u"Index", 0);
    const qsizetype ab = eintrag.size() - (blatt ? kBlattTrailer : kInnererTrailer);
    return {sicht.u24be(ab), sicht.u8(ab + 3)};
}

quint32 eintragKind(QByteArrayView eintrag) {
    return Sicht(eintrag, u"Index", 0).u32be(eintrag.size() - 4);
}

quint32 kind(const Indexseite& seite, size_t i) {
    return i < seite.eintraege.size() ? eintragKind(seite.eintraege[i]) : seite.letztesKind;
}

QByteArray indexseiteBauen(const Format& format, const Indexseitenkopf& kopf,
                           const std::vector<QByteArrayView>& eintraege, int praefix) {
    QByteArray seite(format.seite, '\0');
    kopfSetzen(format, kopf, praefix, seite);
    qsizetype ab = 0;
    for (size_t i = 0; i < eintraege.size(); ++i) {
        const QByteArrayView rest = eintraege[i].sliced(i == 0 ? 0 : praefix);
        bytesSetzen(seite, format.indexEintraege + ab, rest);
        ab += rest.size();
        bitSetzen(seite, format.indexMaske, ab);
    }
    u16Setzen(seite, kFreiStelle, quint16(eintragsbytes(format) - ab));
    return seite;
}

Baumgang::Baumgang(const Seitendatei& datei, quint32 wurzel, QString struktur)
    : datei_(datei), struktur_(std::move(struktur)) {
    oeffnen(wurzel);
    while (!blatt_.blatt) oeffnen(kind(blatt_, 0));
}

// No tree has more pages than the file: what goes on beyond runs in circles.
void Baumgang::oeffnen(quint32 nummer) {
    Atempause();
    if (++gelesene_ > datei_.seitenzahl()) beschaedigt(struktur_, nummer);
    blatt_ = indexseiteLesen(datei_, nummer, struktur_);
    nummer_ = nummer;
    naechster_ = 0;
}

bool Baumgang::weiter() {
    while (naechster_ >= blatt_.eintraege.size()) {
        if (blatt_.naechste == 0) return false;
        oeffnen(blatt_.naechste);
        if (!blatt_.blatt) beschaedigt(struktur_, nummer_);
    }
    ++naechster_;
    return true;
}

}  // namespace jet
