// Field kinds and the settings that weigh them.
#include "fields/feldarten.h"

#include <optional>

#include "fields/einstellungen.h"
#include "operationen.h"

namespace {

// Loads as at start; what it sets stays for the operations behind it.
QJsonValue einstellungenLaden(const Argumente& a) {
    EinstellungenAnwenden(a.json(0).isNull() ? std::nullopt : std::optional(a.text(0)));
    QJsonObject arten;
    for (int nummer = kErsteFeldart; nummer <= kLetzteFeldart; ++nummer) {
        const Feldart& art = gFeldArten[size_t(nummer)];
        if (art.Code == -1) continue;
        arten[QString::number(nummer)] =
            QJsonArray{art.Bezeichnung, art.Code, art.RelevanzFaktor, art.SignifikanzFaktor};
    }
    return QJsonObject{
        {"gRelevanz", double(gRelevanz)}, {"gSignifikanz", double(gSignifikanz)}, {"gFeldArten", arten}};
}

}  // namespace

void FeldartenAnmelden(Operationen& operationen) {
    operationen["FeldGruppeVon"] = [](const Argumente& a) {
        return QJsonValue(FeldGruppeVon(a.ganzzahl(0)));
    };
    operationen["FeldartEnthalten"] = [](const Argumente& a) {
        return QJsonValue(FeldartEnthalten(a.ganzzahl(0), a.ganzzahl(1)));
    };
    operationen["FeldMitArtSuchen"] = [](const Argumente& a) {
        return QJsonValue(FeldMitArtSuchen(a.zuordnungen(0), a.ganzzahl(1), a.ganzzahl(2)));
    };
    operationen["FeldMitArtFinden"] = [](const Argumente& a) {
        return QJsonValue(FeldMitArtFinden(a.zuordnungen(0), a.ganzzahl(1)));
    };
    operationen["EinstellungenLaden"] = einstellungenLaden;
}
