// Frame 4: the name of the table that the run writes.
#include "ui/rahmenziel.h"

#include <QGridLayout>
#include <array>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "data/kopieren.h"
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

// How many control columns a run puts behind the fields while it works, by operation.
int steuerfelder() {
    constexpr std::array<int, 7> kAnzahl{0, 4, 3, 0, 0, 5, 5};
    return kAnzahl.at(gVorgang);
}

std::optional<QString> felderzahleinwand() {
    const auto felder = FeldNamen(gAusgangsTabelle).size();
    if (felder + steuerfelder() <= dao::kMaxFelder) return std::nullopt;
    return QStringLiteral(
               "Die Tabelle '%1' hat %2 Felder. Der Vorgang braucht bei der Arbeit %3 weitere, und eine "
               "Tabelle nimmt höchstens %4 auf. Entfernen Sie Felder aus der Ausgangstabelle.")
        .arg(gAusgangsTabelle, QString::number(felder), QString::number(steuerfelder()),
             QString::number(dao::kMaxFelder));
}

bool alleSaetzeBleiben() {
    return gVorgang == 3 || gVorgang == 4;
}

// The records that the result has at most; how many fall away shows only in the run.
qint64 saetzeHoechstens() {
    const qint64 erste = DatensaetzeDerTabelle(gAusgangsTabelle);
    return gVorgang == 6 ? erste + DatensaetzeDerTabelle(gZweiteTabelle) : erste;
}

// Why the result could not be saved; nothing when all that can be known before the run is well.
std::optional<QString> ergebniseinwand(const QString& ziel, qint64 saetze) {
    if (const auto einwand = felderzahleinwand()) return einwand;
    return KopieEinwand(gAusgangsTabelle, ziel, alleSaetzeBleiben() ? saetze : -1);
}

void vorZuVielenSaetzenWarnen(const QString& ziel, qint64 saetze) {
    if (const auto einwand = KopieEinwand(gAusgangsTabelle, ziel, saetze))
        HinweisZeigen(QStringLiteral("Das Ergebnis wird vielleicht zu groß und kann nicht gespeichert "
                                     "werden, wenn nicht genügend Datensätze wegfallen:\r") +
                      *einwand);
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
    const qint64 saetze = saetzeHoechstens();
    if (const std::optional<QString> einwand = ergebniseinwand(name, saetze)) {
        AchtungZeigen(*einwand);
        return false;
    }
    const std::optional<QString> vorhandene = vorhandeneTabelle(name);
    if (vorhandene && !ueberschreibenErlaubt(*vorhandene)) return false;
    vorZuVielenSaetzenWarnen(name, saetze);
    gZielTabelle = name;
    return true;
}
