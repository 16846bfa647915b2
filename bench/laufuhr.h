// Watches a run of the program from outside: how long each phase takes, and how long the window cannot
// answer.
#pragma once

#include <QJsonArray>
#include <QObject>
#include <QString>
#include <vector>

// Counts from its construction. A phase that is named a second time is another one.
class Laufuhr : public QObject {
  public:
    Laufuhr();
    // Ends the phase before it. The same name once more goes on with the phase.
    void phase(const QString& name);
    // The bar of the window moves from here on, or stands still.
    void balken(bool laeuft) { balkenLaeuft_ = laeuft; }
    // For each phase: seconds of the processor and of the clock, the longest time between two turns of the
    // event loop in milliseconds of both, and how far the bar was from the share of the phase's time, in per
    // cent.
    QJsonArray ergebnis();
    // Seconds of the processor from the beginning of the first phase of this name to the end of the last one
    // before `bis`; 0 without it.
    double zwischen(const QString& von, const QString& bis) const;

  private:
    struct Augenblick {
        double prozessor = 0;
        double uhr = 0;
    };
    struct Phase {
        QString name;
        Augenblick anfang;
        Augenblick dauer;
        Augenblick stille;                              // the longest one
        std::vector<std::pair<double, double>> balken;  // seconds into the phase, per cent shown
    };
    static Augenblick jetzt();
    void umdrehung();
    static double balkenfehler(const Phase& phase);

    std::vector<Phase> phasen_;
    Augenblick zuletzt_;  // the last turn
    bool balkenLaeuft_ = false;
};
