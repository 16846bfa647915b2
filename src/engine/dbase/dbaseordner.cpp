// A folder of .dbf files as the engine uses it.
#include "engine/dbase/dbaseordner.h"

#include <unistd.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>

#include "base/fehler.h"
#include "engine/dbase/ausfuehrung.h"
#include "engine/dbase/namen.h"
#include "engine/dbase/ordner.h"
#include "engine/dbase/schreibplan.h"

namespace dbase {

// What the user is to hear of rows that were read, each sentence once.
struct DbaseOrdner::Leseliste {
    std::vector<QString> saetze;
    std::set<QString> bekannte;
    std::set<QString> beschaedigte;  // tables whose memo file turned out to be damaged

    void aufnehmen(const QString& tabelle, const Befund& befund) {
        if (befund.memoBeschaedigt) beschaedigte.insert(tabelle);
        for (const QString& satz : befund.hinweise)
            if (bekannte.insert(satz).second) saetze.push_back(satz);
    }
};

namespace {

bool gleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

void ordnerSchreibbarPruefen(const QString& ordner) {
    if (!QFileInfo(ordner).isDir())
        throw EngineFehler(
            kDateiFehlt,
            QStringLiteral("Der Ordner '%1' ist nicht vorhanden oder nicht erreichbar.").arg(ordner));
    if (::access(QFile::encodeName(ordner).constData(), W_OK | X_OK) == 0) return;
    throw EngineFehler(
        kSchreibgeschuetzt,
        QStringLiteral("Der Ordner '%1' ist schreibgeschützt; neue Tabellen könnten dort nicht "
                       "gespeichert werden. Kopieren Sie die Dateien in einen anderen Ordner.")
            .arg(ordner));
}

QString memodateiVon(const Ordner& ordner, const QString& stamm, Memoart art) {
    if (art == Memoart::Keine) return QString();
    const QString name =
        ordner.datei(stamm, art == Memoart::Fpt ? QStringLiteral("fpt") : QStringLiteral("dbt"));
    return name.isEmpty() ? QString() : ordner.pfadVon(name);
}

Tabelle tabelleOeffnen(const Ordner& ordner, const QString& datei) {
    const QString stamm = stammVon(datei);
    const QString pfad = ordner.pfadVon(datei);
    const auto daten = std::make_shared<Dateiquelle>(pfad);
    const QString memopfad = memodateiVon(ordner, stamm, kopfLesen(*daten).memoart);
    const auto memo = memopfad.isEmpty() ? nullptr : std::make_shared<Dateiquelle>(memopfad);
    Tabelle tabelle = tabelleLesen(stamm, {daten, memo}, ordner.inhalt(stamm, QStringLiteral("cpg")));
    tabelle.pfad = pfad;
    tabelle.stand = daten->stand();
    tabelle.memopfad = memopfad;
    if (memo) tabelle.memostand = memo->stand();
    tabelle.def.geaendert = QDateTime::fromMSecsSinceEpoch(tabelle.stand.geaendertNs / 1'000'000);
    return tabelle;
}

[[noreturn]] void keineLesbar(const std::vector<QString>& gruende) {
    QString text = gruende.front();
    if (gruende.size() > 1)
        text += QStringLiteral(" Auch keine andere .dbf-Datei des Ordners (%1) ist lesbar.")
                    .arg(gruende.size() - 1);
    throw EngineFehler(kDateifehler, text);
}

[[noreturn]] void geaendert(const Tabelle& tabelle) {
    throw EngineFehler(
        kDateiGeaendert,
        QStringLiteral("Die Tabelle '%1' wurde inzwischen von einem anderen Programm geändert. Öffnen "
                       "Sie die Datenbank neu.")
            .arg(tabelle.name));
}

// The rows of a table that somebody else may change meanwhile.
class Bewacht : public engine::Zeilenquelle {
  public:
    Bewacht(const Tabelle& tabelle, std::shared_ptr<const Dateiquelle> daten,
            std::shared_ptr<const Dateiquelle> memo, Lesebericht bericht)
        : daten_(std::move(daten)),
          memo_(std::move(memo)),
          leser_(tabelle, {daten_, memo_}, std::move(bericht)) {}
    bool naechste(engine::Zeile& zeile) override {
        if (leser_.naechste(zeile)) return true;
        daten_->unveraendertVerlangen();
        if (memo_) memo_->unveraendertVerlangen();
        return false;
    }

