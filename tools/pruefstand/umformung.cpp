// What split and merge make of values.
#include "operationen.h"
#include "transform/splittregel.h"
#include "transform/verschmelzregel.h"

namespace {

QJsonValue splitten(const Argumente& a) {
    const int typ = a.ganzzahl(0);
    if (typ < 0 || typ > 5) throw Abgelehnt(QStringLiteral("Es gibt keinen Typ %1.").arg(typ));
    const QString trennzeichen = a.wert(3).istText() ? a.text(3) : QString();
    QJsonArray werte;
    for (const Wert& teil : Splitten(Splittart(typ), a.wert(1), a.wert(2), trennzeichen))
        werte += JsonAusWert(teil);
    return werte;
}

QJsonValue verschmelzen(const Argumente& a) {
    const Wert trennzeichen = a.wert(2);
    return JsonAusWert(Verschmelzen(
        a.wert(0), a.wert(1), trennzeichen.istText() ? std::optional(trennzeichen.text()) : std::nullopt));
}

}  // namespace

void UmformungAnmelden(Operationen& operationen) {
    operationen["Splitten"] = splitten;
    operationen["Verschmelzen"] = verschmelzen;
}
