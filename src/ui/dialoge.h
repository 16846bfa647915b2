// The one door for message boxes, input boxes and the file dialog.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>

#include "run/fenster.h"

// What an input box shows.
struct Eingabefrage {
    QString titel;
    QString text;
    QString vorgabe;
};

// What the file dialog is opened with. A filter is shown as it stands and ends in its patterns, several of
// them with ";" between: "Alle Datendateien (*.mdb;*.xls;*.dbf)".
struct Dateifrage {
    QStringList filter;
    int filterIndex = 1;  // from 1
    QString ordner;
};

struct Dateiwahl {
    QString datei;
    int filterIndex = 1;  // from 1
};

// All are modal over the window on show. In a box with several buttons the Escape key and the close button do
// nothing; in one with OK alone they are OK.
Knopf MeldungAnzeigen(const Meldung& meldung);
// Nothing when the user cancelled.
std::optional<QString> EingabeErfragen(const Eingabefrage& frage);
// An existing file, or nothing when the user cancelled.
std::optional<Dateiwahl> DateiErfragen(const Dateifrage& frage);

// Texts of the buttons of a box, without "&", in their order, and the one of a button.
QList<Knopf> KnoepfeVon(Knoepfe knoepfe);
QString KnopfText(Knopf knopf);

// Names under which a program that drives the window finds an open box, and what it shows.
inline constexpr char16_t kMeldungsfenster[] = u"Meldung";
inline constexpr char16_t kEingabefenster[] = u"Eingabe";
inline constexpr char16_t kDateifenster[] = u"Dateidialog";

// Tests and tools: what is asked instead of the user as long as it is set. A missing one asks the user.
struct Dialogantworten {
    std::function<Knopf(const Meldung&)> meldung;
    std::function<std::optional<QString>(const Eingabefrage&)> eingabe;
    std::function<std::optional<Dateiwahl>(const Dateifrage&)> datei;
};
void DialogantwortenSetzen(Dialogantworten antworten);
