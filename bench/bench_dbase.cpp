// Rows a second of a .dbf table with 14 columns: written (looked at, encoded, read back) and read, beside a
// plain pass over the same bytes.
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>

#include "engine/dbase/dbaseordner.h"
#include "engine/typen.h"

namespace {

constexpr int kZeilen = 500000;
constexpr int kVorrat = 1000;

// Of the processor, so that a busy machine does not count.
double sekundenSeit(std::clock_t anfang) {
    return double(std::clock() - anfang) / CLOCKS_PER_SEC;
}

engine::FeldDef feld(int nummer, int typ, int groesse = 0) {
    engine::FeldDef def;
    def.name = QStringLiteral("F%1").arg(nummer);
    def.typ = typ;
    def.groesse = groesse;
    return def;
}

std::vector<engine::Zeile> vorrat() {
    std::vector<engine::Zeile> zeilen;
    for (int i = 0; i < kVorrat; ++i) {
        engine::Zeile zeile{Wert(i)};
        for (int k = 0; k < 11; ++k) zeile.push_back(Wert(QStringLiteral("Größe %1 Straße").arg(i * k)));
        zeile.push_back(Wert(DatumZeit{double(36000 + i)}));
        zeile.push_back(Wert(i * 12.25));
        zeilen.push_back(std::move(zeile));
    }
    return zeilen;
}

class Viele : public engine::Zeilenquelle {
  public:
    explicit Viele(const std::vector<engine::Zeile>& zeilen) : zeilen_(zeilen) {}
    bool naechste(engine::Zeile& zeile) override {
        if (nummer_ == kZeilen) return false;
        zeile = zeilen_[size_t(nummer_++ % kVorrat)];
        return true;
    }

  private:
    const std::vector<engine::Zeile>& zeilen_;
    int nummer_ = 0;
};

void melden(const char* was, double sekunden) {
    const QJsonObject zeile{{"was", QString::fromLatin1(was)}, {"zeilen_je_sekunde", kZeilen / sekunden}};
    std::puts(QJsonDocument(zeile).toJson(QJsonDocument::Compact).constData());
}

}  // namespace

int main() {
    const QTemporaryDir ordner;
    dbase::DbaseOrdner datei(ordner.path());
    engine::TabellenDef def;
    def.name = QStringLiteral("A");
    def.felder.push_back(feld(0, dao::dbLong));
    for (int k = 1; k <= 11; ++k) def.felder.push_back(feld(k, dao::dbText, 40));
    def.felder.push_back(feld(12, dao::dbDate));
    def.felder.push_back(feld(13, dao::dbCurrency));
    const std::vector<engine::Zeile> zeilen = vorrat();

    std::clock_t anfang = std::clock();
    datei.anwenden({engine::TabelleAnlegen{def, [&] { return std::make_unique<Viele>(zeilen); }}});
    melden("schreiben", sekundenSeit(anfang));

    anfang = std::clock();
    const auto quelle = datei.zeilenLesen(def.name);
    qint64 gelesen = 0;
    for (engine::Zeile zeile; quelle->naechste(zeile);) ++gelesen;
    melden("lesen", sekundenSeit(anfang));

    anfang = std::clock();
    QFile roh(ordner.filePath(QStringLiteral("A.dbf")));
    qint64 summe = 0;
    if (roh.open(QIODevice::ReadOnly))
        for (QByteArray block = roh.read(1 << 20); !block.isEmpty(); block = roh.read(1 << 20))
            for (const char c : block) summe += c;
    melden(summe == 0 ? "leer" : "bytes_allein", sekundenSeit(anfang));
    return gelesen == kZeilen ? 0 : 1;
}
