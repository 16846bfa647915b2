// What all frames have in common.
#include "ui/rahmenbasis.h"

#include <QLayout>

#include "ui/bausteine.h"

Rahmen::Rahmen(int nummer, const QString& titel) : QGroupBox(OhneKuerzel(titel)) {
    setObjectName(ElementName(QStringLiteral("freRahmen"), nummer));
}

QSize Rahmen::minimumSizeHint() const {
    return layout() ? layout()->totalMinimumSize() : QGroupBox::minimumSizeHint();
}
