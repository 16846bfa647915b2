// What the application needs before its first window: names, German texts.
#include "ui/anwendung.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

void AnwendungEinrichten() {
    Q_INIT_RESOURCE(symbole);  // resources of a library are not there by themselves
    QCoreApplication::setOrganizationName(QStringLiteral("Tessmark"));
    QCoreApplication::setApplicationName(QStringLiteral("Lindgarn"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    // German, whatever the system speaks.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* deutsch = new QTranslator(QCoreApplication::instance());
    if (deutsch->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(deutsch);
}