  private:
    std::shared_ptr<const Dateiquelle> daten_;
    std::shared_ptr<const Dateiquelle> memo_;
    Tabellenleser leser_;
};

}  // namespace

DbaseOrdner::DbaseOrdner(QString ordner)
    : ordner_(std::move(ordner)), gelesen_(std::make_shared<Leseliste>()) {
    ordnerSchreibbarPruefen(ordner_);
    tabellenSuchen();
}

DbaseOrdner::~DbaseOrdner() = default;

void DbaseOrdner::tabellenSuchen() {
    const Ordner ordner(ordner_);
    QStringList doppelte;
    for (const QString& datei : ordner.tabellendateien(&doppelte)) {
        try {
            tabellen_.push_back(tabelleOeffnen(ordner, datei));
        } catch (const EngineFehler& fehler) {
            QString warum = fehler.beschreibung();
            if (warum.endsWith(u'.')) warum.chop(1);
            hinweise_.push_back(
                QStringLiteral("Die Datei '%1' kann nicht als dBase-Tabelle gelesen werden: %2.")
                    .arg(datei, warum));
        }
    }
    if (tabellen_.empty() && !hinweise_.empty()) keineLesbar(hinweise_);
    if (const int namenlose = ordner.namenlose(); namenlose > 0)
        hinweise_.push_back(
            QStringLiteral("Im Ordner liegen .dbf-Dateien, deren Namen nicht gelesen werden können; sie "
                           "werden nicht angezeigt (%1). Benennen Sie sie um.")
                .arg(namenlose));
    for (const QString& datei : doppelte)
        hinweise_.push_back(
            QStringLiteral("Die Datei '%1' heißt bis auf die Großschreibung wie eine andere und "
                           "wird nicht angezeigt.")
                .arg(datei));
    for (const Tabelle& tabelle : tabellen_)
        hinweise_.insert(hinweise_.end(), tabelle.hinweise.begin(), tabelle.hinweise.end());
}

engine::Katalog DbaseOrdner::katalogLesen() {
    engine::Katalog katalog;
    for (const Tabelle& tabelle : tabellen_) katalog.tabellen.push_back(tabelle.def);
    katalog.hinweise = hinweise_;
    return katalog;
}

std::unique_ptr<engine::Zeilenquelle> DbaseOrdner::zeilenLesen(const QString& name) {
    const auto fund = std::find_if(tabellen_.begin(), tabellen_.end(),
                                   [&](const Tabelle& t) { return gleich(t.name, name); });
    if (fund == tabellen_.end())
        throw EngineFehler(kNichtGefunden,
                           QStringLiteral("Die Tabelle '%1' ist im Ordner nicht vorhanden.").arg(name));
    auto daten = std::make_shared<Dateiquelle>(fund->pfad);
    auto memo = fund->memostand ? std::make_shared<Dateiquelle>(fund->memopfad) : nullptr;
    if (daten->stand() != fund->stand || (memo && memo->stand() != *fund->memostand)) geaendert(*fund);
    return std::make_unique<Bewacht>(*fund, std::move(daten), std::move(memo),
                                     [liste = gelesen_, tabelle = fund->name](const Befund& befund) {
                                         liste->aufnehmen(tabelle, befund);
                                     });
}

engine::Hinweise DbaseOrdner::anwenden(const std::vector<engine::Aenderung>& aenderungen) {
    for (Tabelle& tabelle : tabellen_)
        if (gelesen_->beschaedigte.erase(tabelle.name) > 0)
            tabelle.aufbau.schaeden.push_back(QStringLiteral("die Memodatei ist beschädigt"));
    const Vorhaben vorhaben =
        vorhabenErmitteln(tabellen_, aenderungen, [this](const QString& name) { return belegtGrund(name); });
    Ausfuehrung ausfuehrung(ordner_, vorhaben);
    std::vector<Tabelle> neue = ausfuehrung.durchfuehren();

    engine::Hinweise hinweise = std::exchange(gelesen_->saetze, {});
    for (const QString& hinweis : ausfuehrung.hinweise()) hinweise.push_back(hinweis);
    std::erase_if(tabellen_, [&](const Tabelle& tabelle) {
        return std::find(vorhaben.gehende.begin(), vorhaben.gehende.end(), &tabelle) !=
               vorhaben.gehende.end();
    });
    for (Tabelle& tabelle : neue) tabellen_.push_back(std::move(tabelle));
    std::sort(tabellen_.begin(), tabellen_.end(), [](const Tabelle& a, const Tabelle& b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    return hinweise;
}

// A name may be free in the catalogue and yet belong to a file that is no table.
QString DbaseOrdner::belegtGrund(const QString& name) const {
    if (std::any_of(tabellen_.begin(), tabellen_.end(),
                    [&](const Tabelle& t) { return gleich(t.name, name); }))
        return QString();
    const Ordner ordner(ordner_);
    for (const char* endung : {"dbf", "dbt", "fpt", "cpg"}) {
        const QString datei = ordner.datei(name, QString::fromLatin1(endung));
        if (!datei.isEmpty())
            return QStringLiteral(
                       "Im Ordner liegt bereits eine Datei '%1', die nicht überschrieben wird. Wählen Sie "
                       "einen anderen Namen für die Tabelle, oder entfernen Sie die Datei.")
                .arg(datei);
    }
    return QString();
}

bool DbaseOrdner::nameErlaubt(const QString& name) const {
    return tabellennameErlaubt(name) && belegtGrund(name).isEmpty();
}

void DbaseOrdner::feldnamePruefen(const QString& name) const {
    if (name.compare(neuerFeldname(name, Zeichensatz(kSeite850), {}), Qt::CaseInsensitive) == 0) return;
    throw EngineFehler(
        kUngueltigerName,
        QStringLiteral(
            "'%1' ist in einer dBase-Tabelle kein gültiger Feldname. Wählen Sie einen mit 1 bis %2 "
            "Buchstaben, Ziffern und Unterstrichen, der mit einem Buchstaben beginnt.")
            .arg(name, QString::number(kMaxFeldname)));
}

// A column of the folder's own may be called in other ways.
void DbaseOrdner::feldPruefen(const engine::FeldDef& feld) const {
    if (feld.formatEigenes.isEmpty()) feldnamePruefen(feld.name);
    feldPlanbar(feld);
}

void DbaseOrdner::tabellePruefen(const engine::TabellenDef& def) const {
    tabellePlanbar(def);
}

engine::Zeichenprobe DbaseOrdner::zeichenprobe(const engine::TabellenDef& def) const {
    const Zeichensatz zeichensatz = zeichensatzFuer(def);
    if (!zeichensatz.schreibbar()) return {};
    return [zeichensatz, puffer = QByteArray()](QStringView text) mutable {
        puffer.resize(std::max(puffer.size(), text.size()));
        return zeichensatz.schreiben(text, puffer.data());
    };
}

std::unique_ptr<engine::Datenbankdatei> dbaseOeffnen(const QString& ordner, const QString&) {
    return std::make_unique<DbaseOrdner>(ordner);
}

}  // namespace dbase
