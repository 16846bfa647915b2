// What all benchmarks measure with.
#include "messwerte.h"

#include <QFile>
#include <QJsonDocument>
#include <cstdio>
#include <ctime>

double Prozessorsekunden() {
    timespec zeit{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &zeit);
    return double(zeit.tv_sec) + double(zeit.tv_nsec) * 1e-9;
}

qint64 SpeicherMB(const char* zeile) {
    QFile datei(QStringLiteral("/proc/self/status"));
    if (!datei.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& z : datei.readAll().split('\n'))
        if (z.startsWith(zeile)) return z.simplified().split(' ')[1].toLongLong() / 1024;
    return 0;
}

void HoechststandLoeschen() {
    QFile datei(QStringLiteral("/proc/self/clear_refs"));
    if (datei.open(QIODevice::WriteOnly)) datei.write("5");
}

void Ausgeben(const QJsonObject& ergebnis) {
    std::puts(QJsonDocument(ergebnis).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}
