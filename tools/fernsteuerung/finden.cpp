// Finds windows and their objects by name.
#include "finden.h"

#include <QApplication>

#include "befehle.h"

namespace {

bool istSichtbar(const QObject* objekt) {
    if (const auto* widget = qobject_cast<const QWidget*>(objekt)) return widget->isVisible();
    return true;
}

// Several windows may have a control of the same name in a hidden part; the one on show counts.
QObject* imFenster(QWidget* fenster, const QString& name) {
    if (!fenster) return nullptr;
    if (fenster->objectName() == name) return fenster;
    const QList<QObject*> alle = fenster->findChildren<QObject*>(name);
    for (QObject* objekt : alle)
        if (istSichtbar(objekt)) return objekt;
    return alle.value(0);
}

QWidget* fensterMitNamen(const QString& name) {
    for (QWidget* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == name && fenster->isVisible()) return fenster;
    throw Abgelehnt(QStringLiteral("Kein Fenster '%1'.").arg(name));
}

QObject* suchen(const QString& name) {
    const qsizetype punkt = name.indexOf(u'.');
    if (punkt >= 0) return imFenster(fensterMitNamen(name.left(punkt)), name.mid(punkt + 1));
    if (QObject* objekt = imFenster(AktivesFenster(), name)) return objekt;
    return imFenster(Hauptfenster(), name);
}

}  // namespace

QWidget* AktivesFenster() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* aktiv = QApplication::activeWindow()) return aktiv;
    return Hauptfenster();
}

QMainWindow* Hauptfenster() {
    for (QWidget* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == u"frmHaupt") return qobject_cast<QMainWindow*>(fenster);
    throw Abgelehnt(QStringLiteral("Das Hauptfenster ist geschlossen."));
}

QObject* ObjektFinden(const QString& name) {
    if (QObject* objekt = suchen(name)) return objekt;
    throw Abgelehnt(QStringLiteral("Kein Objekt '%1' in '%2'.").arg(name, AktivesFenster()->objectName()));
}

QWidget* WidgetFinden(const QString& name) {
    if (auto* widget = qobject_cast<QWidget*>(ObjektFinden(name))) return widget;
    throw Abgelehnt(QStringLiteral("'%1' ist kein Steuerelement.").arg(name));
}

QWidget* BedienbaresWidget(const QString& name) {
    QWidget* widget = WidgetFinden(name);
    BedienbarkeitPruefen(widget, name);
    return widget;
}

void BedienbarkeitPruefen(const QWidget* widget, const QString& name) {
    if (!widget->isVisible()) throw Abgelehnt(QStringLiteral("'%1' ist nicht sichtbar.").arg(name));
    if (!widget->isEnabled()) throw Abgelehnt(QStringLiteral("'%1' ist nicht aktiv.").arg(name));
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != widget->window())
        throw Abgelehnt(QStringLiteral("'%1' liegt hinter dem Fenster '%2'.").arg(name, modal->objectName()));
}

QString OhneKennzeichen(const QString& aufschrift) {
    QString text;
    for (qsizetype i = 0; i < aufschrift.size(); ++i) {
        if (aufschrift[i] == u'&' && i + 1 < aufschrift.size()) ++i;
        text += aufschrift[i];
    }
    return text;
}
