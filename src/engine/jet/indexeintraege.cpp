// Entries gathered and sorted.
#include "engine/jet/indexeintraege.h"

#include <QtEndian>

#include "base/atempause.h"
#include "engine/jet/indexseite.h"

namespace jet {
namespace {

constexpr size_t kEintraegeJePause = 4096;

}  // namespace

void Indexeintraege::aufnehmen(QByteArrayView schluessel, Zeilenort zeile) {
    const quint32 ort = qToBigEndian(zeilenortWert(zeile));
    liste_.aufnehmen(schluessel, QByteArrayView(reinterpret_cast<const char*>(&ort), kBlattTrailer));
}

QByteArrayView Indexeintraege::schluessel(size_t i) const {
    return eintragSchluessel(eintrag(i));
}

quint32 Indexeintraege::verschiedene() const {
    quint32 zahl = 0;
    for (size_t i = 0; i < anzahl(); ++i) {
        if (i == 0 || schluessel(i) != schluessel(i - 1)) ++zahl;
        if (i % kEintraegeJePause == 0) Atempause();
    }
    return zahl;
}

bool Indexeintraege::hatDoppelte(QByteArrayView ausser) const {
    for (size_t i = 1; i < anzahl(); ++i) {
        if (schluessel(i) == schluessel(i - 1) && schluessel(i) != ausser) return true;
        if (i % kEintraegeJePause == 0) Atempause();
    }
    return false;
}

}  // namespace jet
