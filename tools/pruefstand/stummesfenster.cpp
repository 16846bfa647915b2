// A window for tools without one.
#include "stummesfenster.h"

#include <utility>

Knopf StummesFenster::meldungZeigen(const Meldung& meldung) {
    meldung_ = meldung.text;
    switch (meldung.knoepfe) {
        case Knoepfe::JaNein:
            return Knopf::Nein;
        case Knoepfe::AbbrechenWiederholenIgnorieren:
            return Knopf::Abbrechen;
        default:
            return Knopf::Ok;
    }
}

QString StummesFenster::meldungAbholen() {
    return std::exchange(meldung_, QString());
}

StummesFenster& stummesFenster() {
    static StummesFenster einziges;
    return einziges;
}
