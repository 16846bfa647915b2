// Frames 13, 23, 53 and 63: the result of a run in bars and figures.
#include "ui/rahmenprotokoll.h"

#include <QGridLayout>

#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

// Source, found, result.
const QColor kFarben[] = {QColor(0x4f, 0x7c, 0xac), QColor(0xc0, 0x57, 0x46), QColor(0x5b, 0x8c, 0x5a)};

}  // namespace

RahmenProtokoll::RahmenProtokoll(const Protokollart& art)
    : Rahmen(art.rahmen, QStringLiteral(" Protokoll ")), art_(art) {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(fontMetrics().height());
    gitter->setHorizontalSpacing(fontMetrics().height());
    for (size_t i = 0; i < balken_.size(); ++i) {
        const QString endung = art.stamm + QString::number(i + 1);
        balken_[i] = new Balken(QStringLiteral("shp") + endung, kFarben[i]);
        texte_[i] = Textfeld(QString(), QStringLiteral("lbl") + endung);
        gitter->addWidget(balken_[i], int(i), 0);
        gitter->addWidget(texte_[i], int(i), 1);
    }
    QLabel* unten = texte_[3] = Textfeld(QString(), art.letztesLabel);
    QFont gross = unten->font();
    gross.setPointSizeF(gross.pointSizeF() * 1.8);
    unten->setFont(gross);
    unten->setAlignment(Qt::AlignRight);
    gitter->setRowMinimumHeight(3, fontMetrics().height() / 2);
    gitter->addWidget(unten, 4, 0);
    gitter->setRowStretch(5, 1);
    gitter->setColumnStretch(0, 3);
    gitter->setColumnStretch(1, 2);
}

void RahmenProtokoll::fuellen(Schritte& s) {
    Ergebniszahlen ergebnis{0, 0, gDublettenAnzahl, gAnzahlAngereichert, gMuellAnzahl};
    s.tu([&] { ergebnis.gesamt = DatensaetzeDerTabelle(gAusgangsTabelle); });
    s.tu([&] { ergebnis.nach = DatensaetzeDerTabelle(gZielTabelle); });
    const Protokollzahlen zahlen = art_.zahlen(ergebnis);
    for (size_t i = 0; i < balken_.size(); ++i) balken_[i]->anteilSetzen(zahlen.anteile[i]);
    for (size_t i = 0; i < texte_.size(); ++i) texte_[i]->setText(zahlen.texte[i]);
}
