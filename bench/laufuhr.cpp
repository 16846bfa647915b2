// Watches a run of the program from outside.
#include "laufuhr.h"

#include <QAbstractEventDispatcher>
#include <QJsonObject>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "messwerte.h"
#include "run/zustand.h"

namespace {

constexpr double kKuerzesterBalken = 0.5;  // seconds: below that nobody reads it
constexpr double kMilli = 1000;

double gerundet(double zahl, double stellen) {
    return std::round(zahl * stellen) / stellen;
}

}  // namespace

// Every pass through the event loop wakes it first, whoever runs it.
Laufuhr::Laufuhr() : zuletzt_(jetzt()) {
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
            [this] { umdrehung(); });
}

Laufuhr::Augenblick Laufuhr::jetzt() {
    const auto uhr = std::chrono::steady_clock::now().time_since_epoch();
    return {Prozessorsekunden(), std::chrono::duration<double>(uhr).count()};
}

void Laufuhr::umdrehung() {
    const Augenblick nun = jetzt();
    if (!phasen_.empty()) {
        Phase& phase = phasen_.back();
        phase.stille.prozessor = std::max(phase.stille.prozessor, nun.prozessor - zuletzt_.prozessor);
        phase.stille.uhr = std::max(phase.stille.uhr, nun.uhr - zuletzt_.uhr);
        if (balkenLaeuft_ && gFortschrittMax > 0)
            phase.balken.emplace_back(nun.prozessor - phase.anfang.prozessor,
                                      100.0 * double(gFortschrittWert) / double(gFortschrittMax));
    }
    zuletzt_ = jetzt();
}

void Laufuhr::phase(const QString& name) {
    const Augenblick nun = jetzt();
    if (!phasen_.empty()) {
        Phase& bisher = phasen_.back();
        if (bisher.name == name) return;
        bisher.dauer = {nun.prozessor - bisher.anfang.prozessor, nun.uhr - bisher.anfang.uhr};
    }
    phasen_.push_back({name, nun, {}, {}, {}});
}

// The bar is true when it shows the share of the time that has passed.
double Laufuhr::balkenfehler(const Phase& phase) {
    if (phase.dauer.prozessor < kKuerzesterBalken) return 0;
    double groesster = 0;
    for (const auto& [sekunden, gezeigt] : phase.balken)
        groesster = std::max(groesster, std::abs(gezeigt - 100 * sekunden / phase.dauer.prozessor));
    return groesster;
}

QJsonArray Laufuhr::ergebnis() {
    phase(QStringLiteral("Ende"));
    QJsonArray zeilen;
    for (const Phase& p : phasen_) {
        if (&p == &phasen_.back()) break;
        zeilen.append(QJsonObject{{"phase", p.name},
                                  {"sekunden", gerundet(p.dauer.prozessor, kMilli)},
                                  {"uhr", gerundet(p.dauer.uhr, kMilli)},
                                  {"stilleMs", gerundet(p.stille.prozessor * kMilli, 1)},
                                  {"stilleUhrMs", gerundet(p.stille.uhr * kMilli, 1)},
                                  {"balkenfehler", gerundet(balkenfehler(p), 1)}});
    }
    return zeilen;
}

double Laufuhr::zwischen(const QString& von, const QString& bis) const {
    const auto mit = [&](const QString& name) {
        return std::find_if(phasen_.begin(), phasen_.end(), [&](const Phase& p) { return p.name == name; });
    };
    const auto anfang = mit(von);
    const auto ende = mit(bis);
    if (anfang == phasen_.end() || ende == phasen_.end()) return 0;
    return ende->anfang.prozessor - anfang->anfang.prozessor;
}
