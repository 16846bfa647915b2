// The cell formats that an added sheet uses: those that are there, or new ones behind the last.
#pragma once

#include <QString>
#include <optional>

#include "engine/excel/mappe.h"

namespace excel {

class Stilbau {
  public:
    // Raises kSystemgrenze for a workbook without any cell format.
    explicit Stilbau(Mappe& mappe);
    // The format of plain cells.
    int allgemein() const { return allgemein_; }
    // The plain format with another number format: a built-in number, or the text of one. Raises
    // kSystemgrenze when the workbook takes no more formats.
    int mitFormat(int nummer, const QString& text = {});
    // True when bytes above 7F would be shown in another character set (BIFF5).
    bool fremdeSchrift() const { return fremdeSchrift_; }
    // Brings the checksum over all formats up to date, if it was right before.
    void abschliessen();

  private:
    int formatnummer(int nummer, const QString& text);
    size_t xfSatz(int nummer) const;
    bool eigeneSchrift(const QByteArray& xf) const;

    Mappe& mappe_;
    int anzahl_ = 0;
    int allgemein_ = 0;
    bool fremdeSchrift_ = false;
    bool pruefsummeStimmt_ = false;
};

}  // namespace excel
