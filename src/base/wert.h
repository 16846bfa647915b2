// The value of one cell, in memory: what a column holds, or Null, or Empty.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <compare>
#include <variant>

// Money with four decimals, as a whole number of ten-thousandths.
struct Waehrung {
    qint64 zehntausendstel = 0;
    auto operator<=>(const Waehrung&) const = default;
};

// A moment as days since 1899-12-30 00:00; the fraction is the time of day. For a negative number
// the fraction still counts forwards from midnight (-1.25 is 06:00 on 1899-12-29).
struct DatumZeit {
    double tage = 0;
    auto operator<=>(const DatumZeit&) const = default;
};

// An exact decimal number: (-1)^negativ * (hoch * 2^64 + tief) / 10^skala, up to 96 bits, skala 0 to 28.
struct Dezimal {
    bool negativ = false;
    quint64 hoch = 0;
    quint64 tief = 0;
    quint8 skala = 0;
    bool operator==(const Dezimal&) const = default;
};

// A cell's value. Empty (never set), Null (the database's "no value") and "" (a text) are three
// different things; a parser's "nothing found" is Empty.
class Wert {
  public:
    enum class Art { Leer, Null, Wahrheit, Ganzzahl, Gleitzahl, Waehrung, DatumZeit, Text, Bytes, Dezimal };

    Wert() = default;
    static Wert null() { return Wert(Ist_Null{}); }
    Wert(bool b) : inhalt_(b) {}
    Wert(int n) : inhalt_(qint64(n)) {}
    Wert(qint64 n) : inhalt_(n) {}
    Wert(double d) : inhalt_(d) {}
    Wert(::Waehrung w) : inhalt_(w) {}
    Wert(::DatumZeit d) : inhalt_(d) {}
    Wert(::Dezimal d) : inhalt_(d) {}
    Wert(QString t) : inhalt_(std::move(t)) {}
    Wert(const char16_t* t) : inhalt_(QString::fromUtf16(t)) {}
    Wert(QByteArray b) : inhalt_(std::move(b)) {}
    Wert(const char*) = delete;

    Art art() const { return Art(inhalt_.index()); }
    bool istLeer() const { return art() == Art::Leer; }
    bool istNull() const { return art() == Art::Null; }
    bool istLeerOderNull() const { return inhalt_.index() <= 1; }
    bool istText() const { return art() == Art::Text; }
    // A number of any kind, a date included; not a Boolean, not a text that reads as a number.
    bool istZahl() const;

    // The text of a text value; asserts that it is one.
    const QString& text() const { return std::get<QString>(inhalt_); }
    bool wahrheit() const { return std::get<bool>(inhalt_); }
    qint64 ganzzahl() const { return std::get<qint64>(inhalt_); }
    double gleitzahl() const { return std::get<double>(inhalt_); }
    ::Waehrung waehrung() const { return std::get<::Waehrung>(inhalt_); }
    ::DatumZeit datumZeit() const { return std::get<::DatumZeit>(inhalt_); }
    const ::Dezimal& dezimal() const { return std::get<::Dezimal>(inhalt_); }
    const QByteArray& bytes() const { return std::get<QByteArray>(inhalt_); }

    // The value as a text, in the German form: numbers with a decimal comma and at most 15 significant
    // digits, dates as 31.12.2001 (with " 08:15:00" when there is a time of day), Booleans as
    // "Wahr"/"Falsch", Empty and Null as "". Bytes give "".
    QString alsText() const;

    // The value as a double; a Boolean is -1 or 0, Empty is 0. Only for numbers, dates, Booleans, Empty.
    double alsZahl() const;

    // Same kind and same content.
    bool operator==(const Wert&) const = default;

  private:
    struct Ist_Null {
        bool operator==(const Ist_Null&) const = default;
    };
    explicit Wert(Ist_Null n) : inhalt_(n) {}

    std::variant<std::monostate, Ist_Null, bool, qint64, double, ::Waehrung, ::DatumZeit, QString, QByteArray,
                 ::Dezimal>
        inhalt_;
};

// Order of two values of one column: numbers, money and dates by value, texts by their UTF-16 units,
// Booleans as -1 and 0, bytes by their bytes. Empty and Null come before everything and are equal.
std::weak_ordering wertVergleichen(const Wert& a, const Wert& b);

// The German text form of a number: at most 15 significant digits, decimal comma, no grouping,
// scientific only outside 1e-15 .. 1e15 ("1,5E+20").
QString zahlText(double zahl);
// Exact decimal text with a comma, trailing zeros of the fraction dropped.
QString waehrungText(Waehrung w);
QString dezimalText(const Dezimal& d);
// "31.12.2001", "31.12.2001 08:15:00", or "08:15:00" when the day is 1899-12-30; "" outside the years 100 to
// 9999.
QString datumText(DatumZeit d);
