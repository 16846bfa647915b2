// Frame 11: the options of the search.
#include "ui/rahmensuche.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>

#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

constexpr int kSuchen = 3;
constexpr int kFelderJeSuche = 3;

// The kind that chooses each list's field, and the one that steps in for it.
struct Feldwahl {
    int art;
    int ersatz = 0;
};
constexpr Feldwahl kFeldwahl[kSuchen * kFelderJeSuche] = {
    {kFirmenname, kNachname},
    {kPostleitzahl},
    {kStrasse},  // 1st search
    {kVorwahl},
    {kTelefon},
    {kFirmenname},  // 2nd
    {kPostleitzahl},
    {kOrt},
    {kFirmenname},  // 3rd
};

// The position of the first field of the kind in the first table, -1 for none.
int feldMit(const Feldwahl& wahl) {
    const int stelle = FeldMitArtFinden(gZuordnungenTabelle1, wahl.art);
    return stelle < 0 && wahl.ersatz ? FeldMitArtFinden(gZuordnungenTabelle1, wahl.ersatz) : stelle;
}

QSlider* schieber(const QString& name, Qt::Orientation richtung, int kleinster, int groesster, int wert) {
    auto* regler = Neu<QSlider>(name, richtung);
    regler->setRange(kleinster, groesster);
    regler->setValue(wert);
    regler->setPageStep(1);
    regler->setTickInterval(1);
    regler->setTickPosition(QSlider::TicksBelow);
    return regler;
}

}  // namespace

RahmenSuche::RahmenSuche()
    : Rahmen(11, QStringLiteral(" Suchoptionen ")),
      chkQuickSuche(Neu<QCheckBox>(QStringLiteral("chkQuickSuche"), QStringLiteral("&Quicksuch-Modus"))),
      chkAnsprechpartnerDifferenzieren(
          Neu<QCheckBox>(QStringLiteral("chkAnsprechpartnerDifferenzieren"),
                         QStringLiteral("Mehrere &Ansprechpartner pro Unternehmen zulassen"))) {
    auto* links = new QVBoxLayout;
    links->addLayout(suchenBauen());
    links->addStretch();
    links->addWidget(chkQuickSuche);
    links->addWidget(chkAnsprechpartnerDifferenzieren);
    auto* zeile = new QHBoxLayout(this);
    zeile->addLayout(links, 1);
    zeile->addSpacing(fontMetrics().height());
    zeile->addLayout(toleranzBauen());
}

QLayout* RahmenSuche::suchenBauen() {
    auto* gitter = new QGridLayout;
    for (int suche = 0; suche < kSuchen; ++suche) {
        auto* haken = Neu<QCheckBox>(ElementName(QStringLiteral("chkSucheDurchführen"), suche),
                                     QStringLiteral("&%1. Suche durchführen:").arg(suche + 1));
        haken->setChecked(true);
        chkSucheDurchführen[size_t(suche)] = haken;
        connect(haken, &QCheckBox::toggled, this, [this, suche] { chkSucheDurchführen_Click(suche); });

        const int start = Suchoptionen().zeichenRichtig[suche];
        auto* regler =
            schieber(ElementName(QStringLiteral("sdrZeichenRichtig"), suche), Qt::Horizontal, 1, 5, start);
        regler->setToolTip(
            QStringLiteral("Anzahl der Zeichen am Anfang des ersten Feldes, die übereinstimmen müssen"));
        regler->setAccessibleName(QStringLiteral("Richtige Zeichen der %1. Suche").arg(suche + 1));
        sdrZeichenRichtig[size_t(suche)] = regler;
        auto* zahl = new QLabel(QString::number(start));
        connect(regler, &QSlider::valueChanged, zahl,
                [zahl](int wert) { zahl->setText(QString::number(wert)); });

        const int zeile = 3 * suche;
        gitter->addWidget(haken, zeile, 0, 1, 2);
        gitter->addWidget(regler, zeile, 2);
        gitter->addWidget(zahl, zeile, 3);
        for (int k = 0; k < kFelderJeSuche; ++k) {
            const int index = suche * kFelderJeSuche + k;
            QComboBox* liste = Auswahlliste(ElementName(QStringLiteral("cbxSuchFeld"), index), 12);
            liste->setAccessibleName(QStringLiteral("%1. Feld der %2. Suche").arg(k + 1).arg(suche + 1));
            cbxSuchFeld[size_t(index)] = liste;
            gitter->addWidget(liste, zeile + 1, k);
        }
        gitter->setRowMinimumHeight(zeile + 2, fontMetrics().height() / 2);
    }
    for (int k = 0; k < kFelderJeSuche; ++k) gitter->setColumnStretch(k, 1);
    return gitter;
}

