// Groups of duplicates: connected pairs, the list of their records, and the program's own sort of that list.
#include "search/gruppen.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "base/atempause.h"
#include "base/sortieren.h"

namespace {

// Union-find over the records of the pairs.
class Komponenten {
  public:
    explicit Komponenten(const std::vector<Paar>& paare) {
        saetze_.reserve(paare.size() * 2);
        for (const Paar& paar : paare) {
            saetze_.push_back(paar.erster);
            saetze_.push_back(paar.zweiter);
        }
        SortierenMitPausen(saetze_.begin(), saetze_.end(), std::less<>(), Atempause);
        saetze_.erase(std::unique(saetze_.begin(), saetze_.end()), saetze_.end());
        eltern_.resize(saetze_.size());
        std::iota(eltern_.begin(), eltern_.end(), size_t(0));
    }

    size_t anzahl() const { return saetze_.size(); }

    size_t wurzel(qint32 satz) {
        size_t i = size_t(std::lower_bound(saetze_.begin(), saetze_.end(), satz) - saetze_.begin());
        while (eltern_[i] != i) i = eltern_[i] = eltern_[eltern_[i]];
        return i;
    }

    void verbinden(const Paar& paar) { eltern_[wurzel(paar.zweiter)] = wurzel(paar.erster); }

  private:
    std::vector<qint32> saetze_;  // sorted, each once
    std::vector<size_t> eltern_;
};

bool kleiner(const Dublette& a, const Dublette& b) {
    return std::tie(a.gruppe, a.satz) < std::tie(b.gruppe, b.satz);
}

// One partition of lo..hi; gives the ends of the two parts that are still to be sorted: lo..first,
// second..hi.
std::pair<qint64, qint64> teilen(std::vector<Dublette>& d, qint64 lo, qint64 hi) {
    qint64 i = lo;
    qint64 j = hi;
    const size_t m = size_t((lo + hi) / 2);
    do {
        // The place m is read afresh each time. It stops both walks itself until a swap has moved it, and
        // what that swap put on the other side stops them afterwards.
        while (kleiner(d[size_t(i)], d[m])) ++i;
        while (kleiner(d[m], d[size_t(j)])) --j;
        if (i <= j) std::swap(d[size_t(i++)], d[size_t(j--)]);
    } while (i <= j);
    return {j, i};
}

}  // namespace

void GruppenBilden(std::vector<Paar>& paare) {
    Komponenten komponenten(paare);
    for (const Paar& paar : paare) {
        komponenten.verbinden(paar);
        Atempause();
    }
    std::vector<qint32> nummern(komponenten.anzahl(), 0);
    qint32 letzte = 0;
    for (Paar& paar : paare) {
        qint32& nummer = nummern[komponenten.wurzel(paar.erster)];
        if (nummer == 0) nummer = ++letzte;
        paar.gruppe = nummer;
        Atempause();
    }
}

std::vector<Dublette> DublettenAuflisten(const std::vector<Paar>& paare) {
    std::vector<Dublette> liste;
    std::unordered_set<qint32> bekannt;
    for (const Paar& paar : paare) {
        for (const qint32 satz : {paar.erster, paar.zweiter})
            if (bekannt.insert(satz).second) liste.push_back({satz, paar.gruppe});
        Atempause();
    }
    return liste;
}

void DublettenSortieren(std::vector<Dublette>& dubletten) {
    // The parts do not overlap, so the order in which they are sorted does not show.
    std::vector<std::pair<qint64, qint64>> offen;
    if (dubletten.size() > 1) offen.emplace_back(0, qint64(dubletten.size()) - 1);
    while (!offen.empty()) {
        const auto [lo, hi] = offen.back();
        offen.pop_back();
        Atempause();
        const auto [links, rechts] = teilen(dubletten, lo, hi);
        if (rechts < hi) offen.emplace_back(rechts, hi);
        if (lo < links) offen.emplace_back(lo, links);
    }
}
