// Finds the foreign sample workbooks and what xlrd reads in them, for the tests of this folder.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <memory>

#include "base/fehler.h"
#include "engine/excel/xlsdatei.h"
#include "gemeinsam/tabellenprobe.h"

namespace proben {

inline QString ordner() {
    return QStringLiteral(LINDGARN_FREMDDATEN) + "/xls/beispiele/";
}

inline QString pfad(const QString& name) {
    return ordner() + name;
}

// All samples; one name that cannot be found where there are none, so that the suites stand and skip.
inline QStringList alle() {
    const QStringList namen = QDir(ordner()).entryList({"*.xls"}, QDir::Files, QDir::Name);
    return namen.isEmpty() ? QStringList{"keine.xls"} : namen;
}

// A private copy in `ziel` that may be changed.
inline QString kopie(const QString& name, const QDir& ziel) {
    const QString neu = ziel.filePath(name);
    EXPECT_TRUE(QFile::copy(pfad(name), neu));
    EXPECT_TRUE(QFile::setPermissions(neu, QFile::ReadOwner | QFile::WriteOwner));
    return neu;
}

struct Ausgabe {
    int code = -1;
    QByteArray aus;
    QByteArray fehler;
};

// Runs a program to its end; a code of -1 when it cannot be started.
inline Ausgabe ausfuehren(const QString& programm, const QStringList& argumente) {
    QProcess prozess;
    prozess.start(programm, argumente);
    if (!prozess.waitForFinished(240000)) return {};
    return {prozess.exitStatus() == QProcess::NormalExit ? prozess.exitCode() : -1,
            prozess.readAllStandardOutput(), prozess.readAllStandardError()};
}

// What xlrd reads, as tests/engine/excel/xlrd_abzug.py prints it; empty where xlrd gives up or is missing.
inline QJsonObject xlrd(const QString& datei) {
    const Ausgabe ausgabe =
        ausfuehren("python3", {QStringLiteral(LINDGARN_QUELLE) + "/tests/engine/excel/xlrd_abzug.py", datei});
    return QJsonDocument::fromJson(ausgabe.aus).object();
}

inline bool xlrdVorhanden() {
    static const bool da =
        ausfuehren("python3",
                   {"-c", "import sys; sys.path.append('/usr/lib/python3/dist-packages'); import xlrd"})
            .code == 0;
    return da;
}

inline std::string testname(const testing::TestParamInfo<QString>& info) {
    return QString(info.param).replace(QRegularExpression("[^A-Za-z0-9]"), "_").toStdString();
}

}  // namespace proben

// Skips the test, naming the file, when the sample is not on this machine.
#define PROBE_ODER_UEBERSPRINGEN(name)      \
    if (!QFile::exists(proben::pfad(name))) \
    GTEST_SKIP() << "Probe fehlt: " << proben::pfad(name).toStdString()
#define XLRD_ODER_UEBERSPRINGEN() \
    if (!proben::xlrdVorhanden()) GTEST_SKIP() << "xlrd fehlt"
