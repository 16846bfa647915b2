// Path helpers.
#include "base/pfad.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "base/fehler.h"
#include "base/text.h"

QString DateinameAusPfad(const QString& pfad) {
    const qsizetype trenner = std::max(pfad.lastIndexOf(u'\\'), pfad.lastIndexOf(QDir::separator()));
    return Trim(QStringView(pfad).mid(trenner + 1));
}

QString VerzeichnisAusPfad(const QString& pfad) {
    return pfad.chopped(DateinameAusPfad(pfad).size());
}

Wert DateiEndung(const QString& pfad) {
    const qsizetype punkt = pfad.lastIndexOf(u'.');
    return punkt < 0 ? Wert() : Wert(Trim(QStringView(pfad).mid(punkt + 1)));
}

bool DateiVorhanden(const QString& pfad) {
    const QString system = SystemPfad(pfad);
    QFile datei(system);
    return QFileInfo(system).isFile() && datei.open(QIODevice::ReadOnly);
}

QByteArray ProgrammdateiLesen(const QString& pfad) {
    constexpr qint64 kGroesste = 1 << 20;
    QFile datei(SystemPfad(pfad));
    if (!datei.open(QIODevice::ReadOnly)) throw EngineFehler(kDateifehler, datei.errorString());
    if (datei.size() > kGroesste)
        throw EngineFehler(kDateifehler,
                           QStringLiteral("Die Datei '%1' ist zu groß.").arg(DateinameAusPfad(pfad)));
    return datei.readAll();
}

QString SystemPfad(const QString& pfad) {
    QString ergebnis = pfad;
    return QDir::separator() == u'\\' ? ergebnis : ergebnis.replace(u'\\', u'/');
}
