// Tables of generated addresses, with 14 columns as a customer file has them.
#pragma once

#include <QString>
#include <vector>

#include "engine/datei/datenbankdatei.h"
#include "fields/feldarten.h"

// Number, the eleven columns of an address, day and money; a primary key and an index over the surname.
engine::TabellenDef Adresstabelle(const QString& name);

// What a user assigns to these columns.
FeldZuordnungen Adresstabellenzuordnung();

// So many rows; the same seed gives the same ones. `doppelt`: each address twice, one behind the other.
std::unique_ptr<engine::Zeilenquelle> Adresszeilen(int anzahl, quint32 samen, bool doppelt);

// The same at no cost: some thousand rows over and over, each with a number of its own.
std::unique_ptr<engine::Zeilenquelle> Vorratszeilen(int anzahl);

// A new .mdb with the tables "Adressen" and, a tenth as large, "Messe". Replaces the file.
void AdressdateiAnlegen(const QString& pfad, int anzahl, bool doppelt);
