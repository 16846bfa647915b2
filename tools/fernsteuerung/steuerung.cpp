// Takes commands from standard input.
#include "steuerung.h"

#include <unistd.h>

#include <QApplication>
#include <QJsonDocument>
#include <cstdlib>
#include <iostream>

#include "run/rahmen.h"

namespace {

constexpr int kTaktMs = 2;

}  // namespace

Steuerung::Steuerung(Befehle befehle)
    : befehle_(std::move(befehle)), eingang_(STDIN_FILENO, QSocketNotifier::Read) {
    takt_.setInterval(kTaktMs);
    QObject::connect(&eingang_, &QSocketNotifier::activated, &takt_, [this] { lesen(); });
    QObject::connect(&takt_, &QTimer::timeout, &takt_, [this] { weiter(); });
}

// Only fetches the lines: what they ask for is begun by the timer, which no handler of the program can hold.
void Steuerung::lesen() {
    char stueck[65536];
    const ssize_t laenge = ::read(STDIN_FILENO, stueck, sizeof stueck);
    if (laenge <= 0) {
        eingang_.setEnabled(false);
        zuEnde_ = true;
    } else {
        puffer_.append(stueck, laenge);
    }
    for (qsizetype ende; (ende = puffer_.indexOf('\n')) >= 0; puffer_.remove(0, ende + 1)) {
        const QByteArray zeile = puffer_.left(ende).trimmed();
        if (!zeile.isEmpty()) zeilen_.enqueue(zeile);
    }
    takt_.start();
}

void Steuerung::weiter() {
    while (vorgang_ || naechsterBefehl())
        if (!beantwortet()) return;
    takt_.stop();
    if (zuEnde_) eingabeZuEnde();
}

bool Steuerung::naechsterBefehl() {
    if (zeilen_.isEmpty()) return false;
    beginnen(zeilen_.dequeue());
    return true;
}

void Steuerung::beginnen(const QByteArray& zeile) {
    QJsonParseError lesefehler;
    const QJsonDocument dokument = QJsonDocument::fromJson(zeile, &lesefehler);
    const QJsonObject befehl = dokument.object();
    kennung_ = befehl.value("id");
    seit_.start();
    // A failure is an answer as well, given in its turn.
    const auto ablehnen = [](const QString& text) {
        return Vorgang{[text]() -> std::optional<QJsonValue> { throw Abgelehnt(text); }};
    };
    try {
        const QString name = befehl.value("cmd").toString();
        if (!dokument.isObject())
            vorgang_ = ablehnen(QStringLiteral("Kein JSON-Objekt: ") + lesefehler.errorString());
        else if (!befehle_.contains(name))
            vorgang_ = ablehnen(QStringLiteral("Unbekannter Befehl: ") + name);
        else
            vorgang_ = befehle_[name](befehl);
    } catch (const Abgelehnt& fehler) {
        vorgang_ = ablehnen(fehler.text());
    }
}

bool Steuerung::beantwortet() {
    try {
        if (const std::optional<QJsonValue> ergebnis = vorgang_->antwort()) {
            antworten(QStringLiteral("result"), *ergebnis);
            return true;
        }
        if (seit_.elapsed() < vorgang_->fristMs) return false;
        const QString woran =
            vorgang_->woran ? vorgang_->woran() : QStringLiteral("das Programm antwortet nicht");
        antworten(QStringLiteral("error"), QStringLiteral("Zeit abgelaufen: ") + woran);
    } catch (const Abgelehnt& fehler) {
        antworten(QStringLiteral("error"), fehler.text());
    }
    return true;
}

void Steuerung::antworten(const QString& schluessel, const QJsonValue& wert) {
    vorgang_.reset();
    const QJsonObject antwort{{"id", kennung_}, {schluessel, wert}};
    std::cout << QJsonDocument(antwort).toJson(QJsonDocument::Compact).constData() << std::endl;
}

// A run or an open question would hold the program back; nobody is left to answer it.
void Steuerung::eingabeZuEnde() {
    if (LaufAktiv() || QApplication::activeModalWidget()) std::_Exit(0);
    QApplication::exit(0);
}

void Steuerung::abschliessen() {
    if (vorgang_) beantwortet();
}
