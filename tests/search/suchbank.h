// What the tests of the search drivers share.
#pragma once

#include "gemeinsam/speicherbank.h"
#include "search/suchlauf.h"
#include "search/suchzustand.h"

class Suchbank : public Speicherbank {
  protected:
    ~Suchbank() override;

    // The table "Adressen" of the database, which is opened with it; its assignment becomes that of the run.
    void adressen(const std::vector<Spaltenvorgabe>& spalten, const std::vector<std::vector<Wert>>& zeilen,
                  const std::vector<QString>& indexfelder = {});
    // Firm, street with number, postal code and town.
    void adressen(const std::vector<std::vector<Wert>>& zeilen);

    // One pass: sorted and cut into blocks by columns of the source (from 0), `laenge` characters.
    void durchlauf(int nummer, const std::vector<int>& spalten, int laenge);

    // As Suchlauf sets the state; then the buffer.
    void pufferFuellen();
    void suchen(bool anreichern = true, bool uebernehmen = false);

    const QString quelle = QStringLiteral("Adressen");
    const QString ziel = QStringLiteral("Ziel");
    const QString arbeit = QStringLiteral("TEMP_DS");
};
