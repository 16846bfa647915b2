// The look on top of the desktop's own style.
#include "ui/stil.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "ui/bausteine.h"

namespace {

constexpr qreal kRundung = 5;

QFont ueberschrift(QFont schrift) {
    constexpr qreal kGroesser = 1.2;
    schrift.setPointSizeF(schrift.pointSizeF() * kGroesser);
    schrift.setBold(true);
    return schrift;
}

QFontMetrics metrik(const QWidget* widget) {
    return widget ? widget->fontMetrics() : QFontMetrics(QFont());
}

int titelhoehe(const QStyleOptionGroupBox& kasten, const QWidget* widget) {
    if (kasten.text.isEmpty()) return 0;
    const QFontMetrics schrift(ueberschrift(widget ? widget->font() : QFont()));
    return schrift.height() + schrift.height() / 3;
}

QRect kartenrechteck(const QStyleOptionGroupBox& kasten, const QWidget* widget) {
    return kasten.rect.adjusted(0, titelhoehe(kasten, widget), 0, 0);
}

// The caption stands as it is, without the blanks around it.
void titelMalen(const QStyleOptionGroupBox& kasten, QPainter* maler, const QWidget* widget) {
    const QFont schrift = ueberschrift(widget ? widget->font() : QFont());
    QString text = kasten.text.trimmed();
    text.replace(QStringLiteral("&&"), QStringLiteral("&"));
    const QRect platz(kasten.rect.topLeft(), QSize(kasten.rect.width(), titelhoehe(kasten, widget)));
    maler->setFont(schrift);
    maler->setPen(kasten.palette.color(QPalette::WindowText));
    maler->drawText(platz, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                    QFontMetrics(schrift).elidedText(text, Qt::ElideRight, platz.width()));
}

// Controls are drawn with outlines that are darker than the window, so the ground has to be light enough.
QColor kartenfarbe(const QPalette& farben) {
    constexpr qreal kAufhellung = 0.08;
    if (!IstDunkel(farben)) return farben.color(QPalette::Base);
    return Gemischt(farben.color(QPalette::Window), farben.color(QPalette::WindowText), kAufhellung);
}

void karteMalen(const QStyleOptionGroupBox& kasten, QPainter* maler, const QWidget* widget) {
    constexpr qreal kRandAnteil = 0.2;
    const QPalette& farben = kasten.palette;
    maler->setRenderHint(QPainter::Antialiasing);
    maler->setBrush(kartenfarbe(farben));
    maler->setPen(Gemischt(farben.color(QPalette::Window), farben.color(QPalette::WindowText), kRandAnteil));
    maler->drawRoundedRect(QRectF(kartenrechteck(kasten, widget)).adjusted(0.5, 0.5, -0.5, -0.5), kRundung,
                           kRundung);
}

void gruppeMalen(const QStyleOptionGroupBox& kasten, QPainter* maler, const QWidget* widget) {
    maler->save();
    karteMalen(kasten, maler, widget);
    titelMalen(kasten, maler, widget);
    maler->restore();
}

void fokusrahmenMalen(const QStyleOption& stil, QPainter* maler) {
    // On a chosen row the highlight itself would not be seen; a thin line inside leaves the row its size.
    const bool gewaehlt = stil.state & QStyle::State_Selected;
    const qreal stift = gewaehlt ? 1 : 2, abstand = gewaehlt ? 1.5 : 1;
    maler->save();
    maler->setRenderHint(QPainter::Antialiasing);
    maler->setPen(
        QPen(stil.palette.color(gewaehlt ? QPalette::HighlightedText : QPalette::Highlight), stift));
    maler->setBrush(Qt::NoBrush);
    maler->drawRoundedRect(QRectF(stil.rect).adjusted(abstand, abstand, -abstand, -abstand), 2, 2);
    maler->restore();
}

// What is `mass` pixels of the screen beside a text of the usual size.
int mitText(int mass, const QWidget* widget) {
    return std::max(mass, metrik(widget).height() * 4 / 5);
}

// The handle stands as far from the middle as the ticks are; the style leaves less room than that for its
// edge.
QSize mitPlatzFuerGriff(const QSize& groesse, const QStyleOptionSlider& regler, const Stil& stil,
                        const QWidget* widget) {
    const int breite = stil.pixelMetric(QStyle::PM_SliderThickness, &regler, widget) +
                       2 * stil.pixelMetric(QStyle::PM_SliderTickmarkOffset, &regler, widget);
    const int dicke = breite | 1;  // an even one has no middle
    return groesse.expandedTo(regler.orientation == Qt::Horizontal ? QSize(0, dicke) : QSize(dicke, 0));
}

// A name that is too long for its list ends in points.
QStyleOptionComboBox mitPunkten(QStyleOptionComboBox liste, const Stil& stil, const QWidget* widget) {
    constexpr int kRand = 4;
    const int platz =
        stil.subControlRect(QStyle::CC_ComboBox, &liste, QStyle::SC_ComboBoxEditField, widget).width() -
        kRand;
    liste.currentText = liste.fontMetrics.elidedText(liste.currentText, Qt::ElideRight, platz);
    return liste;
}

}  // namespace

