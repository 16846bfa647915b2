// Keys of index entries, type by type.
#include "engine/jet/schluessel.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/sort/general.h"
#include "engine/sort/general97.h"

namespace jet {
namespace {

constexpr quint8 kNullAuf = 0x00;
constexpr quint8 kNullAb = 0xFF;
constexpr quint8 kWertAuf = 0x7F;
constexpr quint8 kWertAb = 0x80;
constexpr quint8 kOberstesBit = 0x80;
constexpr qsizetype kBlock = 8;  // bytes of a Binary value between two lengths
constexpr char kBlockFolgt = 9;
constexpr int kGuidBytes = 16;
constexpr int kDezimalBytes = 17;

[[noreturn]] void ohneSchluessel(const Spalte& spalte) {
    throw EngineFehler(
        kSystemgrenze,
        u"Für das Feld '%1' kann dieses Programm keinen Index schreiben. Entfernen Sie den Index in "
        "Access."_qs.arg(spalte.name));
}

void umkehren(QByteArray& bytes, qsizetype ab = 0) {
    for (qsizetype i = ab; i < bytes.size(); ++i) bytes[i] = char(~bytes[i]);
}

void oberstesBitKippen(QByteArray& bytes) {
    bytes[0] = char(quint8(bytes[0]) ^ kOberstesBit);
}

QByteArray grossesEnde(const Sicht& wert, int anzahl) {
    QByteArray bytes = wert.teil(0, anzahl).toByteArray();
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

QByteArray ganzzahl(const Sicht& wert, int anzahl) {
    QByteArray bytes = grossesEnde(wert, anzahl);
    oberstesBitKippen(bytes);
    return bytes;
}

QByteArray gleitzahl(const Sicht& wert, int anzahl) {
    QByteArray bytes = grossesEnde(wert, anzahl);
    if (quint8(bytes[0]) & kOberstesBit)
        umkehren(bytes);
    else
        oberstesBitKippen(bytes);
    return bytes;
}

// Blocks of 8 bytes; behind each one whether more follow, or how many bytes of the last one count. The mark
// that more follow is the same in both directions.
QByteArray bloecke(QByteArrayView wert, bool absteigend) {
    QByteArray bytes;
    for (qsizetype ab = 0; ab < wert.size(); ab += kBlock) {
        const qsizetype zahl = std::min(kBlock, wert.size() - ab);
        const bool letzter = ab + kBlock >= wert.size();
        QByteArray block = wert.sliced(ab, zahl).toByteArray().leftJustified(kBlock, '\0');
        if (letzter) block += char(zahl);
        if (absteigend) umkehren(block);
        if (!letzter) block += kBlockFolgt;
        bytes += block;
    }
    return bytes;
}

// The order in which a GUID is written: its first three groups stand little endian in the row.
QByteArray guid(const Sicht& wert, bool absteigend) {
    QByteArray bytes = wert.teil(0, kGuidBytes).toByteArray();
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::reverse(bytes.begin() + 4, bytes.begin() + 6);
    std::reverse(bytes.begin() + 6, bytes.begin() + 8);
    return bloecke(bytes, absteigend);
}

// The row has the sign and four words, the most significant one first, each little endian. From Access 2007
// on a descending key is the complement of the ascending one, the sign included.
QByteArray dezimal(const Format& format, const Sicht& wert, bool absteigend) {
    QByteArray bytes = wert.teil(0, kDezimalBytes).toByteArray();
    const bool negativ = quint8(bytes[0]) & kOberstesBit;
    for (int wort = 1; wort < kDezimalBytes; wort += 4)
        std::reverse(bytes.begin() + wort, bytes.begin() + wort + 4);
    bytes[0] = '\xFF';
    if (negativ != absteigend) umkehren(bytes);
    if (!format.ace) bytes[0] = negativ ? '\0' : '\xFF';
    return bytes;
}

QByteArray text(const Format& format, QByteArrayView wert, bool absteigend) {
    QByteArray bytes =
        format.jet4 ? sort::sortSchluessel(textLesen(format, wert)) : sort::sortSchluessel97(wert);
    if (!absteigend) return bytes;
    umkehren(bytes);
    return format.jet4 ? bytes + '\0' : bytes;
}

QByteArray aufsteigendeZahl(const Spalte& spalte, const Sicht& wert) {
    switch (spalte.typ) {
        case kTypByte:
            return wert.teil(0, 1).toByteArray();
        case kTypInteger:
            return ganzzahl(wert, 2);
        case kTypLong:
            return ganzzahl(wert, 4);
        case kTypWaehrung:
        case kTypBigInt:
            return ganzzahl(wert, 8);
        case kTypSingle:
            return gleitzahl(wert, 4);
        case kTypDouble:
        case kTypDatum:
            return gleitzahl(wert, 8);
        default:
            ohneSchluessel(spalte);
    }
}

QByteArray wertSchluessel(const Format& format, const Spalte& spalte, bool absteigend, QByteArrayView bytes) {
    if (!schluesselMoeglich(spalte)) ohneSchluessel(spalte);
    const Sicht wert(bytes, spalte.name, 0);
    switch (spalte.typ) {
        case kTypText:
        case kTypMemo:
            return text(format, bytes, absteigend);
        case kTypBinaer:
            return bloecke(bytes, absteigend);
        case kTypGuid:
            return guid(wert, absteigend);
        case kTypDezimal:
            return dezimal(format, wert, absteigend);
        default:
            break;
    }
    QByteArray zahl = aufsteigendeZahl(spalte, wert);
    if (absteigend) umkehren(zahl);
    return zahl;
}

}  // namespace

bool schluesselMoeglich(const Spalte& spalte) {
    if (spalte.istText()) return spalte.sortierung == kSortierungGeneral && spalte.sortVersion == 0;
    switch (spalte.typ) {
        case kTypOle:
            return false;
        case kTypGuid:
        case kTypDezimal:
        case kTypBigInt:
            return true;
        default:
            return spalte.typ >= kTypBoolean && spalte.typ <= kTypBinaer;
    }
}

void schluesselAnhaengen(QByteArray& ziel, const Format& format, const Spalte& spalte, bool absteigend,
                         const std::optional<QByteArrayView>& gespeichert) {
    if (spalte.typ == kTypBoolean) {
        const bool voll = gespeichert.has_value() == absteigend;
        ziel.append(char(absteigend ? kWertAb : kWertAuf)).append(voll ? '\xFF' : '\0');
    } else if (!gespeichert) {
        ziel.append(char(absteigend ? kNullAb : kNullAuf));
    } else {
        ziel.append(char(absteigend ? kWertAb : kWertAuf));
        ziel.append(wertSchluessel(format, spalte, absteigend, *gespeichert));
    }
}

QByteArray nullSchluessel(const EchterIndex& index) {
    QByteArray bytes;
    for (const IndexSpalte& spalte : index.spalten)
        bytes.append(char(spalte.absteigend ? kNullAb : kNullAuf));
    return bytes;
}

}  // namespace jet
