// The popup menu of the field kinds.
#pragma once

#include <QMenu>
#include <functional>
#include <vector>

// What an entry assigns: kinds of one group.
using Feldarten = std::vector<int>;

// Builds the menu `mnuFeldArten` with its five submenus; `gewaehlt` gets the kinds of the entry that was
// chosen.
QMenu* FeldmenueErstellen(QWidget* eltern, const std::function<void(const Feldarten&)>& gewaehlt);
