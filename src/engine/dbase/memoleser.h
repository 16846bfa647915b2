// The texts of a memo file, by block number.
#pragma once

#include <QByteArray>
#include <memory>
#include <optional>

#include "engine/dbase/kopf.h"
#include "engine/dbase/quelle.h"

namespace dbase {

// Reads through a window that moves over the file; memos mostly stand in the order of the records. A number
// that leads nowhere gives nothing; how much is read in all is bounded by the file's size.
class Memoleser {
  public:
    Memoleser(std::shared_ptr<const Bytequelle> datei, Memoart art);
    // False for a file that cannot hold a memo.
    bool brauchbar() const { return blockgroesse_ > 0; }
    // The bytes of a memo, without the soft line breaks of the dBase editors; nothing for block 0, a number
    // beyond the file and a memo without text.
    std::optional<QByteArray> lesen(qint64 block);
    // How often a memo could not be read as the file says: beyond its end, or more than the file can hold.
    qint64 schaeden() const { return schaeden_; }

  private:
    QByteArrayView sicht(qint64 ab, qint64 anzahl);
    QByteArrayView roh(qint64 ab);
    QByteArrayView bisEndmarke(qint64 ab);
    QByteArrayView mitLaenge(qint64 ab, qint64 laenge);

    std::shared_ptr<const Bytequelle> datei_;
    Memoart art_;
    int blockgroesse_ = 0;
    qint64 schaeden_ = 0;
    qint64 vorrat_;       // bytes that may still be handed out
    QByteArray fenster_;  // file content from fensterAb_ on
    qint64 fensterAb_ = 0;
};

// The raw bytes without "soft" line ends (0x8D 0x0A), which only the editor's window width made.
QByteArray ohneWeicheUmbrueche(QByteArrayView bytes);

}  // namespace dbase
