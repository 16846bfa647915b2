// Mouse and keyboard, as the window system would report them.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

#include "befehle.h"

// A click at a point of the widget. The answer comes when the release has reached its window. Raises
// Abgelehnt when another control covers the point.
Vorgang Mausklick(QWidget* widget, QPoint stelle, Qt::MouseButton knopf);
// A click where a user would aim: on the box of a check or option button, else in the middle.
Vorgang Mausklick(QWidget* widget, Qt::MouseButton knopf = Qt::LeftButton);

// "Ctrl+F", "Down", "Shift+F10". Goes to what has the focus in the window of `widget`; raises Abgelehnt for
// an unknown key.
Vorgang Tastendruck(QWidget* widget, const QString& taste);
