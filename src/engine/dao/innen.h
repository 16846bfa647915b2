// What the objects of this folder share behind their public faces.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "engine/dao/recordset.h"
#include "engine/dao/workspace.h"
#include "engine/datei/datenbankdatei.h"
#include "engine/store/speicher.h"

namespace dao {

// The rows of a table definition in the working store.
struct Tabellenkern {
    qint64 nummer = 0;              // the store's table; there is one only when the rows have been read
    bool geaendert = false;         // rows were added, changed or removed since the file had them
    bool geloescht = false;         // the table is in no list any more; its rows may still be kept
    std::map<int, qint64> zaehler;  // the next number of an auto-increment column, by the store's column
};

// The keyset of an open recordset and where it stands: -1 is BOF, the size of the keyset EOF.
struct Satzstand {
    std::shared_ptr<Tabellenkern> tabelle;
    std::vector<qint64> schluessel;
    qint64 stelle = 0;
};

// What recordsets need of their database, also when they outlive it.
struct Kern {
    store::Speicher speicher;
    bool geschlossen = false;
    std::set<Satzstand*> offene;  // entered and left by the recordsets themselves
};

struct TableDef::Stand {
    QString name;
    int attribute = 0;
    std::vector<engine::FeldDef> felder;
    std::vector<Index> indexe;
    std::vector<int> spalten;
    bool zeilenGeaendert = false;
};

// The tables and relations of a database at one moment.
struct Database::Tabellenstand {
    std::vector<std::pair<std::shared_ptr<TableDef>, TableDef::Stand>> tabellen;
    std::vector<Relation> relationen;

    bool enthaelt(const TableDef& tabelle) const;
};

struct Workspace::Zustand {
    std::vector<Database*> offene;
    bool transaktion = false;
    bool geschlossen = false;
};

struct Database::Zustand {
    std::shared_ptr<Workspace::Zustand> bereich;
    std::unique_ptr<engine::Datenbankdatei> datei;
    QString pfad;
    std::shared_ptr<Kern> kern = std::make_shared<Kern>();
    dao::TableDefs tabellen{nullptr};
    dao::Relations relationen{nullptr};
    engine::Hinweise oeffnungshinweise;
    std::vector<QString> inDatei;  // the names of the tables in the file, in its order
    std::vector<std::shared_ptr<TableDef>>
        ausgetragene;  // left the list by a save; kept for who still holds them

    std::optional<Tabellenstand> vorher;      // set while a transaction is open
    std::map<qint64, qint64> vorherNaechste;  // with it: the next row id of each table in the store
    std::optional<Tabellenstand> gemerkt;     // set by Merken, dropped by Zuruecknehmen and Sichern
};

struct Recordset::Zustand {
    enum class Entwurf { Keiner, Neu, Aenderung };

    std::shared_ptr<Kern> kern;
    Satzstand stand;
    store::Auswahl auswahl;
    std::vector<engine::FeldDef> felder;  // the recordset's own, in the order of the selection
    std::vector<int> platz;               // for each of them its place in a row of the table
    std::vector<engine::FeldDef> tabellenfelder;
    std::vector<int> spalten;  // the store's column for each place of a row
    bool geschlossen = false;
    bool keinTreffer = false;

    Entwurf entwurf = Entwurf::Keiner;
    std::vector<Wert> puffer;    // the row under AddNew or Edit
    std::vector<char> beruehrt;  // which places of it were written

    std::span<Wert> zeile;  // the current record as last read: `einzelne`, or a part of `voraus`
    qint64 zeileId = 0;
    quint64 zeileStand = 0;
    qint64 folge = 0;  // how many times in a row the record behind the one before was read
    std::vector<Wert> einzelne;
    std::vector<Wert> voraus;  // records that were read together, and the id of the first one
    qint64 vorausId = 0;
    qint64 vorausWeite = 0;
    quint64 vorausStand = 0;

    Zustand() = default;
    Zustand(const Zustand&) = delete;
    Zustand& operator=(const Zustand&) = delete;
    ~Zustand();

    void anmelden();
    void waehlen();
    qint64 anzahl() const { return qint64(stand.schluessel.size()); }
    void entwurfFallenlassen();
    void bewegen(qint64 anzahl);
    qint64 aktuelleId() const;
    // Behind the last one of at most so many records from the current one on.
    qint64 bis(qint64 weite) const;
    // The store's columns of these records; goes behind them.
    std::vector<Wert> abholen(qint64 weite, const std::vector<int>& gefragte);
    bool inNaturfolge(qint64 ziel) const;
    bool reiheLesen(const std::vector<int>& gefragte, qint64 erste, int anzahl,
                    std::vector<Wert>& werte) const;
    std::vector<Wert> einzelnAbholen(qint64 ziel, const std::vector<int>& gefragte) const;
    std::vector<Wert> reiheAbholen(qint64 ziel, const std::vector<int>& gefragte) const;
    std::span<const Wert> aktuelleZeile();
    bool ausVorausgelesenen(qint64 id, quint64 jetzt);
    void vorauslesen(qint64 id, quint64 jetzt);
    void zaehlerSetzen();
    void zaehlerNachfuehren();
    void zaehlerVerlangen() const;
    void leertextePruefen() const;
    void neueZeileSpeichern();
    void aenderungSpeichern();
    void aenderungMerken(quint64 vorher);
    void standNachfuehren(quint64 vorher);
};

// True when two names are the same to the engine, which does not look at case.
bool namenGleich(const QString& a, const QString& b);

[[noreturn]] void unbekannterName(const QString& name);     // 3265
[[noreturn]] void objektUngueltig(const QString& was);      // 3420
[[noreturn]] void nameVorhanden(const QString& name);       // 3010
[[noreturn]] void relationBesteht(const QString& tabelle);  // 3281

}  // namespace dao
