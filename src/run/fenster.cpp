// The one window, the yield, and what long engine operations do meanwhile.
#include "run/fenster.h"

#include <chrono>

#include "base/atempause.h"
#include "run/rahmen.h"
#include "run/zustand.h"

namespace {
using Uhr = std::chrono::steady_clock;

Fenster* dasFenster = nullptr;         // set by FensterSetzen, read by all
std::chrono::milliseconds abstand{8};  // between two pumps; set by DoEventsAbstandSetzen
Uhr::time_point faellig;               // when DoEvents pumps next; written by DoEvents

// Only a run at work is made for clicks that arrive in the middle of an engine operation.
void atmen() {
    if (gRahmen == kRahmenDurchfuehrung)
        DoEvents();
    else
        fenster().nurZeichnen();
}
}  // namespace

void FensterSetzen(Fenster* neues) {
    dasFenster = neues;
    AtempauseSetzen(neues ? std::function<void()>(atmen) : std::function<void()>());
}

Fenster& fenster() {
    Q_ASSERT(dasFenster);
    return *dasFenster;
}

void DoEvents() {
    if (Uhr::now() < faellig) return;
    dasFenster->ereignisseVerarbeiten();
    faellig = Uhr::now() + abstand;
}

void DoEventsAbstandSetzen(int ms) {
    abstand = std::chrono::milliseconds(ms);
    faellig = Uhr::time_point();
}
