// Damaged input may be refused, and by nothing but an EngineFehler.
#pragma once

#include "base/fehler.h"

// Runs `tun`; what it refuses keeps nothing else from being looked at. Anything else that it throws goes on.
template <typename F>
void Versuchen(F&& tun) {
    try {
        tun();
    } catch (const EngineFehler&) {
        return;
    }
}
