// The maker's addresses, the handbook, and the ways to reach them.
#include "ui/anschriften.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include "base/pfad.h"
#include "data/start.h"
#include "run/meldungen.h"

namespace {

// False when the desktop has no program for it. Blanks and umlauts are encoded on the way.
bool SeiteStarten(const QString& adresse) {
    return QDesktopServices::openUrl(QUrl(adresse));
}

bool MailStarten(const QString& adresse, const QString& betreff, const QString& inhalt) {
    return QDesktopServices::openUrl(QUrl(QStringLiteral("mailto:") + adresse + QStringLiteral("?Subject=") +
                                          betreff + QStringLiteral("&Body=") + inhalt));
}

}  // namespace

QString Internetadresse() {
    return QStringLiteral("https://www.lindgarn.example/");
}

QString Mailadresse() {
    return QStringLiteral("support@lindgarn.example");
}

void InternetseiteOeffnen() {
    if (!SeiteStarten(Internetadresse()))
        AchtungZeigen(
            QStringLiteral("Es ließ sich kein Internetprogramm starten. Unsere Seite finden Sie unter\r") +
            Internetadresse());
}

void SupportSchreiben() {
    if (!MailStarten(Mailadresse(), QStringLiteral("Supportanfrage für 'Lindgarn 1.0'"),
                     QStringLiteral("Anfrage von ") + QStringLiteral("%0D%0A")))
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
