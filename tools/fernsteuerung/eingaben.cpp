// The user's entries: setting controls, clicks, keys.
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableView>

#include "befehle.h"
#include "eingabegeraete.h"
#include "finden.h"

namespace {

[[noreturn]] void passtNicht(const QWidget* widget) {
    throw Abgelehnt(QStringLiteral("Der Wert passt nicht zu '%1'.").arg(widget->objectName()));
}

// A row by its text or its index.
int zeileVon(const QJsonValue& wert, const QStringList& eintraege, const QWidget* widget) {
    const qsizetype zeile =
        wert.isString() ? eintraege.indexOf(wert.toString()) : wert.toObject().value("index").toInt(-1);
    if (zeile < 0 || zeile >= eintraege.size()) passtNicht(widget);
    return int(zeile);
}

Vorgang textSetzen(QLineEdit* feld, const QJsonValue& wert) {
    if (!wert.isString() && !wert.isDouble()) passtNicht(feld);
    if (feld->isReadOnly())
        throw Abgelehnt(QStringLiteral("'%1' nimmt keine Eingaben an.").arg(feld->objectName()));
    const QString text = wert.toVariant().toString();
    return Danach([feld = QPointer(feld), text] {
        feld->setFocus();
        feld->selectAll();
        if (text.isEmpty())
            feld->del();
        else
            feld->insert(text);
    });
}

Vorgang auswahlSetzen(QComboBox* liste, const QJsonValue& wert) {
    QStringList eintraege;
    for (int i = 0; i < liste->count(); ++i) eintraege += liste->itemText(i);
    const int zeile = zeileVon(wert, eintraege, liste);
    return Danach([liste = QPointer(liste), zeile] {
        liste->setFocus();
        liste->setCurrentIndex(zeile);
        if (liste) Q_EMIT liste->activated(zeile);
    });
}

Vorgang listeSetzen(QListWidget* liste, const QJsonValue& wert) {
    QStringList eintraege;
    for (int i = 0; i < liste->count(); ++i) eintraege += liste->item(i)->text();
    const int zeile = zeileVon(wert, eintraege, liste);
    return Danach([liste = QPointer(liste), zeile] {
        liste->setFocus();
        liste->setCurrentRow(zeile);
    });
}

Vorgang schalterSetzen(QAbstractButton* schalter, const QJsonValue& wert) {
    if (!wert.isBool() && !wert.isDouble()) passtNicht(schalter);
    const bool an = wert.isBool() ? wert.toBool() : wert.toDouble() != 0;
    if (schalter->isChecked() == an) return Sofort(true);
    if (qobject_cast<QRadioButton*>(schalter) && !an) passtNicht(schalter);
    return Mausklick(schalter);
}

Vorgang reglerSetzen(QAbstractSlider* regler, const QJsonValue& wert) {
    if (!wert.isDouble() || wert.toInt() < regler->minimum() || wert.toInt() > regler->maximum())
        passtNicht(regler);
    return Danach([regler = QPointer(regler), zahl = wert.toInt()] {
        regler->setFocus();
        regler->setValue(zahl);
    });
}

Vorgang setzen(const QJsonObject& b) {
    QWidget* widget = BedienbaresWidget(TextFeld(b, "objekt"));
    const QJsonValue wert = b.value("wert");
    if (auto* feld = qobject_cast<QLineEdit*>(widget)) return textSetzen(feld, wert);
    if (auto* liste = qobject_cast<QComboBox*>(widget)) return auswahlSetzen(liste, wert);
    if (auto* liste = qobject_cast<QListWidget*>(widget)) return listeSetzen(liste, wert);
    if (auto* regler = qobject_cast<QAbstractSlider*>(widget)) return reglerSetzen(regler, wert);
    auto* schalter = qobject_cast<QAbstractButton*>(widget);
    if (schalter && schalter->isCheckable()) return schalterSetzen(schalter, wert);
    throw Abgelehnt(QStringLiteral("'%1' lässt sich nicht setzen.").arg(widget->objectName()));
}

Vorgang eintragWaehlen(QAction* eintrag) {
    if (!eintrag->isEnabled() || !eintrag->isVisible())
        throw Abgelehnt(QStringLiteral("'%1' ist nicht aktiv.").arg(eintrag->objectName()));
    return Danach([eintrag = QPointer(eintrag)] { eintrag->trigger(); });
}

Vorgang klicken(const QJsonObject& b) {
    const QString name = TextFeld(b, "objekt");
    if (auto* eintrag = qobject_cast<QAction*>(ObjektFinden(name))) return eintragWaehlen(eintrag);
    return Mausklick(BedienbaresWidget(name));
}

int ersteSichtbareSpalte(const QAbstractItemView* ansicht) {
    const auto* gitter = qobject_cast<const QTableView*>(ansicht);
    int spalte = 0;
    while (gitter && spalte + 1 < gitter->model()->columnCount() && gitter->isColumnHidden(spalte)) ++spalte;
    return spalte;
}

Vorgang zeileKlicken(QAbstractItemView* ansicht, int zeile, Qt::MouseButton knopf) {
    const QModelIndex stelle = ansicht->model()->index(zeile, ersteSichtbareSpalte(ansicht));
    if (!stelle.isValid())
        throw Abgelehnt(QStringLiteral("'%1' hat keine Zeile %2.").arg(ansicht->objectName()).arg(zeile));
    ansicht->scrollTo(stelle);
    const QRect sichtbar = ansicht->visualRect(stelle) & ansicht->viewport()->rect();
    return Mausklick(ansicht->viewport(), sichtbar.center(), knopf);
}

Qt::MouseButton mausknopf(const QJsonObject& b) {
    const QString knopf = b.value("knopf").toString(QStringLiteral("links"));
    if (knopf == u"links") return Qt::LeftButton;
    if (knopf == u"rechts") return Qt::RightButton;
    throw Abgelehnt(QStringLiteral("Unbekannter Mausknopf '%1'.").arg(knopf));
}

Vorgang maus(const QJsonObject& b) {
    QWidget* widget = BedienbaresWidget(TextFeld(b, "objekt"));
    if (!b.contains("zeile")) return Mausklick(widget, mausknopf(b));
    auto* ansicht = qobject_cast<QAbstractItemView*>(widget);
    if (!ansicht) throw Abgelehnt(QStringLiteral("'%1' hat keine Zeilen.").arg(widget->objectName()));
    return zeileKlicken(ansicht, ZahlFeld(b, "zeile"), mausknopf(b));
}

Vorgang taste(const QJsonObject& b) {
    const QString name = TextFeld(b, "taste");
    if (!b.contains("objekt")) {
        QWidget* popup = QApplication::activePopupWidget();
        return Tastendruck(popup ? popup : AktivesFenster(), name);
    }
    QWidget* widget = BedienbaresWidget(TextFeld(b, "objekt"));
    widget->setFocus();
    return Tastendruck(widget, name);
}

Vorgang beenden(const QJsonObject&) {
    QMainWindow* haupt = Hauptfenster();
    BedienbarkeitPruefen(haupt, haupt->objectName());
    return Danach([haupt = QPointer(haupt)] { haupt->close(); });
}

}  // namespace

void EingabenAnmelden(Befehle& befehle) {
    befehle["setzen"] = setzen;
    befehle["klicken"] = klicken;
    befehle["maus"] = maus;
    befehle["taste"] = taste;
    befehle["beenden"] = beenden;
}
