// A table of the catalogue that is changed row by row: MSysObjects, MSysACEs, MSysRelationships.
#pragma once

#include <QString>
#include <map>
#include <memory>
#include <vector>

#include "engine/jet/langwertbau.h"
#include "engine/jet/tdef.h"
#include "engine/jet/zeilenbau.h"

namespace jet {

class Seitenvergabe;

// Rows as stored bytes; what is not named stays as it is. After every call the table's maps are up to date,
// so that the readers see the change; its indexes and row count are written by `abschliessen`.
class Systemtabelle {
  public:
    Systemtabelle(Seitendatei& datei, Seitenvergabe& vergabe, quint32 seite, QString name);

    struct Zeile {
        Zeilenort ort;       // its slot
        Zeilenort bytesOrt;  // where its bytes are, for a moved row
        Rohwerte werte;
    };

    const Tabelle& tabelle() const { return tabelle_; }
    // Place of a column by its name. Raises kBeschaedigt if there is none.
    size_t spalte(QStringView name) const;
    // All rows in the natural order.
    std::vector<Zeile> zeilen() const;
    // A row of Nulls, to be filled.
    Rohwerte leereZeile() const { return Rohwerte(tabelle_.spalten.size()); }

    void einfuegen(const Rohwerte& werte);
    void loeschen(const Zeile& zeile);
    // In its place if it fits the page, else the row stands last.
    void ersetzen(const Zeile& zeile, const Rohwerte& werte);

    // The field of a Memo or OLE column for this content, and the reverse.
    QByteArray langesFeld(size_t spalte, const QByteArray& inhalt);
    void langesLoeschen(size_t spalte, const QByteArray& feld);

    // Indexes made anew from the rows, row count and maps; does nothing if nothing was changed.
    void abschliessen();

  private:
    Langwertbau& lange(size_t spalte);
    void slotLoeschen(Zeilenort ort);
    void freiMerken(quint32 seite, const class Datenseitenbau& bau);
    void kartenSichern();

    Seitendatei& datei_;
    Seitenvergabe& vergabe_;
    Tabelle tabelle_;
    std::vector<quint32> besitz_;  // both ascending
    std::vector<quint32> frei_;
    std::map<size_t, std::unique_ptr<Langwertbau>> lange_;
    bool geaendert_ = false;
};

}  // namespace jet
