// What the tests of the search drivers share: a small database in memory behind the program's state, and a
// window that is a script.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <optional>

#include "data/datenzugriff.h"
#include "engine/dao/speicherdatei.h"
#include "fields/einstellungen.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

// A column: its definition and what it holds.
struct Spaltenvorgabe {
    const char16_t* name;
    FeldZuordnung zuordnung;
    int typ = dao::dbText;
    int groesse = 50;
    int attribute = 0;
};

class Suchbank : public testing::Test {
  protected:
    Suchbank();
    ~Suchbank() override;

    // The table "Adressen" of the database, which is opened with it; its assignment becomes that of the run.
    void adressen(const std::vector<Spaltenvorgabe>& spalten, const std::vector<std::vector<Wert>>& zeilen,
                  const std::vector<QString>& indexfelder = {});
    // Firm, street with number, postal code and town.
    void adressen(const std::vector<std::vector<Wert>>& zeilen);

    // One pass: sorted and cut into blocks by columns of the source (from 0), `laenge` characters.
    void durchlauf(int nummer, const std::vector<int>& felder, int laenge);

    // As Suchlauf sets the state; then the buffer.
    void pufferFuellen();
    void suchen(bool anreichern = true, bool uebernehmen = false);

    bool vorhanden(const QString& tabelle) const { return TabelleVorhanden(tabelle) != -1; }
    // The texts of one field in the order of the table; Null is a "-".
    QStringList spalte(const QString& quelle, const QString& feld);
    QStringList felder(const QString& tabelle);

    // Expects the error box with this text.
    void erwarteFehler(const QString& text, Knopf knopf) { f().erwarte(text + u'\r', knopf); }

    QTemporaryDir ordner;
    Speicherinhalt inhalt;
    std::optional<Fensterattrappe> attrappe;
    Fensterattrappe& f() { return *attrappe; }
    const QString quelle = QStringLiteral("Adressen");
    const QString ziel = QStringLiteral("Ziel");
    const QString arbeit = QStringLiteral("TEMP_DS");
};
