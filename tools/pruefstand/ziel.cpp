// Names of target tables, and the time that a phase still takes.
#include "data/zielname.h"
#include "operationen.h"
#include "run/fortschritt.h"

namespace {

QStringList namen(const QJsonArray& liste) {
    QStringList namen;
    for (const QJsonValue name : liste) namen += name.toString();
    return namen;
}

QJsonValue zielname(const Argumente& a) {
    const Argumente tag(a.liste(2));
    const QDate datum(tag.ganzzahl(2), tag.ganzzahl(1), tag.ganzzahl(0));
    if (!datum.isValid()) throw Abgelehnt(QStringLiteral("Kein Datum."));
    return ZielnameBilden(a.text(0), namen(a.liste(1)), datum);
}

QJsonValue zielnamePruefen(const Argumente& a) {
    const std::optional<QString> meldung = ZielnamePruefen(a.text(0), a.text(1));
    return meldung ? QJsonValue(*meldung) : QJsonValue(QJsonValue::Null);
}

QJsonValue zeitAnzeige(const Argumente& a) {
    const auto [dauer, verbleibend] =
        ZeitAnzeige(a.grosseGanzzahl(0), a.grosseGanzzahl(1), a.grosseGanzzahl(2));
    return QJsonArray{dauer, verbleibend};
}

}  // namespace

void ZielAnmelden(Operationen& operationen) {
    operationen["Zielname"] = zielname;
    operationen["ZielnamePruefen"] = zielnamePruefen;
    operationen["ZeitAnzeige"] = zeitAnzeige;
}
