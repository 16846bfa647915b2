// The program's state, and waiting until it is reached.
#include <QApplication>
#include <QJsonArray>
#include <QLabel>
#include <QMessageBox>

#include "befehle.h"
#include "finden.h"
#include "kaesten.h"
#include "run/rahmen.h"
#include "run/zustand.h"

namespace {

QJsonArray zuordnungen(const FeldZuordnungen& felder) {
    QJsonArray paare;
    for (const FeldZuordnung& feld : felder) paare += QJsonArray{feld.Gruppe, feld.Maske};
    return paare;
}

QJsonObject zustand() {
    return {{"gVorgang", gVorgang},
            {"gRahmen", gRahmen},
            {"gAbbruch", gAbbruch},
            {"gFehler", gFehler},
            {"gSystemmeldungZeigen", gSystemmeldungZeigen},
            {"gArbeitsbereich", gArbeitsbereich != nullptr},
            {"gDatenbank", gDatenbank != nullptr},
            {"gDatenbankFormat", gDatenbankFormat},
            {"gDatenbankPfad", gDatenbankPfad},
            {"gDatenbankName", gDatenbankName},
            {"gDatenbankPasswort", gDatenbankPasswort},
            {"gVerbindungstext", gVerbindungstext},
            {"gAusgangsTabelle", gAusgangsTabelle},
            {"gZweiteTabelle", gZweiteTabelle},
            {"gZielTabelle", gZielTabelle},
            {"gZuordnungsTabelle", gZuordnungsTabelle},
            {"gZuordnungsSchritt", gZuordnungsSchritt},
            {"gFeldZuordnungen", zuordnungen(gFeldZuordnungen)},
            {"gFeldAnzahl", gFeldAnzahl},
            {"gZuordnungenTabelle1", zuordnungen(gZuordnungenTabelle1)},
            {"gZuordnungenTabelle2", zuordnungen(gZuordnungenTabelle2)},
            {"gRegistrySchluessel", gRegistrySchluessel},
            {"gDublettenAnzahl", gDublettenAnzahl},
            {"gMuellAnzahl", gMuellAnzahl},
            {"gAnzahlAngereichert", gAnzahlAngereichert},
            {"gFortschrittWert", gFortschrittWert},
            {"gFortschrittMax", gFortschrittMax},
            {"gLaufzeitMs", gLaufzeitMs},
            {"gFortschrittAnteil", double(gFortschrittAnteil)}};
}

using Bedingung = std::function<bool()>;

// A phase may be over before anybody looks; waiting on would be in vain.
Bedingung phase(const QString& text) {
    return [text] {
        if (gRahmen != kRahmenDurchfuehrung) throw Abgelehnt(QStringLiteral("Es arbeitet kein Vorgang."));
        const auto* information = qobject_cast<QLabel*>(WidgetFinden(QStringLiteral("lblInformation")));
        return information && information->text().contains(text);
    };
}

Bedingung bedingungVon(const QJsonObject& b) {
    const QString auf = TextFeld(b, "auf");
    if (auf == u"rahmen") return [nummer = ZahlFeld(b, "wert")] { return gRahmen == nummer; };
    if (auf == u"meldung") return [] { return ObersterKasten() || ObersterDateidialog(); };
    if (auf == u"phase") return phase(TextFeld(b, "wert"));
    if (auf == u"ende") return [] { return !LaufAktiv(); };
    if (auf == u"fenster")
        return [name = TextFeld(b, "wert")] {
            const QWidget* modal = QApplication::activeModalWidget();
            return modal && modal->objectName() == name;
        };
    throw Abgelehnt(QStringLiteral("Worauf warten: '%1'?").arg(auf));
}

// Where the program stands instead, for a wait that was in vain.
QString lage() {
    QString text = QStringLiteral("Rahmen %1, Fenster '%2'").arg(gRahmen).arg(AktivesFenster()->objectName());
    if (const auto* frage = qobject_cast<const QMessageBox*>(ObersterKasten()))
        text += QStringLiteral(", Meldung '%1'").arg(frage->text());
    return text;
}

Vorgang warten(const QJsonObject& b) {
    constexpr int kFristMs = 60000;
    const auto antwort = [erfuellt = bedingungVon(b)]() -> std::optional<QJsonValue> {
        return erfuellt() ? std::optional<QJsonValue>(true) : std::nullopt;
    };
    return {antwort, b.value("ms").toInt(kFristMs), lage};
}

}  // namespace

void ZustaendeAnmelden(Befehle& befehle) {
    befehle["warten"] = warten;
    befehle["zustand"] = [](const QJsonObject&) { return Sofort(zustand()); };
}
