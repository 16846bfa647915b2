// A small database in memory behind the program's state, and a window that is a script.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <optional>

#include "data/datenzugriff.h"
#include "engine/dao/speicherdatei.h"
#include "fields/feldarten.h"
#include "gemeinsam/fensterattrappe.h"
#include "run/zustand.h"

// A column: its definition and what it holds.
struct Spaltenvorgabe {
    const char16_t* name;
    FeldZuordnung zuordnung = {};
    int typ = dao::dbText;
    int groesse = 50;
    int attribute = 0;
};

// German texts as a list, short to write in a test.
QStringList texte(std::initializer_list<const char16_t*> liste);

class Speicherbank : public testing::Test {
  protected:
    Speicherbank();
    ~Speicherbank() override;

    // Puts a table into the file; for the time before it is opened.
    void tabelleAnlegen(const QString& name, const std::vector<Spaltenvorgabe>& spalten,
                        const std::vector<std::vector<Wert>>& zeilen,
                        const std::vector<QString>& indexfelder = {});
    // Opens the file as the program's database.
    void oeffnen();

    bool vorhanden(const QString& tabelle) const { return TabelleVorhanden(tabelle) != -1; }
    // The texts of one field in the order of the table; Null is a "-".
    QStringList spalte(const QString& tabelle, const QString& feld);
    QStringList felder(const QString& tabelle);

    // Expects the error box with this text.
    void erwarteFehler(const QString& text, Knopf knopf) { f().erwarte(text + u'\r', knopf); }

    // Asks for the abort at the n-th yield.
    void abbrechenBei(int n);
    // After an abort: these are all tables of the file, and frame 3 is on show as before a run.
    void nichtsGeblieben(const QStringList& tabellen);

    QTemporaryDir ordner;
    Speicherinhalt inhalt;
    std::optional<Fensterattrappe> attrappe;
    Fensterattrappe& f() { return *attrappe; }
};
