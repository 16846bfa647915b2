// What the commands share.
#include "befehle.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <memory>

Vorgang Sofort(const QJsonValue& ergebnis) {
    return {[ergebnis] { return ergebnis; }};
}

Vorgang Danach(std::function<void()> aktion) {
    const auto begonnen = std::make_shared<bool>(false);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [begonnen, aktion = std::move(aktion)] {
            *begonnen = true;
            aktion();
        },
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
