// The working store.
#include "engine/store/speicher.h"

#include <QtEndian>
#include <cassert>
#include <utility>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/sort/eintragsliste.h"
#include "engine/store/invarianten.h"

namespace store {
namespace {

constexpr qint64 kVieleZeilen = 50000;  // below, a walk over the table is not noticed

QByteArray tabellenname(qint64 nummer) {
    return "t" + QByteArray::number(nummer);
}

QByteArray spaltenliste(const std::vector<int>& spalten, const char* hinterher = "") {
    QByteArray liste;
    for (int spalte : spalten) liste += "," + spaltenname(spalte) + hinterher;
    return liste;
}

}  // namespace

template <typename Text>
sqlite3_stmt* Speicher::mitSpalten(Spaltenanweisung& anweisung, const std::vector<int>& spalten, Text text) {
    if (anweisung.spalten != spalten) anweisung = {spalten, {}};
    return verbindung_.vorbereitet(anweisung.stelle, text);
}

Speicher::Speicher() = default;
Speicher::~Speicher() = default;

Speicher::Tabelle& Speicher::tabelle(qint64 nummer) {
    transaktionPruefen();
    if (!tabelleVorhanden(nummer))
        throw EngineFehler(kObjektUngueltig, QStringLiteral("Die Tabelle ist nicht mehr vorhanden."));
    return tabellen_[size_t(nummer)];
}

// A full disk can make the store give up the whole transaction; going on would lose rows without a word.
void Speicher::transaktionPruefen() const {
    if (gemerkt_ && !verbindung_.inTransaktion())
        throw EngineFehler(
            kDatentraegerVoll,
            QStringLiteral(
                "Im Ordner für temporäre Dateien war nicht genug Platz, "
                "die laufende Änderung ist verloren. Brechen Sie den Vorgang ab und schaffen Sie Platz."));
}

bool Speicher::tabelleVorhanden(qint64 nummer) const {
    return size_t(nummer) < tabellen_.size() && tabellen_[size_t(nummer)].vorhanden;
}

qint64 Speicher::naechsteId(qint64 nummer) const {
    return tabelleVorhanden(nummer) ? tabellen_[size_t(nummer)].naechsteId : 0;
}

quint64 Speicher::stand(qint64 nummer) const {
    return size_t(nummer) < tabellen_.size() ? tabellen_[size_t(nummer)].stand : 0;
}

void Speicher::tabelleAnlegen(qint64 nummer, std::vector<Spaltenart> arten) {
    transaktionPruefen();
    std::vector<int> spalten(arten.size());
    for (size_t i = 0; i < spalten.size(); ++i) spalten[i] = int(i);
    verbindung_.ausfuehren("CREATE TABLE " + tabellenname(nummer) + " (id INTEGER PRIMARY KEY" +
                           spaltenliste(spalten) + ")");
    if (size_t(nummer) >= tabellen_.size()) tabellen_.resize(size_t(nummer) + 1);
    tabellen_[size_t(nummer)] = Tabelle{std::move(arten), 1, ++letzterStand_, true};
    invariantenPruefen();
}

void Speicher::tabelleEntfernen(qint64 nummer) {
    Atempause();  // a large table takes its time, and what led here may have done so
    Tabelle& ziel = tabelle(nummer);
    verbindung_.ausfuehren("DROP TABLE " + tabellenname(nummer));
    ziel.vorhanden = false;
    invariantenPruefen();
}

int Speicher::spalteAnhaengen(qint64 nummer, Spaltenart art) {
    Tabelle& ziel = tabelle(nummer);
    const int spalte = int(ziel.arten.size());
    verbindung_.ausfuehren("ALTER TABLE " + tabellenname(nummer) + " ADD COLUMN " + spaltenname(spalte));
    ziel.arten.push_back(art);
    geschrieben(ziel);
    invariantenPruefen();
    return spalte;
}

qint64 Speicher::zeileAnhaengen(qint64 nummer, const std::vector<int>& spalten,
                                const std::vector<Wert>& werte) {
    Tabelle& ziel = tabelle(nummer);
    assert(spalten.size() == werte.size());
    sqlite3_stmt* anweisung = mitSpalten(ziel.anhaengen, spalten, [&] {
        return "INSERT INTO " + tabellenname(nummer) + " (id" + spaltenliste(spalten) + ") VALUES (?" +
               QByteArray(",?").repeated(qsizetype(spalten.size())) + ")";
    });
    const Zuruecksetzer zurueck(anweisung);
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, 1, ziel.naechsteId));
    for (size_t i = 0; i < spalten.size(); ++i)
        verbindung_.pruefen(zelleBinden(anweisung, int(i) + 2, werte[i], ziel.arten[size_t(spalten[i])]));
    verbindung_.schritt(anweisung);
    geschrieben(ziel);
    return ziel.naechsteId++;
}

