// Frame 0: the welcome page.
#include "ui/rahmenwillkommen.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QVBoxLayout>

#include "ui/bausteine.h"

namespace {

// A drawing that fills its place and keeps its proportions.
class Bild : public QWidget {
  public:
    explicit Bild(const QString& datei) : zeichnung_(datei) {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        zeichnung_.setAspectRatioMode(Qt::KeepAspectRatio);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter maler(this);
        zeichnung_.render(&maler, rect());
    }

  private:
    QSvgRenderer zeichnung_;
};

}  // namespace

RahmenWillkommen::RahmenWillkommen()
    : Rahmen(0, QString()),
      Image1(Neu<Bild>(QStringLiteral("Image1"), QStringLiteral(":/symbole/willkommen.svg"))) {
    Image1->setAccessibleName(QStringLiteral("Willkommen bei Lindgarn"));
    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Image1);
}
