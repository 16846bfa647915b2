// A bar of a result frame.
#pragma once

#include <QFrame>
#include <QWidget>

// The room of one bar: `form` takes a share of its width and ends at its right edge.
class Balken : public QWidget {
  public:
    // `name` is the object name of the coloured rectangle.
    Balken(const QString& name, const QColor& farbe);
    // From now on the rectangle's width is Int(share * width of the room), also when the window grows.
    void anteilSetzen(double anteil);

    QFrame* form;

  protected:
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    void formSetzen();

    double anteil_ = 1;
};
