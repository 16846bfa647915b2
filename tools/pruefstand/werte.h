// Values on the line: JSON to `Wert` and back, and the arguments of an operation.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include "abgelehnt.h"
#include "base/wert.h"
#include "fields/feldarten.h"

// Text a string, a number a number (whole ones stay whole), Null null, Empty {"leer":true}, Boolean true or
// false, a moment {"datum":"2001-12-31T08:15:00"}, bytes {"bytes":"<base64>"}. Raises Abgelehnt for
// anything else.
Wert WertAusJson(const QJsonValue& json);
QJsonValue JsonAusWert(const Wert& wert);

FeldZuordnung ZuordnungAusJson(const QJsonValue& json);

// What a line hands to an operation, by position from 0. Each access raises Abgelehnt when the argument is
// missing or of another kind.
class Argumente {
  public:
    explicit Argumente(QJsonArray werte) : werte_(std::move(werte)) {}
    qsizetype anzahl() const { return werte_.size(); }
    QJsonValue json(qsizetype nummer) const;
    Wert wert(qsizetype nummer) const { return WertAusJson(json(nummer)); }
    QString text(qsizetype nummer) const;
    int ganzzahl(qsizetype nummer) const;
    qint64 grosseGanzzahl(qsizetype nummer) const;
    double zahl(qsizetype nummer) const;
    bool wahrheit(qsizetype nummer) const;
    QJsonArray liste(qsizetype nummer) const;
    QJsonObject objekt(qsizetype nummer) const;
    FeldZuordnungen zuordnungen(qsizetype nummer) const;

  private:
    QJsonArray werte_;
};
