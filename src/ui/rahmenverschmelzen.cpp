// Frame 41: the options of the merge.
#include "ui/rahmenverschmelzen.h"

#include <QGridLayout>
#include <QLabel>
#include <QStyleOptionButton>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "transform/verschmelzen.h"
#include "ui/bausteine.h"

namespace {

constexpr int kListenbreite = 14;  // characters

qsizetype luecke(const QString& text) {
    qsizetype leer = 0;
    while (leer < text.size() && text[leer] == u' ') ++leer;
    return leer;
}

// False when the table's file lacks a character of the text.
bool speicherbar(const QString& text) {
    const engine::Zeichenprobe probe = Gesetzt(gDatenbank).TableDefs().Item(gAusgangsTabelle).Zeichenprobe();
    return !probe || probe(text) < 0;
}

}  // namespace

Lueckenwahl::Lueckenwahl(const QString& text, QLineEdit* feld) : QRadioButton(text), feld_(feld) {
    feld_->setParent(this);
    setMinimumHeight(feld_->sizeHint().height());
}

void Lueckenwahl::resizeEvent(QResizeEvent* ereignis) {
    QRadioButton::resizeEvent(ereignis);
    QStyleOptionButton stil;
    initStyleOption(&stil);
    const int links = style()->subElementRect(QStyle::SE_RadioButtonContents, &stil, this).left();
    const int breite = fontMetrics().horizontalAdvance(QString(luecke(text()) - 1, u' '));
    const int hoehe = feld_->sizeHint().height();
    feld_->setGeometry(links, (height() - hoehe) / 2, breite, hoehe);
}

RahmenVerschmelzen::RahmenVerschmelzen()
    : Rahmen(41, QStringLiteral(" Felder verschmelzen ")),
      cbxVerschmelzen1(Auswahlliste(QStringLiteral("cbxVerschmelzen1"), kListenbreite)),
      cbxVerschmelzen2(Auswahlliste(QStringLiteral("cbxVerschmelzen2"), kListenbreite)),
      tbxVerschmolzen(Neu<QLineEdit>(QStringLiteral("tbxVerschmolzen"))),
      tbxTrennzeichen(Neu<QLineEdit>(QStringLiteral("tbxTrennzeichen"), QStringLiteral(" "))),
      otnTrennzeichen{
          Neu<Lueckenwahl>(ElementName(QStringLiteral("otnTrennzeichen"), 0),
                           QStringLiteral("             als Trennzeichen verwendet."), tbxTrennzeichen),
          Neu<QRadioButton>(ElementName(QStringLiteral("otnTrennzeichen"), 1),
                            QStringLiteral("&keine Trennzeichen verwendet."))},
      chkVerschmelzenLöschen(Neu<QCheckBox>(QStringLiteral("chkVerschmelzenLöschen"),
                                            QStringLiteral("Die &ursprünglichen Felder werden gelöscht."))) {
    tbxTrennzeichen->setAccessibleName(QStringLiteral("Trennzeichen"));
    otnTrennzeichen[0]->setChecked(true);
    anordnen();
    connect(otnTrennzeichen[0], &QRadioButton::toggled, tbxTrennzeichen, &QLineEdit::setEnabled);
}

void RahmenVerschmelzen::anordnen() {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(fontMetrics().height() / 2);
    int zeile = 0;
    gitter->addWidget(Textfeld(QStringLiteral("Machen sie bitte die folgenden Angaben:")), zeile++, 0, 1, 2);
    gitter->addWidget(Beschriftung(QStringLiteral("&Das Feld"), cbxVerschmelzen1), zeile, 0);
    gitter->addWidget(cbxVerschmelzen1, zeile++, 1);
    gitter->addWidget(Beschriftung(QStringLiteral("&soll mit dem Feld"), cbxVerschmelzen2), zeile, 0);
    gitter->addWidget(cbxVerschmelzen2, zeile++, 1);
    gitter->addWidget(Textfeld(QStringLiteral("zu einem einzigen Feld verschmolzen werden.")), zeile++, 0, 1,
                      2);
    gitter->addWidget(Beschriftung(QStringLiteral("Das &neue Feld heißt:"), tbxVerschmolzen), zeile, 0);
    gitter->addWidget(tbxVerschmolzen, zeile++, 1);
    gitter->addWidget(new QLabel(QStringLiteral("Hierbei werden")), zeile, 0);
    gitter->addWidget(otnTrennzeichen[0], zeile++, 1);
    gitter->addWidget(otnTrennzeichen[1], zeile++, 1);
    gitter->setRowStretch(zeile++, 1);
    gitter->addWidget(chkVerschmelzenLöschen, zeile, 0, 1, 2);
    gitter->setColumnStretch(1, 1);
}

void RahmenVerschmelzen::fuellen(Schritte& s) {
    QStringList felder;
    s.tu([&] { felder = FeldNamen(gAusgangsTabelle); });
    for (QComboBox* liste : {cbxVerschmelzen1, cbxVerschmelzen2}) {
        liste->clear();
        liste->addItems(felder);
        liste->setCurrentIndex(0);
    }
}

bool RahmenVerschmelzen::pruefen() {
    const auto abgelehnt = [](const QString& warum) {
        AchtungZeigen(warum);
        return false;
    };
    tbxVerschmolzen->setText(Trim(tbxVerschmolzen->text()));
    if (cbxVerschmelzen1->currentText() == cbxVerschmelzen2->currentText())
        return abgelehnt(QStringLiteral("Ein Feld kann nicht mit sich selbst verschmolzen werden."));
    const QString name = Grossschrift(tbxVerschmolzen->text());
    if (name.isEmpty())
        return abgelehnt(QStringLiteral("Geben sie einen Namen für das verschmolzene Feld an."));
    for (const QString& vorhandener : FeldNamen(gAusgangsTabelle))
        if (Grossschrift(vorhandener) == name)
            return abgelehnt(
                QStringLiteral("Das Zielfeld exisitiert bereits. Bitte wählen sie einen anderen Namen."));
    if (otnTrennzeichen[0]->isChecked() && !speicherbar(tbxTrennzeichen->text()))
        return abgelehnt(
            QStringLiteral("Das Trennzeichen gibt es im Zeichensatz der Tabelle nicht.\r"
                           "Bitte wählen sie ein anderes."));
    if (const auto einwand = VerschmelzenEinwand(gAusgangsTabelle, gZielTabelle, optionen()))
        return abgelehnt(*einwand);
    return true;
}

Verschmelzoptionen RahmenVerschmelzen::optionen() const {
    Verschmelzoptionen optionen;
    optionen.feld1 = cbxVerschmelzen1->currentText();
    optionen.feld2 = cbxVerschmelzen2->currentText();
    optionen.name = tbxVerschmolzen->text();
    if (otnTrennzeichen[0]->isChecked()) optionen.trennzeichen = tbxTrennzeichen->text();
    optionen.loeschen = chkVerschmelzenLöschen->isChecked();
    return optionen;
}
