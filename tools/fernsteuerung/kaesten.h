// The boxes that ask the user something.
#pragma once

#include <QDialog>

// The message box or input box on top; none when another window is.
QDialog* ObersterKasten();
// The open file dialog, if it is on top.
QDialog* ObersterDateidialog();
