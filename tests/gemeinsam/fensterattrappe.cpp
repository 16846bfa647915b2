// A window that is a script of answers.
#include "gemeinsam/fensterattrappe.h"

#include <gtest/gtest.h>

#include "run/schritte.h"

namespace {

QString anAus(bool an) {
    return an ? QStringLiteral(" an") : QStringLiteral(" aus");
}

// Ends whatever asks, so that an unexpected box cannot keep a test running.
Knopf verlassen(Knoepfe knoepfe) {
    switch (knoepfe) {
        case Knoepfe::Ok:
            return Knopf::Ok;
        case Knoepfe::JaNein:
            return Knopf::Nein;
        default:
            return Knopf::Abbrechen;
    }
}

}  // namespace

Fensterattrappe::Fensterattrappe() {
    FensterSetzen(this);
    DoEventsAbstandSetzen(0);
}

Fensterattrappe::~Fensterattrappe() {
    for (const Antwort& antwort : antworten_) ADD_FAILURE() << "never asked: " << antwort.text.toStdString();
    FensterSetzen(nullptr);
    DoEventsAbstandSetzen(8);
}

void Fensterattrappe::erwarte(const QString& text, Knopf knopf) {
    antworten_.push_back({text, knopf});
}

Knopf Fensterattrappe::meldungZeigen(const Meldung& meldung) {
    meldungen.push_back(meldung);
    if (!antworten_.empty()) {
        const Antwort antwort = antworten_.front();
        antworten_.pop_front();
        EXPECT_EQ(antwort.text.toStdString(), meldung.text.toStdString());
        return antwort.text == meldung.text ? antwort.knopf : verlassen(meldung.knoepfe);
    }
    if (sonst) return sonst(meldung);
    ADD_FAILURE() << "unexpected box: " << meldung.text.toStdString();
    return verlassen(meldung.knoepfe);
}

void Fensterattrappe::rahmenSichtbar(int rahmen, bool sichtbar) {
    protokoll << QStringLiteral("rahmen ") + QString::number(rahmen) + anAus(sichtbar);
}

void Fensterattrappe::rahmenFuellen(int rahmen, Schritte& s) {
    protokoll << QStringLiteral("fuellen ") + QString::number(rahmen);
    if (beimFuellen) s.tu([&] { beimFuellen(rahmen); });
}

bool Fensterattrappe::rahmenPruefen(int rahmen) {
    protokoll << QStringLiteral("pruefen ") + QString::number(rahmen);
    return !beimPruefen || beimPruefen(rahmen);
}

void Fensterattrappe::zurueckSichtbar(bool sichtbar) {
    protokoll << QStringLiteral("btnZurück") + anAus(sichtbar);
}

void Fensterattrappe::weiterSichtbar(bool sichtbar) {
    protokoll << QStringLiteral("btnWeiter") + anAus(sichtbar);
}

void Fensterattrappe::hilfeSichtbar(bool sichtbar) {
    protokoll << QStringLiteral("btnHilfe") + anAus(sichtbar);
}

void Fensterattrappe::zurueckText(const QString& text) {
    zurueckKnopf = text;
    protokoll << QStringLiteral("btnZurück=") + text;
}

void Fensterattrappe::weiterText(const QString& text) {
    weiterKnopf = text;
    protokoll << QStringLiteral("btnWeiter=") + text;
}

void Fensterattrappe::zurueckAktiv(bool aktiv) {
    zurueckKnopfAktiv = aktiv;
    protokoll << QStringLiteral("btnZurück aktiv") + anAus(aktiv);
}

void Fensterattrappe::information(const QString& text) {
    informationen << text;
}

void Fensterattrappe::ereignisseVerarbeiten() {
    ++ereignisse;
    if (beimEreignis) beimEreignis();
}

void Fensterattrappe::dublettenBearbeiten() {
    protokoll << QStringLiteral("dublettenBearbeiten");
    if (beimNachbearbeiten) beimNachbearbeiten();
}
