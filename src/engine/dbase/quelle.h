// Bytes of a file or of memory, read by position.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "engine/datei/austausch.h"
#include "engine/datei/platte.h"

namespace dbase {

class Bytequelle {
  public:
    virtual ~Bytequelle() = default;
    virtual qint64 groesse() const = 0;
    // Reads up to `anzahl` bytes from position `ab` (from 0); the number read, less only at the end.
    virtual qint64 lesen(qint64 ab, char* ziel, qint64 anzahl) const = 0;
    // The same as an array of the bytes that are there.
    QByteArray bytes(qint64 ab, qint64 anzahl) const;
};

// A file that stays open; what was opened is read on even when another file takes its name.
class Dateiquelle : public Bytequelle {
  public:
    // Raises kSchreibgeschuetzt (no right to read it) or kDateifehler.
    explicit Dateiquelle(const QString& pfad);
    qint64 groesse() const override { return stand_.groesse; }
    qint64 lesen(qint64 ab, char* ziel, qint64 anzahl) const override;
    // What the file was like when it was opened.
    const engine::Dateistand& stand() const { return stand_; }
    // Raises kDateiGeaendert when somebody has written to it since.
    void unveraendertVerlangen() const;

  private:
    QString pfad_;
    engine::Griff griff_;
    engine::Dateistand stand_;
};

class Speicherquelle : public Bytequelle {
  public:
    explicit Speicherquelle(QByteArray bytes) : bytes_(std::move(bytes)) {}
    qint64 groesse() const override { return bytes_.size(); }
    qint64 lesen(qint64 ab, char* ziel, qint64 anzahl) const override;

  private:
    QByteArray bytes_;
};

}  // namespace dbase
