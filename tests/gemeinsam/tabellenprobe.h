// Tables from rows in memory, for the tests of all file formats, and the failures that they expect.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "base/fehler.h"
#include "engine/datei/datenbankdatei.h"
#include "gemeinsam/fehlernummer.h"

namespace tabellenprobe {

class Zeilen : public engine::Zeilenquelle {
  public:
    explicit Zeilen(std::shared_ptr<const std::vector<engine::Zeile>> zeilen) : zeilen_(std::move(zeilen)) {}
    explicit Zeilen(std::vector<engine::Zeile> zeilen)
        : Zeilen(std::make_shared<const std::vector<engine::Zeile>>(std::move(zeilen))) {}
    bool naechste(engine::Zeile& zeile) override {
        if (naechste_ == zeilen_->size()) return false;
        zeile = (*zeilen_)[naechste_++];
        return true;
    }

  private:
    std::shared_ptr<const std::vector<engine::Zeile>> zeilen_;
    size_t naechste_ = 0;
};

inline engine::TabelleAnlegen anlegen(engine::TabellenDef def, std::vector<engine::Zeile> zeilen) {
    const auto geteilt = std::make_shared<const std::vector<engine::Zeile>>(std::move(zeilen));
    def.zeilen = qint64(geteilt->size());
    return {std::move(def), [geteilt] { return std::make_unique<Zeilen>(geteilt); }};
}

inline engine::FeldDef feld(const QString& name, int typ, int groesse = 0, const QByteArray& eigenes = {}) {
    engine::FeldDef def;
    def.name = name;
    def.typ = typ;
    def.groesse = groesse;
    def.formatEigenes = eigenes;
    return def;
}

inline engine::TabellenDef tabelle(const QString& name, std::vector<engine::FeldDef> felder) {
    engine::TabellenDef def;
    def.name = name;
    def.felder = std::move(felder);
    return def;
}

inline std::vector<engine::Zeile> alleZeilen(engine::Datenbankdatei& datei, const QString& name) {
    std::vector<engine::Zeile> zeilen;
    const auto quelle = datei.zeilenLesen(name);
    for (engine::Zeile zeile; quelle->naechste(zeile);) zeilen.push_back(zeile);
    return zeilen;
}

}  // namespace tabellenprobe
