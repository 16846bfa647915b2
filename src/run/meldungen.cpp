// The message boxes of the program, and the failure that the error box tells about.
#include "run/meldungen.h"

#include "base/fehler.h"
#include "engine/dao/workspace.h"
#include "run/zustand.h"

namespace {
// The failure being handled: written by FehlerMerken, dropped by FehlerVergessen and once it has been shown.
int fehlerNummer = 0;
QString fehlerBeschreibung;

constexpr QChar kZeilenwechsel = u'\r';

QString mitSystemmeldung(const QString& text) {
    QString ergebnis = text;
    if (gSystemmeldungZeigen && !fehlerBeschreibung.isEmpty())
        ergebnis += kZeilenwechsel + QStringLiteral("Systemmeldung:") + kZeilenwechsel + fehlerBeschreibung;
    if (dao::DBEngine::ErrorsCount() > 0) ergebnis += kZeilenwechsel;
    return ergebnis;
}
}  // namespace

void HinweisZeigen(const QString& text) {
    fenster().meldungZeigen({QStringLiteral(" Hinweis"), text, Symbol::Information, Knoepfe::Ok, Knopf::Ok});
}

void AchtungZeigen(const QString& text) {
    fenster().meldungZeigen(
        {QStringLiteral(" Achtung!"), text, Symbol::Ausrufezeichen, Knoepfe::Ok, Knopf::Ok});
}

void KastenZeigen(const QString& text) {
    fenster().meldungZeigen({QStringLiteral("Lindgarn"), text, Symbol::Keines, Knoepfe::Ok, Knopf::Ok});
}

Knopf FehlerZeigen(const QString& text) {
    const Meldung meldung{QStringLiteral(" Fehler!"), mitSystemmeldung(text), Symbol::Kritisch,
                          Knoepfe::AbbrechenWiederholenIgnorieren, Knopf::Ignorieren};
    FehlerVergessen();
    return fenster().meldungZeigen(meldung);
}

void FehlerMerken() {
    try {
        throw;
    } catch (const EngineFehler& fehler) {
        fehlerNummer = fehler.nummer();
        fehlerBeschreibung = fehler.beschreibung();
    } catch (const std::exception& fehler) {
        fehlerNummer = 0;
        fehlerBeschreibung = QString::fromUtf8(fehler.what());
    } catch (...) {
        FehlerVergessen();
    }
}

void FehlerVergessen() {
    fehlerNummer = 0;
    fehlerBeschreibung.clear();
}

int FehlerNummerGemerkt() {
    return fehlerNummer;
}

QString FehlerBeschreibung() {
    return fehlerBeschreibung;
}

bool FrageStellen(const QString& text, Symbol symbol, Knopf vorwahl) {
    return fenster().meldungZeigen({QString(), text, symbol, Knoepfe::JaNein, vorwahl}) == Knopf::Ja;
}