bool Speicher::zeileLesen(qint64 nummer, const std::vector<int>& spalten, qint64 id,
                          std::vector<Wert>& zeile) {
    Tabelle& quelle = tabelle(nummer);
    sqlite3_stmt* anweisung = mitSpalten(quelle.lesen, spalten, [&] {
        return "SELECT id" + spaltenliste(spalten) + " FROM " + tabellenname(nummer) + " WHERE id = ?";
    });
    const Zuruecksetzer zurueck(anweisung);
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, 1, id));
    if (!verbindung_.schritt(anweisung)) return false;
    zeile.resize(spalten.size());
    for (size_t i = 0; i < spalten.size(); ++i)
        zeile[i] = zelleLesen(anweisung, int(i) + 1, quelle.arten[size_t(spalten[i])]);
    return true;
}

qint64 Speicher::zeilenLesen(qint64 nummer, const std::vector<int>& spalten, qint64 nachId, int anzahl,
                             std::vector<Wert>& werte) {
    Tabelle& quelle = tabelle(nummer);
    sqlite3_stmt* anweisung = mitSpalten(quelle.folgeLesen, spalten, [&] {
        return "SELECT id" + spaltenliste(spalten) + " FROM " + tabellenname(nummer) +
               " WHERE id > ? ORDER BY id LIMIT ?";
    });
    const Zuruecksetzer zurueck(anweisung);
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, 1, nachId));
    verbindung_.pruefen(sqlite3_bind_int(anweisung, 2, anzahl));
    werte.clear();
    while (verbindung_.schritt(anweisung)) {
        nachId = sqlite3_column_int64(anweisung, 0);
        for (size_t i = 0; i < spalten.size(); ++i)
            werte.push_back(zelleLesen(anweisung, int(i) + 1, quelle.arten[size_t(spalten[i])]));
    }
    return nachId;
}

bool Speicher::zeileAendern(qint64 nummer, qint64 id, const std::vector<int>& spalten,
                            const std::vector<Wert>& werte) {
    Tabelle& ziel = tabelle(nummer);
    assert(spalten.size() == werte.size());
    sqlite3_stmt* anweisung = mitSpalten(ziel.aendern, spalten, [&] {
        return "UPDATE " + tabellenname(nummer) + " SET id = id" + spaltenliste(spalten, " = ?") +
               " WHERE id = ?";
    });
    const Zuruecksetzer zurueck(anweisung);
    for (size_t i = 0; i < spalten.size(); ++i)
        verbindung_.pruefen(zelleBinden(anweisung, int(i) + 1, werte[i], ziel.arten[size_t(spalten[i])]));
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, int(spalten.size()) + 1, id));
    verbindung_.schritt(anweisung);
    geschrieben(ziel);
    return verbindung_.geaenderteZeilen() != 0;
}