QLayout* RahmenSuche::toleranzBauen() {
    constexpr int kGroesste = 3;
    sdrToleranz =
        schieber(QStringLiteral("sdrToleranz"), Qt::Vertical, 0, kGroesste, Suchoptionen().toleranz);
    // Value 0, the strictest, stands at the bottom.
    sdrToleranz->setTickPosition(QSlider::TicksRight);
    auto* marken = new QVBoxLayout;
    const QStringList texte{QStringLiteral("Sehr niedrig"), QStringLiteral("niedrig"), QStringLiteral("hoch"),
                            QStringLiteral("Sehr hoch")};
    for (const QString& text : texte) {
        marken->addWidget(new QLabel(text));
        if (text != texte.constLast()) marken->addStretch();
    }
    auto* gitter = new QGridLayout;
    QLabel* titel = Textfeld(QStringLiteral("Nötige Über- einstimmung:"));
    titel->setBuddy(sdrToleranz);
    gitter->addWidget(titel, 0, 0, 1, 2);
    gitter->addWidget(sdrToleranz, 1, 0);
    gitter->addLayout(marken, 1, 1);
    gitter->setRowStretch(1, 1);
    return gitter;
}

void RahmenSuche::chkSucheDurchführen_Click(int suche) {
    if (suche == 0) return;
    const bool an = chkSucheDurchführen[size_t(suche)]->isChecked();
    for (int k = 0; k < kFelderJeSuche; ++k) cbxSuchFeld[size_t(suche * kFelderJeSuche + k)]->setEnabled(an);
    sdrZeichenRichtig[size_t(suche)]->setEnabled(an);
}

void RahmenSuche::fuellen(Schritte& s) {
    QStringList eintraege{QStringLiteral("*** Unbenutzt ***")};
    s.tu([&] { eintraege += FeldNamen(gAusgangsTabelle); });
    for (size_t i = 0; i < cbxSuchFeld.size(); ++i) {
        const int wahl = feldMit(kFeldwahl[i]) + 1;
        cbxSuchFeld[i]->clear();
        cbxSuchFeld[i]->addItems(eintraege);
        cbxSuchFeld[i]->setCurrentIndex(wahl < eintraege.size() ? wahl : 0);
    }
}

bool RahmenSuche::pruefen() {
    if (std::any_of(cbxSuchFeld.begin(), cbxSuchFeld.end(),
                    [](const QComboBox* liste) { return liste->currentIndex() > 0; }))
        return true;
    AchtungZeigen(QStringLiteral("Mindestens ein Feld muss ausgewählt werden."));
    return false;
}

Suchoptionen RahmenSuche::optionen() const {
    Suchoptionen optionen;
    for (size_t i = 0; i < cbxSuchFeld.size(); ++i) optionen.suchFeld[i] = cbxSuchFeld[i]->currentIndex();
    for (size_t i = 0; i < size_t(kSuchen); ++i) {
        optionen.durchfuehren[i] = chkSucheDurchführen[i]->isChecked();
        optionen.zeichenRichtig[i] = sdrZeichenRichtig[i]->value();
    }
    optionen.toleranz = sdrToleranz->value();
    optionen.quickSuche = chkQuickSuche->isChecked();
    optionen.ansprechpartnerDifferenzieren = chkAnsprechpartnerDifferenzieren->isChecked();
    return optionen;
}
