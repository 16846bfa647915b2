// An .mdb file as the engine uses it.
#include "engine/jet/mdbdatei.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <map>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/namen.h"
#include "engine/jet/pruefer.h"
#include "engine/jet/schreiber.h"
#include "engine/jet/tabellenbau.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

std::shared_ptr<Seitendatei> oeffnen(const QString& pfad, QIODevice::OpenMode art) {
    auto geraet = std::make_unique<QFile>(pfad);
    if (!geraet->open(art))
        throw EngineFehler(kDateifehler, u"Die Datei '%1' kann nicht geöffnet werden: %2"_qs.arg(
                                             QFileInfo(pfad).fileName(), geraet->errorString()));
    return std::make_shared<Seitendatei>(std::move(geraet));
}

// The first computer that a lock file names; 32 bytes a name, padded with zeros.
QString rechnerAusSperrdatei(const QString& pfad) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) return QString();
    const QByteArray name = datei.read(32);
    return QString::fromLatin1(name.left(name.indexOf('\0') < 0 ? name.size() : name.indexOf('\0')))
        .trimmed();
}

// A lock file of the same name says that another program has the database open, or had it when it crashed.
void sperrdateiPruefen(const QString& pfad) {
    const QFileInfo datei(pfad);
    const QFileInfo ziel(datei.canonicalFilePath());
    const QStringList gesucht{ziel.completeBaseName() + u".ldb"_qs, ziel.completeBaseName() + u".laccdb"_qs};
    for (const QString& name : ziel.dir().entryList(QDir::Files | QDir::Hidden)) {
        if (!gesucht.contains(name, Qt::CaseInsensitive)) continue;
        const QString rechner = rechnerAusSperrdatei(ziel.dir().filePath(name));
        throw EngineFehler(
            kDateiGesperrt,
            u"Die Datenbank '%1' ist in einem anderen Programm geöffnet%2. Schließen Sie sie dort. "
            "Ist sie nirgends mehr geöffnet, dann löschen Sie die Datei '%3'."_qs.arg(
                datei.fileName(), rechner.isEmpty() ? QString() : u" (Rechner '%1')"_qs.arg(rechner), name));
    }
}

QString nurLesbarText(const QString& pfad) {
    return u"Die Datenbank '%1' hat die Sortierreihenfolge von Access 2010 und neuer oder eine andere, die "
           "nicht unterstützt wird. Ihre Tabellen können gelesen, Ergebnisse aber nicht in ihr gespeichert "
           "werden. Speichern Sie die Datenbank in Access im Format "
           "'Access 2002-2003-Datenbank (*.mdb)', und öffnen Sie dann die neue Datei."_qs.arg(
               QFileInfo(pfad).fileName());
}

// The rows of a table of a file that somebody else may change meanwhile.
class Tabellenzeilen : public engine::Zeilenquelle {
  public:
    Tabellenzeilen(std::shared_ptr<Seitendatei> datei, Tabelle tabelle)
        : datei_(std::move(datei)), leser_(*datei_, std::move(tabelle)) {}
    bool naechste(engine::Zeile& zeile) override {
        Atempause();
        return leser_.naechste(zeile);
    }

  private:
    std::shared_ptr<Seitendatei> datei_;
    Tabellenleser leser_;
};

// Counts what goes through, to compare it with what arrived in the file.
class Zaehlend : public engine::Zeilenquelle {
  public:
    explicit Zaehlend(std::unique_ptr<engine::Zeilenquelle> quelle) : quelle_(std::move(quelle)) {}
    bool naechste(engine::Zeile& zeile) override {
        Atempause();
        if (!quelle_->naechste(zeile)) return false;
        ++anzahl_;
        return true;
    }
    qint64 anzahl() const { return anzahl_; }

  private:
    std::unique_ptr<engine::Zeilenquelle> quelle_;
    qint64 anzahl_ = 0;
};

// The rows that each new table must have when the changes are done, by its name then.
using Erwartet = std::map<QString, qint64>;

class Ausfuehrung {
  public:
    Ausfuehrung(Schreiber& schreiber, Erwartet& erwartet) : schreiber_(schreiber), erwartet_(erwartet) {}
    void operator()(const engine::TabelleLoeschen& a) {
        schreiber_.loeschen(a.name);
        erwartet_.erase(a.name);
    }
    void operator()(const engine::TabelleUmbenennen& a) {
        schreiber_.umbenennen(a.alt, a.neu);
        if (auto eintrag = erwartet_.extract(a.alt)) {
            eintrag.key() = a.neu;
            erwartet_.insert(std::move(eintrag));
        }
    }
    void operator()(const engine::TabelleAnlegen& a) {
        Zaehlend zeilen(a.zeilen());
        schreiber_.anlegen(a.def, zeilen);
        erwartet_[a.def.name] = zeilen.anzahl();
    }

