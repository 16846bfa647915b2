// Frame 0: the welcome page.
#include "ui/rahmenwillkommen.h"

#include <QVBoxLayout>

#include "ui/bausteine.h"
#include "ui/bild.h"

RahmenWillkommen::RahmenWillkommen()
    : Rahmen(0, QString()),
      Image1(Neu<Bild>(QStringLiteral("Image1"), QStringLiteral(":/symbole/willkommen.svg"))) {
    Image1->setAccessibleName(QStringLiteral("Willkommen bei Lindgarn"));
    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Image1);
}
