// The connection to the scratch database.
#include "engine/store/verbindung.h"

#include <QString>
#include <new>
#include <string>
#include <utility>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/store/zellen.h"

namespace store {
namespace {

constexpr int kSchritteJePause = 1000;
constexpr size_t kMaxAnweisungen = 256;

// A file without a name: created by the store in the folder for temporary files, unlinked at once, mode 0600.
// It is never synced and has nobody to share with, so it needs neither a write-ahead log nor locks.
constexpr char kOhneNamen[] = "";

// The store sorts in pieces of this size before it merges them.
constexpr char kVorrat[] = "PRAGMA cache_size = -65536";
constexpr char kKleinerVorrat[] = "PRAGMA cache_size = -4096";

constexpr const char* kEinrichtung[] = {
    // Texts stay as they are, unpaired surrogates included.
    "PRAGMA encoding = 'UTF-16le'",
    // Each commit walks over all pages in memory: the fewer the better.
    "PRAGMA page_size = 16384",
    "PRAGMA synchronous = OFF",
    kVorrat,
    // Nobody can open the file, so what is deleted need not be overwritten, as some builds of the store do.
    "PRAGMA secure_delete = OFF",
    "PRAGMA temp_store = FILE",
};

// The program has one thread and asks for no statistics, so neither needs the store's locks. What does not
// take, because somebody else in the process uses the store already, costs time and nothing else.
void sqliteEinstellen() {
    [[maybe_unused]] static const int codes[] = {sqlite3_config(SQLITE_CONFIG_SINGLETHREAD),
                                                 sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0)};
}

}  // namespace

Verbindung::Verbindung() {
    sqliteEinstellen();
    constexpr int kArt = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(kOhneNamen, &datenbank_, kArt, nullptr);
    if (code != SQLITE_OK) {
        sqlite3_close(std::exchange(datenbank_, nullptr));
        throw EngineFehler(kDateifehler,
                           QStringLiteral("Der Arbeitsspeicher auf dem Datenträger kann nicht angelegt "
                                          "werden. Prüfen Sie den Ordner für temporäre Dateien."));
    }
    for (const char* text : kEinrichtung) ausfuehren(text);
    pruefen(funktionenAnmelden(datenbank_));
}

Verbindung::~Verbindung() {
    anweisungenVergessen();
    sqlite3_close(datenbank_);
}

void Verbindung::anweisungenVergessen() {
    for (const auto& [text, anweisung] : anweisungen_) sqlite3_finalize(anweisung);
    anweisungen_.clear();
    ++runde_;
}

void Verbindung::freiVerlangen() const {
    if (inDerPause_)
        throw EngineFehler(kDateifehler,
                           QStringLiteral("Die Datenbank ist gerade beschäftigt. Warten Sie, bis der "
                                          "laufende Vorgang beendet ist."));
}

sqlite3_stmt* Verbindung::vorbereitet(const QByteArray& text) {
    freiVerlangen();
    std::string schluessel = text.toStdString();
    const auto fund = anweisungen_.find(schluessel);
    if (fund != anweisungen_.end()) return fund->second;
    if (anweisungen_.size() >= kMaxAnweisungen) anweisungenVergessen();
    sqlite3_stmt* anweisung = nullptr;
    pruefen(sqlite3_prepare_v3(datenbank_, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT,
                               &anweisung, nullptr));
    anweisungen_.emplace(std::move(schluessel), anweisung);
    return anweisung;
}

void Verbindung::ausfuehren(const QByteArray& text) {
    sqlite3_stmt* anweisung = vorbereitet(text);
    const Zuruecksetzer zurueck(anweisung);
    while (schritt(anweisung)) {
    }
}

bool Verbindung::schritt(sqlite3_stmt* anweisung) {
    const int code = sqlite3_step(anweisung);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    melden(code);
}

void Verbindung::pruefen(int code) {
    if (code != SQLITE_OK) melden(code);
}

void Verbindung::melden(int code) {
    if (ausDerPause_) std::rethrow_exception(std::exchange(ausDerPause_, nullptr));
    switch (code & 0xff) {
        case SQLITE_NOMEM:
            throw std::bad_alloc();
        case SQLITE_FULL:
            throw EngineFehler(
                kDatentraegerVoll,
                QStringLiteral("Im Ordner für temporäre Dateien ist nicht genug "
                               "Platz. Schaffen Sie Platz und wählen Sie dann 'Wiederholen'."));
        default:
            throw EngineFehler(kDateifehler,
                               QStringLiteral("Der Arbeitsspeicher auf dem Datenträger meldet: %1.")
                                   .arg(QString::fromUtf8(sqlite3_errmsg(datenbank_))));
    }
}

int Verbindung::atmen(void* selbst) {
    auto* verbindung = static_cast<Verbindung*>(selbst);
    verbindung->inDerPause_ = true;
    try {
        Atempause();
    } catch (...) {
        verbindung->ausDerPause_ = std::current_exception();
    }
    verbindung->inDerPause_ = false;
    return verbindung->ausDerPause_ ? 1 : 0;
}

Verbindung::Atmend::Atmend(Verbindung& verbindung) : verbindung_(verbindung) {
    sqlite3_progress_handler(verbindung_.datenbank_, kSchritteJePause, atmen, &verbindung_);
}

Verbindung::Atmend::~Atmend() {
    sqlite3_progress_handler(verbindung_.datenbank_, 0, nullptr, nullptr);
}

Verbindung::Haeppchenweise::Haeppchenweise(Verbindung& verbindung) : verbindung_(verbindung) {
    verbindung_.ausfuehren(kKleinerVorrat);
}

Verbindung::Haeppchenweise::~Haeppchenweise() {
    try {
        verbindung_.ausfuehren(kVorrat);
    } catch (const EngineFehler&) {
        // A small cache is slower and nothing else.
    }
}

void Verbindung::hoechstensSeiten(int anzahl) {
    ausfuehren("PRAGMA max_page_count = " + QByteArray::number(anzahl));
}

}  // namespace store
