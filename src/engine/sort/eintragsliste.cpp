// Byte strings sorted eight bytes at a time.
#include "engine/sort/eintragsliste.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

#include "base/atempause.h"
#include "base/sortieren.h"

namespace sort {
namespace {

constexpr qsizetype kBlockgroesse = 1 << 20;
constexpr qsizetype kLaengenbytes = 4;
constexpr qsizetype kVorn = sizeof(quint64);
constexpr size_t kEintraegeJePause = 1 << 14;

}  // namespace

void Eintragsliste::aufnehmen(QByteArrayView anfang, QByteArrayView ende) {
    const quint32 laenge = quint32(anfang.size() + ende.size());
    const qsizetype noetig = kLaengenbytes + qsizetype(laenge);
    if (noetig > frei_) {
        frei_ = std::max(kBlockgroesse, noetig);
        bloecke_.push_back(std::make_unique<char[]>(size_t(frei_)));
        belegt_ = 0;
    }
    char* const ziel = bloecke_.back().get() + belegt_;
    std::memcpy(ziel, &laenge, sizeof laenge);
    if (!anfang.isEmpty()) std::memcpy(ziel + kLaengenbytes, anfang.data(), size_t(anfang.size()));
    if (!ende.isEmpty()) std::memcpy(ziel + kLaengenbytes + anfang.size(), ende.data(), size_t(ende.size()));
    belegt_ += noetig;
    frei_ -= noetig;
    eintraege_.push_back({0, ziel});
}

QByteArrayView Eintragsliste::inhalt(const Eintrag& eintrag) {
    quint32 laenge;
    std::memcpy(&laenge, eintrag.zeiger, sizeof laenge);
    return QByteArrayView(eintrag.zeiger + kLaengenbytes, qsizetype(laenge));
}

// Behind the end of a string stand zeros. False when all of them have ended.
bool Eintragsliste::vornLesen(const Abschnitt& abschnitt) {
    bool weiter = false;
    for (size_t i = abschnitt.von; i < abschnitt.bis; ++i) {
        const QByteArrayView bytes = inhalt(eintraege_[i]);
        const qsizetype rest = std::clamp<qsizetype>(bytes.size() - abschnitt.tiefe, 0, kVorn);
        char acht[kVorn] = {};
        if (rest > 0) std::memcpy(acht, bytes.data() + abschnitt.tiefe, size_t(rest));
        eintraege_[i].vorn = qFromBigEndian<quint64>(acht);
        weiter = weiter || rest > 0;
        if (i % kEintraegeJePause == 0) Atempause();
    }
    return weiter;
}

void Eintragsliste::nachLaenge(const Abschnitt& abschnitt) {
    std::sort(eintraege_.begin() + std::ptrdiff_t(abschnitt.von),
              eintraege_.begin() + std::ptrdiff_t(abschnitt.bis),
              [](const Eintrag& a, const Eintrag& b) { return inhalt(a).size() < inhalt(b).size(); });
}

// Runs that agree in eight bytes are sorted by the next eight.
void Eintragsliste::sortieren() {
    std::vector<Abschnitt> offen{{0, eintraege_.size(), 0}};
    while (!offen.empty()) {
        const Abschnitt abschnitt = offen.back();
        offen.pop_back();
        if (!vornLesen(abschnitt)) {
            nachLaenge(abschnitt);
            continue;
        }
        SortierenMitPausen(
            eintraege_.begin() + std::ptrdiff_t(abschnitt.von),
            eintraege_.begin() + std::ptrdiff_t(abschnitt.bis),
            [](const Eintrag& a, const Eintrag& b) { return a.vorn < b.vorn; }, Atempause);
        for (size_t von = abschnitt.von; von < abschnitt.bis;) {
            size_t bis = von + 1;
            while (bis < abschnitt.bis && eintraege_[bis].vorn == eintraege_[von].vorn) ++bis;
            if (bis - von > 1) offen.push_back({von, bis, abschnitt.tiefe + kVorn});
            von = bis;
        }
    }
}

}  // namespace sort
