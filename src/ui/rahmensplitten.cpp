// Frame 31: the options of the split.
#include "ui/rahmensplitten.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "transform/splitten.h"
#include "ui/bausteine.h"

namespace {

enum Typus { kAnredeVornameName = 2, kTelefonTelefax = 4, kTrennzeichen = 5 };

const QStringList& typen() {
    static const QStringList texte{
        QStringLiteral("Postleitzahl+Ort   --->   Postleitzahl  |  Ort"),
        QStringLiteral("Straße+Hausnummer   --->   Straße  |  Hausnummer"),
        QStringLiteral("Anrede+Vorname+Name   --->   Anrede  |  Vorname  |  Name"),
        QStringLiteral("Vorwahl+Durchwahl   --->   Vorwahl  |  Durchwahl"),
        QStringLiteral("Vorwahl+Telefon  |  Vorwahl+Telefax   --->   Vorwahl  |  Telefon  |  Telefax"),
        QStringLiteral("Beliebig+Beliebig   --->   Beliebig  |  Beliebig")};
    return texte;
}

QLineEdit* namensfeld(const QString& name, const QString& wofuer) {
    auto* feld = Neu<QLineEdit>(name);
    feld->setAccessibleName(wofuer);
    return feld;
}

QComboBox* feldliste(const QString& name, const QString& wofuer) {
    constexpr int kListenbreite = 14;  // characters
    QComboBox* liste = Auswahlliste(name, kListenbreite);
    liste->setAccessibleName(wofuer);
    return liste;
}

}  // namespace

RahmenSplitten::RahmenSplitten()
    : Rahmen(31, QStringLiteral(" Felder splitten ")),
      lblSplitten1(Neu<QLabel>(QStringLiteral("lblSplitten1"))),
      cbxSplitten1(feldliste(QStringLiteral("cbxSplitten1"), QStringLiteral("Feld"))),
      lblSplitten3(Neu<QLabel>(QStringLiteral("lblSplitten3"), QStringLiteral("und"))),
      cbxSplitten2(feldliste(QStringLiteral("cbxSplitten2"), QStringLiteral("Zweites Feld"))),
      lblSplitten2(Neu<QLabel>(QStringLiteral("lblSplitten2"))),
      cbxSplittenTypus(Neu<QComboBox>(QStringLiteral("cbxSplittenTypus"))),
      shpSplitten_Verdeutlichung(Neu<QFrame>(QStringLiteral("shpSplitten_Verdeutlichung"))),
      lblSplitten4(Neu<QLabel>(QStringLiteral("lblSplitten4"), QStringLiteral("T&rennzeichen:"))),
      tbxSplitten_Trennzeichen(Neu<QLineEdit>(QStringLiteral("tbxSplitten_Trennzeichen"))),
      tbxSplitten1(namensfeld(QStringLiteral("tbxSplitten1"), QStringLiteral("Name des 1. neuen Feldes"))),
      tbxSplitten2(namensfeld(QStringLiteral("tbxSplitten2"), QStringLiteral("Name des 2. neuen Feldes"))),
      tbxSplitten3(namensfeld(QStringLiteral("tbxSplitten3"), QStringLiteral("Name des 3. neuen Feldes"))),
      chkSplittenLöschen(Neu<QCheckBox>(QStringLiteral("chkSplittenLöschen"),
                                        QStringLiteral("Die &ursprünglichen Felder werden gelöscht."))) {
    for (QWidget* element :
         std::initializer_list<QWidget*>{lblSplitten3, cbxSplitten2, tbxSplitten3, shpSplitten_Verdeutlichung,
                                         lblSplitten4, tbxSplitten_Trennzeichen})
        PlatzBehalten(element);
    cbxSplittenTypus->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    anordnen();
    connect(cbxSplittenTypus, &QComboBox::currentIndexChanged, this, [this] { cbxSplittenTypus_Click(); });
}

