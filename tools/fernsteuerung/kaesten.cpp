// The boxes that ask the user something: message boxes, input boxes, the file dialog.
#include "kaesten.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QJsonArray>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "befehle.h"
#include "eingabegeraete.h"
#include "finden.h"
#include "ui/bausteine.h"
#include "ui/dialoge.h"

namespace {

template <typename Art>
Art* oberster(const char16_t* name) {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal->objectName() != QStringView(name)) return nullptr;
    return qobject_cast<Art*>(modal);
}

QString symbolVon(const QMessageBox& kasten) {
    switch (Symbol(kasten.property("symbol").toInt())) {
        case Symbol::Information:
            return QStringLiteral("Information");
        case Symbol::Ausrufezeichen:
            return QStringLiteral("Ausrufezeichen");
        case Symbol::Kritisch:
            return QStringLiteral("Kritisch");
        case Symbol::Keines:
            break;
    }
    return QString();
}

// In the order in which they stand on the screen.
QList<QPushButton*> knoepfeVon(const QDialog& kasten) {
    QList<QPushButton*> knoepfe;
    for (QPushButton* knopf : kasten.findChildren<QPushButton*>())
        if (knopf->isVisible()) knoepfe += knopf;
    std::sort(knoepfe.begin(), knoepfe.end(),
              [](const QPushButton* a, const QPushButton* b) { return a->x() < b->x(); });
    return knoepfe;
}

QJsonObject beschreiben(const QDialog& kasten) {
    QJsonArray knoepfe;
    QString vorwahl;
    for (const QPushButton* knopf : knoepfeVon(kasten)) {
        knoepfe += OhneKennzeichen(knopf->text());
        if (knopf->isDefault()) vorwahl = OhneKennzeichen(knopf->text());
    }
    return {{"titel", kasten.windowTitle()}, {"knoepfe", knoepfe}, {"vorwahl", vorwahl}};
}

Vorgang meldung(const QJsonObject&) {
    const QDialog* kasten = ObersterKasten();
    if (!kasten) return Sofort(QJsonValue(QJsonValue::Null));
    QJsonObject bild = beschreiben(*kasten);
    if (const auto* frage = qobject_cast<const QMessageBox*>(kasten)) {
        bild["text"] = OhneBruchstellen(frage->text());
        bild["symbol"] = symbolVon(*frage);
    } else if (const auto* eingabe = qobject_cast<const QInputDialog*>(kasten)) {
        bild["text"] = OhneKennzeichen(eingabe->labelText());
        bild["symbol"] = QString();
        bild["eingabe"] = eingabe->textValue();
    }
    return Sofort(bild);
}

QPushButton* knopfMit(const QDialog& kasten, const QString& text) {
    for (QPushButton* knopf : knoepfeVon(kasten))
        if (OhneKennzeichen(knopf->text()) == text) return knopf;
    throw Abgelehnt(QStringLiteral("Kein Knopf '%1'.").arg(text));
}

Vorgang druecken(const QJsonObject& b) {
    QDialog* kasten = ObersterKasten();
    if (!kasten) throw Abgelehnt(QStringLiteral("Es ist keine Meldung offen."));
    QPushButton* knopf = knopfMit(*kasten, TextFeld(b, "knopf"));
    if (b.contains("eingabe")) {
        auto* frage = qobject_cast<QInputDialog*>(kasten);
        if (!frage) throw Abgelehnt(QStringLiteral("Die Meldung nimmt keine Eingabe an."));
        frage->setTextValue(TextFeld(b, "eingabe"));
    }
    BedienbarkeitPruefen(knopf, knopf->text());
    return Mausklick(knopf);
}

void filterWaehlen(QFileDialog& dialog, int filter) {
    if (filter < 1 || filter > dialog.nameFilters().size())
        throw Abgelehnt(QStringLiteral("Es gibt keinen Filter %1.").arg(filter));
    dialog.selectNameFilter(dialog.nameFilters().at(filter - 1));
}

// The filters as they stand in the dialog's list.
QStringList filterliste(const QFileDialog& dialog) {
    QStringList texte;
    if (const auto* liste = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo")))
        for (int i = 0; i < liste->count(); ++i) texte << liste->itemText(i);
    return texte;
}

QAbstractButton* dialogknopf(const QFileDialog& dialog, QDialogButtonBox::StandardButton welcher) {
    const auto* leiste = dialog.findChild<QDialogButtonBox*>();
    QAbstractButton* knopf = leiste ? leiste->button(welcher) : nullptr;
    if (!knopf) throw Abgelehnt(QStringLiteral("Der Dateidialog hat diesen Knopf nicht."));
    return knopf;
}

// A click whose answer is `ergebnis`.
Vorgang klickMitErgebnis(QAbstractButton* knopf, const QJsonValue& ergebnis) {
    BedienbarkeitPruefen(knopf, knopf->text());
    Vorgang klick = Mausklick(knopf);
    klick.antwort = [angekommen = klick.antwort, ergebnis]() -> std::optional<QJsonValue> {
        return angekommen() ? std::optional<QJsonValue>(ergebnis) : std::nullopt;
    };
    return klick;
}

Vorgang dateidialog(const QJsonObject& b) {
    auto* dialog = qobject_cast<QFileDialog*>(ObersterDateidialog());
    if (!dialog) throw Abgelehnt(QStringLiteral("Der Dateidialog ist nicht offen."));
    const QJsonObject bild{{"filter", QJsonArray::fromStringList(filterliste(*dialog))},
                           {"ordner", dialog->directory().absolutePath()}};
    if (b.value("abbrechen").toBool())
        return klickMitErgebnis(dialogknopf(*dialog, QDialogButtonBox::Cancel), bild);
    const QString datei = TextFeld(b, "datei");
    if (b.contains("filter")) filterWaehlen(*dialog, ZahlFeld(b, "filter"));
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (!name) throw Abgelehnt(QStringLiteral("Der Dateidialog hat kein Namensfeld."));
    name->setText(datei);
    return klickMitErgebnis(dialogknopf(*dialog, QDialogButtonBox::Open), bild);
}

}  // namespace

QDialog* ObersterKasten() {
    if (auto* frage = oberster<QMessageBox>(kMeldungsfenster)) return frage;
    return oberster<QInputDialog>(kEingabefenster);
}

QDialog* ObersterDateidialog() {
    return oberster<QFileDialog>(kDateifenster);
}

void KaestenAnmelden(Befehle& befehle) {
    befehle["meldung"] = meldung;
    befehle["druecken"] = druecken;
    befehle["dateidialog"] = dateidialog;
}
