// Little-endian numbers read from and written to byte arrays, never beyond their end.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <bit>
#include <cstring>

namespace excel {

static_assert(std::endian::native == std::endian::little, "the readers copy numbers as they stand");

// Raises kBeschaedigt: the workbook has no `anzahl` bytes where they must be.
[[noreturn]] void beschaedigt();

// Every read is checked against the end and raises kBeschaedigt. Offsets count from 0.
template <typename T>
T zahl(QByteArrayView b, qsizetype ab) {
    if (ab < 0 || ab > b.size() - qsizetype(sizeof(T))) beschaedigt();
    T wert;
    std::memcpy(&wert, b.data() + ab, sizeof(T));
    return wert;
}
inline quint8 u8(QByteArrayView b, qsizetype ab) {
    return zahl<quint8>(b, ab);
}
inline quint16 u16(QByteArrayView b, qsizetype ab) {
    return zahl<quint16>(b, ab);
}
inline quint32 u32(QByteArrayView b, qsizetype ab) {
    return zahl<quint32>(b, ab);
}
inline double f64(QByteArrayView b, qsizetype ab) {
    return std::bit_cast<double>(zahl<quint64>(b, ab));
}
// `anzahl` bytes from `ab` on.
inline QByteArrayView teil(QByteArrayView b, qsizetype ab, qsizetype anzahl) {
    if (ab < 0 || anzahl < 0 || ab > b.size() || anzahl > b.size() - ab) beschaedigt();
    return b.sliced(ab, anzahl);
}

// Overwrites at `ab`; raises kBeschaedigt where there is no such place.
template <typename T>
void setzen(QByteArray& ziel, qsizetype ab, T wert) {
    if (ab < 0 || ab > ziel.size() - qsizetype(sizeof(T))) beschaedigt();
    std::memcpy(ziel.data() + ab, &wert, sizeof(T));
}
// Appends at the end.
template <typename T>
void anhaengen(QByteArray& ziel, T wert) {
    ziel.append(reinterpret_cast<const char*>(&wert), sizeof(T));
}

}  // namespace excel
