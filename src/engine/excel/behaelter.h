// The compound file around a workbook: its streams by name, and a copy of it with some of them exchanged.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace excel {

// One entry of a compound file; a storage has no bytes.
struct Behaeltereintrag {
    QByteArray pfad;  // UTF-8, the storages' names with a NUL behind each
    bool speicher = false;
    QByteArray klasse;  // class id of a storage
    QByteArray bytes;
    bool operator==(const Behaeltereintrag&) const = default;
    // In the root storage, letters of either case.
    bool heisst(QByteArrayView name) const;
};

class Behaelter {
  public:
    // Raises kBeschaedigt for bytes that are no compound file and for one with an unreadable stream.
    explicit Behaelter(const QByteArray& datei);
    const std::vector<Behaeltereintrag>& eintraege() const { return eintraege_; }
    std::vector<Behaeltereintrag>& eintraege() { return eintraege_; }
    // The stream of this name in the root storage; null if there is none.
    const Behaeltereintrag* strom(QByteArrayView name) const;
    // True when everything that the directory lists was found: only then is a copy complete.
    bool vollstaendig() const { return vollstaendig_; }
    // A new compound file with the entries as they are now. Raises kDateifehler.
    QByteArray bytes() const;

  private:
    std::vector<Behaeltereintrag> eintraege_;
    QByteArray wurzelklasse_;
    bool vollstaendig_ = false;
};

}  // namespace excel
