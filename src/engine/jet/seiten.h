// A database file as numbered pages: read and written one at a time, decoded and encoded on the way.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <memory>
#include <vector>

#include "engine/jet/format.h"

namespace jet {

// Page 0, un-masked. Seen in files of Access 97 to 2016.
struct Kopf {
    int version = 0;          // byte 0x14: 0 Jet 3, 1 Jet 4, 2 and up ACE
    quint16 codepage = 1252;  // text of Jet 3; 0 in the file means 1252
    quint16 sortierung = 0;   // 0x0409 = General
    quint8 sortVersion = 0;   // 0 = General of Access 2000 to 2007, 1 = of 2010
    quint32 schluessel = 0;   // RC4 key of the pages; 0 = not encoded
    double angelegt = 0;      // creation date (Jet 4), days since 1899-12-30
    QString passwort;         // "" = none
};

// A pointer to a row: page 0 means "none".
struct Zeilenort {
    quint32 seite = 0;
    quint8 zeile = 0;
    bool operator==(const Zeilenort&) const = default;
    auto operator<=>(const Zeilenort&) const = default;
};
inline Zeilenort zeilenortVon(quint32 wert) {
    return {wert >> 8, quint8(wert)};
}
inline quint32 zeilenortWert(Zeilenort ort) {
    return ort.seite << 8 | ort.zeile;
}

// The pages of one file, in memory or on a device. Not copyable; pages count from 0. Reading and writing
// raise kBeschaedigt for a page beyond the end, kDateifehler when the device fails.
class Seitendatei {
  public:
    // Takes a file's bytes. Raises kDateiNichtLesbar when it is no .mdb or .accdb that we know or cannot be
    // decoded, kSystemgrenze for one that Office encrypted, kBeschaedigt for an impossible size and when page
    // 2 is no definition. A password is NOT asked for here.
    explicit Seitendatei(QByteArray bytes);
    // The same for an open device (random access); pages are read when they are asked for. `schreiben` raises
    // kSchreibgeschuetzt when the device was opened for reading only.
    explicit Seitendatei(std::unique_ptr<QIODevice> geraet);
    ~Seitendatei();
    Seitendatei(const Seitendatei&) = delete;
    Seitendatei& operator=(const Seitendatei&) = delete;

    const Format& format() const { return *format_; }
    const Kopf& kopf() const { return kopf_; }
    quint32 seitenzahl() const { return seitenzahl_; }
    // The file ends with a page that is not whole: it may be read, not written.
    bool endetAngebrochen() const { return angebrochen_; }

    // A whole page, decoded; shares its bytes with a small cache. Page 0 comes as it stands in the file.
    QByteArray seite(quint32 nummer) const;
    // The same, raising kBeschaedigt with the name of the structure if the page's first byte is not `art`
    // or the number is 0 or beyond the end.
    QByteArray seite(quint32 nummer, Seitenart art, QStringView struktur) const;

    // Writes a whole page through to the file, encoded; page 0 is written as it stands. The bytes must have
    // the page size.
    void schreiben(quint32 nummer, const QByteArray& bytes);
    // Adds an empty page (zeros) at the end and returns its number. Raises kSystemgrenze beyond the format's
    // largest file (Jet 3: 1 GB, Jet 4: 2 GB).
    quint32 anhaengen();
    // Everything written so far goes to the device. Raises kDateifehler or kDatentraegerVoll.
    void leeren();
    // The file as bytes, for a file in memory; empty otherwise.
    QByteArray bytes() const;

  private:
    void oeffnen();
    void seiteZweiPruefen() const;
    QByteArray rohLesen(quint32 nummer, qint64 groesse) const;
    void umwandeln(quint32 nummer, QByteArray& bytes) const;

    struct Fach {
        quint32 nummer = 0;
        QByteArray bytes;
    };
    std::unique_ptr<QIODevice> geraet_;
    const Format* format_ = &kJet4;
    Kopf kopf_;
    quint32 seitenzahl_ = 0;
    bool angebrochen_ = false;
    mutable std::vector<Fach> faecher_;  // cache, page n in drawer n modulo its size
};

// RC4 with a key of any length; the same call encodes and decodes.
void rc4(QByteArrayView schluessel, char* bytes, qsizetype anzahl);

// Compares like the engine does: exactly. Raises kPasswortFalsch with different texts for a missing and
// a wrong password. A file without a password takes any.
void passwortPruefen(const Kopf& kopf, const QString& passwort);

// A Text or Memo value: Windows-1252 (Jet 3), UTF-16 or its compressed form (Jet 4).
QString textLesen(const Format& format, QByteArrayView bytes);
// The number of its characters.
qsizetype textLaenge(const Format& format, QByteArrayView bytes);
// The name of a column, index or property: as above, but never compressed.
QString namenLesen(const Format& format, QByteArrayView bytes);
// The bytes of a Jet 3 text (Windows-1252); bytes the code page leaves open are U+0081 and so on.
// An empty QByteArray with ok = false when a character cannot be held.
QByteArray text1252(QStringView text, bool* ok);

}  // namespace jet
