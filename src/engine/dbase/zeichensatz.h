// The code page of a table: which one it is, and its text in both directions.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <memory>
#include <vector>

namespace dbase {

inline constexpr int kSeiteUtf8 = 65001;
inline constexpr int kSeite850 = 850;
inline constexpr int kSeite1252 = 1252;

// A page's number and how it was found out.
struct Seitenwahl {
    enum class Herkunft : quint8 { Sprachbyte, Cpg, Schaetzung };
    int seite = kSeite850;
    Herkunft herkunft = Herkunft::Schaetzung;
    bool operator==(const Seitenwahl&) const = default;
};

// The page that a language byte (offset 29 of the header) stands for; 0 for one that stands for none.
int seiteFuerSprachbyte(quint8 byte);
// The usual language byte of a page, 0 when it has none.
quint8 sprachbyteFuerSeite(int seite);
// The page that the text of a .cpg file names; 0 when it is not understood.
int seiteFuerCpg(const QByteArray& text);

// Guesses the page of a table without any sign of one from its German letters: these lie at other places in
// the pages of DOS than in those of Windows.
class Seitenschaetzer {
  public:
    // The bytes of one field, as they stand in the file.
    void feld(const char* bytes, qsizetype anzahl);
    int seite() const;

  private:
    qint64 dos_ = 0;
    qint64 windows_ = 0;
    bool nurUtf8_ = true;
    bool mehrbyte_ = false;
};

// Text in one code page. A page without a table is read as 1252 and cannot be written; neither can UTF-8,
// whose widths in bytes no field of a table tells.
class Zeichensatz {
  public:
    explicit Zeichensatz(int seite);
    int seite() const { return seite_; }
    // False when the page is one that the program has no table for.
    bool bekannt() const { return bekannt_; }
    bool schreibbar() const { return bekannt_ && seite_ != kSeiteUtf8; }

    QString text(const char* bytes, qsizetype anzahl) const;
    // Appends the text's bytes. False at the first character that the page lacks; `fehlend` is then its
    // place.
    bool anhaengen(QStringView text, QByteArray& ziel, qsizetype& fehlend) const;
    // Writes the bytes of a text to `ziel`, which has room for text.size() of them; -1 when all went well,
    // else the place of the first character that the page lacks.
    qsizetype schreiben(QStringView text, char* ziel) const;

  private:
    struct Tafeln {
        std::array<char16_t, 256> zeichen;
        std::vector<quint8> bytes;  // by character; 0 for one that the page lacks
    };
    static std::shared_ptr<const Tafeln> tafelnFuer(int seite);

    int seite_;
    bool bekannt_;
    std::shared_ptr<const Tafeln> tafeln_;
};

}  // namespace dbase
