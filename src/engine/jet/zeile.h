// A row's bytes taken apart into values, and the reader that walks over a table.
#pragma once

#include <QVarLengthArray>
#include <optional>
#include <vector>

#include "base/wert.h"
#include "engine/datei/datenbankdatei.h"
#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/tdef.h"

namespace jet {

// How a value of the file stands as `Wert`:
//   Boolean                     Wahrheit, never Null
//   Byte, Integer, Long, BigInt Ganzzahl
//   Single, Double              Gleitzahl; a Single is the double nearest to its shortest decimal form, so
//                               that 0,1 reads as 0,1; casting back to float gives the same bits. NaN: Null
//   Currency, Date, Decimal     Waehrung, DatumZeit (NaN: Null), Dezimal
//   Text, Memo                  Text
//   GUID                        Text "{00112233-4455-6677-8899-AABBCCDDEEFF}", upper case
//   Binary, OLE, unknown types  Bytes

// The parts of a row, not yet decoded. Keeps no copy of the bytes.
class Zeilenteile {
  public:
    // Raises kBeschaedigt, naming the table, if the parts do not fit into the row. `seite` is only for the
    // message.
    Zeilenteile(const Format& format, const Tabelle& tabelle, QByteArrayView bytes, quint32 seite);
    // Columns that this row knows (c of the row).
    int spaltenzahl() const { return spalten_; }
    const Sicht& sicht() const { return sicht_; }
    // Bit of the null mask: true = not Null (and for Boolean: True). False for columns the row does not know.
    bool gesetzt(quint16 nummer) const;
    // The stored bytes of a column, as they stand; nothing for Null and for Boolean.
    std::optional<QByteArrayView> roh(const Spalte& spalte) const;

  private:
    void stellenLesen4();
    void stellenLesen3();
    void stellenPruefen(int trailerAb) const;

    const Format& format_;
    Sicht sicht_;
    int spalten_ = 0;
    int maskeAb_ = 0;
    int festEnde_ = 0;                      // behind the last byte that a fixed value may use
    QVarLengthArray<quint16, 64> stellen_;  // start of each variable value, then the end of the last
};

// One value of the row whose parts these are; long values are followed into the file.
Wert wertLesen(const Seitendatei& datei, const Spalte& spalte, const Zeilenteile& teile);
// A value from its stored bytes (not Null, not Boolean; of a long value its fetched content).
// Raises kBeschaedigt naming `struktur` and `seite` when there are too few bytes.
Wert wertAusBytes(const Format& format, const Spalte& spalte, QByteArrayView bytes, QStringView struktur,
                  quint32 seite);

// Walks over a table's rows in the natural order: the pages of its map ascending, slots ascending, moved
// rows where their pointer stands. The file must outlive it.
class Tabellenleser : public engine::Zeilenquelle {
  public:
    // Failures name the table; raises kBeschaedigt when pages of it lie beyond the end of the file.
    // `mitLangen` false leaves Memo and OLE values Null (for walks that only need keys).
    Tabellenleser(const Seitendatei& datei, Tabelle tabelle, bool mitLangen = true);
    // One value per field in the order of display.
    bool naechste(engine::Zeile& zeile) override;
    // Goes on to the next row without decoding it; then `teile` and the others below tell of it.
    bool weiter();
    Zeilenteile teile() const;

    // Of the present row: where its slot stands (what index entries name), its bytes, and where they are.
    Zeilenort ort() const { return ort_; }
    QByteArrayView bytes() const { return bytes_; }
    Zeilenort bytesOrt() const { return bytesOrt_; }
    const Tabelle& tabelle() const { return tabelle_; }

  private:
    bool seiteOeffnen();
    void zeileStellen(quint8 slot);
    Wert langenLesen(const Spalte& spalte, const Zeilenteile& zeilenteile);

    const Seitendatei& datei_;
    Tabelle tabelle_;
    bool mitLangen_;
    std::vector<int> folge_;
    std::vector<quint32> seiten_;
    size_t naechsteSeite_ = 0;
    QByteArray seite_;  // the page under the walk
    quint32 seitennummer_ = 0;
    std::vector<Slot> slots_;
    size_t naechsterSlot_ = 0;
    QByteArray fremdeSeite_;  // page of a moved row
    Zeilenort ort_;
    Zeilenort bytesOrt_;
    QByteArrayView bytes_;
    quint64 langeBytes_ = 0;  // of all long values read so far
};

}  // namespace jet
