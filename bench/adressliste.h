// Invented German addresses with known duplicates, raw and prepared for a search.
#pragma once

#include <QStringList>
#include <random>
#include <vector>

#include "base/wert.h"
#include "fields/feldarten.h"

// The columns, in the order in which an address holds them.
enum Adressfeld {
    kFeldFirma,
    kFeldAnrede,
    kFeldVorname,
    kFeldNachname,
    kFeldStrasse,
    kFeldPlz,
    kFeldOrt,
    kFeldTelefon,
    kFeldTelefax,
    kFeldEmail,
    kFeldHomepage,
    kAdressfelder
};

using Zeile = std::vector<Wert>;

// What a user assigns to these columns; the short ones have no contact person, or nothing else.
const FeldZuordnungen& Adresszuordnung();

// Draws addresses: names and towns as skewed as real ones, three records of five without a firm, one of eight
// a distorted copy of an earlier one.
class Adressliste {
  public:
    explicit Adressliste(quint32 samen) : zufall_(samen) {}
    // The raw values of the next record.
    QStringList naechste();

  private:
    double anteil() { return std::uniform_real_distribution<double>(0, 1)(zufall_); }
    int zahl(int kleinste, int groesste) {
        return std::uniform_int_distribution<int>(kleinste, groesste)(zufall_);
    }
    const QString& ausgewaehlt(const QStringList& liste) { return liste[zahl(0, int(liste.size()) - 1)]; }
    const QString& schief(const QStringList& liste);
    QStringList neue();
    QString firma(const QString& nachname);
    QString strasse();
    QStringList entstellt(QStringList adresse);
    void feldEntstellen(QStringList& adresse);
    QString tippfehler(const QString& text);

    std::mt19937 zufall_;
    std::vector<QStringList> vorrat_;  // addresses that may come again
};

// So many records as the work table of a search holds them.
std::vector<Zeile> AufbereiteteAdressen(int anzahl, quint32 samen = 1);
