// Sorts much without holding the window.
#pragma once

#include <algorithm>
#include <iterator>

// As std::sort; calls `pause` again and again, which may throw and then leaves some order or other.
template <typename Stelle, typename Kleiner, typename Pause>
void SortierenMitPausen(Stelle von, Stelle bis, Kleiner kleiner, Pause pause) {
    constexpr std::ptrdiff_t kStueck = 1 << 15;
    pause();
    if (bis - von <= kStueck) return std::sort(von, bis, kleiner);
    const Stelle mitte = von + (bis - von) / 2;
    SortierenMitPausen(von, mitte, kleiner, pause);
    SortierenMitPausen(mitte, bis, kleiner, pause);
    std::inplace_merge(von, mitte, bis, kleiner);
}
