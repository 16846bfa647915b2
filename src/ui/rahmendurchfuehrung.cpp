// Frame 6: what a run shows while it works.
#include "ui/rahmendurchfuehrung.h"

#include <QGridLayout>
#include <algorithm>

#include "run/rahmen.h"
#include "ui/bausteine.h"

RahmenDurchfuehrung::RahmenDurchfuehrung()
    : Rahmen(kRahmenDurchfuehrung, QStringLiteral(" Durchführung ")),
      lblInformation(Textfeld(QString(), QStringLiteral("lblInformation"))),
      pgbTeilFortschritt(Neu<QProgressBar>(QStringLiteral("pgbTeilFortschritt"))),
      lblTeilFortschritt(Textfeld(QString(), QStringLiteral("lblTeilFortschritt"))),
      lblDatensätze(Textfeld(QString(), QStringLiteral("lblDatensätze"))),
      lblDauer(Textfeld(QString(), QStringLiteral("lblDauer"))),
      lblVerbleibendeZeit(Textfeld(QString(), QStringLiteral("lblVerbleibendeZeit"))) {
    // Most of what a run says takes one line or two; what stands below keeps its place.
    lblInformation->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblInformation->setMinimumHeight(2 * lblInformation->fontMetrics().lineSpacing());
    pgbTeilFortschritt->setRange(0, 100);
    pgbTeilFortschritt->setTextVisible(false);
    pgbTeilFortschritt->setAccessibleName(QStringLiteral("Fortschritt"));
    // Of one size whatever it says, so that the window is not laid out anew for every percent.
    const QFontMetrics schrift = lblTeilFortschritt->fontMetrics();
    lblTeilFortschritt->setFixedSize(schrift.horizontalAdvance(QStringLiteral("100 %") + u' '),
                                     schrift.height());

    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(fontMetrics().height());
    gitter->addWidget(lblInformation, 0, 0, 1, 3);
    gitter->addWidget(lblDatensätze, 1, 0, 1, 3);
    gitter->addWidget(new QLabel(QStringLiteral("Fortschritt:")), 2, 0);
    gitter->addWidget(pgbTeilFortschritt, 2, 1);
    gitter->addWidget(lblTeilFortschritt, 2, 2);
    gitter->addWidget(lblDauer, 3, 1, 1, 2);
    gitter->addWidget(lblVerbleibendeZeit, 4, 1, 1, 2);
    gitter->setColumnStretch(1, 1);
    gitter->setRowStretch(5, 1);
}

void RahmenDurchfuehrung::fuellen(Schritte&) {
    fortschrittSetzen(0);
}

void RahmenDurchfuehrung::informationZeigen(const QString& text) {
    const int breite = lblInformation->width();
    lblInformation->setText(MitBruchstellen(AlsZeilen(text), lblInformation->fontMetrics(), breite));
}

void RahmenDurchfuehrung::fortschrittSetzen(float prozent) {
    prozent_ = std::clamp(prozent, 0.0f, 100.0f);
    pgbTeilFortschritt->setValue(int(prozent_));
}
