// What all frames have in common.
#include "ui/rahmenbasis.h"

#include "ui/bausteine.h"

Rahmen::Rahmen(int nummer, const QString& titel) : QGroupBox(OhneKuerzel(titel)) {
    setObjectName(ElementName(QStringLiteral("freRahmen"), nummer));
}
