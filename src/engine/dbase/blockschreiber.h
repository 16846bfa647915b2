// Writes a file from its beginning to its end, in large blocks.
#pragma once

#include <QByteArray>
#include <QString>

#include "engine/datei/platte.h"

namespace dbase {

class Blockschreiber {
  public:
    // `pfad` is an empty file that exists; `name` is what messages call it.
    Blockschreiber(const QString& pfad, QString name);
    void anhaengen(const char* daten, qint64 anzahl);
    void anhaengen(const QByteArray& daten) { anhaengen(daten.constData(), daten.size()); }
    void auffuellen(char byte, qint64 anzahl);
    // Writes over the beginning of the file; no more is appended after it.
    void anfangErsetzen(const QByteArray& daten);
    // Writes what is left. Raises kDatentraegerVoll and the like, as every call.
    void abschliessen();

  private:
    void leeren();

    engine::Griff griff_;
    QString name_;
    QByteArray puffer_;
};

}  // namespace dbase
