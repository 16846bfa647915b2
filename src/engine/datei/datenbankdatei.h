// What a file format offers: catalogue, rows, and one atomic change of the file.
#pragma once

#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "base/wert.h"
#include "engine/katalog.h"

namespace engine {

using Zeile = std::vector<Wert>;  // one value per field, in field order; never Empty

// A table's rows, one after the other, in the natural order.
class Zeilenquelle {
  public:
    virtual ~Zeilenquelle() = default;
    // The next row into `zeile` (resized to the field count); false behind the last one.
    virtual bool naechste(Zeile& zeile) = 0;
};

struct TabelleLoeschen {
    QString name;
};
struct TabelleUmbenennen {
    QString alt;
    QString neu;
};
struct TabelleAnlegen {
    TabellenDef def;
    // Gives the rows from the first one on, each time it is called (a format may need two passes).
    std::function<std::unique_ptr<Zeilenquelle>()> zeilen;
};
using Aenderung = std::variant<TabelleLoeschen, TabelleUmbenennen, TabelleAnlegen>;

// What the user is told after a write that was carried out in full.
using Hinweise = std::vector<QString>;

// The place of the first character of a text that a table cannot hold; -1 when it takes all of them.
using Zeichenprobe = std::function<qsizetype(QStringView)>;

// An opened database file. Reading never changes it. All failures are EngineFehler.
class Datenbankdatei {
  public:
    virtual ~Datenbankdatei() = default;

    // Tables, fields, indexes and relations, without any row.
    virtual Katalog katalogLesen() = 0;

    // The rows of a table of the file, by its present name in the file.
    virtual std::unique_ptr<Zeilenquelle> zeilenLesen(const QString& tabelle) = 0;

    // Carries out the changes in their order, all or nothing: on return the file holds all of them and has
    // been read back and checked; on an exception it is byte for byte what it was. Limits of the format
    // (rows, size, names, characters) are found before the first byte is written. A unique index whose keys
    // are not unique in the rows is written as a plain one and named in the result.
    // Raises kDateiGeaendert when somebody else changed the file since it was opened.
    virtual Hinweise anwenden(const std::vector<Aenderung>& aenderungen) = 0;

    // Raises kSystemgrenze, with what to do, for a file that can be read only. The catalogue's `hinweise` say
    // so, too.
    virtual void schreibenPruefen() const {}

    // Whether the format takes this as a table's name (length, characters, not empty).
    virtual bool nameErlaubt(const QString& name) const = 0;

    // Raises kUngueltigerName, with what to do, when the format does not take this as a field's name.
    virtual void feldnamePruefen(const QString& name) const = 0;

    // The same for the field as a whole: raises also when the format cannot hold such a column.
    virtual void feldPruefen(const FeldDef& feld) const { feldnamePruefen(feld.name); }

    // What can be said of a new table before it has any row: its fields, indexes, the length of its records,
    // and the number of its rows where `def.zeilen` tells. Raises what `anwenden` would raise for it in the
    // end.
    virtual void tabellePruefen(const TabellenDef& def) const {
        for (const FeldDef& feld : def.felder) feldPruefen(feld);
    }

    // Tells beforehand which texts a new table of this definition could not be written with; empty where all
    // texts of the file's other tables will do.
    virtual Zeichenprobe zeichenprobe(const TabellenDef&) const { return {}; }
};

}  // namespace engine
