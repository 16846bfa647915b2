// The hits of a block in the order of slices and sweeps.
#include "search/treffersammlung.h"

#include <algorithm>
#include <utility>

#include "search/paarfolge.h"

Treffersammlung::Treffersammlung(size_t zeilen, size_t fenster)
    : breite_(quint64(Scheibenbreite(qint64(zeilen)))),
      scheiben_((zeilen + breite_ - 1) / breite_),
      fenster_(fenster) {}

// Keeps the first ones of the order.
void Treffersammlung::kuerzen() {
    const auto grenze = raenge_.begin() + qint64(fenster_);
    std::nth_element(raenge_.begin(), grenze, raenge_.end());
    ende_ = *grenze;
    zeilengrenze_ = qint32((ende_ / (breite_ * breite_) / scheiben_ + 1) * breite_);
    raenge_.erase(grenze, raenge_.end());
}

void Treffersammlung::ordnen() {
    if (raenge_.size() > fenster_) kuerzen();
    std::sort(raenge_.begin(), raenge_.end());
}

bool Treffersammlung::weiterruecken() {
    if (ende_ == kOffen) return false;
    anfang_ = std::exchange(ende_, kOffen);
    zeilengrenze_ = std::numeric_limits<qint32>::max();
    raenge_.clear();
    return true;
}

Treffersammlung::Treffer Treffersammlung::treffer(size_t nummer) const {
    const quint64 rang = raenge_[nummer];
    const quint64 scheibe = rang / (breite_ * breite_);
    return {qint32(scheibe / scheiben_ * breite_ + rang / breite_ % breite_),
            qint32(scheibe % scheiben_ * breite_ + rang % breite_)};
}
