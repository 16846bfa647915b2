// Entries gathered and sorted.
#include "engine/jet/indexeintraege.h"

#include <algorithm>
#include <cstring>

#include "engine/jet/bytes.h"
#include "engine/jet/indexseite.h"

namespace jet {
namespace {

constexpr qsizetype kBlockgroesse = 1 << 20;
constexpr qsizetype kLaengenbytes = 4;

QByteArrayView eintragBei(const char* zeiger) {
    quint32 laenge;
    std::memcpy(&laenge, zeiger, sizeof laenge);
    return QByteArrayView(zeiger + kLaengenbytes, qsizetype(laenge));
}

bool kleiner(const char* a, const char* b) {
    const QByteArrayView links = eintragBei(a);
    const QByteArrayView rechts = eintragBei(b);
    const int unterschied =
        std::memcmp(links.data(), rechts.data(), size_t(std::min(links.size(), rechts.size())));
    return unterschied != 0 ? unterschied < 0 : links.size() < rechts.size();
}

}  // namespace

void Indexeintraege::aufnehmen(QByteArrayView schluessel, Zeilenort zeile) {
    QByteArray eintrag;
    u32Anhaengen(eintrag, quint32(schluessel.size() + kBlattTrailer));
    eintrag.append(schluessel);
    u24beAnhaengen(eintrag, zeile.seite);
    u8Anhaengen(eintrag, zeile.zeile);
    if (eintrag.size() > frei_) {
        frei_ = std::max(kBlockgroesse, eintrag.size());
        bloecke_.push_back(std::make_unique<char[]>(size_t(frei_)));
        belegt_ = 0;
    }
    char* ziel = bloecke_.back().get() + belegt_;
    std::memcpy(ziel, eintrag.constData(), size_t(eintrag.size()));
    belegt_ += eintrag.size();
    frei_ -= eintrag.size();
    zeiger_.push_back(ziel);
}

void Indexeintraege::sortieren() {
    std::sort(zeiger_.begin(), zeiger_.end(), kleiner);
}

QByteArrayView Indexeintraege::eintrag(size_t i) const {
    return eintragBei(zeiger_[i]);
}

QByteArrayView Indexeintraege::schluessel(size_t i) const {
    return eintragSchluessel(eintrag(i));
}

quint32 Indexeintraege::verschiedene() const {
    quint32 zahl = 0;
    for (size_t i = 0; i < anzahl(); ++i)
        if (i == 0 || schluessel(i) != schluessel(i - 1)) ++zahl;
    return zahl;
}

bool Indexeintraege::hatDoppelte(QByteArrayView ausser) const {
    for (size_t i = 1; i < anzahl(); ++i)
        if (schluessel(i) == schluessel(i - 1) && schluessel(i) != ausser) return true;
    return false;
}

}  // namespace jet
