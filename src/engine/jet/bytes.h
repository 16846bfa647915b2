// Little and big endian numbers read from and written to byte arrays, never beyond their end.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <bit>
#include <cstring>

namespace jet {

// Raises kBeschaedigt with a German description that names the structure, its page and the byte in it.
// `stelle` counts from 0 in the structure; -1 leaves it out.
[[noreturn]] void beschaedigt(QStringView struktur, quint32 seite, qint64 stelle = -1);

// Bytes with a name: every read is checked against the end and raises kBeschaedigt naming the structure.
// Keeps no copy: the bytes must outlive it. Offsets count from 0.
class Sicht {
  public:
    Sicht(QByteArrayView bytes, QStringView struktur, quint32 seite)
        : bytes_(bytes), struktur_(struktur), seite_(seite) {}

    qsizetype groesse() const { return bytes_.size(); }
    QByteArrayView bytes() const { return bytes_; }
    quint32 seite() const { return seite_; }
    QStringView struktur() const { return struktur_; }

    quint8 u8(qint64 ab) const { return quint8(an(ab, 1)[0]); }
    quint16 u16(qint64 ab) const { return le<quint16>(ab); }
    quint32 u32(qint64 ab) const { return le<quint32>(ab); }
    quint64 u64(qint64 ab) const { return le<quint64>(ab); }
    qint16 i16(qint64 ab) const { return qint16(u16(ab)); }
    qint32 i32(qint64 ab) const { return qint32(u32(ab)); }
    qint64 i64(qint64 ab) const { return qint64(u64(ab)); }
    float f32(qint64 ab) const { return std::bit_cast<float>(u32(ab)); }
    double f64(qint64 ab) const { return std::bit_cast<double>(u64(ab)); }
    quint32 u24be(qint64 ab) const { return quint32(u8(ab)) << 16 | quint32(u8(ab + 1)) << 8 | u8(ab + 2); }
    quint32 u32be(qint64 ab) const { return quint32(u8(ab)) << 24 | u24be(ab + 1); }

    // `anzahl` bytes from `ab` on.
    QByteArrayView teil(qint64 ab, qint64 anzahl) const { return QByteArrayView(an(ab, anzahl), anzahl); }
    // The same as a view of its own, under the same name.
    Sicht sicht(qint64 ab, qint64 anzahl) const { return Sicht(teil(ab, anzahl), struktur_, seite_); }

    [[noreturn]] void kaputt(qint64 stelle) const { beschaedigt(struktur_, seite_, stelle); }

  private:
    const char* an(qint64 ab, qint64 anzahl) const {
        if (ab < 0 || anzahl < 0 || anzahl > bytes_.size() || ab > bytes_.size() - anzahl) kaputt(ab);
        return bytes_.data() + ab;
    }
    template <typename T>
    T le(qint64 ab) const {
        T wert;
        std::memcpy(&wert, an(ab, sizeof(T)), sizeof(T));
        return wert;
    }

    QByteArrayView bytes_;
    QStringView struktur_;
    quint32 seite_;
};

static_assert(std::endian::native == std::endian::little, "the readers copy numbers as they stand");

// Overwrites at `ab`. The place must exist; where a damaged definition led elsewhere, kBeschaedigt is raised.
inline void stellePruefen(const QByteArray& ziel, qsizetype ab, qsizetype anzahl) {
    if (ab < 0 || anzahl > ziel.size() - ab) beschaedigt(u"Seitenaufbau", 0, ab);
}
template <typename T>
void zahlSetzen(QByteArray& ziel, qsizetype ab, T wert) {
    stellePruefen(ziel, ab, sizeof(T));
    std::memcpy(ziel.data() + ab, &wert, sizeof(T));
}
inline void u8Setzen(QByteArray& z, qsizetype ab, quint8 w) {
    zahlSetzen(z, ab, w);
}
inline void u16Setzen(QByteArray& z, qsizetype ab, quint16 w) {
    zahlSetzen(z, ab, w);
}
inline void u32Setzen(QByteArray& z, qsizetype ab, quint32 w) {
    zahlSetzen(z, ab, w);
}
inline void bytesSetzen(QByteArray& z, qsizetype ab, QByteArrayView b) {
    stellePruefen(z, ab, b.size());
    if (!b.isEmpty()) std::memcpy(z.data() + ab, b.data(), size_t(b.size()));
}

// Appends at the end. Rows are made of thousands of small pieces, for which `QByteArray::append` takes its
// time.
inline void bytesAnhaengen(QByteArray& ziel, const void* bytes, qsizetype anzahl) {
    if (anzahl == 0) return;
    const qsizetype ab = ziel.size();
    ziel.resize(ab + anzahl);
    std::memcpy(ziel.data() + ab, bytes, size_t(anzahl));
}
template <typename T>
void zahlAnhaengen(QByteArray& ziel, T wert) {
    bytesAnhaengen(ziel, &wert, sizeof(T));
}
inline void u8Anhaengen(QByteArray& z, quint8 w) {
    zahlAnhaengen(z, w);
}
inline void u16Anhaengen(QByteArray& z, quint16 w) {
    zahlAnhaengen(z, w);
}
inline void u32Anhaengen(QByteArray& z, quint32 w) {
    zahlAnhaengen(z, w);
}
inline void f64Anhaengen(QByteArray& z, double w) {
    zahlAnhaengen(z, w);
}
inline void u24beAnhaengen(QByteArray& z, quint32 w) {
    z.append(char(w >> 16)).append(char(w >> 8)).append(char(w));
}
inline void u32beAnhaengen(QByteArray& z, quint32 w) {
    z.append(char(w >> 24));
    u24beAnhaengen(z, w);
}

}  // namespace jet
