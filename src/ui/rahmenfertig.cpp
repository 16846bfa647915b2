// Frames 32 and 42: a run without figures has ended.
#include "ui/rahmenfertig.h"

#include <QVBoxLayout>

#include "ui/bausteine.h"
#include "ui/bild.h"

RahmenFertig::RahmenFertig(int nummer, const QString& text) : Rahmen(nummer, QStringLiteral(" Protokoll ")) {
    auto* haken = new Bild(QStringLiteral(":/symbole/fertig.svg"));
    const int kante = 4 * fontMetrics().height();
    haken->setFixedSize(kante, kante);
    auto* zeile = new QHBoxLayout;
    zeile->setSpacing(fontMetrics().height());
    zeile->addWidget(haken);
    zeile->addWidget(Textfeld(text), 1);
    auto* spalte = new QVBoxLayout(this);
    spalte->addLayout(zeile);
    spalte->addStretch();
}