void RahmenSplitten::anordnen() {
    auto* felder = new QHBoxLayout;
    for (QWidget* element :
         std::initializer_list<QWidget*>{lblSplitten1, cbxSplitten1, lblSplitten3, cbxSplitten2})
        felder->addWidget(element, qobject_cast<QComboBox*>(element) ? 1 : 0);

    shpSplitten_Verdeutlichung->setFrameShape(QFrame::StyledPanel);
    lblSplitten4->setBuddy(tbxSplitten_Trennzeichen);
    tbxSplitten_Trennzeichen->setMaximumWidth(fontMetrics().averageCharWidth() * 10);
    auto* trennung = new QHBoxLayout(shpSplitten_Verdeutlichung);
    trennung->addWidget(lblSplitten4);
    trennung->addWidget(tbxSplitten_Trennzeichen);
    trennung->addStretch();

    auto* namen = new QHBoxLayout;
    for (QLineEdit* name : {tbxSplitten1, tbxSplitten2, tbxSplitten3}) namen->addWidget(name);

    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Textfeld(QStringLiteral("Machen sie bitte die folgenden Angaben:")));
    spalte->addSpacing(fontMetrics().height() / 2);
    spalte->addLayout(felder);
    spalte->addWidget(lblSplitten2);
    spalte->addSpacing(fontMetrics().height() / 2);
    spalte->addWidget(Beschriftung(QStringLiteral("Die &Aufspaltung ist vom Typ:"), cbxSplittenTypus));
    spalte->addWidget(cbxSplittenTypus);
    spalte->addWidget(shpSplitten_Verdeutlichung);
    spalte->addWidget(Beschriftung(QStringLiteral("Die &neuen Felder heißen:"), tbxSplitten1));
    spalte->addLayout(namen);
    spalte->addStretch();
    spalte->addWidget(chkSplittenLöschen);
}

void RahmenSplitten::fuellen(Schritte& s) {
    QStringList felder;
    s.tu([&] { felder = FeldNamen(gAusgangsTabelle); });
    for (QComboBox* liste : {cbxSplitten1, cbxSplitten2}) {
        liste->clear();
        liste->addItems(felder);
        liste->setCurrentIndex(0);
    }
    cbxSplittenTypus->clear();
    cbxSplittenTypus->addItems(typen());
    cbxSplittenTypus->setCurrentIndex(0);
}

void RahmenSplitten::cbxSplittenTypus_Click() {
    const int typ = cbxSplittenTypus->currentIndex();
    const bool zwei = typ == kTelefonTelefax;
    lblSplitten1->setText(zwei ? QStringLiteral("Die Felder") : QStringLiteral("Das Feld"));
    lblSplitten2->setText(zwei ? QStringLiteral("werden in mehrere Felder aufgespalten.")
                               : QStringLiteral("wird in mehrere Felder aufgespalten."));
    cbxSplitten2->setVisible(zwei);
    lblSplitten3->setVisible(zwei);
    tbxSplitten3->setVisible(zwei || typ == kAnredeVornameName);
    for (QWidget* element :
         std::initializer_list<QWidget*>{lblSplitten4, tbxSplitten_Trennzeichen, shpSplitten_Verdeutlichung})
        element->setVisible(typ == kTrennzeichen);
}

bool RahmenSplitten::pruefen() {
    const auto abgelehnt = [](const QString& warum) {
        AchtungZeigen(warum);
        return false;
    };
    for (QLineEdit* feld : {tbxSplitten1, tbxSplitten2, tbxSplitten3}) feld->setText(Trim(feld->text()));
    const bool drei = !tbxSplitten3->isHidden();
    const QString name1 = Grossschrift(tbxSplitten1->text());
    const QString name2 = Grossschrift(tbxSplitten2->text());
    const QString name3 = Grossschrift(tbxSplitten3->text());
    if (name1.isEmpty() || name2.isEmpty() || (drei && name3.isEmpty()))
        return abgelehnt(QStringLiteral("Geben sie einen Namen für das Zielfeld an."));
    for (const QString& vorhandener : FeldNamen(gAusgangsTabelle)) {
        const QString name = Grossschrift(vorhandener);
        if (name == name1 || name == name2 || (drei && name == name3))
            return abgelehnt(
                QStringLiteral("Das Zielfeld exisitiert bereits. Bitte wählen sie einen anderen Namen."));
    }
    // The first name is held against the third one even while that is hidden.
    if (name1 == name2 || name1 == name3 || (drei && name2 == name3))
        return abgelehnt(QStringLiteral("Die Zielfelder müssen verschiedene Namen haben."));
    if (cbxSplittenTypus->currentIndex() == kTrennzeichen && tbxSplitten_Trennzeichen->text().isEmpty())
        return abgelehnt(
            QStringLiteral("Sie müssen ein Trennzeichen angeben, nach\rdem das Feld geteilt werden soll."));
    if (const auto einwand = SplittenEinwand(gAusgangsTabelle, gZielTabelle, optionen()))
        return abgelehnt(*einwand);
    return true;
}

Splittoptionen RahmenSplitten::optionen() const {
    Splittoptionen optionen;
    optionen.typ = cbxSplittenTypus->currentIndex();
    optionen.feld1 = cbxSplitten1->currentText();
    optionen.feld2 = cbxSplitten2->currentText();
    optionen.trennzeichen = tbxSplitten_Trennzeichen->text();
    optionen.namen[0] = tbxSplitten1->text();
    optionen.namen[1] = tbxSplitten2->text();
    optionen.namen[2] = tbxSplitten3->text();
    optionen.loeschen = chkSplittenLöschen->isChecked();
    return optionen;
}