  private:
    Schreiber& schreiber_;
    Erwartet& erwartet_;
};

engine::Hinweise schreiben(const QString& pfad, const std::vector<engine::Aenderung>& aenderungen,
                           Erwartet& erwartet) {
    const std::shared_ptr<Seitendatei> datei = oeffnen(pfad, QIODevice::ReadWrite);
    Schreiber schreiber(*datei);
    Ausfuehrung ausfuehrung(schreiber, erwartet);
    for (const engine::Aenderung& aenderung : aenderungen) std::visit(ausfuehrung, aenderung);
    schreiber.abschliessen();
    return schreiber.hinweise();
}

// Reads the new file back: nothing that was sound is broken, and every new table has its rows.
std::shared_ptr<Seitendatei> zurueckgelesen(const QString& pfad, const Seitendatei& bisherige,
                                            const Erwartet& erwartet) {
    std::shared_ptr<Seitendatei> datei = oeffnen(pfad, QIODevice::ReadOnly);
    dateiPruefen(*datei, [&] { return maengelFinden(bisherige); });
    for (const auto& [name, zeilen] : erwartet) {
        if (qint64(tabelleLesen(*datei, name).zeilen) == zeilen) continue;
        throw EngineFehler(
            kBeschaedigt,
            u"Die Tabelle '%1' ist nach dem Schreiben nicht vollständig. Die Datei wurde nicht geändert."_qs
                .arg(name));
    }
    return datei;
}

}  // namespace

MdbDatei::MdbDatei(QString pfad, const QString& passwort) : pfad_(std::move(pfad)) {
    stand_ = engine::dateistandLesen(pfad_);
    datei_ = oeffnen(pfad_, QIODevice::ReadOnly);
    oeffnenPruefen(*datei_, passwort);
    nurLesbar_ = nurLesbar(*datei_);
    if (!nurLesbar_) schreibbarPruefen(*datei_);
    sperrdateiPruefen(pfad_);
    if (!nurLesbar_) engine::schreibbarkeitPruefen(pfad_);
}

engine::Katalog MdbDatei::katalogLesen() {
    engine::Katalog katalog = jet::katalogLesen(*datei_);
    if (nurLesbar_) katalog.hinweise.push_back(nurLesbarText(pfad_));
    return katalog;
}

void MdbDatei::schreibenPruefen() const {
    if (nurLesbar_) throw EngineFehler(kSystemgrenze, nurLesbarText(pfad_));
}

void MdbDatei::unveraendertPruefen() const {
    if (engine::dateistandLesen(pfad_) == stand_) return;
    throw EngineFehler(kDateiGeaendert,
                       u"Die Datei '%1' wurde inzwischen von einem anderen Programm geändert. Öffnen Sie die "
                       "Datenbank neu."_qs.arg(QFileInfo(pfad_).fileName()));
}

std::unique_ptr<engine::Zeilenquelle> MdbDatei::zeilenLesen(const QString& tabelle) {
    unveraendertPruefen();
    return std::make_unique<Tabellenzeilen>(datei_, tabelleLesen(*datei_, tabelle));
}

engine::Hinweise MdbDatei::anwenden(const std::vector<engine::Aenderung>& aenderungen) {
    schreibenPruefen();
    unveraendertPruefen();
    sperrdateiPruefen(pfad_);
    Erwartet erwartet;
    engine::Hinweise hinweise;
    std::shared_ptr<Seitendatei> neue;
    stand_ = engine::dateiAustauschen(
        pfad_, stand_, [&](const QString& neu) { hinweise = schreiben(neu, aenderungen, erwartet); },
        [&](const QString& neu) { neue = zurueckgelesen(neu, *datei_, erwartet); });
    // It was opened before it took its place: a failure behind the swap would look as if nothing had changed.
    datei_ = std::move(neue);
    return hinweise;
}

bool MdbDatei::nameErlaubt(const QString& name) const {
    return tabellenNameErlaubt(name);
}

void MdbDatei::feldnamePruefen(const QString& name) const {
    jet::feldnamePruefen(name);
}

void MdbDatei::tabellePruefen(const engine::TabellenDef& def) const {
    tabellenDefPruefen(def);
}

std::unique_ptr<engine::Datenbankdatei> mdbOeffnen(const QString& pfad, const QString& passwort) {
    return std::make_unique<MdbDatei>(pfad, passwort);
}

}  // namespace jet
