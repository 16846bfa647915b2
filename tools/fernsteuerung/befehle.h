// The commands of the remote control by name; each topic adds its own.
#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <functional>
#include <optional>

#include "abgelehnt.h"

// Asked again and again, from the event loop, until it gives the command's result. May raise Abgelehnt. It
// must not do anything that could open a window: what acts on the program goes into the event queue.
using Antwort = std::function<std::optional<QJsonValue>()>;

// What a command has begun.
struct Vorgang {
    Antwort antwort;
    int fristMs = 30000;               // after that the command has failed
    std::function<QString()> woran{};  // what it was waiting for, for the error
};

using Befehl = std::function<Vorgang(const QJsonObject&)>;
using Befehle = QHash<QString, Befehl>;

// True while the program serves events but not the user's. Written by the window of this tool.
extern bool gEingabenGesperrt;

Vorgang Sofort(const QJsonValue& ergebnis);
// Runs `aktion` from the event queue, when the program takes the user's input. The answer is true as soon as
// it has returned, or works in an event loop of its own.
Vorgang Danach(std::function<void()> aktion);

// Fields of a command; raise Abgelehnt when one is missing or of another kind.
QString TextFeld(const QJsonObject& befehl, const QString& name);
int ZahlFeld(const QJsonObject& befehl, const QString& name);

void EingabenAnmelden(Befehle& befehle);   // setzen, klicken, maus, taste, beenden
void MenuesAnmelden(Befehle& befehle);     // menue
void AnzeigenAnmelden(Befehle& befehle);   // lesen, gitter, bild
void KaestenAnmelden(Befehle& befehle);    // meldung, druecken, dateidialog
void ZustaendeAnmelden(Befehle& befehle);  // warten, zustand
