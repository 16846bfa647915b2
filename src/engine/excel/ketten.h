// Texts as records keep them: with flag byte (BIFF8), across CONTINUE records, or as bytes of a code page.
#pragma once

#include <QString>
#include <vector>

#include "engine/excel/codeseite.h"

namespace excel {

// Reads the texts of BIFF8 with a 16-bit length, one behind the other, across the pieces that a record and
// its CONTINUE records hold: a piece that begins within a text's characters begins with a flag byte of its
// own.
class Kettenleser {
  public:
    struct Stelle {
        quint32 stueck = 0;
        quint32 ort = 0;
    };
    struct Kopf {
        int laenge = 0;        // in UTF-16 units
        bool schlicht = true;  // without runs and phonetic block
        bool ganz = true;      // the bytes did not end within it
    };
    explicit Kettenleser(std::vector<QByteArrayView> stuecke) : stuecke_(std::move(stuecke)) {}

    Stelle stelle() const { return stelle_; }
    void setzen(Stelle stelle) { stelle_ = stelle; }
    // True when there are no more bytes; goes over empty pieces.
    bool amEnde();
    // The text at the present place, into `text` unless that is null. What is left of the bytes bounds it.
    Kopf lesen(QString* text);
    const std::vector<QByteArrayView>& stuecke() const { return stuecke_; }

  private:
    int byte();
    int zweiBytes();
    bool zeichenLesen(int anzahl, bool breit, QString* text);
    void ueberspringen(qint64 anzahl);

    std::vector<QByteArrayView> stuecke_;
    Stelle stelle_;
};

// `anzahl` characters at `ab`, in two bytes each or in one. Raises kBeschaedigt when they are not there.
QString zeichen8(QByteArrayView daten, qsizetype ab, int anzahl, bool breit);

// Flag byte and characters, the narrow form where it does.
QByteArray zeichenBytes8(QStringView text);

}  // namespace excel