void Stil::drawComplexControl(ComplexControl art, const QStyleOptionComplex* stil, QPainter* maler,
                              const QWidget* widget) const {
    if (art == CC_GroupBox)
        if (const auto* kasten = qstyleoption_cast<const QStyleOptionGroupBox*>(stil))
            return gruppeMalen(*kasten, maler, widget);
    QProxyStyle::drawComplexControl(art, stil, maler, widget);
    // Of itself a slider hardly shows that it has the focus.
    if (art == CC_Slider && (stil->state & State_HasFocus)) fokusrahmenMalen(*stil, maler);
}

void Stil::drawControl(ControlElement art, const QStyleOption* stil, QPainter* maler,
                       const QWidget* widget) const {
    if (art == CE_ComboBoxLabel)
        if (const auto* liste = qstyleoption_cast<const QStyleOptionComboBox*>(stil)) {
            const QStyleOptionComboBox gekuerzt = mitPunkten(*liste, *this, widget);
            return QProxyStyle::drawControl(art, &gekuerzt, maler, widget);
        }
    QProxyStyle::drawControl(art, stil, maler, widget);
    // A list without a chosen row shows by its frame that it has the focus.
    if (art == CE_ShapedFrame && (stil->state & State_HasFocus) &&
        qobject_cast<const QAbstractScrollArea*>(widget))
        fokusrahmenMalen(*stil, maler);
}

void Stil::drawPrimitive(PrimitiveElement art, const QStyleOption* stil, QPainter* maler,
                         const QWidget* widget) const {
    if (art == PE_FrameFocusRect) return fokusrahmenMalen(*stil, maler);
    QProxyStyle::drawPrimitive(art, stil, maler, widget);
}

QRect Stil::subControlRect(ComplexControl art, const QStyleOptionComplex* stil, SubControl teil,
                           const QWidget* widget) const {
    const auto* kasten = art == CC_GroupBox ? qstyleoption_cast<const QStyleOptionGroupBox*>(stil) : nullptr;
    if (!kasten) return QProxyStyle::subControlRect(art, stil, teil, widget);
    const QRect karte = kartenrechteck(*kasten, widget);
    const int rand = metrik(widget).height() / 2;
    switch (teil) {
        case SC_GroupBoxContents:
            return karte.adjusted(rand, rand / 2, -rand, -rand / 2);
        case SC_GroupBoxFrame:
            return karte;
        case SC_GroupBoxLabel:
            return QRect(kasten->rect.topLeft(), QSize(kasten->rect.width(), titelhoehe(*kasten, widget)));
        default:
            return QRect();
    }
}

QSize Stil::sizeFromContents(ContentsType art, const QStyleOption* stil, const QSize& inhalt,
                             const QWidget* widget) const {
    QSize groesse = QProxyStyle::sizeFromContents(art, stil, inhalt, widget);
    const int zeile = metrik(widget).height();
    switch (art) {
        case CT_PushButton:
            return groesse + QSize(zeile, zeile / 4);
        case CT_LineEdit:
        case CT_ComboBox:
        case CT_MenuItem:
        case CT_ItemViewItem:
            return groesse + QSize(0, zeile / 4);
        case CT_Slider:
            if (const auto* regler = qstyleoption_cast<const QStyleOptionSlider*>(stil))
                return mitPlatzFuerGriff(groesse, *regler, *this, widget);
            return groesse;
        default:
            return groesse;
    }
}

// What the style measures in pixels of the screen grows with the text, where that is large.
int Stil::pixelMetric(PixelMetric art, const QStyleOption* stil, const QWidget* widget) const {
    const int mass = QProxyStyle::pixelMetric(art, stil, widget);
    switch (art) {
        case PM_LayoutHorizontalSpacing:
            return metrik(widget).height() * 3 / 4;
        case PM_LayoutVerticalSpacing:
            return metrik(widget).height() / 2;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
        case PM_ButtonIconSize:
        case PM_SliderLength:
        case PM_SliderThickness:
            return mitText(mass, widget);
        case PM_MessageBoxIconSize:
            return std::max(mass, metrik(widget).height() * 2);
        default:
            return mass;
    }
}
