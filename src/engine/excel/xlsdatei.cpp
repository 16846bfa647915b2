// An .xls workbook as the engine uses it.
#include "engine/excel/xlsdatei.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>

#include "base/fehler.h"
#include "engine/excel/behaelter.h"
#include "engine/excel/blattbau.h"
#include "engine/excel/blattname.h"
#include "engine/excel/blatttabelle.h"
#include "engine/excel/schreiber.h"
#include "engine/excel/umfang.h"

namespace excel {
namespace {

constexpr char kStrom8[] = "Workbook";
constexpr char kStrom5[] = "Book";
constexpr char kAenderungsprotokoll[] = "Revision Log";

// No program writes a larger .xls; what is called so is something else, and would fill the memory.
constexpr qint64 kGroessteMappe = qint64(2) << 30;

QByteArray dateiLesen(const QString& pfad) {
    QFile datei(pfad);
    if (datei.size() > kGroessteMappe)
        throw EngineFehler(kSystemgrenze, QStringLiteral("Die Datei '%1' ist größer als 2 GB; so groß wird "
                                                         "keine Arbeitsmappe von Microsoft Excel.")
                                              .arg(QFileInfo(pfad).fileName()));
    if (!datei.open(QIODevice::ReadOnly))
        throw EngineFehler(kDateifehler, QStringLiteral("Die Datei '%1' kann nicht geöffnet werden: %2")
                                             .arg(QFileInfo(pfad).fileName(), datei.errorString()));
    return datei.readAll();
}

[[noreturn]] void nichtBearbeitbar(const QString& text) {
    throw EngineFehler(kSystemgrenze, text);
}

// Excel and LibreOffice leave a file beside a workbook that they have open, or had when they crashed.
void sperrdateiPruefen(const QString& pfad) {
    const QFileInfo ziel(QFileInfo(pfad).canonicalFilePath());
    for (const QString& muster : {QStringLiteral("~$%1"), QStringLiteral(".~lock.%1#")}) {
        const QString name = muster.arg(ziel.fileName());
        if (!ziel.dir().exists(name)) continue;
        throw EngineFehler(
            kDateiGesperrt,
            QStringLiteral("Die Arbeitsmappe '%1' ist in einem anderen Programm geöffnet. Schließen Sie "
                           "sie dort. Ist sie nirgends mehr geöffnet, dann löschen Sie die Datei '%2'.")
                .arg(ziel.fileName(), name));
    }
}

// A workbook of Excel 2 to 4 is a bare stream, and says so.
void behaelterVerlangen(const QByteArray& datei) {
    if (datei.startsWith(QByteArray::fromHex("d0cf11e0a1b11ae1"))) return;
    (void)Mappe(datei);
    keineArbeitsmappe();
}

// The stream that counts: of two, the one of the newer format.
const Behaeltereintrag& mappenstrom(const Behaelter& behaelter) {
    const Behaeltereintrag* strom = behaelter.strom(kStrom8);
    if (!strom) strom = behaelter.strom(kStrom5);
    if (!strom) keineArbeitsmappe();
    return *strom;
}

void behaelterPruefen(const Behaelter& behaelter) {
    if (behaelter.strom(kAenderungsprotokoll))
        nichtBearbeitbar(
            QStringLiteral("Die Arbeitsmappe ist zur gemeinsamen Bearbeitung freigegeben. Heben Sie in "
                           "Excel die Freigabe auf, und speichern Sie die Mappe."));
    if (!behaelter.vollstaendig())
        nichtBearbeitbar(
            QStringLiteral("Der Aufbau der Datei ist beschädigt; beim Schreiben ginge etwas verloren. "
                           "Öffnen Sie die Mappe in Excel, und speichern Sie sie unter einem neuen "
                           "Namen."));
}

void schreibbarVerlangen(const Mappe& mappe) {
    if (const QString grund = mappe.schreibhindernis(); !grund.isEmpty()) nichtBearbeitbar(grund);
}

void tabellenVerlangen(const Arbeitsmappe& mappe, const QString& pfad) {
    if (mappe.tabellen().empty())
        nichtBearbeitbar(
            QStringLiteral("Die Arbeitsmappe '%1' enthält keine Tabellenblätter, nur Diagramme, Makros "
                           "oder Dialoge.")
                .arg(QFileInfo(pfad).fileName()));
}

class Ausfuehrung {
  public:
    explicit Ausfuehrung(Schreiber& schreiber) : schreiber_(schreiber) {}
    void operator()(const engine::TabelleLoeschen& a) { schreiber_.loeschen(a.name); }
    void operator()(const engine::TabelleUmbenennen& a) { schreiber_.umbenennen(a.alt, a.neu); }
    void operator()(const engine::TabelleAnlegen& a) { schreiber_.anlegen(a.def, *a.zeilen()); }

