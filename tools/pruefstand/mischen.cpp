// What the fields of a first table take from a record of a second one.
#include "operationen.h"
#include "tables/mischregel.h"

namespace {

std::vector<Wert> zeileAus(const QJsonArray& liste) {
    std::vector<Wert> werte;
    for (const QJsonValue wert : liste) werte.push_back(WertAusJson(wert));
    return werte;
}

// Null is what an empty value is stored as.
QJsonValue gespeichert(const Wert& wert) {
    return JsonAusWert(wert.istLeer() ? Wert::null() : wert);
}

QJsonValue datensatzErgaenzen(const Argumente& a) {
    const FeldZuordnungen zuordnung2 = a.zuordnungen(1);
    const std::vector<Wert> zeile = zeileAus(a.liste(2));
    const auto quelle = [&](int art) -> const Wert* {
        const int stelle = FeldMitArtFinden(zuordnung2, art);
        return stelle < 0 ? nullptr : &zeile.at(size_t(stelle));
    };
    if (zeile.size() != zuordnung2.size())
        throw Abgelehnt(QStringLiteral("Die Zeile hat andere Spalten als ihre Zuordnung."));
    QJsonArray werte;
    for (const QJsonValue element : a.liste(0)) {
        const QJsonObject feld = element.toObject();
        if (MischfeldAusgelassen(feld["typ"].toInt(), feld["attribute"].toInt()))
            werte += QJsonObject{{"ausgelassen", true}};
        else
            werte += gespeichert(
                MischWert(ZuordnungAusJson(QJsonValue(QJsonArray{feld["Gruppe"], feld["Maske"]})), quelle));
    }
    return werte;
}

}  // namespace

void MischenAnmelden(Operationen& operationen) {
    operationen["DatensatzErgaenzen"] = datensatzErgaenzen;
}
