// Data pages laid out anew: rows added, replaced and deleted without moving a slot.
#pragma once

#include <QByteArray>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

// A page with less room than this is not worth a place in a map of pages with room.
inline constexpr int kMindestplatz = 64;

// One data page under construction. Slots count from 0; a page holds at most 255 of them.
class Datenseitenbau {
  public:
    // An empty page. `besitzer`: a definition page, kBesitzerLang, or 0 for maps.
    Datenseitenbau(const Format& format, quint32 besitzer);
    // An existing page taken apart. Raises kBeschaedigt naming `nummer`.
    Datenseitenbau(const Format& format, const QByteArray& seite, quint32 nummer);

    int slots() const { return int(zeilen_.size()); }
    // Bytes between the slots and the rows: what the page's header calls free.
    int frei() const { return frei_; }
    bool passt(qsizetype laenge) const;
    // Whether slot `slot` can be given `laenge` bytes in its place.
    bool passtStatt(int slot, qsizetype laenge) const;
    // True when no slot leads to bytes any more.
    bool leer() const;
    const QByteArray& zeile(int slot) const { return zeilen_[size_t(slot)].bytes; }

    // Adds a row that fits and returns its slot.
    int anfuegen(const QByteArray& bytes);
    void ersetzen(int slot, const QByteArray& bytes);
    // The slot stays, marked as deleted; its bytes are given back.
    void loeschen(int slot);

    // The whole page.
    QByteArray bytes() const;

  private:
    struct Eintrag {
        quint16 flags = 0;
        QByteArray bytes;
    };
    const Format* format_;
    QByteArray kopf_;
    std::vector<Eintrag> zeilen_;
    int frei_;
};

}  // namespace jet
