// A program that takes one JSON object a line and answers with one.
#pragma once

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

class Zeilenprogramm {
  public:
    explicit Zeilenprogramm(const QString& programm,
                            const QProcessEnvironment& umgebung = QProcessEnvironment::systemEnvironment()) {
        prozess_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        prozess_.setProcessEnvironment(umgebung);
        prozess_.start(programm, QStringList());
        if (!prozess_.waitForStarted(kFrist)) ADD_FAILURE() << "startet nicht";
    }

    ~Zeilenprogramm() {
        prozess_.closeWriteChannel();
        if (prozess_.state() != QProcess::NotRunning && !prozess_.waitForFinished(kFrist)) prozess_.kill();
    }
    Zeilenprogramm(const Zeilenprogramm&) = delete;
    Zeilenprogramm& operator=(const Zeilenprogramm&) = delete;

    // Sends a line and gives the line that comes back.
    QByteArray zeile(const QByteArray& auftrag) {
        prozess_.write(auftrag + '\n');
        while (!prozess_.canReadLine())
            if (!prozess_.waitForReadyRead(kFrist)) {
                ADD_FAILURE() << "keine Antwort auf " << auftrag.constData();
                return QByteArray();
            }
        return prozess_.readLine();
    }

    QJsonObject antwort(QJsonObject auftrag) {
        auftrag["id"] = ++nummer_;
        const QByteArray text = zeile(QJsonDocument(auftrag).toJson(QJsonDocument::Compact));
        const QJsonObject objekt = QJsonDocument::fromJson(text).object();
        EXPECT_EQ(objekt["id"].toInt(), nummer_) << text.constData();
        EXPECT_NE(objekt.contains("result"), objekt.contains("error")) << text.constData();
        return objekt;
    }

    // Ends the input, as `enden` does without it, and returns the exit code; -1 when the program does not
    // end.
    int beenden() {
        prozess_.closeWriteChannel();
        return enden();
    }
    int enden() {
        const bool beendet = prozess_.state() == QProcess::NotRunning || prozess_.waitForFinished(kFrist);
        return beendet && prozess_.exitStatus() == QProcess::NormalExit ? prozess_.exitCode() : -1;
    }
    QByteArray rest() { return prozess_.readAllStandardOutput(); }

  private:
    static constexpr int kFrist = 60000;
    QProcess prozess_;
    int nummer_ = 0;
};
