// Cells of the working store: encoding, decoding, sort keys.
#include "engine/store/zellen.h"

#include <QtEndian>
#include <array>
#include <cmath>
#include <cstring>

#include "engine/sort/general.h"
#include "engine/typen.h"

namespace store {
namespace {

constexpr int kDezimalLaenge = 18;
constexpr int kMaxSkala = 28;

// Texts go in as UTF-16 unchanged, except that the store would swallow a byte order mark in front.
bool mitMarke(const QString& text) {
    return !text.isEmpty() && (text[0] == QChar(0xfeff) || text[0] == QChar(0xfffe));
}

template <typename T>
QByteArray rohe(const T& wert) {
    return QByteArray(reinterpret_cast<const char*>(&wert), sizeof wert);
}

template <typename T>
T ausRohen(QByteArrayView bytes) {
    T wert{};
    if (size_t(bytes.size()) == sizeof wert) std::memcpy(&wert, bytes.data(), sizeof wert);
    return wert;
}

QByteArray dezimalBytes(const Dezimal& d) {
    return rohe(d.hoch) + rohe(d.tief) + char(d.skala) + char(d.negativ);
}

Dezimal dezimalAusBytes(QByteArrayView bytes) {
    if (bytes.size() != kDezimalLaenge) return {};
    return {bytes[17] != 0, ausRohen<quint64>(bytes.first(8)), ausRohen<quint64>(bytes.sliced(8, 8)),
            quint8(bytes[16])};
}

QByteArray inhalt(const Wert& wert) {
    switch (wert.art()) {
        case Wert::Art::Wahrheit:
            return rohe(wert.wahrheit());
        case Wert::Art::Ganzzahl:
            return rohe(wert.ganzzahl());
        case Wert::Art::Gleitzahl:
            return rohe(wert.gleitzahl());
        case Wert::Art::Waehrung:
            return rohe(wert.waehrung());
        case Wert::Art::DatumZeit:
            return rohe(wert.datumZeit());
        case Wert::Art::Text:
            return QByteArray(reinterpret_cast<const char*>(wert.text().utf16()), wert.text().size() * 2);
        case Wert::Art::Bytes:
            return wert.bytes();
        case Wert::Art::Dezimal:
            return dezimalBytes(wert.dezimal());
        case Wert::Art::Leer:
        case Wert::Art::Null:
            break;
    }
    return {};
}

QByteArray markiert(const Wert& wert) {
    return char(wert.art()) + inhalt(wert);
}

QString textAusBytes(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    if (!text.isEmpty()) std::memcpy(text.data(), bytes.data(), size_t(text.size()) * 2);
    return text;
}

Wert ausMarkiertem(QByteArrayView zelle) {
    if (zelle.isEmpty()) return Wert::null();
    const QByteArrayView bytes = zelle.sliced(1);
    switch (Wert::Art(zelle[0])) {
        case Wert::Art::Wahrheit:
            return Wert(ausRohen<bool>(bytes));
        case Wert::Art::Ganzzahl:
            return Wert(ausRohen<qint64>(bytes));
        case Wert::Art::Gleitzahl:
            return Wert(ausRohen<double>(bytes));
        case Wert::Art::Waehrung:
            return Wert(ausRohen<Waehrung>(bytes));
        case Wert::Art::DatumZeit:
            return Wert(ausRohen<DatumZeit>(bytes));
        case Wert::Art::Text:
            return Wert(textAusBytes(bytes));
        case Wert::Art::Bytes:
            return Wert(bytes.toByteArray());
        case Wert::Art::Dezimal:
            return Wert(dezimalAusBytes(bytes));
        case Wert::Art::Leer:
        case Wert::Art::Null:
            break;
    }
    return Wert::null();
}

int markiertBinden(sqlite3_stmt* anweisung, int nummer, const Wert& wert) {
    const QByteArray bytes = markiert(wert);
    return sqlite3_bind_blob64(anweisung, nummer, bytes.constData(), sqlite3_uint64(bytes.size()),
                               SQLITE_TRANSIENT);
}

int zahlBinden(sqlite3_stmt* anweisung, int nummer, const Wert& wert, double zahl) {
    // The store takes NaN for Null.
    return std::isnan(zahl) ? markiertBinden(anweisung, nummer, wert)
                            : sqlite3_bind_double(anweisung, nummer, zahl);
}

Wert ganzzahlAls(qint64 zahl, Spaltenart art) {
    if (art == Spaltenart::Wahrheit) return Wert(zahl != 0);
    if (art == Spaltenart::Waehrung) return Wert(Waehrung{zahl});
    return Wert(zahl);
}

// A decimal number brought to the greatest scale, most significant byte first, so that bytes compare as
// values do.
QByteArray dezimalSchluessel(const Dezimal& d) {
    std::array<quint32, 8> glieder{};  // least significant first
    glieder[0] = quint32(d.tief);
    glieder[1] = quint32(d.tief >> 32);
    glieder[2] = quint32(d.hoch);
    glieder[3] = quint32(d.hoch >> 32);
    for (int i = d.skala; i < kMaxSkala; ++i) {
        quint64 uebertrag = 0;
        for (quint32& glied : glieder) {
            uebertrag += quint64(glied) * 10;
            glied = quint32(uebertrag);
            uebertrag >>= 32;
        }
    }
    bool istNull = true;
    for (quint32 glied : glieder) istNull = istNull && glied == 0;
    const bool negativ = d.negativ && !istNull;
    QByteArray schluessel(1, negativ ? '\0' : '\1');
    for (size_t i = glieder.size(); i-- > 0;) {
        const quint32 glied = negativ ? ~glieder[i] : glieder[i];
        for (int schub = 24; schub >= 0; schub -= 8) schluessel.append(char(glied >> schub));
    }
    return schluessel;
}

QByteArrayView bytesVon(sqlite3_value* zelle) {
    const void* anfang = sqlite3_value_blob(zelle);
    return {static_cast<const char*>(anfang), sqlite3_value_bytes(zelle)};
}

// What the first byte of a cell's part of a sort key says.
enum Schluesselart : char { kOhneWert = 0, kZahl = 1, kBytes = 2 };

// So that parts of any length can stand one behind the other: a 00 is followed by FF, the end is 00 00.
void bytesAnhaengen(QByteArray& ziel, QByteArrayView bytes) {
    ziel.append(kBytes);
    const char* ab = bytes.data();
    const char* const ende = ab + bytes.size();
    while (const void* null = ab == ende ? nullptr : std::memchr(ab, 0, size_t(ende - ab))) {
        const char* const dahinter = static_cast<const char*>(null) + 1;
        ziel.append(ab, dahinter - ab).append('\xFF');
        ab = dahinter;
    }
    ziel.append(ab, ende - ab).append("\0\0", 2);
}

template <typename Zahl>
void hoechstesZuerst(QByteArray& ziel, Zahl zahl) {
    const Zahl bytes = qToBigEndian(zahl);
    ziel.append(reinterpret_cast<const char*>(&bytes), sizeof bytes);
}

// Whole and floating numbers compare by their value: the nearest double decides, then what a whole number
// lies above it.
void zahlAnhaengen(QByteArray& ziel, double zahl, qint64 darueber) {
    constexpr quint64 kOberstesBit = quint64(1) << 63;
    quint64 bits;
    zahl += 0.0;  // both zeros are one
    std::memcpy(&bits, &zahl, sizeof bits);
    bits = bits & kOberstesBit ? ~bits : bits | kOberstesBit;
    ziel.append(kZahl);
    hoechstesZuerst(ziel, bits);
    hoechstesZuerst(ziel, quint64(darueber) ^ kOberstesBit);
}

void ganzzahlAnhaengen(QByteArray& ziel, qint64 zahl) {
    const double nahe = double(zahl);
    zahlAnhaengen(ziel, nahe, qint64(__int128(zahl) - __int128(nahe)));
}

void markiertenAnhaengen(QByteArray& ziel, QByteArrayView zelle) {
    const Wert wert = ausMarkiertem(zelle);
    if (wert.istText()) return bytesAnhaengen(ziel, sort::sortSchluessel(wert.text()));
    if (wert.art() == Wert::Art::Dezimal) return bytesAnhaengen(ziel, dezimalSchluessel(wert.dezimal()));
    bytesAnhaengen(ziel, zelle);
}

QStringView textVon(sqlite3_stmt* anweisung, int spalte) {
    const auto* zeichen = static_cast<const char16_t*>(sqlite3_column_text16(anweisung, spalte));
    return QStringView(zeichen, sqlite3_column_bytes16(anweisung, spalte) / 2);
}

QByteArrayView bytesVon(sqlite3_stmt* anweisung, int spalte) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(anweisung, spalte));
    return QByteArrayView(bytes, sqlite3_column_bytes(anweisung, spalte));
}

