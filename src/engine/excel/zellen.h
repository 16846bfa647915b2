// The cells of a sheet, one after the other as the stream has them.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "engine/excel/codeseite.h"
#include "engine/excel/satzfolge.h"

namespace excel {

struct Zelle {
    // Verweis: a number in the shared texts; Text: a text of its own, to be had from `text()`.
    enum class Art : quint8 { Zahl, Wahrheit, Fehler, Verweis, Text };
    Art art = Art::Zahl;
    quint16 zeile = 0;   // from 0
    quint16 spalte = 0;  // from 0
    quint16 xf = 0;
    double zahl = 0;  // Wahrheit: 0 or 1; Fehler: the error code
    quint32 verweis = 0;
};

double rkZahl(quint32 rk);

// Gives the cells that hold something: formulas by their stored result, no blank ones. A record that is too
// short for its kind is no cell. The stream must outlive it.
class Zellenleser {
  public:
    // `teilstrom` is a sheet from its BOF on.
    Zellenleser(QByteArrayView teilstrom, bool biff8, const Codeseite& codeseite)
        : strom_(teilstrom), biff8_(biff8), codeseite_(&codeseite), folge_(teilstrom) {}
    bool naechste(Zelle& zelle);
    // Of the last cell, if it is one of kind Text.
    QString text() const;
    // Its length in units or bytes, without reading it.
    int textlaenge() const;
    // The place of the record that holds the last cell.
    qsizetype satzort() const { return satz_.ort; }
    // Goes on with the record at this place.
    void weiterAb(qsizetype ort);

  private:
    bool ausSatz(Zelle& zelle);
    bool kopfLesen(Zelle& zelle, int laenge) const;
    bool ausMulrk(Zelle& zelle);
    bool ausFormel(Zelle& zelle);
    bool formeltextSuchen();

    QByteArrayView strom_;
    bool biff8_;
    const Codeseite* codeseite_;
    Satzfolge folge_;
    Satzsicht satz_;
    Satzsicht textsatz_;  // LABEL, RSTRING or STRING of the last cell
    int texteinzug_ = 0;  // where its length stands
    int tiefe_ = 0;       // substreams within the sheet hold the cached cells of charts
    int mehrfach_ = 0;    // how many cells of the present MULRK were given
    int mehrfachAnzahl_ = 0;
};

}  // namespace excel