void Speicher::zeilenEntfernen(qint64 nummer, const std::vector<qint64>& ids) {
    Tabelle& ziel = tabelle(nummer);
    Sicherungspunkt punkt(*this);
    Merkstelle entfernen;
    for (qint64 id : ids) {
        sqlite3_stmt* anweisung = verbindung_.vorbereitet(
            entfernen, [&] { return "DELETE FROM " + tabellenname(nummer) + " WHERE id = ?"; });
        {
            const Zuruecksetzer zurueck(anweisung);
            verbindung_.pruefen(sqlite3_bind_int64(anweisung, 1, id));
            verbindung_.schritt(anweisung);
        }
        Atempause();
    }
    geschrieben(ziel);
    punkt.behalten();
}

// Who selects by a column once does so again and again. A scratch file that has no room for an index must not
// cost a transaction, and the selection does without.
void Speicher::suchbarMachen(const Auswahl& auswahl) {
    const qint64 zeilen = std::min(auswahl.bisId, naechsteId(auswahl.tabelle)) - auswahl.vonId;
    if (inTransaktion() || zeilen < kVieleZeilen || auswahl.bedingung.spalten.empty()) return;
    const Verbindung::Atmend atmend(verbindung_);
    const Verbindung::Haeppchenweise haeppchenweise(verbindung_);
    for (const int spalte : auswahl.bedingung.spalten) {
        const QByteArray tabelle = tabellenname(auswahl.tabelle), zelle = spaltenname(spalte);
        try {
            verbindung_.ausfuehren("CREATE INDEX IF NOT EXISTS " + tabelle + zelle + " ON " + tabelle + "(" +
                                   zelle + ") WHERE " + suchbareZellen(spalte));
        } catch (const EngineFehler&) {
            return;
        }
    }
}

std::vector<qint64> Speicher::auswaehlen(const Auswahl& auswahl) {
    tabelle(auswahl.tabelle);
    suchbarMachen(auswahl);
    QByteArray text = "SELECT id" + spaltenliste(auswahl.ordnung) + " FROM " + tabellenname(auswahl.tabelle) +
                      " WHERE id BETWEEN ? AND ?";
    if (!auswahl.bedingung.text.isEmpty()) text += " AND (" + auswahl.bedingung.text + ")";
    sqlite3_stmt* anweisung = verbindung_.vorbereitet(text + " ORDER BY id");
    std::vector<qint64> ids;
    const Zuruecksetzer zurueck(anweisung);
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, 1, auswahl.vonId));
    verbindung_.pruefen(sqlite3_bind_int64(anweisung, 2, auswahl.bisId));
    const Verbindung::Atmend atmend(verbindung_);
    if (auswahl.ordnung.empty())
        while (verbindung_.schritt(anweisung)) ids.push_back(sqlite3_column_int64(anweisung, 0));
    else
        geordnetSammeln(anweisung, int(auswahl.ordnung.size()), ids);
    return ids;
}

// The id stands behind the keys of the columns, so that rows with equal ones stay in its order.
void Speicher::geordnetSammeln(sqlite3_stmt* anweisung, int spalten, std::vector<qint64>& ids) {
    sort::Eintragsliste liste;
    QByteArray schluessel;
    while (verbindung_.schritt(anweisung)) {
        schluessel.resize(0);
        for (int spalte = 1; spalte <= spalten; ++spalte)
            sortSchluesselAnhaengen(schluessel, anweisung, spalte);
        const qint64 id = qToBigEndian(sqlite3_column_int64(anweisung, 0));
        liste.aufnehmen(schluessel, QByteArrayView(reinterpret_cast<const char*>(&id), sizeof id));
    }
    const Verbindung::Gesperrt gesperrt(verbindung_);
    liste.sortieren();
    ids.reserve(liste.anzahl());
    for (size_t i = 0; i < liste.anzahl(); ++i)
        ids.push_back(qFromBigEndian<qint64>(liste[i].last(sizeof(qint64)).data()));
}

qint64 Speicher::groessteZahl(qint64 nummer, int spalte) {
    tabelle(nummer);
    const QByteArray zelle = spaltenname(spalte);
    sqlite3_stmt* anweisung =
        verbindung_.vorbereitet("SELECT max(" + zelle + ") FROM " + tabellenname(nummer) + " WHERE typeof(" +
                                zelle + ") = 'integer'");
    const Zuruecksetzer zurueck(anweisung);
    const Verbindung::Atmend atmend(verbindung_);
    verbindung_.schritt(anweisung);
    return sqlite3_column_int64(anweisung, 0);
}

