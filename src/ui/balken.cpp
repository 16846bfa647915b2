// A bar of a result frame.
#include "ui/balken.h"

#include "ui/bausteine.h"

Balken::Balken(const QString& name, const QColor& farbe) : form(Neu<QFrame>(name, this)) {
    form->setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, farbe);
    form->setPalette(palette);
    setFixedHeight(3 * fontMetrics().height());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Balken::anteilSetzen(double anteil) {
    anteil_ = anteil;
    formSetzen();
}

void Balken::resizeEvent(QResizeEvent* ereignis) {
    QWidget::resizeEvent(ereignis);
    formSetzen();
}

void Balken::formSetzen() {
    const int breite = int(anteil_ * width());
    form->setGeometry(width() - breite, 0, breite, height());
}
