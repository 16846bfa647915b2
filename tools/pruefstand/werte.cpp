// Values on the line.
#include "werte.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QMetaType>
#include <cmath>

namespace {

constexpr double kMillisekundenAmTag = 86400000;
const QDate kNulltag(1899, 12, 30);

// The time of day counts forwards also in front of day 0, where whole days count backwards.
Wert momentAus(const QString& text) {
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!moment.isValid()) throw Abgelehnt("Kein Zeitpunkt: " + text);
    const double tag = double(kNulltag.daysTo(moment.date()));
    const double zeit = moment.time().msecsSinceStartOfDay() / kMillisekundenAmTag;
    return Wert(DatumZeit{tag < 0 ? tag - zeit : tag + zeit});
}

QJsonValue jsonAusMoment(DatumZeit moment) {
    constexpr double kSekundenAmTag = 86400;
    const double tag = std::trunc(moment.tage);
    const qint64 sekunden = std::llround(std::abs(moment.tage - tag) * kSekundenAmTag);
    const QDateTime zeit = QDateTime(kNulltag.addDays(qint64(tag)), QTime(0, 0), Qt::UTC).addSecs(sekunden);
    return QJsonObject{{"datum", zeit.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))}};
}

Wert wertAusObjekt(const QJsonObject& objekt) {
    if (objekt.value("leer").toBool()) return Wert();
    if (objekt.value("datum").isString()) return momentAus(objekt.value("datum").toString());
    if (objekt.value("bytes").isString())
        return Wert(QByteArray::fromBase64(objekt.value("bytes").toString().toLatin1()));
    throw Abgelehnt("Kein Wert: " + QString::fromUtf8(QJsonDocument(objekt).toJson(QJsonDocument::Compact)));
}

Wert zahlAus(const QJsonValue& json) {
    const QVariant zahl = json.toVariant();
    return zahl.typeId() == QMetaType::LongLong ? Wert(zahl.toLongLong()) : Wert(json.toDouble());
}

Abgelehnt falscheArt(qsizetype nummer, const char* erwartet) {
    return Abgelehnt(
        QStringLiteral("Argument %1: erwartet ist %2.").arg(nummer + 1).arg(QString::fromUtf8(erwartet)));
}

}  // namespace

Wert WertAusJson(const QJsonValue& json) {
    switch (json.type()) {
        case QJsonValue::Null:
            return Wert::null();
        case QJsonValue::Bool:
            return Wert(json.toBool());
        case QJsonValue::Double:
            return zahlAus(json);
        case QJsonValue::String:
            return Wert(json.toString());
        case QJsonValue::Object:
            return wertAusObjekt(json.toObject());
        default:
            throw Abgelehnt(QStringLiteral("Kein Wert."));
    }
}

QJsonValue JsonAusWert(const Wert& wert) {
    switch (wert.art()) {
        case Wert::Art::Leer:
            return QJsonObject{{"leer", true}};
        case Wert::Art::Null:
            return QJsonValue(QJsonValue::Null);
        case Wert::Art::Wahrheit:
            return wert.wahrheit();
        case Wert::Art::Ganzzahl:
            return wert.ganzzahl();
        case Wert::Art::Gleitzahl:
        case Wert::Art::Waehrung:
        case Wert::Art::Dezimal:
            return wert.alsZahl();
        case Wert::Art::DatumZeit:
            return jsonAusMoment(wert.datumZeit());
        case Wert::Art::Text:
            return wert.text();
        case Wert::Art::Bytes:
            return QJsonObject{{"bytes", QString::fromLatin1(wert.bytes().toBase64())}};
    }
    return QJsonValue(QJsonValue::Null);
}

FeldZuordnung ZuordnungAusJson(const QJsonValue& json) {
    const QJsonArray paar = json.toArray();
    if (paar.size() != 2 || !paar[0].isDouble() || !paar[1].isDouble())
        throw Abgelehnt(QStringLiteral("Eine Zuordnung ist [Gruppe,Maske]."));
    return {qint16(paar[0].toInt()), qint16(paar[1].toInt())};
}

QJsonValue Argumente::json(qsizetype nummer) const {
    if (nummer >= werte_.size()) throw Abgelehnt(QStringLiteral("Argument %1 fehlt.").arg(nummer + 1));
    return werte_[nummer];
}

QString Argumente::text(qsizetype nummer) const {
    const QJsonValue wert = json(nummer);
    if (!wert.isString()) throw falscheArt(nummer, "ein Text");
    return wert.toString();
}

int Argumente::ganzzahl(qsizetype nummer) const {
    const qint64 wert = grosseGanzzahl(nummer);
    if (wert != qint64(int(wert))) throw falscheArt(nummer, "eine ganze Zahl von 32 Bit");
    return int(wert);
}

qint64 Argumente::grosseGanzzahl(qsizetype nummer) const {
    constexpr double kGenau = 9007199254740992;  // up to here a double holds every whole number
    const double wert = zahl(nummer);
    if (wert != std::floor(wert) || std::abs(wert) > kGenau) throw falscheArt(nummer, "eine ganze Zahl");
    return qint64(wert);
}

double Argumente::zahl(qsizetype nummer) const {
    const QJsonValue wert = json(nummer);
    if (!wert.isDouble()) throw falscheArt(nummer, "eine Zahl");
    return wert.toDouble();
}

bool Argumente::wahrheit(qsizetype nummer) const {
    const QJsonValue wert = json(nummer);
    if (!wert.isBool() && !wert.isDouble()) throw falscheArt(nummer, "ein Wahrheitswert");
    return wert.isBool() ? wert.toBool() : wert.toDouble() != 0;
}

QJsonArray Argumente::liste(qsizetype nummer) const {
    const QJsonValue wert = json(nummer);
    if (!wert.isArray()) throw falscheArt(nummer, "eine Liste");
    return wert.toArray();
}

QJsonObject Argumente::objekt(qsizetype nummer) const {
    const QJsonValue wert = json(nummer);
    if (!wert.isObject()) throw falscheArt(nummer, "ein Objekt");
    return wert.toObject();
}

FeldZuordnungen Argumente::zuordnungen(qsizetype nummer) const {
    FeldZuordnungen zuordnungen;
    for (const QJsonValue element : liste(nummer)) zuordnungen.push_back(ZuordnungAusJson(element));
    return zuordnungen;
}
