// A workbook stream, cut into the records of its globals and the substreams of its sheets.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "engine/excel/codeseite.h"
#include "engine/excel/satzarten.h"

namespace excel {

struct Satz {
    quint16 typ = 0;
    QByteArray daten;
};

// Bytes behind the globals: a sheet's substream, or what lies between and behind them.
struct Stueck {
    qsizetype ort = -1;  // where it stood in the stream that was read; -1 for a new one
    QByteArray bytes;
};

enum class Blattart : quint8 { Tabelle = 0, Makro = 1, Diagramm = 2, Modul = 6 };

struct Blatt {
    QString name;
    quint8 sichtbarkeit = 0;  // 0 visible, 1 hidden, 2 very hidden
    Blattart art = Blattart::Tabelle;
    size_t satz = 0;  // its BOUNDSHEET among the globals
    int stueck = -1;  // its substream; -1 where the workbook gives no sound place for it
};

// Holds the bytes it was made of. Everything that changes it is a change in memory; `bytes` gives the new
// stream.
class Mappe {
  public:
    // Raises kSystemgrenze for what is no workbook, for one older than Excel 5 and for an encrypted one,
    // kBeschaedigt for globals that do not end.
    explicit Mappe(QByteArray strom);

    bool biff8() const { return biff8_; }
    int maxSatz() const { return biff8_ ? kMaxSatz8 : kMaxSatz5; }
    static int maxZeilen(bool biff8) { return biff8 ? 65536 : 16384; }
    bool datum1904() const;
    const Codeseite& codeseite() const { return codeseite_; }

    // In the order of their BOUNDSHEET records, which is the number that formulas and names give them.
    const std::vector<Blatt>& blaetter() const { return blaetter_; }
    // The substream of a sheet; empty for one without a sound place.
    QByteArrayView teilstrom(const Blatt& blatt) const;
    // Why the workbook cannot be changed safely; empty when it can. German, says what to do.
    QString schreibhindernis() const;

    const std::vector<Satz>& globale() const { return global_; }
    QByteArray& daten(size_t satz) { return global_[satz].daten; }
    void einfuegen(size_t ort, Satz satz);
    void entfernen(size_t ort);
    // Where a record of the globals will stand in the new stream.
    qsizetype ortVon(size_t satz) const;
    std::vector<Stueck>& stuecke() { return stuecke_; }
    const std::vector<Stueck>& stuecke() const { return stuecke_; }
    // The first record of this type among the globals, from `ab` on; the number of records if there is none.
    size_t suchen(quint16 typ, size_t ab = 0) const;
    // Behind the last record of this type and its CONTINUE records; `sonst` if there is none.
    size_t hinterLetztem(quint16 typ, size_t sonst) const;

    // Puts a new substream behind the last sheet's, with its BOUNDSHEET behind the last one.
    void blattAnhaengen(const QString& name, QByteArray teilstrom);
    // Takes the substream and the BOUNDSHEET out.
    void blattEntfernen(size_t nummer);
    // Raises kUngueltigerName when the code page lacks a character of the name.
    void blattBenennen(size_t nummer, const QString& name);

    // The stream with all absolute offsets put right.
    QByteArray bytes() const;

  private:
    void globaleLesen();
    void blaetterLesen();
    void stueckeSchneiden();
    QByteArray boundsheet(quint8 sichtbarkeit, Blattart art, const QString& name) const;

    QByteArray strom_;
    bool biff8_ = true;
    int codeseitennummer_ = -1;  // as CODEPAGE says, -1 without one
    Codeseite codeseite_;
    qsizetype globalEnde_ = 0;
    std::vector<Satz> global_;
    std::vector<Stueck> stuecke_;
    std::vector<Blatt> blaetter_;
    bool ueberlappt_ = false;
};

// Raises kSystemgrenze for a file of another kind that is called as a workbook is: a web page, a text, an
// .xlsx.
[[noreturn]] void keineArbeitsmappe();

// Name text as NAME, BOUNDSHEET and EXTERNSHEET keep it, without its length: flag byte and characters in
// BIFF8, bytes of the code page in BIFF5. Raises kUngueltigerName where the code page lacks a character.
QByteArray namenBytes(const Mappe& mappe, const QString& name);

}  // namespace excel
