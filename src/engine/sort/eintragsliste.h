// Byte strings gathered in any order and sorted: the keys of a selection, the entries of an index.
#pragma once

#include <QByteArrayView>
#include <memory>
#include <vector>

namespace sort {

// The strings stand one behind the other in large blocks that are never moved: besides its bytes each one
// costs its length and 16 bytes.
class Eintragsliste {
  public:
    // Takes both parts as one string.
    void aufnehmen(QByteArrayView anfang, QByteArrayView ende);
    // As unsigned bytes, a string in front of those that it begins. Lets the window breathe. Nothing may be
    // added behind it.
    void sortieren();

    size_t anzahl() const { return eintraege_.size(); }
    QByteArrayView operator[](size_t i) const { return inhalt(eintraege_[i]); }

  private:
    struct Eintrag {
        quint64 vorn;        // eight bytes from the depth that is being sorted, the first one highest
        const char* zeiger;  // to the length, behind which the string stands
    };
    struct Abschnitt {
        size_t von;
        size_t bis;
        qsizetype tiefe;  // so many bytes are alike
    };
    static QByteArrayView inhalt(const Eintrag& eintrag);
    bool vornLesen(const Abschnitt& abschnitt);
    void nachLaenge(const Abschnitt& abschnitt);

    std::vector<std::unique_ptr<char[]>> bloecke_;
    qsizetype belegt_ = 0;  // bytes of the last block, used and left
    qsizetype frei_ = 0;
    std::vector<Eintrag> eintraege_;
};

}  // namespace sort
