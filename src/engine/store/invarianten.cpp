// The working store's invariants.
#include "engine/store/invarianten.h"

namespace store {
namespace {

// A statement of the check itself, which leaves nothing behind.
class Frage {
  public:
    Frage(sqlite3* datenbank, const QByteArray& text) {
        sqlite3_prepare_v2(datenbank, text.constData(), int(text.size()), &anweisung_, nullptr);
    }
    ~Frage() { sqlite3_finalize(anweisung_); }
    Frage(const Frage&) = delete;
    Frage& operator=(const Frage&) = delete;
    bool zeile() { return anweisung_ && sqlite3_step(anweisung_) == SQLITE_ROW; }
    int spalten() const { return anweisung_ ? sqlite3_column_count(anweisung_) : 0; }
    qint64 zahl() const { return sqlite3_column_int64(anweisung_, 0); }

  private:
    sqlite3_stmt* anweisung_ = nullptr;
};

QByteArray laufende(sqlite3* datenbank) {
    for (sqlite3_stmt* s = sqlite3_next_stmt(datenbank, nullptr); s; s = sqlite3_next_stmt(datenbank, s))
        if (sqlite3_stmt_busy(s)) return QByteArray("under way: ") + sqlite3_sql(s);
    return {};
}

QByteArray tabellePruefen(sqlite3* datenbank, qint64 nummer, const Tabellenbild& bild) {
    const QByteArray name = "t" + QByteArray::number(nummer);
    const Frage alle(datenbank, "SELECT * FROM " + name);
    if (alle.spalten() == 0) return name + " is missing";
    if (alle.spalten() != bild.spalten + 1) return name + " has other columns";
    Frage groesste(datenbank, "SELECT max(id) FROM " + name);
    if (!groesste.zeile() || groesste.zahl() >= bild.naechsteId) return name + " has a row with a later id";
    return {};
}

}  // namespace

QByteArray unstimmigkeit(sqlite3* datenbank, const std::map<qint64, Tabellenbild>& verzeichnis) {
    if (QByteArray laeuft = laufende(datenbank); !laeuft.isEmpty()) return laeuft;
    for (const auto& [nummer, bild] : verzeichnis)
        if (QByteArray fund = tabellePruefen(datenbank, nummer, bild); !fund.isEmpty()) return fund;
    Frage anzahl(datenbank, "SELECT count(*) FROM sqlite_master WHERE type = 'table'");
    if (!anzahl.zeile() || anzahl.zahl() != qint64(verzeichnis.size()))
        return "more tables than the directory has";
    return {};
}

}  // namespace store
