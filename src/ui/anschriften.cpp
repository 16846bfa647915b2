// The maker's addresses, the handbook, and the ways to reach them.
#include "ui/anschriften.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include "base/pfad.h"
#include "data/start.h"
#include "run/meldungen.h"

QString Internetadresse() {
    return QStringLiteral("https://www.lindgarn.example/");
}

QString Mailadresse() {
    return QStringLiteral("support@lindgarn.example");
}

void InternetseiteOeffnen() {
    if (!QDesktopServices::openUrl(QUrl(Internetadresse())))
        AchtungZeigen(
            QStringLiteral("Es ließ sich kein Internetprogramm starten. Unsere Seite finden Sie unter\r") +
            Internetadresse());
}

void SupportSchreiben() {
    const QString betreff = QStringLiteral("?Subject=Supportanfrage%20für%20'Lindgarn%201.0'");
    const QString inhalt = QStringLiteral("&Body=Anfrage%20von%20%0D%0A");
    if (!QDesktopServices::openUrl(QUrl(QStringLiteral("mailto:") + Mailadresse() + betreff + inhalt)))
        AchtungZeigen(QStringLiteral("Es ließ sich kein Mailprogramm starten. Bitte schreiben Sie an\r") +
                      Mailadresse());
}

QString Handbuchdatei() {
    const QString pfad = ProgrammDatei(QStringLiteral("Handbuch.html"));
    return DateiVorhanden(pfad) ? QDir::cleanPath(SystemPfad(pfad)) : QString();
}

void HandbuchOeffnen() {
    const QString datei = Handbuchdatei();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(datei)))
        AchtungZeigen(
            QStringLiteral("Es ließ sich kein Programm starten, das das Handbuch zeigt. Es liegt in\r") +
            QDir::toNativeSeparators(datei));
}
