// Frame 7: what each field of the table holds.
#include "ui/rahmenfelder.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "data/feldvorschlag.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

constexpr int kZeilenbreite = 59;  // characters of a line of the list

QFont festeSchrift(const QFont& normal) {
    QFont schrift(QStringLiteral("Courier New"));
    schrift.setStyleHint(QFont::Monospace);
    schrift.setFixedPitch(true);
    schrift.setPointSizeF(normal.pointSizeF());
    return schrift;
}

}  // namespace

void Feldliste::mousePressEvent(QMouseEvent* ereignis) {
    QListWidget::mousePressEvent(ereignis);
    if (ereignis->button() == Qt::LeftButton && itemAt(ereignis->position().toPoint()))
        artErfragen(ereignis->globalPosition().toPoint());
}

void Feldliste::keyPressEvent(QKeyEvent* ereignis) {
    switch (ereignis->key()) {
        case Qt::Key_Space:
        case Qt::Key_Menu:
            return anDerZeileFragen();
        case Qt::Key_F10:
            if (ereignis->modifiers() == Qt::ShiftModifier) return anDerZeileFragen();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return anDerZeileFragen();
        default:
            break;
    }
    QListWidget::keyPressEvent(ereignis);
}

void Feldliste::anDerZeileFragen() {
    if (const QListWidgetItem* zeile = currentItem())
        artErfragen(viewport()->mapToGlobal(visualItemRect(zeile).center()));
}

RahmenFelder::RahmenFelder()
    : Rahmen(7, QStringLiteral(" Zuordnung der Felder ")),
      lstFelder(Neu<Feldliste>(QStringLiteral("lstFelder"))),
      mnuFeldArten(FeldmenueErstellen(this, [this](const Feldarten& arten) { artZuordnen(arten); })) {
    lstFelder->setFont(festeSchrift(font()));
    lstFelder->setMinimumWidth(lstFelder->fontMetrics().horizontalAdvance(QString(kZeilenbreite + 4, u'0')));
    lstFelder->artErfragen = [this](QPoint wo) { menueZeigen(wo); };

    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Beschriftung(QStringLiteral("Wählen Sie die &Felder aus"), lstFelder));
    spalte->addWidget(Textfeld(
        QStringLiteral("Ordnen sie den Tabellenfeldern einen Inhalt zu. Korrigieren sie gegebenenfalls die "
                       "vom Programm vorgeschlagenen Inhalte (klicken mit der linken Maustaste). Genaue "
                       "Angaben erhöhen den Erfolg der Suche.")));
    spalte->addWidget(lstFelder, 1);
}

void RahmenFelder::fuellen(Schritte&) {
    setTitle(OhneKuerzel(QStringLiteral(" Zuordnung der Felder von '%1' ").arg(gZuordnungsTabelle)));
    lstFelder->clear();
    QStringList zeilen;
    FeldArtenVorschlagen(gZuordnungsTabelle, gFeldZuordnungen, gFeldAnzahl, zeilen);
    lstFelder->addItems(zeilen);
    lstFelder->setCurrentRow(0);
}

void RahmenFelder::menueZeigen(QPoint wo) {
    mnuFeldArten->popup(wo - QPoint(mnuFeldArten->sizeHint().width() / 2, 0));
}

void RahmenFelder::artZuordnen(const Feldarten& arten) {
    const int stelle = lstFelder->currentRow();
    gFeldZuordnungen.at(size_t(stelle)) = {qint16(FeldGruppeVon(arten.front())), Maske(arten)};
    const QString name =
        Gesetzt(gDatenbank).TableDefs().Item(gZuordnungsTabelle).Fields().Item(stelle).Name();
    lstFelder->item(stelle)->setText(FeldZeile(name, FeldartBeschriftung(arten)));
}
