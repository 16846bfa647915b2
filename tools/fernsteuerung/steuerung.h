// Takes commands from standard input, one after the other, and answers each in its turn.
#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QQueue>
#include <QSocketNotifier>
#include <QTimer>
#include <optional>

#include "befehle.h"

// Works in whatever event loop the program runs, so that commands also reach it during a run and behind a
// modal window.
class Steuerung {
  public:
    explicit Steuerung(Befehle befehle);
    // The program has ended: gives the last command its answer.
    void abschliessen();

  private:
    void lesen();
    void weiter();
    bool naechsterBefehl();
    void beginnen(const QByteArray& zeile);
    // False as long as the command has no answer.
    bool beantwortet();
    void antworten(const QString& schluessel, const QJsonValue& wert);
    void eingabeZuEnde();

    Befehle befehle_;
    QSocketNotifier eingang_;
    QTimer takt_;  // runs while a command is waiting
    QByteArray puffer_;
    QQueue<QByteArray> zeilen_;
    bool zuEnde_ = false;
    QJsonValue kennung_;
    std::optional<Vorgang> vorgang_;
    QElapsedTimer seit_;
};
