// Which pages of the file are free: taken and given back by the file's global map on page 1.
#pragma once

#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

// Reads the global map once and writes it back once. Facts: 1 means free there; the row grows in steps of
// four bytes and turns into a map of references when page 1 cannot hold it (seen in files of Access 97 to
// 2003).
class Seitenvergabe {
  public:
    // Raises kBeschaedigt. The file must outlive it.
    explicit Seitenvergabe(Seitendatei& datei);

    // A page for new content: the lowest free one, else a new one at the end. Raises kSystemgrenze when the
    // format's largest file is reached.
    quint32 belegen();
    // Gives a page back and wipes its first bytes. Raises kBeschaedigt if it is free already.
    void freigeben(quint32 seite);
    bool istFrei(quint32 seite) const;
    // From now on free pages are left alone and space is taken at the end: for files whose map calls pages
    // free that something still refers to.
    void nurAmEnde() { nurAmEnde_ = true; }
    // The map back to page 1. Nothing may be taken or given back behind it.
    void schreiben();

  private:
    void alsZeile(qsizetype bitBytes);
    void alsVerweise(const QByteArray& alteZeile);

    Seitendatei& datei_;
    std::vector<bool> frei_;  // by page, as long as the file
    quint32 sucheAb_ = 1;     // no free page below
    bool nurAmEnde_ = false;
    bool geaendert_ = false;
};

}  // namespace jet
