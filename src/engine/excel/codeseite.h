// The code page in which a workbook of Excel 5/95 keeps its texts.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>

namespace excel {

// No record, ASCII and UTF-16 (which Gnumeric names there, while it writes single bytes) stand for 1252.
class Codeseite {
  public:
    // As the CODEPAGE record says.
    explicit Codeseite(int nummer = 1252);
    QString lesen(QByteArrayView bytes) const;
    // None when the code page lacks a character.
    std::optional<QByteArray> schreiben(QStringView text) const;

  private:
    void tafelBauen();

    QByteArray name_;
    bool nurAscii_ = false;  // Gnumeric takes the other bytes of a Macintosh code page for 1252
    bool mehrfach_ = false;  // some characters take two bytes
    char16_t tafel_[256] = {};
    QHash<char16_t, char> rueck_;
};

}  // namespace excel
