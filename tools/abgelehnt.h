// What the tools that answer lines raise when they cannot do what a line asks.
#pragma once

#include <QString>
#include <exception>

// The text goes back as the answer's error.
class Abgelehnt : public std::exception {
  public:
    explicit Abgelehnt(QString text) : text_(std::move(text)), bytes_(text_.toUtf8()) {}
    const QString& text() const { return text_; }
    const char* what() const noexcept override { return bytes_.constData(); }

  private:
    QString text_;
    QByteArray bytes_;
};
