// An .xls workbook as the engine uses it.
#include "engine/excel/xlsdatei.h"

#include <QFile>
#include <QFileInfo>

#include "base/fehler.h"
#include "engine/excel/behaelter.h"
#include "engine/excel/blattname.h"
#include "engine/excel/blatttabelle.h"
#include "engine/excel/satzarten.h"

namespace excel {
namespace {

constexpr char kStrom8[] = "Workbook";
constexpr char kStrom5[] = "Book";
constexpr char kAenderungsprotokoll[] = "Revision Log";
constexpr int kBehaelterkennung = 8;

QByteArray dateiLesen(const QString& pfad) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly))
        throw EngineFehler(kDateifehler, QStringLiteral("Die Datei '%1' kann nicht geöffnet werden: %2")
                                             .arg(QFileInfo(pfad).fileName(), datei.errorString()));
    return datei.readAll();
}

[[noreturn]] void nichtBearbeitbar(const QString& text) {
    throw EngineFehler(kSystemgrenze, text);
}

// A workbook of Excel 2 to 4 is a bare stream.
void altesBlattMelden(const QByteArray& datei) {
    if (!datei.startsWith(QByteArray::fromHex("d0cf11e0a1b11ae1").left(kBehaelterkennung))) (void)Mappe(datei);
}

// The stream that counts: of two, the one of the newer format.
const Behaeltereintrag& mappenstrom(const Behaelter& behaelter) {
    const Behaeltereintrag* strom = behaelter.strom(kStrom8);
    if (!strom) strom = behaelter.strom(kStrom5);
    if (!strom)
        throw EngineFehler(kDateiNichtLesbar,
                           QStringLiteral("Die Datei ist keine Arbeitsmappe von Microsoft Excel."));
    return *strom;
}

void behaelterPruefen(const Behaelter& behaelter) {
    if (behaelter.strom(kAenderungsprotokoll))
        nichtBearbeitbar(QStringLiteral("Die Arbeitsmappe ist zur gemeinsamen Bearbeitung freigegeben. Heben Sie in "
                                       "Excel die Freigabe auf, und speichern Sie die Mappe."));
    if (!behaelter.vollstaendig())
        nichtBearbeitbar(QStringLiteral("Der Aufbau der Datei ist beschädigt; beim Schreiben ginge etwas verloren. "
                                       "Öffnen Sie die Mappe in Excel, und speichern Sie sie unter einem neuen "
                                       "Namen."));
}

void tabellenVerlangen(const Arbeitsmappe& mappe, const QString& pfad) {
    if (mappe.tabellen().empty())
        nichtBearbeitbar(QStringLiteral("Die Arbeitsmappe '%1' enthält keine Tabellenblätter, nur Diagramme, Makros "
                                       "oder Dialoge.")
                            .arg(QFileInfo(pfad).fileName()));
}

}  // namespace

XlsDatei::XlsDatei(QString pfad) : pfad_(std::move(pfad)) {
    laden();
    engine::schreibbarkeitPruefen(pfad_);
}

void XlsDatei::laden() {
    stand_ = engine::dateistandLesen(pfad_);
    const QByteArray datei = dateiLesen(pfad_);
    altesBlattMelden(datei);
    const Behaelter behaelter(datei);
    mappe_ = std::make_shared<Arbeitsmappe>(mappenstrom(behaelter).bytes);
    behaelterPruefen(behaelter);
    if (const QString grund = mappe_->mappe().schreibhindernis(); !grund.isEmpty()) nichtBearbeitbar(grund);
    tabellenVerlangen(*mappe_, pfad_);
}

engine::Katalog XlsDatei::katalogLesen() {
    engine::Katalog katalog;
    for (const Tabellenort& ort : mappe_->tabellen()) {
        Tabellenplan plan = tabellenplan(*mappe_, ort);
        engine::TabellenDef def;
        def.name = ort.name;
        def.zeilen = plan.zeilen;
        def.felder = std::move(plan.felder);
        katalog.tabellen.push_back(std::move(def));
    }
    return katalog;
}

void XlsDatei::unveraendertPruefen() const {
    if (engine::dateistandLesen(pfad_) == stand_) return;
    throw EngineFehler(kDateiGeaendert,
                       QStringLiteral("Die Datei '%1' wurde inzwischen von einem anderen Programm geändert. Öffnen "
                                      "Sie die Datenbank neu.")
                           .arg(QFileInfo(pfad_).fileName()));
}

std::unique_ptr<engine::Zeilenquelle> XlsDatei::zeilenLesen(const QString& tabelle) {
    unveraendertPruefen();
    const Tabellenort* ort = mappe_->tabelle(tabelle);
    if (!ort)
        throw EngineFehler(kNichtGefunden,
                           QStringLiteral("Die Tabelle '%1' ist in der Arbeitsmappe nicht vorhanden.").arg(tabelle));
    return tabellenzeilen(mappe_, tabellenplan(*mappe_, *ort));
}

engine::Hinweise XlsDatei::anwenden(const std::vector<engine::Aenderung>&) {
    throw EngineFehler(kSchreibgeschuetzt, QStringLiteral("Arbeitsmappen können noch nicht geändert werden."));
}

bool XlsDatei::nameErlaubt(const QString& name) const {
    return blattnameErlaubt(name);
}

void XlsDatei::feldnamePruefen(const QString& name) const {
    if (feldnameErlaubt(name)) return;
    throw EngineFehler(kUngueltigerName,
                       QStringLiteral("'%1' ist in einer Excel-Tabelle kein gültiger Feldname. Wählen Sie einen Namen "
                                      "mit 1 bis 64 Zeichen ohne . ! [ und ].")
                           .arg(name));
}

std::unique_ptr<engine::Datenbankdatei> xlsOeffnen(const QString& pfad, const QString&) {
    return std::make_unique<XlsDatei>(pfad);
}

}  // namespace excel
