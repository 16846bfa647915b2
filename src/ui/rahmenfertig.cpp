// Frames 32 and 42: a run without figures has ended.
#include "ui/rahmenfertig.h"

#include <QVBoxLayout>

#include "ui/bausteine.h"

RahmenFertig::RahmenFertig(int nummer, const QString& text) : Rahmen(nummer, QStringLiteral(" Protokoll ")) {
    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Textfeld(text));
    spalte->addStretch();
}