void zahlFunktion(sqlite3_context* kontext, int, sqlite3_value** argumente) {
    sqlite3_value* zelle = argumente[0];
    const auto art = Spaltenart(sqlite3_value_int(argumente[1]));
    const int form = sqlite3_value_type(zelle);
    if (form == SQLITE_INTEGER)
        sqlite3_result_double(kontext, ganzzahlAls(sqlite3_value_int64(zelle), art).alsZahl());
    else if (form == SQLITE_BLOB && sqlite3_value_bytes(zelle) <= 1 + kDezimalLaenge)
        sqlite3_result_double(kontext, ausMarkiertem(bytesVon(zelle)).alsZahl());
    else
        sqlite3_result_value(kontext, zelle);
}

}  // namespace

Spaltenart spaltenartVon(int feldtyp) {
    switch (feldtyp) {
        case dao::dbBoolean:
            return Spaltenart::Wahrheit;
        case dao::dbByte:
        case dao::dbInteger:
        case dao::dbLong:
        case dao::dbBigInt:
            return Spaltenart::Ganzzahl;
        case dao::dbCurrency:
            return Spaltenart::Waehrung;
        case dao::dbSingle:
        case dao::dbDouble:
            return Spaltenart::Gleitzahl;
        case dao::dbDate:
        case dao::dbTime:
            return Spaltenart::DatumZeit;
        case dao::dbBinary:
        case dao::dbLongBinary:
            return Spaltenart::Bytes;
        case dao::dbDecimal:
            return Spaltenart::Dezimal;
        default:
            return Spaltenart::Text;
    }
}

