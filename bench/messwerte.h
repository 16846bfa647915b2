// What all benchmarks measure with.
#pragma once

#include <QJsonObject>

// Seconds of the processor that this process has used so far, so that a busy machine does not count.
double Prozessorsekunden();

// A line of /proc/self/status ("VmRSS", "VmHWM"), in MB.
qint64 SpeicherMB(const char* zeile);

// From here on the high-water mark counts anew.
void HoechststandLoeschen();

// One line on standard output.
void Ausgeben(const QJsonObject& ergebnis);
