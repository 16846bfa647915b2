// Characters of the second table that the file of the first one lacks.
#include "tables/zeichenfunde.h"

namespace {

constexpr qsizetype kGezeigteFunde = 8;
constexpr qsizetype kGezeigteZeichen = 40;

}  // namespace

void Zeichenfunde::ansehen(qint64 satz, const QString& feld, const Wert& wert) {
    if (!wert.istText()) return;
    const qsizetype stelle = probe_(wert.text());
    if (stelle < 0 || ++anzahl_ > kGezeigteFunde) return;
    const QChar zeichen = wert.text()[stelle];
    gezeigt_ << QStringLiteral("Datensatz %1, für das Feld '%2': '%3' (U+%4) in '%5'")
                    .arg(QString::number(satz), feld, QString(zeichen),
                         QStringLiteral("%1").arg(uint(zeichen.unicode()), 4, 16, QLatin1Char('0')).toUpper(),
                         wert.text().left(kGezeigteZeichen));
}

QString Zeichenfunde::meldung(const QString& erste, const QString& zweite) const {
    QStringList zeilen{
        QStringLiteral("Die Tabelle '%1' enthält Zeichen, die es im Zeichensatz der Tabelle '%2' nicht gibt.")
            .arg(zweite, erste),
        QStringLiteral("Das Ergebnis könnte damit nicht gespeichert werden."), QString()};
    zeilen << gezeigt_;
    if (anzahl_ > gezeigt_.size())
        zeilen << QStringLiteral("(und %1 weitere Stellen)").arg(anzahl_ - gezeigt_.size());
    zeilen << QString()
           << QStringLiteral(
                  "Ersetzen Sie diese Zeichen in der Tabelle '%1', oder speichern Sie die Tabelle '%2'")
                  .arg(zweite, erste)
           << QStringLiteral("in einem Zeichensatz, der sie enthält.");
    return zeilen.join(u'\r');
}
