// What the application needs before its first window: names, look, German texts.
#include "ui/anwendung.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "ui/stil.h"

void AnwendungEinrichten() {
    Q_INIT_RESOURCE(symbole);  // resources of a library are not there by themselves
    QCoreApplication::setOrganizationName(QStringLiteral("Tessmark"));
    QCoreApplication::setApplicationName(QStringLiteral("Lindgarn"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setStyle(new Stil);
    // German, whatever the system speaks.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* deutsch = new QTranslator(QCoreApplication::instance());
    if (deutsch->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(deutsch);
}