  private:
    Schreiber& schreiber_;
};

[[noreturn]] void nichtVollstaendig() {
    throw EngineFehler(kBeschaedigt,
                       QStringLiteral("Die Arbeitsmappe ist nach dem Schreiben nicht vollständig. Die "
                                      "Datei wurde nicht geändert."));
}

// The new stream must read as a workbook that has every added table with all its cells.
void stromPruefen(const QByteArray& strom, const Schreiber& schreiber) {
    const Arbeitsmappe mappe(strom);
    if (!mappe.mappe().schreibhindernis().isEmpty()) nichtVollstaendig();
    for (const auto& [name, zellen] : schreiber.zellen()) {
        const Tabellenort* ort = tabelleFinden(mappe.tabellen(), name);
        if (!ort || zellenZaehlen(mappe.mappe(), ort->blatt) != zellen) nichtVollstaendig();
    }
}

QByteArray geaendert(const QByteArray& strom, const std::vector<engine::Aenderung>& aenderungen,
                     engine::Hinweise& hinweise) {
    Mappe mappe(strom);
    Schreiber schreiber(mappe);
    Ausfuehrung ausfuehrung(schreiber);
    for (const engine::Aenderung& aenderung : aenderungen) std::visit(ausfuehrung, aenderung);
    schreiber.abschliessen();
    QByteArray neu = mappe.bytes();
    stromPruefen(neu, schreiber);
    hinweise = schreiber.hinweise();
    return neu;
}

void dateiSchreiben(const QString& pfad, const QByteArray& bytes) {
    QFile datei(pfad);
    if (datei.open(QIODevice::WriteOnly | QIODevice::Truncate) && datei.write(bytes) == bytes.size() &&
        datei.flush())
        return;
    if (QStorageInfo(QFileInfo(pfad).absolutePath()).bytesAvailable() < bytes.size())
        throw EngineFehler(
            kDatentraegerVoll,
            QStringLiteral("Auf dem Datenträger ist nicht genug Platz, um die Arbeitsmappe zu schreiben. "
                           "Schaffen Sie Platz und wählen Sie dann 'Wiederholen'."));
    throw EngineFehler(
        kDateifehler,
        QStringLiteral("Die Arbeitsmappe kann nicht geschrieben werden: %1").arg(datei.errorString()));
}

// Every stream and storage of the new file, byte by byte; the library may order them anew.
void zurueckgelesenPruefen(const QString& pfad, const Behaelter& soll) {
    const Behaelter ist(dateiLesen(pfad));
    const auto nachPfad = [](const Behaeltereintrag& a, const Behaeltereintrag& b) {
        return a.pfad < b.pfad;
    };
    std::vector<Behaeltereintrag> links = soll.eintraege();
    std::vector<Behaeltereintrag> rechts = ist.eintraege();
    std::sort(links.begin(), links.end(), nachPfad);
    std::sort(rechts.begin(), rechts.end(), nachPfad);
    if (!ist.vollstaendig() || links != rechts) nichtVollstaendig();
}

}  // namespace

XlsDatei::XlsDatei(QString pfad) : pfad_(std::move(pfad)), gelesen_(std::make_shared<engine::Hinweise>()) {
    laden();
    sperrdateiPruefen(pfad_);
    engine::schreibbarkeitPruefen(pfad_);
}

void XlsDatei::laden() {
    stand_ = engine::dateistandLesen(pfad_);
    const QByteArray datei = dateiLesen(pfad_);
    behaelterVerlangen(datei);
    const Behaelter behaelter(datei);
    mappe_ = std::make_shared<Arbeitsmappe>(mappenstrom(behaelter).bytes);
    behaelterPruefen(behaelter);
    for (const Behaeltereintrag& eintrag : behaelter.eintraege()) {
        if (!eintrag.heisst(kStrom8) && !eintrag.heisst(kStrom5)) continue;
        const Mappe mappe(eintrag.bytes);
        schreibbarVerlangen(mappe);
        nurBiff8_ = nurBiff8_ && mappe.biff8();
    }
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
    throw EngineFehler(
        kDateiGeaendert,
        QStringLiteral("Die Datei '%1' wurde inzwischen von einem anderen Programm geändert. Öffnen "
                       "Sie die Datenbank neu.")
            .arg(QFileInfo(pfad_).fileName()));
}

std::unique_ptr<engine::Zeilenquelle> XlsDatei::zeilenLesen(const QString& tabelle) {
    unveraendertPruefen();
    const Tabellenort* ort = tabelleFinden(mappe_->tabellen(), tabelle);
    if (!ort)
        throw EngineFehler(
            kNichtGefunden,
            QStringLiteral("Die Tabelle '%1' ist in der Arbeitsmappe nicht vorhanden.").arg(tabelle));
    return tabellenzeilen(mappe_, tabellenplan(*mappe_, *ort), ort->name,
                          [liste = gelesen_](const std::vector<QString>& saetze) {
                              for (const QString& satz : saetze)
                                  if (std::find(liste->begin(), liste->end(), satz) == liste->end())
                                      liste->push_back(satz);
                          });
}

engine::Hinweise XlsDatei::anwenden(const std::vector<engine::Aenderung>& aenderungen) {
    unveraendertPruefen();
    sperrdateiPruefen(pfad_);
    Behaelter behaelter(dateiLesen(pfad_));
    behaelterPruefen(behaelter);
    engine::Hinweise hinweise;
    // A file for Excel 5/95 and 97 at once holds the workbook twice.
    for (Behaeltereintrag& eintrag : behaelter.eintraege())
        if (eintrag.heisst(kStrom8) || eintrag.heisst(kStrom5))
            eintrag.bytes = geaendert(eintrag.bytes, aenderungen, hinweise);
    const QByteArray datei = behaelter.bytes();
    stand_ = engine::dateiAustauschen(
        pfad_, stand_, [&](const QString& neu) { dateiSchreiben(neu, datei); },
        [&](const QString& neu) { zurueckgelesenPruefen(neu, behaelter); });
    mappe_ = std::make_shared<Arbeitsmappe>(mappenstrom(behaelter).bytes);
    hinweise.insert(hinweise.end(), gelesen_->begin(), gelesen_->end());
    gelesen_->clear();
    return hinweise;
}

bool XlsDatei::nameErlaubt(const QString& name) const {
    return blattnameErlaubt(name) &&
           nameFreiNebenAnderem(mappe_->mappe(), mappe_->definitionen(), mappe_->tabellen(), name);
}

void XlsDatei::tabellePruefen(const engine::TabellenDef& def) const {
    engine::Datenbankdatei::tabellePruefen(def);
    blattUmfangPruefen(def, nurBiff8_);
}

void XlsDatei::feldnamePruefen(const QString& name) const {
    if (feldnameErlaubt(name)) return;
    throw EngineFehler(
        kUngueltigerName,
        QStringLiteral("'%1' ist in einer Excel-Tabelle kein gültiger Feldname. Wählen Sie einen Namen "
                       "mit 1 bis 64 Zeichen ohne . ! [ und ].")
            .arg(name));
}

std::unique_ptr<engine::Datenbankdatei> xlsOeffnen(const QString& pfad, const QString&) {
    return std::make_unique<XlsDatei>(pfad);
}

}  // namespace excel
