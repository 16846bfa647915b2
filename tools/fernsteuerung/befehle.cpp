// What the commands share.
#include "befehle.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>
#include <memory>

namespace {

// The program holds the user's input back for a moment: the action comes when it takes it again.
void wennFrei(const std::shared_ptr<bool>& begonnen, const std::function<void()>& aktion) {
    constexpr int kSpaeterMs = 2;
    if (gEingabenGesperrt) {
        QTimer::singleShot(kSpaeterMs, QCoreApplication::instance(), [=] { wennFrei(begonnen, aktion); });
        return;
    }
    *begonnen = true;
    aktion();
}

}  // namespace

Vorgang Sofort(const QJsonValue& ergebnis) {
    return {[ergebnis] { return ergebnis; }};
}

bool gEingabenGesperrt = false;

Vorgang Danach(std::function<void()> aktion) {
    const auto begonnen = std::make_shared<bool>(false);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [begonnen, aktion = std::move(aktion)] { wennFrei(begonnen, aktion); },
        Qt::QueuedConnection);
    return {[begonnen] { return *begonnen ? std::optional<QJsonValue>(true) : std::nullopt; }};
}

QString TextFeld(const QJsonObject& befehl, const QString& name) {
    const QJsonValue wert = befehl.value(name);
    if (!wert.isString()) throw Abgelehnt(QStringLiteral("'%1' fehlt oder ist kein Text.").arg(name));
    return wert.toString();
}

int ZahlFeld(const QJsonObject& befehl, const QString& name) {
    const QJsonValue wert = befehl.value(name);
    if (!wert.isDouble()) throw Abgelehnt(QStringLiteral("'%1' fehlt oder ist keine Zahl.").arg(name));
    return wert.toInt();
}
