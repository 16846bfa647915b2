// Makes the sample database from its sources, or a larger one from the generator.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <iostream>
#include <stdexcept>

#include "base/fehler.h"
#include "csv.h"
#include "schreiben.h"

namespace {

[[noreturn]] void scheitern(const QString& text) {
    throw std::runtime_error(text.toStdString());
}

// "adressen.csv" is the table "Adressen".
Beispieltabelle tabelleLesen(const QString& pfad) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) scheitern(pfad + QStringLiteral(": ") + datei.errorString());
    const QString stamm = QFileInfo(pfad).completeBaseName();
    try {
        return TabelleAusCsv(stamm.left(1).toUpper() + stamm.mid(1),
                             CsvLesen(QString::fromUtf8(datei.readAll())));
    } catch (const std::runtime_error& fehler) {
        scheitern(pfad + QStringLiteral(": ") + QString::fromUtf8(fehler.what()));
    }
}

void quellenErzeugen(const QString& ordner, const QString& anzahl, const QString& anfang) {
    QStringList worte{QStringLiteral(LINDGARN_ERZEUGER), ordner, QStringLiteral("--anzahl"), anzahl};
    if (!anfang.isEmpty()) worte << QStringLiteral("--anfang") << anfang;
    if (QProcess::execute(QStringLiteral("python3"), worte) != 0)
        scheitern(QStringLiteral("Der Erzeuger der Adressen ist gescheitert."));
}

QStringList quellen(const QString& ordner) {
    return {ordner + QStringLiteral("/adressen.csv"), ordner + QStringLiteral("/interessenten.csv")};
}

void ausfuehren(const QCommandLineParser& worte) {
    QStringList dateien = worte.positionalArguments();
    if (dateien.isEmpty()) scheitern(QStringLiteral("Der Name der Zieldatei fehlt."));
    const QString ziel = dateien.takeFirst();
    const QTemporaryDir ordner;
    if (worte.isSet(QStringLiteral("anzahl"))) {
        quellenErzeugen(ordner.path(), worte.value(QStringLiteral("anzahl")),
                        worte.value(QStringLiteral("anfang")));
        dateien = quellen(ordner.path());
    } else if (dateien.isEmpty()) {
        dateien = quellen(QStringLiteral(LINDGARN_BEISPIELQUELLEN));
    }
    std::vector<Beispieltabelle> tabellen;
    for (const QString& datei : dateien) tabellen.push_back(tabelleLesen(datei));
    DatenbankSchreiben(ziel, tabellen);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication programm(argc, argv);
    QCommandLineParser worte;
    worte.setApplicationDescription(QStringLiteral("Legt eine Beispieldatenbank an."));
    worte.addHelpOption();
    worte.addPositionalArgument(QStringLiteral("ziel"), QStringLiteral("Die Datei, die entsteht (.mdb)."));
    worte.addPositionalArgument(QStringLiteral("quellen"),
                                QStringLiteral("Tabellen als CSV; sonst die mitgelieferten."),
                                QStringLiteral("[quellen ...]"));
    worte.addOption(
        {QStringLiteral("anzahl"), QStringLiteral("Erzeugt so viele Adressen."), QStringLiteral("zahl")});
    worte.addOption(
        {QStringLiteral("anfang"), QStringLiteral("Anfang der Zufallszahlen."), QStringLiteral("zahl")});
    worte.process(programm);
    try {
        ausfuehren(worte);
        return 0;
    } catch (const EngineFehler& fehler) {
        std::cerr << qPrintable(fehler.beschreibung()) << '\n';
    } catch (const std::exception& fehler) {
        std::cerr << fehler.what() << '\n';
    }
    return 1;
}
