// The rows of a table.
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <utility>

#include "base/atempause.h"
#include "engine/dbase/tabelle.h"
#include "engine/dbase/werte.h"

namespace dbase {
namespace {

constexpr qint64 kBlock = 1 << 20;
constexpr char kGeloescht = '*';
constexpr qint64 kJulianisch1899 = 2415019;  // the Julian day of 1899-12-30
constexpr double kMillisekundenJeTag = 86400000.0;

// A zero byte inside a text was a blank to the program that wrote it.
QString textVon(const Zeichensatz& zeichensatz, const char* bytes, qsizetype laenge) {
    if (!std::memchr(bytes, 0, size_t(laenge))) return zeichensatz.text(bytes, laenge);
    QByteArray ohne(bytes, laenge);
    ohne.replace('\0', ' ');
    return zeichensatz.text(ohne.constData(), ohne.size());
}

Wert textWert(const Zeichensatz& zeichensatz, const char* bytes, qsizetype breite) {
    const qsizetype laenge = laengeOhneEnde(bytes, breite);
    return laenge == 0 ? Wert::null() : Wert(textVon(zeichensatz, bytes, laenge));
}

// Julian day and milliseconds.
Wert zeitpunktWert(const char* bytes) {
    const quint32 tag = qFromLittleEndian<quint32>(bytes);
    const quint32 zeit = qFromLittleEndian<quint32>(bytes + 4);
    if (tag == 0 && zeit == 0) return Wert::null();
    const double tage = double(qint64(tag) - kJulianisch1899);
    const double bruchteil = zeit / kMillisekundenJeTag;
    return Wert(DatumZeit{tage < 0 ? tage - bruchteil : tage + bruchteil});
}

}  // namespace

Tabellenleser::Tabellenleser(const Tabelle& tabelle, Tabellenquelle quelle, Lesebericht bericht)
    : name_(tabelle.name),
      aufbau_(tabelle.aufbau),
      quelle_(std::move(quelle)),
      zeichensatz_(tabelle.seite.seite),
      bericht_(std::move(bericht)) {
    if (quelle_.memo) memo_.emplace(quelle_.memo, aufbau_.memoart);
    for (const Spalte& s : aufbau_.spalten)
        if (s.form != Feldform::Verborgen) sichtbare_.push_back(&s);
    zaehler_.resize(sichtbare_.size());
}

// Puts the next live record into satz_.
bool Tabellenleser::naechsterSatz() {
    while (naechster_ < aufbau_.saetze) {
        if (naechster_ >= blockAb_ + blockSaetze_) {
            blockAb_ = naechster_;
            const qint64 anzahl =
                std::min(aufbau_.saetze - blockAb_, std::max<qint64>(1, kBlock / aufbau_.satzlaenge));
            block_ = quelle_.daten->bytes(aufbau_.satzanfang + blockAb_ * aufbau_.satzlaenge,
                                          anzahl * aufbau_.satzlaenge);
            blockSaetze_ = block_.size() / aufbau_.satzlaenge;
            if (blockSaetze_ == 0) return false;
        }
        satz_ =
            QByteArrayView(block_).sliced((naechster_ - blockAb_) * aufbau_.satzlaenge, aufbau_.satzlaenge);
        ++naechster_;
        if (satz_[0] != kGeloescht) return true;
    }
    return false;
}

bool Tabellenleser::naechste(engine::Zeile& zeile) {
    Atempause();
    if (!naechsterSatz()) {
        berichten();
        return false;
    }
    zeile.resize(sichtbare_.size());
    for (size_t i = 0; i < sichtbare_.size(); ++i) zeile[i] = feld(*sichtbare_[i], zaehler_[i]);
    return true;
}

bool Tabellenleser::bitGesetzt(int bit) const {
    return bit >= 0 && (quint8(satz_[aufbau_.nullbitsAb + bit / 8]) >> (bit % 8) & 1) != 0;
}

Wert Tabellenleser::feld(const Spalte& s, Zaehler& zaehler) {
    if (bitGesetzt(s.nullbit)) return Wert::null();
    const char* bytes = satz_.data() + s.ab;
    const auto gezaehlt = [&](Gelesen gelesen) {
        if (!gelesen.lesbar) ++zaehler.unlesbar;
        return std::move(gelesen.wert);
    };
    switch (s.form) {
        case Feldform::Text:
            return textWert(zeichensatz_, bytes, s.laenge);
        case Feldform::TextVariabel:
            return textWert(zeichensatz_, bytes,
                            bitGesetzt(s.laengenbit)
                                ? std::min<int>(quint8(bytes[s.laenge - 1]), s.laenge - 1)
                                : s.laenge);
        case Feldform::Zahl:
            return gezaehlt(zahlLesen({bytes, s.laenge}));
        case Feldform::Wahrheit:
            return wahrheitLesen(bytes[0]);
        case Feldform::Datum:
            return gezaehlt(datumLesen({bytes, s.laenge}));
        case Feldform::Memo:
        case Feldform::MemoBinaer:
            return memo(s);
        case Feldform::Ganzzahl:
            return Wert(qint64(qFromLittleEndian<qint32>(bytes)));
        case Feldform::Waehrung:
            return Wert(::Waehrung{qFromLittleEndian<qint64>(bytes)});
        case Feldform::Zeitpunkt:
            return zeitpunktWert(bytes);
        case Feldform::Doppelt:
            return Wert(qFromLittleEndian<double>(bytes));
        case Feldform::Unlesbar:
        case Feldform::Verborgen:
            break;
    }
    return Wert::null();
}

QByteArray Tabellenleser::memobytes(const Spalte& s) {
    if (!memo_) return {};
    const char* bytes = satz_.data() + s.ab;
    const qint64 block = s.form == Feldform::MemoBinaer ? qint64(qFromLittleEndian<quint32>(bytes))
                                                        : blocknummerLesen({bytes, s.laenge});
    return memo_->lesen(block).value_or(QByteArray());
}

Wert Tabellenleser::memo(const Spalte& s) {
    const QByteArray bytes = memobytes(s);
    return bytes.isEmpty() ? Wert::null() : Wert(zeichensatz_.text(bytes.constData(), bytes.size()));
}

void Tabellenleser::berichten() {
    if (!bericht_) return;
    Befund befund;
    for (size_t i = 0; i < sichtbare_.size(); ++i)
        if (const qint64 n = zaehler_[i].unlesbar)
            befund.hinweise.push_back(
                QStringLiteral("Tabelle '%1': %2 im Feld '%3' nicht lesbar und leer geblieben.")
                    .arg(name_,
                         n == 1 ? QStringLiteral("1 Wert ist") : QStringLiteral("%1 Werte sind").arg(n),
                         sichtbare_[i]->name));
    if (memo_ && memo_->schaeden() > 0) {
        befund.memoBeschaedigt = true;
        befund.hinweise.push_back(
            QStringLiteral("Tabelle '%1': Die Memodatei ist beschädigt; Memotexte können fehlen oder "
                           "unvollständig sein. Die Dateien der Tabelle werden nicht verändert.")
                .arg(name_));
    }
    std::exchange(bericht_, {})(befund);
}

}  // namespace dbase
