// Small things that every window is built from.
#include "ui/bausteine.h"

QString ElementName(const QString& feld, int index) {
    return QStringLiteral("%1_%2").arg(feld).arg(index);
}

QLabel* Textfeld(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel* Textfeld(const QString& text, const QString& name) {
    QLabel* label = Textfeld(text);
    label->setObjectName(name);
    return label;
}

QLabel* Beschriftung(const QString& text, QWidget* element) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(element);
    return label;
}

QComboBox* Auswahlliste(const QString& name, int zeichen) {
    auto* liste = Neu<QComboBox>(name);
    liste->setMinimumContentsLength(zeichen);
    liste->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return liste;
}

void PlatzBehalten(QWidget* element) {
    QSizePolicy platz = element->sizePolicy();
    platz.setRetainSizeWhenHidden(true);
    element->setSizePolicy(platz);
}

int PixelAusTwips(int twips, const QWidget* widget) {
    constexpr int kTwipsProZoll = 1440;
    return twips * widget->logicalDpiX() / kTwipsProZoll;
}

QString OhneKuerzel(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

bool IstDunkel(const QPalette& farben) {
    return farben.color(QPalette::WindowText).lightness() > farben.color(QPalette::Window).lightness();
}

QColor Gemischt(const QColor& a, const QColor& b, qreal anteil) {
    const auto mischen = [anteil](qreal x, qreal y) { return float(x * (1 - anteil) + y * anteil); };
    return QColor::fromRgbF(mischen(a.redF(), b.redF()), mischen(a.greenF(), b.greenF()),
                            mischen(a.blueF(), b.blueF()));
}
