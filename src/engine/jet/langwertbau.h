// Long values (Memo, OLE) written: inline, on a page they share, or as a chain over several pages.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "engine/jet/seitenbau.h"

namespace jet {

class Seitenvergabe;

inline constexpr int kLangInline = 64;  // bytes that Jet 3 and 4 keep in the row

// The long value pages of one column. Keep one for each column while its table is written.
class Langwertbau {
  public:
    // `besitz` and `frei`: what the column's maps list already (ascending), for a column that has values.
    Langwertbau(Seitendatei& datei, Seitenvergabe& vergabe, std::vector<quint32> besitz = {},
                std::vector<quint32> frei = {});

    // The field for the row: 12 bytes, followed by the content when that has at most `inlineGrenze` bytes.
    QByteArray feld(const QByteArray& inhalt, int inlineGrenze = kLangInline);
    // Length of the field without writing anything.
    static qsizetype feldlaenge(qsizetype inhalt, int inlineGrenze);

    // Deletes the pieces of a value; pages that become empty go back to the file.
    void loeschen(const std::vector<Zeilenort>& stuecke);

    // Writes the page under construction. Then the two lists are what the column's maps must say.
    void abschliessen();
    const std::vector<quint32>& besitz() const { return besitz_; }
    const std::vector<quint32>& frei() const { return frei_; }

  private:
    Zeilenort zeileAblegen(const QByteArray& bytes);
    Zeilenort ketteAblegen(const QByteArray& inhalt);
    bool freieSeiteOeffnen(qsizetype laenge);
    void neueSeiteOeffnen();
    void stueckLoeschen(Zeilenort ort);

    Seitendatei& datei_;
    Seitenvergabe& vergabe_;
    std::vector<quint32> besitz_;  // both ascending
    std::vector<quint32> frei_;
    quint32 offen_ = 0;  // the page under construction, 0 = none
    std::optional<Datenseitenbau> bau_;
};

}  // namespace jet