int zelleBinden(sqlite3_stmt* anweisung, int nummer, const Wert& wert, Spaltenart art) {
    switch (wert.art()) {
        case Wert::Art::Leer:
        case Wert::Art::Null:
            return sqlite3_bind_null(anweisung, nummer);
        case Wert::Art::Text:
            if (mitMarke(wert.text())) break;
            return sqlite3_bind_text64(anweisung, nummer, reinterpret_cast<const char*>(wert.text().utf16()),
                                       sqlite3_uint64(wert.text().size()) * 2, SQLITE_STATIC, SQLITE_UTF16LE);
        case Wert::Art::Ganzzahl:
            if (art == Spaltenart::Wahrheit || art == Spaltenart::Waehrung) break;
            return sqlite3_bind_int64(anweisung, nummer, wert.ganzzahl());
        case Wert::Art::Wahrheit:
            if (art != Spaltenart::Wahrheit) break;
            return sqlite3_bind_int(anweisung, nummer, wert.wahrheit() ? -1 : 0);
        case Wert::Art::Waehrung:
            if (art != Spaltenart::Waehrung) break;
            return sqlite3_bind_int64(anweisung, nummer, wert.waehrung().zehntausendstel);
        case Wert::Art::Gleitzahl:
            if (art == Spaltenart::DatumZeit) break;
            return zahlBinden(anweisung, nummer, wert, wert.gleitzahl());
        case Wert::Art::DatumZeit:
            if (art != Spaltenart::DatumZeit) break;
            return zahlBinden(anweisung, nummer, wert, wert.datumZeit().tage);
        case Wert::Art::Bytes:
        case Wert::Art::Dezimal:
            break;
    }
    return markiertBinden(anweisung, nummer, wert);
}

Wert zelleLesen(sqlite3_stmt* anweisung, int spalte, Spaltenart art) {
    switch (sqlite3_column_type(anweisung, spalte)) {
        case SQLITE_INTEGER:
            return ganzzahlAls(sqlite3_column_int64(anweisung, spalte), art);
        case SQLITE_FLOAT: {
            const double zahl = sqlite3_column_double(anweisung, spalte);
            return art == Spaltenart::DatumZeit ? Wert(DatumZeit{zahl}) : Wert(zahl);
        }
        case SQLITE_TEXT:
            // As a blob, since the store would put every text anew to end it with a zero.
            return Wert(textAusBytes(bytesVon(anweisung, spalte)));
        case SQLITE_BLOB:
            return ausMarkiertem(bytesVon(anweisung, spalte));
        default:
            return Wert::null();
    }
}

void sortSchluesselAnhaengen(QByteArray& ziel, sqlite3_stmt* anweisung, int spalte) {
    switch (sqlite3_column_type(anweisung, spalte)) {
        case SQLITE_INTEGER:
            return ganzzahlAnhaengen(ziel, sqlite3_column_int64(anweisung, spalte));
        case SQLITE_FLOAT:
            return zahlAnhaengen(ziel, sqlite3_column_double(anweisung, spalte), 0);
        case SQLITE_TEXT:
            return bytesAnhaengen(ziel, sort::sortSchluessel(textVon(anweisung, spalte)));
        case SQLITE_BLOB:
            return markiertenAnhaengen(ziel, bytesVon(anweisung, spalte));
        default:
            ziel.append(kOhneWert);
    }
}

QByteArray spaltenname(int spalte) {
    return "c" + QByteArray::number(spalte);
}

int funktionenAnmelden(sqlite3* datenbank) {
    constexpr int kRein = SQLITE_UTF16LE | SQLITE_DETERMINISTIC;
    return sqlite3_create_function_v2(datenbank, "zahl", 2, kRein, nullptr, zahlFunktion, nullptr, nullptr,
                                      nullptr);
}

QByteArray suchbareZellen(int spalte) {
    return spaltenname(spalte) + " <> 0";
}

Bedingung gleich(int spalte, Spaltenart art, const Wert& zahl) {
    const QByteArray zelle = spaltenname(spalte);
    const bool unmittelbar = art != Spaltenart::Waehrung && art != Spaltenart::Dezimal;
    const QByteArray links = unmittelbar ? zelle : "zahl(" + zelle + "," + QByteArray::number(int(art)) + ")";
    const QByteArray rechts = zahl.art() == Wert::Art::Ganzzahl ? QByteArray::number(zahl.ganzzahl())
                                                                : QByteArray::number(zahl.alsZahl(), 'e', 17);
    const QByteArray text = links + " = " + rechts;
    if (!unmittelbar || zahl.alsZahl() == 0) return {text, {}};
    return {text + " AND " + suchbareZellen(spalte), {spalte}};
}

}  // namespace store
