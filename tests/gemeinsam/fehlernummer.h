// The failures that tests expect.
#pragma once

#include <gtest/gtest.h>

#include <QString>

#include "base/fehler.h"

// The number of the EngineFehler that `tun` raises, 0 if it raises none. Every failure has a text, which goes
// to `text`.
template <typename F>
int fehlerVon(F&& tun, QString* text = nullptr) {
    try {
        tun();
        return 0;
    } catch (const EngineFehler& fehler) {
        EXPECT_FALSE(fehler.beschreibung().isEmpty());
        if (text) *text = fehler.beschreibung();
        return fehler.nummer();
    }
}
