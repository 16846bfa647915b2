// Text and path helpers.
#include "base/text.h"

#include "base/pfad.h"
#include "operationen.h"

namespace {

QString suchtext(const Argumente& argumente) {
    const QString suche = argumente.text(1);
    if (suche.isEmpty()) throw Abgelehnt(QStringLiteral("Der gesuchte Text darf nicht leer sein."));
    return suche;
}

}  // namespace

void TexteAnmelden(Operationen& operationen) {
    operationen["Minimum"] = [](const Argumente& a) { return QJsonValue(Minimum(a.zahl(0), a.zahl(1))); };
    operationen["TextErsetzen"] = [](const Argumente& a) {
        return QJsonValue(TextErsetzen(a.text(0), suchtext(a), a.text(2)));
    };
    operationen["TextEntfernen"] = [](const Argumente& a) {
        return QJsonValue(TextEntfernen(a.text(0), suchtext(a)));
    };
    operationen["Grossschrift"] = [](const Argumente& a) { return QJsonValue(Grossschrift(a.wert(0))); };
    operationen["Kleinschrift"] = [](const Argumente& a) { return QJsonValue(Kleinschrift(a.wert(0))); };
    operationen["Wort"] = [](const Argumente& a) { return JsonAusWert(Wort(a.wert(0), a.ganzzahl(1))); };
    operationen["BitGesetzt"] = [](const Argumente& a) {
        return QJsonValue(BitGesetzt(a.ganzzahl(0), a.ganzzahl(1)));
    };
    operationen["DateinameAusPfad"] = [](const Argumente& a) {
        return QJsonValue(DateinameAusPfad(a.text(0)));
    };
    operationen["VerzeichnisAusPfad"] = [](const Argumente& a) {
        return QJsonValue(VerzeichnisAusPfad(a.text(0)));
    };
    operationen["DateiEndung"] = [](const Argumente& a) { return JsonAusWert(DateiEndung(a.text(0))); };
}
