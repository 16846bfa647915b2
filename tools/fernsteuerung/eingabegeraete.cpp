// Mouse and keyboard, as the window system would report them.
#include "eingabegeraete.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QKeySequence>
#include <QPointer>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTest>
#include <QWindow>

#include "finden.h"

namespace {

// Sees the releases arrive at their windows, before any control has acted on them.
class Ankunft : public QObject {
  public:
    Ankunft() { QCoreApplication::instance()->installEventFilter(this); }
    int anzahl = 0;

  protected:
    bool eventFilter(QObject* ziel, QEvent* ereignis) override {
        if (ziel->isWindowType() && ereignis->type() == QEvent::MouseButtonRelease) ++anzahl;
        return false;
    }
};

Ankunft& ankunft() {
    static auto* einzige = new Ankunft;
    return *einzige;
}

// Far enough apart that two clicks never make a double click.
int naechsterStempel() {
    static int stempel = 0;
    return stempel += 2 * QTest::mouseDoubleClickInterval;
}

QPoint zielpunkt(QWidget* widget) {
    const bool haken = qobject_cast<QCheckBox*>(widget) != nullptr;
    if (!haken && !qobject_cast<QRadioButton*>(widget)) return widget->rect().center();
    QStyleOptionButton wahl;
    wahl.initFrom(widget);
    const auto teil = haken ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator;
    return widget->style()->subElementRect(teil, &wahl, widget).center();
}

void unbedecktPruefen(const QWidget* widget, QPoint imFenster) {
    const QWidget* oben = widget->window()->childAt(imFenster);
    if (oben != widget && !widget->isAncestorOf(oben) && widget != widget->window())
        throw Abgelehnt(QStringLiteral("'%1' ist verdeckt.").arg(widget->objectName()));
}

struct Klick {
    QPointer<QWindow> fenster;
    QPoint imFenster;
    QPoint amSchirm;
    Qt::MouseButton knopf;
};

// The window may be gone between two of the events.
void melden(const Klick& klick, QEvent::Type art, int stempel) {
    if (!klick.fenster) return;
    const bool runter = art == QEvent::MouseButtonPress;
    qt_handleMouseEvent(klick.fenster, klick.imFenster, klick.amSchirm, runter ? klick.knopf : Qt::NoButton,
                        art == QEvent::MouseMove ? Qt::NoButton : klick.knopf, art, Qt::NoModifier, stempel);
}

void klicken(const Klick& klick) {
    const int stempel = naechsterStempel();
    melden(klick, QEvent::MouseMove, stempel);
    melden(klick, QEvent::MouseButtonPress, stempel + 1);
    melden(klick, QEvent::MouseButtonRelease, stempel + 2);
}

}  // namespace

Vorgang Mausklick(QWidget* widget, QPoint stelle, Qt::MouseButton knopf) {
    const QPoint imFenster = widget->mapTo(widget->window(), stelle);
    unbedecktPruefen(widget, imFenster);
    const Klick klick{widget->window()->windowHandle(), imFenster, widget->mapToGlobal(stelle), knopf};
    const int erwartet = ankunft().anzahl + 1;
    Danach([klick] { klicken(klick); });
    return {
        [erwartet] { return ankunft().anzahl >= erwartet ? std::optional<QJsonValue>(true) : std::nullopt; },
        30000, [] { return QStringLiteral("der Mausklick kommt nicht an"); }};
}

Vorgang Mausklick(QWidget* widget, Qt::MouseButton knopf) {
    return Mausklick(widget, zielpunkt(widget), knopf);
}

Vorgang Tastendruck(QWidget* widget, const QString& taste) {
    const QKeySequence folge = QKeySequence::fromString(taste, QKeySequence::PortableText);
    if (folge.count() != 1 || folge[0].key() == Qt::Key_unknown)
        throw Abgelehnt(QStringLiteral("Unbekannte Taste '%1'.").arg(taste));
    const QKeyCombination k = folge[0];
    QPointer<QWindow> fenster = widget->window()->windowHandle();
    return Danach([fenster, k] {
        if (fenster) QTest::keyClick(fenster.data(), k.key(), k.keyboardModifiers());
    });
}
