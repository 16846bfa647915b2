// Walks the records of a workbook stream from front to back.
#pragma once

#include <QByteArrayView>

#include "engine/excel/satzarten.h"

namespace excel {

struct Satzsicht {
    quint16 typ = 0;
    qsizetype ort = 0;  // of its header in the stream
    QByteArrayView daten;
    qsizetype ende() const { return ort + kSatzkopf + daten.size(); }
};

class Satzfolge {
  public:
    explicit Satzfolge(QByteArrayView strom, qsizetype ab = 0) : strom_(strom), ort_(ab) {}
    // The next record; false at the end and at a record that reaches past it.
    bool naechster(Satzsicht& satz);
    qsizetype ort() const { return ort_; }
    void weiterAb(qsizetype ort) { ort_ = ort; }

  private:
    QByteArrayView strom_;
    qsizetype ort_;
};

// The end (behind the EOF) of the substream whose BOF stands at `ab`, substreams within it included;
// -1 where there is no BOF or no end.
qsizetype teilstromEnde(QByteArrayView strom, qsizetype ab);

}  // namespace excel
