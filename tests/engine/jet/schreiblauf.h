// Changes a database file in every way there is: what the mutation tests and the fuzzer drive.
#pragma once

#include <QByteArray>

#include "base/fehler.h"
#include "engine/jet/pruefer.h"
#include "engine/jet/schreiber.h"

namespace schreiblauf {

// Three rows for a table of a number and a text.
class Zeilen : public engine::Zeilenquelle {
  public:
    bool naechste(engine::Zeile& zeile) override {
        if (nummer_ == 3) return false;
        zeile = {Wert(qint64(++nummer_)), Wert(QStringLiteral("Straße"))};
        return true;
    }

  private:
    int nummer_ = 0;
};

inline engine::TabellenDef definition() {
    engine::TabellenDef def;
    def.name = QStringLiteral("Neu von hier");
    def.felder.resize(2);
    def.felder[0].name = QStringLiteral("Nr");
    def.felder[0].typ = dao::dbLong;
    def.felder[0].groesse = 4;
    def.felder[1].name = QStringLiteral("Text");
    def.felder[1].groesse = 50;
    def.indexe.resize(1);
    def.indexe[0].name = QStringLiteral("PrimaryKey");
    def.indexe[0].felder = {{def.felder[0].name, false}};
    def.indexe[0].primaer = true;
    return def;
}

template <typename F>
void aendern(jet::Seitendatei& datei, F tun) {
    jet::Schreiber schreiber(datei);
    tun(schreiber);
    schreiber.abschliessen();
}

// The first plain table of the file; "" if there is none.
inline QString ersteTabelle(const jet::Seitendatei& datei) {
    for (const jet::Objekt& objekt : jet::objekteLesen(datei))
        if (objekt.typ == jet::kObjektTabelle && objekt.flags == 0) return objekt.name;
    return {};
}

// Lets through nothing but EngineFehler; on return the file holds a new table, has lost one of its old ones
// and has no deviation that it did not have before.
inline void allesAendern(const QByteArray& bytes) {
    jet::Seitendatei datei(bytes);
    const auto vorher = [alte = jet::maengelFinden(datei)] { return alte; };
    aendern(datei, [](jet::Schreiber& s) {
        Zeilen zeilen;
        s.anlegen(definition(), zeilen);
    });
    jet::dateiPruefen(datei, vorher);
    const QString alte = ersteTabelle(datei);
    aendern(datei, [&](jet::Schreiber& s) { s.umbenennen(alte, QStringLiteral("Anders")); });
    aendern(datei, [&](jet::Schreiber& s) { s.loeschen(QStringLiteral("Anders")); });
    jet::dateiPruefen(datei, vorher);
}

}  // namespace schreiblauf
