// Frame 13: the result of a search for duplicates.
#include "ui/rahmenprotokoll.h"

#include <QGridLayout>

#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

qint64 datensaetzeVon(const QString& tabelle) {
    const std::unique_ptr<dao::Recordset> satz = Gesetzt(gDatenbank).OpenRecordset(tabelle);
    const qint64 anzahl = DatensaetzeZaehlen(*satz);
    satz->Close();
    return anzahl;
}

QLabel* zahlenfeld(int nummer) {
    return Textfeld(QString(), QStringLiteral("lblDubletten%1").arg(nummer));
}

Balken* balken(int nummer, const QColor& farbe) {
    return new Balken(QStringLiteral("shpDubletten%1").arg(nummer), farbe);
}

}  // namespace

RahmenProtokoll::RahmenProtokoll()
    : Rahmen(13, QStringLiteral(" Protokoll ")),
      shpDubletten1(balken(1, QColor(0x4f, 0x7c, 0xac))),
      shpDubletten2(balken(2, QColor(0xc0, 0x57, 0x46))),
      shpDubletten3(balken(3, QColor(0x5b, 0x8c, 0x5a))),
      lblDubletten1(zahlenfeld(1)),
      lblDubletten2(zahlenfeld(2)),
      lblDubletten3(zahlenfeld(3)),
      lblDublettenVerunreinigung(Textfeld(QString(), QStringLiteral("lblDublettenVerunreinigung"))) {
    QFont gross = lblDublettenVerunreinigung->font();
    gross.setPointSizeF(gross.pointSizeF() * 1.4);
    lblDublettenVerunreinigung->setFont(gross);
    lblDublettenVerunreinigung->setAlignment(Qt::AlignRight);

    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(fontMetrics().height());
    gitter->setHorizontalSpacing(fontMetrics().height());
    int zeile = 0;
    for (const auto& [form, text] :
         {std::pair{shpDubletten1, lblDubletten1}, std::pair{shpDubletten2, lblDubletten2},
          std::pair{shpDubletten3, lblDubletten3}}) {
        gitter->addWidget(form, zeile, 0);
        gitter->addWidget(text, zeile++, 1);
    }
    gitter->addWidget(lblDublettenVerunreinigung, zeile, 0);
    gitter->setRowStretch(zeile + 1, 1);
    gitter->setColumnStretch(0, 3);
    gitter->setColumnStretch(1, 2);
}

void RahmenProtokoll::fuellen() {
    const qint64 gesamt = datensaetzeVon(gAusgangsTabelle);
    const qint64 nach = datensaetzeVon(gZielTabelle);
    shpDubletten2->anteilSetzen(double(gDublettenAnzahl) / double(gesamt));
    shpDubletten3->anteilSetzen(double(nach) / double(gesamt));
    lblDubletten1->setText(QStringLiteral("%1 Datensätze").arg(gesamt));
    lblDubletten2->setText(QStringLiteral("%1 Dubletten").arg(gDublettenAnzahl));
    lblDubletten3->setText(QStringLiteral("%1 Datensätze nach Korrektur").arg(nach));
    const int prozent = int(double(gDublettenAnzahl - gAnzahlAngereichert) / double(gesamt) * 100);
    lblDublettenVerunreinigung->setText(QStringLiteral("%1% Verunreinigung").arg(prozent));
}
