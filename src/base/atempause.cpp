// The breathing hook.
#include "base/atempause.h"

#include <chrono>

namespace {
using Uhr = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kAbstand{15};

std::function<void()> haken;  // set by AtempauseSetzen, run by Atempause
Uhr::time_point faellig;      // when the hook runs next
}  // namespace

void AtempauseSetzen(std::function<void()> neu) {
    haken = std::move(neu);
}

void Atempause() {
    if (!haken) return;
    const Uhr::time_point jetzt = Uhr::now();
    if (jetzt < faellig) return;
    haken();
    faellig = Uhr::now() + kAbstand;
}
