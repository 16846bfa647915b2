// The look on top of the desktop's own style: pages as cards with a heading, room, focus that can be seen.
#pragma once

#include <QProxyStyle>

// Every colour comes from the palette, every length from the font, so that it follows the desktop.
class Stil : public QProxyStyle {
  public:
    void drawComplexControl(ComplexControl art, const QStyleOptionComplex* stil, QPainter* maler,
                            const QWidget* widget) const override;
    void drawControl(ControlElement art, const QStyleOption* stil, QPainter* maler,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement art, const QStyleOption* stil, QPainter* maler,
                       const QWidget* widget) const override;
    QRect subControlRect(ComplexControl art, const QStyleOptionComplex* stil, SubControl teil,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType art, const QStyleOption* stil, const QSize& inhalt,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric art, const QStyleOption* stil, const QWidget* widget) const override;
};
