// Finds windows and their objects by name.
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QString>
#include <QWidget>

// The window that takes the user's input: the topmost modal one, else the active one, else the main window.
QWidget* AktivesFenster();
QMainWindow* Hauptfenster();

// "btnWeiter" in the active window, then in the main window; "frmHaupt.btnWeiter" in the one that is named; a
// window's own name is the window. All raise Abgelehnt when there is none, the typed ones also when it is
// something else.
QObject* ObjektFinden(const QString& name);
QWidget* WidgetFinden(const QString& name);
// One that a user could act on: visible, enabled, and in no window behind a modal one.
QWidget* BedienbaresWidget(const QString& name);
void BedienbarkeitPruefen(const QWidget* widget, const QString& name);

// A caption without the mark of its key: "&Beenden" is "Beenden", "A && B" is "A & B".
QString OhneKennzeichen(const QString& aufschrift);
