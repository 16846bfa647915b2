// A drawing that fills its place and keeps its proportions.
#include "ui/bild.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include "ui/bausteine.h"

namespace {

// Ground, card, line and texts of the drawings, and what they are in the dark.
constexpr std::pair<const char*, const char*> kImDunkeln[] = {{"#e6edf4", "#2c3742"},
                                                              {"#f4f6f8", "#3d4a57"},
                                                              {"#3b6ea5", "#7fb2e5"},
                                                              {"#4a5560", "#c8d2dc"},
                                                              {"#4f8a4c", "#7cbd78"}};

QByteArray gelesen(const QString& datei) {
    QFile f(datei);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray imDunkeln(QByteArray zeichnung) {
    for (const auto& [hell, dunkel] : kImDunkeln) zeichnung.replace(hell, dunkel);
    return zeichnung;
}

}  // namespace

Bild::Bild(const QString& datei) : zeichnung_(gelesen(datei)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Bild::paintEvent(QPaintEvent*) {
    QSvgRenderer zeichner(IstDunkel(palette()) ? imDunkeln(zeichnung_) : zeichnung_);
    zeichner.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter maler(this);
    zeichner.render(&maler, rect());
}
