// Frames 51 and 61: the second table.
#include "ui/rahmenzweitetabelle.h"

#include <QVBoxLayout>

#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

RahmenZweiteTabelle::RahmenZweiteTabelle(int nummer, const QString& titel, const QString& davor,
                                         const QString& liste, const QString& danach,
                                         const QStringList& hinweise)
    : Rahmen(nummer, titel), tabellen_(Auswahlliste(liste, 24)) {
    tabellen_->setAccessibleName(QStringLiteral("Zweite Tabelle"));
    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Textfeld(davor));
    spalte->addWidget(tabellen_);
    spalte->addWidget(Textfeld(danach));
    for (const QString& hinweis : hinweise) {
        spalte->addSpacing(fontMetrics().height());
        spalte->addWidget(Textfeld(hinweis));
    }
    spalte->addStretch();
}

void RahmenZweiteTabelle::fuellen(Schritte& s) {
    tabellen_->clear();
    s.tu([this] { tabellen_->addItems(TabellenNamen()); });
    tabellen_->setCurrentIndex(tabellen_->count() > 0 ? 0 : -1);
}

bool RahmenZweiteTabelle::pruefen() {
    if (tabellen_->currentText() == gAusgangsTabelle) {
        AchtungZeigen(QStringLiteral("Die 2. Tabelle kann nicht identisch mit der 1. Tabelle sein."));
        return false;
    }
    gZweiteTabelle = tabellen_->currentText();
    return true;
}

RahmenZweiteTabelle* RahmenDatenabgleich() {
    return new RahmenZweiteTabelle(
        51, QStringLiteral(" Daten abgleichen "),
        QStringLiteral(
            "Aus der aktuellen Tabelle sollen alle Datensätze entfernt werden, welche ebenfalls in"),
        QStringLiteral("cbxDatenabgleich"), QStringLiteral("enthalten sind."),
        {QStringLiteral(
             "Doppelt vorhandene Datensätze werden zum Löschen markiert. Falls sie die entsprechenden "
             "Datensätze doch beibehalten wollen, können sie den vom Programm automatisch generierten "
             "angereicherten Datensatz verwenden."),
         QStringLiteral(
             "Dabei werden ebenfalls alle in der Ausgangstabelle enthaltenen Dubletten zum Löschen "
             "markiert.")});
}

RahmenZweiteTabelle* RahmenNeueDaten() {
    return new RahmenZweiteTabelle(
        61, QStringLiteral(" Neue Daten einfügen "),
        QStringLiteral("Zur aktuellen Tabelle sollen die Datensätze der Tabelle"),
        QStringLiteral("cbxNeueDaten"), QStringLiteral("hinzugefügt werden."),
        {QStringLiteral(
             "Doppelt vorhandene Datensätze werden als Dubletten markiert. Das Programm generiert "
             "automatisch einen neuen angereicherten Datensatz, der die wertvollsten Informationen aus "
             "den alten Datensätzen enthält."),
         QStringLiteral(
             "Dabei werden ebenfalls alle in der Ausgangstabelle enthaltenen Dubletten zusammengeführt.")});
}
