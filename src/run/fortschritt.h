// Progress of a phase and the estimate of its time.
#pragma once

#include <QString>
#include <utility>

void FortschrittLeeren();
// `gesamt` is the total of the phase; `anteil` is kept and never read.
void FortschrittStarten(qint64 gesamt, double anteil);
void FortschrittAnhalten();
void FortschrittBeenden();

// What the two timers do: every 10 ms and every 1000 ms of a running phase.
void tmrFortschritt_Timer();
void tmrDauer_Timer(int intervallMs);

// {lblDauer, lblVerbleibendeZeit} for a position; both empty at position 0. Times in milliseconds.
// A time that does not fit 32 bits (24 days) shows as the greatest one that does.
std::pair<QString, QString> ZeitAnzeige(qint64 laufzeitMs, qint64 wert, qint64 gesamt);
// Two digits for numbers below 10.
QString ZeitZweistellig(int wert);
