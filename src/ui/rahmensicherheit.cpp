// Frame 1: what to mind before any work on a database.
#include "ui/rahmensicherheit.h"

#include <QVBoxLayout>

#include "ui/bausteine.h"

RahmenSicherheit::RahmenSicherheit() : Rahmen(1, QStringLiteral(" Sicherheitshinweis ")) {
    auto* spalte = new QVBoxLayout(this);
    spalte->setSpacing(2 * fontMetrics().height());
    for (const QString& text :
         {QStringLiteral(
              "Beachten sie bitte folgende Hinweise, welche generell für alle Datenbankanwendungen gelten:"),
          QStringLiteral("Vor jeder Benutzung der Software wird dringend empfohlen, die betreffende "
                         "Datenbank zu sichern."),
          QStringLiteral("Schließen sie alle Anwendungen, welche zur Zeit Zugriff auf die Datenbank haben.")})
        spalte->addWidget(Textfeld(text));
    spalte->addStretch();
}
