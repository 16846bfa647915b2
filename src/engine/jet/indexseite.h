// One page of an index tree taken apart and put together, and the walk over the leaves of a tree.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "engine/jet/seiten.h"

namespace jet {

inline constexpr int kBlattTrailer = 4;    // page and row behind the key of an entry
inline constexpr int kInnererTrailer = 8;  // the same, then the child page

struct Indexseitenkopf {
    bool blatt = true;
    quint32 besitzer = 0;  // definition page of the table
    quint32 vorige = 0;    // neighbours on this level, 0 none
    quint32 naechste = 0;
    quint32 letztesKind = 0;  // inner pages: the child behind the last entry
    quint8 ebene = 0;         // 0 leaf, 1 the page above leaves ...
};

struct Indexseite : Indexseitenkopf {
    int frei = 0;     // as the header says
    int praefix = 0;  // bytes that every entry but the first one shares with it
    // Whole entries, prefix put back: key, page and row; on inner pages then the child.
    std::vector<QByteArray> eintraege;
};

// Everything is checked against the page: raises kBeschaedigt, naming `struktur`, for a page that is none of
// an index, a prefix longer than the first entry, entries without room for their trailer.
Indexseite indexseiteLesen(const Seitendatei& datei, quint32 nummer, QStringView struktur);

// Parts of an entry, of a leaf or (with `blatt` false) of an inner page.
QByteArrayView eintragSchluessel(QByteArrayView eintrag, bool blatt = true);
Zeilenort eintragZeile(QByteArrayView eintrag, bool blatt = true);
quint32 eintragKind(QByteArrayView eintrag);
// Child `i` of an inner page; behind the entries comes the last child.
quint32 kind(const Indexseite& seite, size_t i);

// Bytes of the entry area.
inline int eintragsbytes(const Format& format) {
    return format.seite - format.indexEintraege;
}
// The whole page; the entries must fit its entry area (asserted). Of all but the first one `praefix` bytes
// are left out, which must be the first one's.
QByteArray indexseiteBauen(const Format& format, const Indexseitenkopf& kopf,
                           const std::vector<QByteArrayView>& eintraege, int praefix);

// The entries of a tree from the first leaf to the last, by the leaves' own chain. Raises kBeschaedigt,
// naming `struktur`, for what indexseiteLesen finds, and for a chain or a tree that bites its tail.
class Baumgang {
  public:
    Baumgang(const Seitendatei& datei, quint32 wurzel, QString struktur);
    // Goes to the next entry; false behind the last one.
    bool weiter();
    // Of the present entry.
    QByteArrayView eintrag() const { return blatt_.eintraege[naechster_ - 1]; }
    quint32 blattnummer() const { return nummer_; }

  private:
    void oeffnen(quint32 nummer);

    const Seitendatei& datei_;
    QString struktur_;
    Indexseite blatt_;
    quint32 nummer_ = 0;
    size_t naechster_ = 0;
    quint32 gelesene_ = 0;
};

}  // namespace jet
