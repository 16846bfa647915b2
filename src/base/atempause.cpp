// The breathing hook.
#include "base/atempause.h"

#include <chrono>

namespace {
using Uhr = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kAbstand{15};

std::function<void()> haken;  // set by AtempauseSetzen, run by Atempause
Uhr::time_point faellig;      // when the hook runs next
bool laeuft = false;          // the hook is at work: what it calls does not breathe a second time
}  // namespace

void AtempauseSetzen(std::function<void()> neu) {
    haken = std::move(neu);
    faellig = {};
}

void Atempause() {
    if (!haken || laeuft || Uhr::now() < faellig) return;
    // Put right on every way out, since the hook may throw.
    struct Lauf {
        Lauf() { laeuft = true; }
        ~Lauf() {
            laeuft = false;
            faellig = Uhr::now() + kAbstand;
        }
    } lauf;
    // A copy, since the hook may set another one.
    const auto aufruf = haken;
    aufruf();
}
