// Frame 5: the six operations.
#include "ui/rahmenvorgang.h"

#include <QGridLayout>
#include <QKeyEvent>

#include "run/rahmen.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

struct Auswahl {
    int index;
    const char16_t* beschriftung;
    const char16_t* symbol;
    int spalte, zeile;  // from 0
};

// In reading order; the indexes do not run in it.
constexpr Auswahl kAuswahl[] = {
    {2, u"Mülldatensätze entfernen", u"muell", 0, 0}, {3, u"Dubletten suchen", u"dubletten", 1, 0},
    {4, u"Datenabgleich", u"abgleich", 2, 0},         {0, u"Felder verschmelzen", u"verschmelzen", 0, 1},
    {1, u"Felder spitten", u"splitten", 1, 1},        {5, u"Daten hinzufügen", u"hinzufuegen", 2, 1},
};

// Columns to the right and rows down.
QPoint richtung(int taste) {
    switch (taste) {
        case Qt::Key_Left:
            return {-1, 0};
        case Qt::Key_Right:
            return {1, 0};
        case Qt::Key_Up:
            return {0, -1};
        case Qt::Key_Down:
            return {0, 1};
        default:
            return {};
    }
}

QToolButton* knopf(const Auswahl& auswahl) {
    const QString beschriftung = QString::fromUtf16(auswahl.beschriftung);
    auto* taste = Neu<QToolButton>(ElementName(QStringLiteral("btnAuswahl"), auswahl.index));
    taste->setIcon(QIcon(QStringLiteral(":/symbole/%1.svg").arg(QString::fromUtf16(auswahl.symbol))));
    const int kante = 5 * taste->fontMetrics().height();
    taste->setIconSize(QSize(kante, kante));
    taste->setFocusPolicy(Qt::StrongFocus);
    taste->setAccessibleName(beschriftung);
    return taste;
}

}  // namespace

RahmenVorgang::RahmenVorgang() : Rahmen(5, QStringLiteral(" Auswahl des Vorgangs ")) {
    auto* gitter = new QGridLayout(this);
    for (const Auswahl& auswahl : kAuswahl) {
        QToolButton* taste = knopf(auswahl);
        btnAuswahl[size_t(auswahl.index)] = taste;
        taste->installEventFilter(this);
        connect(taste, &QToolButton::clicked, this, [index = auswahl.index] { VorgangWaehlen(index); });
        QLabel* label = Textfeld(QString::fromUtf16(auswahl.beschriftung));
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        gitter->addWidget(taste, 2 * auswahl.zeile, auswahl.spalte, Qt::AlignHCenter | Qt::AlignBottom);
        gitter->addWidget(label, 2 * auswahl.zeile + 1, auswahl.spalte);
    }
    for (int spalte = 0; spalte < 3; ++spalte) gitter->setColumnStretch(spalte, 1);
    for (int zeile = 0; zeile < 4; ++zeile) gitter->setRowStretch(zeile, 1);
}

void RahmenVorgang::fuellen(Schritte&) {
    gVorgang = 0;
}

bool RahmenVorgang::eventFilter(QObject* ziel, QEvent* ereignis) {
    if (ereignis->type() != QEvent::KeyPress) return false;
    const QPoint schritt = richtung(static_cast<QKeyEvent*>(ereignis)->key());
    if (schritt.isNull()) return false;
    const auto ort = [](const Auswahl& a) { return QPoint(a.spalte, a.zeile); };
    for (const Auswahl& von : kAuswahl)
        if (btnAuswahl[size_t(von.index)] == ziel)
            for (const Auswahl& nach : kAuswahl)
                if (ort(nach) == ort(von) + schritt)
                    btnAuswahl[size_t(nach.index)]->setFocus(Qt::OtherFocusReason);
    return true;
}
