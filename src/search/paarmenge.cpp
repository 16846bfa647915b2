// Which pairs of records are listed already, in either order.
#include "search/paarmenge.h"

#include <algorithm>
#include <utility>

namespace {

constexpr size_t kAnfang = 256;

quint64 schluesselFuer(qint32 a, qint32 b) {
    const auto [klein, gross] = std::minmax(a, b);
    return quint64(quint32(klein)) << 32 | quint32(gross);
}

}  // namespace

bool PaarMenge::enthaelt(qint32 a, qint32 b) const {
    return !plaetze_.empty() && plaetze_[platz(schluesselFuer(a, b))] != 0;
}

bool PaarMenge::einfuegen(qint32 a, qint32 b) {
    if (plaetze_.size() < 2 * (anzahl_ + 1)) vergroessern();
    quint64& platzInhalt = plaetze_[platz(schluesselFuer(a, b))];
    if (platzInhalt != 0) return false;
    platzInhalt = schluesselFuer(a, b);
    ++anzahl_;
    return true;
}

void PaarMenge::leeren() {
    plaetze_ = {};
    anzahl_ = 0;
}

// Where the key stands, or the free place where it belongs.
size_t PaarMenge::platz(quint64 schluessel) const {
    const size_t maske = plaetze_.size() - 1;
    size_t i = size_t((schluessel * 0x9E3779B97F4A7C15u) >> 20) & maske;
    while (plaetze_[i] != 0 && plaetze_[i] != schluessel) i = (i + 1) & maske;
    return i;
}

void PaarMenge::vergroessern() {
    const std::vector<quint64> alt = std::exchange(plaetze_, {});
    plaetze_.resize(std::max(kAnfang, alt.size() * 2));
    for (const quint64 schluessel : alt)
        if (schluessel != 0) plaetze_[platz(schluessel)] = schluessel;
}
