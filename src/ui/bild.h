// A drawing that fills its place and keeps its proportions.
#pragma once

#include <QByteArray>
#include <QWidget>

class Bild : public QWidget {
  public:
    // `datei` is an SVG of the project's own colours. On a dark desktop these are turned round.
    explicit Bild(const QString& datei);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    QByteArray zeichnung_;
};
