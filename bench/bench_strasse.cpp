// The whole road on an .mdb, in the real program with its real windows: seconds of each phase, memory, and
// how long the window could not answer.
#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "adressdatei.h"
#include "assistent.h"
#include "data/registry.h"
#include "data/start.h"
#include "fields/einstellungen.h"
#include "messwerte.h"
#include "run/zustand.h"

namespace {

constexpr char kAufruf[] =
    "bench_strasse anlegen|verdoppeln FILE RECORDS: a new .mdb; the latter with each address twice\n"
    "bench_strasse dubletten FILE [TOLERANCE 0..3]: one JSON object; the file gets the result\n"
    "bench_strasse muell|splitten|verschmelzen|abgleich FILE\n";

const QMap<QString, Vorgang> kVorgaenge{{QStringLiteral("dubletten"), Vorgang::Dubletten},
                                        {QStringLiteral("muell"), Vorgang::Muell},
                                        {QStringLiteral("splitten"), Vorgang::Splitten},
                                        {QStringLiteral("verschmelzen"), Vorgang::Verschmelzen},
                                        {QStringLiteral("abgleich"), Vorgang::Abgleich}};

void messen(const QString& vorgang, const QString& datei, int toleranz) {
    const QTemporaryDir ordner;
    RegAblageSetzen(ordner.filePath(QStringLiteral("ablage")));
    ProgrammOrdnerSetzen(ordner.path());
    Laufuhr uhr;
    Assistent assistent(uhr);
    assistent.oeffnen(datei);
    const qint64 saetze = gDatenbank->OpenRecordset(QStringLiteral("Adressen"))->RecordCount();
    assistent.ausfuehren(kVorgaenge[vorgang], toleranz);
    const QJsonArray phasen = uhr.ergebnis();
    const double ganz = uhr.zwischen(QStringLiteral("Starten"), QStringLiteral("Ergebnis"));
    QJsonObject ergebnis{
        {"vorgang", vorgang},
        {"saetze", saetze},
        {"bisNachbearbeitung", uhr.zwischen(QStringLiteral("Starten"), QStringLiteral("Nachbearbeitung"))},
        {"sekunden", ganz},
        {"zeilenJeSekunde", qRound64(double(saetze) / ganz)},
        {"speicherMB", SpeicherMB("VmHWM")},
        {"phasen", phasen}};
    if (gRahmen == 13) {
        ergebnis[QStringLiteral("toleranz")] = toleranz;
        ergebnis[QStringLiteral("dubletten")] = gDublettenAnzahl;
        ergebnis[QStringLiteral("gruppen")] = assistent.gruppen();
    }
    Ausgeben(ergebnis);
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication anwendung(argc, argv);
    const QStringList worte = QCoreApplication::arguments().mid(1);
    const bool doppelt = worte.value(0) == QStringLiteral("verdoppeln");
    if ((doppelt || worte.value(0) == QStringLiteral("anlegen")) && worte.size() == 3) {
        AdressdateiAnlegen(worte[1], worte[2].toInt(), doppelt);
    } else if (kVorgaenge.contains(worte.value(0)) && worte.size() >= 2) {
        messen(worte[0], worte[1], worte.value(2, QStringLiteral("1")).toInt());
    } else {
        std::fputs(kAufruf, stderr);
        return 2;
    }
    return 0;
}
