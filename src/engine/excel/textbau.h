// Puts texts into the shared texts of a BIFF8 workbook, and takes unused ones out.
#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "engine/excel/texttafel.h"

namespace excel {

class Textbau {
  public:
    // The texts of `mappe` must not change before `eintragen`.
    explicit Textbau(const Mappe& mappe);
    // The number of a text of at most 32,767 units, which is added unless it is there; none when the table is
    // damaged and nothing can be added to it.
    std::optional<quint32> nummer(const QString& text);
    // Brings the added texts into the workbook; an SST is made where there is none.
    void eintragen(Mappe& mappe);

  private:
    void anfuegen(const QString& text);
    void neuesStueck();

    Texttafel tafel_;
    int maxSatz_;
    QHash<QString, quint32> nummern_;
    quint32 anzahl_;
    bool neu_ = false;
    std::vector<QByteArray> stuecke_;  // the SST from its last record on
    size_t fest_ = 0;                  // how many CONTINUE records in front of them stay as they are
};

// Cuts off the texts at the end that no cell of any sheet uses.
void texteKuerzen(Mappe& mappe);
// Puts the count of references right, as far as there is an SST.
void textverweiseZaehlen(Mappe& mappe);

// The index into the shared texts (EXTSST) as it was, to bring it up to date in the end.
class Textindex {
  public:
    explicit Textindex(const Mappe& mappe);
    // `geaendert`: texts were added or taken out.
    void erneuern(Mappe& mappe, bool geaendert) const;

  private:
    qsizetype sstOrt_ = 0;
    qsizetype globalGroesse_ = 0;
};

}  // namespace excel
