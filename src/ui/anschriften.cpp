// The maker's addresses and the ways to reach them.
#include "ui/anschriften.h"

#include <QDesktopServices>
#include <QUrl>

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
