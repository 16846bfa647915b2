// Menus: the bar of the main window, and the popup of a list's row.
#include <QApplication>
#include <QJsonArray>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <memory>

#include "befehle.h"
#include "eingabegeraete.h"
#include "finden.h"

namespace {

QAction* eintragIn(const QList<QAction*>& eintraege, const QString& text) {
    for (QAction* eintrag : eintraege) {
        if (eintrag->isSeparator() || !eintrag->isVisible() || OhneKennzeichen(eintrag->text()) != text)
            continue;
        if (!eintrag->isEnabled()) throw Abgelehnt(QStringLiteral("'%1' ist nicht aktiv.").arg(text));
        return eintrag;
    }
    throw Abgelehnt(QStringLiteral("Kein Menüeintrag '%1'.").arg(text));
}

// The entry at the end of the path, through its submenus.
QAction* eintragAmPfad(QList<QAction*> eintraege, const QStringList& pfad) {
    QAction* eintrag = nullptr;
    for (const QString& text : pfad) {
        eintrag = eintragIn(eintraege, text);
        eintraege = eintrag->menu() ? eintrag->menu()->actions() : QList<QAction*>();
    }
    if (!eintrag || eintrag->menu()) throw Abgelehnt(QStringLiteral("Der Pfad endet an keinem Eintrag."));
    return eintrag;
}

QStringList pfadVon(const QJsonObject& b) {
    QStringList pfad;
    for (const QJsonValue text : b.value("pfad").toArray()) pfad += text.toString();
    return pfad;
}

Vorgang imMenuebalken(const QStringList& pfad) {
    QMainWindow* haupt = Hauptfenster();
    BedienbarkeitPruefen(haupt, haupt->objectName());
    QAction* eintrag = eintragAmPfad(haupt->menuBar()->actions(), pfad);
    return Danach([eintrag = QPointer(eintrag)] { eintrag->trigger(); });
}

Vorgang imPopup(QMenu* menue, const QStringList& pfad) {
    QAction* eintrag = eintragAmPfad(menue->actions(), pfad);
    return Danach([menue = QPointer(menue), eintrag = QPointer(eintrag)] {
        menue->close();
        eintrag->trigger();
    });
}

// First the click, then the popup that it opens, then the entry.
Vorgang anDerZeile(const Vorgang& klick, const QStringList& pfad) {
    const auto wahl = std::make_shared<Antwort>();
    const auto antwort = [geklickt = klick.antwort, wahl, pfad]() -> std::optional<QJsonValue> {
        if (*wahl) return (*wahl)();
        auto* menue = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (geklickt() && menue) *wahl = imPopup(menue, pfad).antwort;
        return std::nullopt;
    };
    return {antwort, 10000, [] { return QStringLiteral("kein Menü erscheint"); }};
}

Vorgang menue(const QJsonObject& b) {
    const QStringList pfad = pfadVon(b);
    if (!b.contains("objekt")) return imMenuebalken(pfad);
    Befehle eingaben;
    EingabenAnmelden(eingaben);
    return anDerZeile(eingaben["maus"](b), pfad);
}

}  // namespace

void MenuesAnmelden(Befehle& befehle) {
    befehle["menue"] = menue;
}
