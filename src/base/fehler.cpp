// The failure type of the engine.
#include "base/fehler.h"

namespace {
constexpr int kErsteDatenbankNummer = 2420;

int anzahl = 0;  // failures of database operations so far; written by the constructor
}  // namespace

EngineFehler::EngineFehler(int nummer, QString beschreibung)
    : nummer_(nummer), beschreibung_(std::move(beschreibung)), bytes_(beschreibung_.toUtf8()) {
    if (nummer >= kErsteDatenbankNummer) ++anzahl;
}

int EngineFehlerAnzahl() {
    return anzahl;
}
