// Field kinds: the table of kinds with codes and weights, and what one field of a table carries.
#pragma once

#include <QString>
#include <array>
#include <vector>

inline constexpr int kErsteFeldart = 1;
inline constexpr int kLetzteFeldart = 69;

// Kind numbers: group times ten plus position; Ignorieren is the exception.
enum Feldartnummer : int {
    kIgnorieren = 1,
    kIndex = 11,
    kFirmenname = 21,
    kRechtsform = 22,
    kBranche = 23,
    kStrasse = 31,
    kHausnummer = 32,
    kPostleitzahl = 33,
    kOrt = 34,
    kAnrede = 41,
    kVorname = 42,
    kNachname = 43,
    kAbteilung = 44,
    kVorwahl = 51,
    kTelefon = 52,
    kTelefax = 53,
    kEmailadresse = 61,
    kInternetadresse = 62,
};

// One kind. `Code` is its bit inside its group, -1 in a row that is not in use.
struct Feldart {
    QString Bezeichnung;
    qint16 Code = -1;
    qint16 RelevanzFaktor = 0;
    qint16 SignifikanzFaktor = 0;
};

struct FeldGruppe {
    QString Bezeichnung;
};

// What one field of a table carries: a group, and the or of the codes of its kinds.
struct FeldZuordnung {
    qint16 Gruppe = 0;
    qint16 Maske = 0;
    bool operator==(const FeldZuordnung&) const = default;
};

using FeldZuordnungen = std::vector<FeldZuordnung>;

// Indexed by kind number, rows 1 to 69 (row 0 is never used). Filled at start, constant afterwards.
extern std::array<Feldart, kLetzteFeldart + 1> gFeldArten;
extern std::array<FeldGruppe, 7> gFeldGruppen;
// Acceptance threshold of the comparison; a search replaces it by the precision that the user chose.
extern float gRelevanz;
extern float gSignifikanz;

// The group of a kind number: 0 below 10, otherwise its first decimal digit.
int FeldGruppeVon(int feldart);

// True when `maske` holds the kind's code. The caller compares the group first.
bool FeldartEnthalten(int maske, int feldart);

// The index (from 0) of the first field of the group that holds the kind, -1 for none or for an unused kind.
int FeldMitArtSuchen(const FeldZuordnungen& zuordnungen, int gruppe, int feldart);
int FeldMitArtFinden(const FeldZuordnungen& zuordnungen, int feldart);

// True for a field that is not to be used (group 0, mask 1).
bool FeldIgnoriert(const FeldZuordnung& zuordnung);

// The or of the codes of some kinds, for example Maske({kStrasse, kHausnummer}).
qint16 Maske(const std::vector<int>& feldarten);

// "(Straße,Hausnummer)": the names of the kinds joined by commas inside one pair of brackets.
QString FeldartBeschriftung(const std::vector<int>& feldarten);

// A line of the field list: a blank, the name, points, the label; name, points and label are 58 characters.
// Raises 5 (invalid argument) when name and label alone are longer.
QString FeldZeile(const QString& name, const QString& beschriftung);