qint64 Speicher::zeilenzahl(qint64 nummer) {
    tabelle(nummer);
    // With a condition, since the store counts a whole table without a breath.
    sqlite3_stmt* anweisung =
        verbindung_.vorbereitet("SELECT count(*) FROM " + tabellenname(nummer) + " WHERE id > 0");
    const Zuruecksetzer zurueck(anweisung);
    const Verbindung::Atmend atmend(verbindung_);
    verbindung_.schritt(anweisung);
    return sqlite3_column_int64(anweisung, 0);
}

Speicher::Verzeichnis Speicher::verzeichnis() const {
    Verzeichnis jetzt;
    for (size_t nummer = 0; nummer < tabellen_.size(); ++nummer)
        if (tabellen_[nummer].vorhanden) jetzt[qint64(nummer)] = tabellen_[nummer].arten;
    return jetzt;
}

// Ids go on where they were, so that an id that somebody may still hold never names another row.
void Speicher::verzeichnisSetzen(const Verzeichnis& vorher) {
    for (size_t nummer = 0; nummer < tabellen_.size(); ++nummer) {
        Tabelle& eintrag = tabellen_[nummer];
        const auto fund = vorher.find(qint64(nummer));
        eintrag.vorhanden = fund != vorher.end();
        if (eintrag.vorhanden) eintrag.arten = fund->second;
        eintrag.stand = ++letzterStand_;
    }
}

void Speicher::invariantenPruefen() const {
#ifndef NDEBUG
    // The directory of a transaction that was lost is that of its start only after `verwerfen`.
    if (gemerkt_ && !verbindung_.inTransaktion()) return;
    std::map<qint64, Tabellenbild> bilder;
    for (size_t nummer = 0; nummer < tabellen_.size(); ++nummer) {
        const Tabelle& eintrag = tabellen_[nummer];
        if (eintrag.vorhanden) bilder[qint64(nummer)] = {int(eintrag.arten.size()), eintrag.naechsteId};
    }
    const QByteArray fund = unstimmigkeit(verbindung_.datenbank(), bilder);
    if (!fund.isEmpty()) qFatal("Working store: %s", fund.constData());
#endif
}

void Speicher::beginnen() {
    verbindung_.ausfuehren("BEGIN");
    gemerkt_ = std::make_unique<Verzeichnis>(verzeichnis());
}

void Speicher::festschreiben() {
    transaktionPruefen();
    verbindung_.ausfuehren("COMMIT");
    gemerkt_.reset();
    invariantenPruefen();
}

void Speicher::verwerfen() {
    if (verbindung_.inTransaktion()) verbindung_.ausfuehren("ROLLBACK");
    verzeichnisSetzen(*std::exchange(gemerkt_, nullptr));
    invariantenPruefen();
}

Speicher::Sicherungspunkt::Sicherungspunkt(Speicher& speicher)
    : speicher_(&speicher), vorher_(speicher.verzeichnis()) {
    speicher.transaktionPruefen();
    speicher_->verbindung_.ausfuehren("SAVEPOINT s");
}

void Speicher::Sicherungspunkt::behalten() {
    speicher_->verbindung_.ausfuehren("RELEASE s");
    speicher_ = nullptr;
}

Speicher::Sicherungspunkt::~Sicherungspunkt() {
    if (!speicher_) return;
    try {
        if (speicher_->verbindung_.inTransaktion()) {
            speicher_->verbindung_.ausfuehren("ROLLBACK TO s");
            speicher_->verbindung_.ausfuehren("RELEASE s");
        }
    } catch (const std::exception&) {
        // The failure that brought us here is on its way already.
    }
    speicher_->verzeichnisSetzen(vorher_);
    speicher_->invariantenPruefen();
}

}  // namespace store
