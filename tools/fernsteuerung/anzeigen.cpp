// What controls show: their texts, entries and places, grids, pictures.
#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTableView>

#include "befehle.h"
#include "finden.h"
#include "ui/bausteine.h"

namespace {

QString textVon(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return OhneBruchstellen(label->text());
    if (const auto* feld = qobject_cast<const QLineEdit*>(widget)) return feld->text();
    if (const auto* knopf = qobject_cast<const QAbstractButton*>(widget)) return knopf->text();
    if (const auto* liste = qobject_cast<const QComboBox*>(widget)) return liste->currentText();
    if (const auto* kasten = qobject_cast<const QGroupBox*>(widget)) return kasten->title();
    if (const auto* balken = qobject_cast<const QProgressBar*>(widget)) return balken->text();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(widget)) return text->toPlainText();
    if (const auto* liste = qobject_cast<const QListWidget*>(widget))
        return liste->currentItem() ? liste->currentItem()->text() : QString();
    return widget->isWindow() ? widget->windowTitle() : QString();
}

QJsonValue wertVon(const QWidget* widget) {
    if (const auto* regler = qobject_cast<const QAbstractSlider*>(widget)) return regler->value();
    if (const auto* balken = qobject_cast<const QProgressBar*>(widget)) return balken->value();
    const auto* schalter = qobject_cast<const QAbstractButton*>(widget);
    if (schalter && schalter->isCheckable()) return schalter->isChecked();
    return QJsonValue(QJsonValue::Null);
}

void eintraegeLesen(const QWidget* widget, QJsonObject& bild) {
    QJsonArray eintraege;
    if (const auto* auswahl = qobject_cast<const QComboBox*>(widget)) {
        for (int i = 0; i < auswahl->count(); ++i) eintraege += auswahl->itemText(i);
        bild["index"] = auswahl->currentIndex();
    } else if (const auto* liste = qobject_cast<const QListWidget*>(widget)) {
        for (int i = 0; i < liste->count(); ++i) eintraege += liste->item(i)->text();
        bild["index"] = liste->selectedItems().isEmpty() ? -1 : liste->currentRow();
    } else {
        bild["index"] = QJsonValue(QJsonValue::Null);
    }
    bild["eintraege"] = eintraege;
}

Vorgang lesen(const QJsonObject& b) {
    QObject* objekt = ObjektFinden(TextFeld(b, "objekt"));
    if (const auto* eintrag = qobject_cast<QAction*>(objekt))
        return Sofort(QJsonObject{
            {"text", eintrag->text()}, {"sichtbar", eintrag->isVisible()}, {"aktiv", eintrag->isEnabled()}});
    const QWidget* widget = WidgetFinden(TextFeld(b, "objekt"));
    QJsonObject bild{{"text", textVon(widget)},      {"sichtbar", widget->isVisible()},
                     {"aktiv", widget->isEnabled()}, {"wert", wertVon(widget)},
                     {"links", widget->x()},         {"oben", widget->y()},
                     {"breite", widget->width()},    {"hoehe", widget->height()}};
    eintraegeLesen(widget, bild);
    return Sofort(bild);
}

QJsonArray spaltenVon(const QTableView& gitter) {
    QJsonArray spalten;
    for (int s = 0; s < gitter.model()->columnCount(); ++s)
        spalten += QJsonObject{{"titel", gitter.model()->headerData(s, Qt::Horizontal).toString()},
                               {"breite", gitter.columnWidth(s)},
                               {"sichtbar", !gitter.isColumnHidden(s)}};
    return spalten;
}

QJsonArray zeilenVon(const QAbstractItemModel& daten) {
    QJsonArray zeilen;
    for (int z = 0; z < daten.rowCount(); ++z) {
        QJsonArray zeile;
        for (int s = 0; s < daten.columnCount(); ++s) zeile += daten.index(z, s).data().toString();
        zeilen += zeile;
    }
    return zeilen;
}

QJsonObject gitterLesen(const QString& name) {
    const auto* gitter = qobject_cast<const QTableView*>(WidgetFinden(name));
    if (!gitter || !gitter->model()) throw Abgelehnt(QStringLiteral("'%1' ist kein Gitter.").arg(name));
    return {{"spalten", spaltenVon(*gitter)},
            {"zeilen", zeilenVon(*gitter->model())},
            {"aktuell", gitter->currentIndex().row()}};
}

// While a query is at work no rows of another can be read, and nobody sees any.
Vorgang gitter(const QJsonObject& b) {
    return {[name = TextFeld(b, "objekt")]() -> std::optional<QJsonValue> {
        if (gEingabenGesperrt) return std::nullopt;
        return gitterLesen(name);
    }};
}

Vorgang bild(const QJsonObject& b) {
    const QString datei = TextFeld(b, "datei");
    QWidget* popup = QApplication::activePopupWidget();
    if (!(popup ? popup : AktivesFenster())->grab().save(datei, "PNG"))
        throw Abgelehnt(QStringLiteral("Das Bild '%1' lässt sich nicht schreiben.").arg(datei));
    return Sofort(true);
}

}  // namespace

void AnzeigenAnmelden(Befehle& befehle) {
    befehle["lesen"] = lesen;
    befehle["gitter"] = gitter;
    befehle["bild"] = bild;
}
