// The hits of a block in the order of slices and sweeps.
#include "search/treffersammlung.h"

#include <algorithm>
#include <limits>

#include "search/paarfolge.h"

Treffersammlung::Treffersammlung(size_t zeilen, size_t hoechstens)
    : breite_(quint64(Scheibenbreite(qint64(zeilen)))),
      scheiben_((zeilen + breite_ - 1) / breite_),
      hoechstens_(hoechstens),
      voll_(2 * hoechstens),
      zeilengrenze_(std::numeric_limits<qint32>::max()) {}

// Keeps the first ones of the order.
void Treffersammlung::kuerzen() {
    const auto grenze = raenge_.begin() + qint64(hoechstens_);
    std::nth_element(raenge_.begin(), grenze, raenge_.end());
    grenze_ = *grenze;
    zeilengrenze_ = qint32((grenze_ / (breite_ * breite_) / scheiben_ + 1) * breite_);
    raenge_.erase(grenze, raenge_.end());
}

void Treffersammlung::ordnen() {
    std::sort(raenge_.begin(), raenge_.end());
    if (raenge_.size() > hoechstens_) raenge_.resize(hoechstens_);
}

Treffersammlung::Treffer Treffersammlung::treffer(size_t nummer) const {
    const quint64 rang = raenge_[nummer];
    const quint64 scheibe = rang / (breite_ * breite_);
    return {qint32(scheibe / scheiben_ * breite_ + rang / breite_ % breite_),
            qint32(scheibe % scheiben_ * breite_ + rang % breite_)};
}
