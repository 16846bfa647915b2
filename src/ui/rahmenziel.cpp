// Frame 4: the name of the table that the run writes.
#include "ui/rahmenziel.h"

#include <QGridLayout>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "data/zielname.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"

namespace {

QStringList tabellennamen() {
    QStringList namen;
    for (const auto& tabelle : Gesetzt(gDatenbank).TableDefs()) namen.append(tabelle->Name());
    return namen;
}

// The name as the database has it; nothing if there is no such table or it cannot be looked up.
std::optional<QString> vorhandeneTabelle(const QString& name) {
    std::optional<QString> gefunden;
    FehlerUebergehen([&] { gefunden = Gesetzt(gDatenbank).TableDefs().Item(name).Name(); });
    return gefunden;
}

// Why nothing can be saved into the database; nothing where it can.
std::optional<QString> schreibeinwand() {
    try {
        Gesetzt(gDatenbank).SchreibenPruefen();
        return std::nullopt;
    } catch (const EngineFehler& fehler) {
        return fehler.beschreibung();
    }
}

bool ueberschreibenErlaubt(const QString& name) {
    bool ja = false;
    Schritte s([] { return QStringLiteral("Fehler beim Schließen des Rahmens 4."); });
    s.ablauf(
        [&] {
            s.tu([&] {
                ja = FrageStellen(
                    QStringLiteral("Die Tabelle \"%1\" existiert bereits.\rSoll sie überschrieben werden?")
                        .arg(name),
                    Symbol::Ausrufezeichen, Knopf::Nein);
            });
        },
        [] { gFehler = true; });
    return ja;
}

}  // namespace

RahmenZiel::RahmenZiel()
    : Rahmen(4, QStringLiteral(" Auswahl der Zieltabelle ")),
      tbxZielTabelle(Neu<QLineEdit>(QStringLiteral("tbxZielTabelle"))),
      lblKurzerName(Textfeld(QString(), QStringLiteral("lblKurzerName"))) {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(fontMetrics().height());
    gitter->addWidget(Textfeld(QStringLiteral(
                          "Bestimmen sie den Namen der Tabelle, unter der die geänderte Tabelle gespeichert "
                          "werden soll. Die Ausgangstabelle wird nicht überschrieben. Aus Gründen der "
                          "Sicherheit, zwecks Wiederherstellung des ursprünglichen Zustandes, ist dies "
                          "erforderlich.")),
                      0, 0, 1, 2);
    gitter->addWidget(
        Textfeld(QStringLiteral("Daher muss der Name ein anderer sein als der der Ausgangstabelle.")), 1, 0,
        1, 2);
    gitter->addWidget(Beschriftung(QStringLiteral("&Korrgierte Tabelle speichern als:"), tbxZielTabelle), 2,
                      0);
    gitter->addWidget(tbxZielTabelle, 2, 1);
    gitter->addWidget(lblKurzerName, 3, 0, 1, 2);
    gitter->setRowStretch(4, 1);
}

void RahmenZiel::fuellen(Schritte& s) {
    QStringList namen;
    s.tu([&] { namen = tabellennamen(); });
    tbxZielTabelle->setText(ZielnameBilden(gAusgangsTabelle, namen, QDate::currentDate()));
    const std::optional<QString> kurzer = KurzerZielname(gDatenbankFormat, gAusgangsTabelle, namen);
    lblKurzerName->setText(
        kurzer ? QStringLiteral("In einer dBase-Datenbank hat der Name höchstens 8 Zeichen, zum Beispiel %1.")
                     .arg(*kurzer)
               : QString());
    lblKurzerName->setVisible(kurzer.has_value());
}

bool RahmenZiel::pruefen() {
    if (const std::optional<QString> einwand = schreibeinwand()) {
        AchtungZeigen(*einwand);
        return false;
    }
    tbxZielTabelle->setText(Trim(tbxZielTabelle->text()));
    const QString name = tbxZielTabelle->text();
    if (const std::optional<QString> einwand = ZielnamePruefen(gDatenbankFormat, name)) {
        AchtungZeigen(*einwand);
        return false;
    }
    if (Grossschrift(name) == Grossschrift(gAusgangsTabelle)) {
        AchtungZeigen(QStringLiteral("Die Zieltabelle kann nicht identisch mit der Ausgangstabelle sein."));
        return false;
    }
    const std::optional<QString> vorhandene = vorhandeneTabelle(name);
    if (vorhandene && !ueberschreibenErlaubt(*vorhandene)) return false;
    gZielTabelle = name;
    return true;
}
