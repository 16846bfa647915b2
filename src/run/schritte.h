// Procedures as rows of steps under one failure handler: Wiederholen, Ignorieren, Abbrechen.
#pragma once

#include <functional>
#include <memory>

#include "base/fehler.h"
#include "run/meldungen.h"

// One procedure's handler. Each step runs under it:
//
//     Schritte s([&] { return QStringLiteral("Fehler beim Kopieren ..."); });
//     s.ablauf([&] {
//         s.tu([&] { ziel = gDatenbank->CreateTableDef(); });
//         s.tu([&] { ziel->setName(name); });
//     }, [] { gFehler = true; });
//
// When a step fails its message is shown. Wiederholen runs the step again, Ignorieren goes on behind it, and
// Abbrechen leaves `ablauf`, which then runs its second argument. Nothing is paid while nothing fails.
class Schritte {
  public:
    explicit Schritte(std::function<QString()> meldung) : meldung_(std::move(meldung)) {}

    template <typename Schritt>
    void tu(Schritt&& schritt) {
        for (;;) {
            try {
                schritt();
                return;
            } catch (const Abgebrochen&) {
                throw;
            } catch (...) {
                FehlerMerken();
            }
            // Outside the catch block, so that the box may run an event loop of its own.
            switch (FehlerZeigen(meldung_())) {
                case Knopf::Wiederholen:
                    continue;
                case Knopf::Ignorieren:
                    return;
                default:
                    throw Abgebrochen{this};
            }
        }
    }

    template <typename Ablauf, typename BeiAbbruch>
    void ablauf(Ablauf&& schritte, BeiAbbruch&& beiAbbruch) {
        try {
            schritte();
            return;
        } catch (const Abgebrochen& abgebrochen) {
            if (abgebrochen.wer != this) throw;
        }
        beiAbbruch();
    }

  private:
    struct Abgebrochen {
        const Schritte* wer;
    };
    std::function<QString()> meldung_;
};

// Runs a step whose failure does not matter.
template <typename Schritt>
void FehlerUebergehen(Schritt&& schritt) {
    try {
        schritt();
    } catch (...) {
    }
}

// The object that an earlier step was to make. Raises 3420 when that step failed and was passed over.
template <typename T>
T& Gesetzt(T* objekt) {
    if (!objekt)
        throw EngineFehler(kObjektUngueltig, QStringLiteral("Objekt ist ungültig oder nicht festgelegt."));
    return *objekt;
}

template <typename T>
T& Gesetzt(const std::unique_ptr<T>& objekt) {
    return Gesetzt(objekt.get());
}
