// Reads memo files.
#include "engine/dbase/memoleser.h"

#include <QtEndian>
#include <algorithm>

namespace dbase {
namespace {

constexpr qint64 kFenster = 1 << 20;
constexpr int kKopfLaenge = 512;
constexpr int kVorgabeBlock = 512;
constexpr qint64 kHoechstensOhneEnde = 1 << 20;   // a memo of dBase III whose end mark is missing
constexpr qint64 kHoechstensFremdform = 1 << 16;  // one of dBase III's form in a file of dBase IV
constexpr int kVielfaches = 4;                    // so often may all memos together repeat the file
constexpr char kEndmarke = 0x1A;
constexpr QByteArrayView kVierMarke = "\xFF\xFF\x08";  // and a zero byte

int blockgroesseVon(const QByteArray& kopf, Memoart art) {
    if (kopf.size() < kKopfLaenge) return 0;
    if (art == Memoart::Fpt) {
        const int groesse = qFromBigEndian<quint16>(kopf.constData() + 6);
        return groesse == 0 ? kVorgabeBlock : groesse;
    }
    if (art == Memoart::DbtDrei) return kVorgabeBlock;
    const int groesse = qFromLittleEndian<quint16>(kopf.constData() + 20);
    return groesse >= 64 && groesse <= 32768 ? groesse : kVorgabeBlock;
}

}  // namespace

QByteArray ohneWeicheUmbrueche(QByteArrayView bytes) {
    QByteArray text = bytes.toByteArray();
    text.replace("\x8D\x0A", "");
    return text;
}

Memoleser::Memoleser(std::shared_ptr<const Bytequelle> datei, Memoart art)
    : datei_(std::move(datei)), art_(art), vorrat_(datei_->groesse() * kVielfaches) {
    blockgroesse_ = blockgroesseVon(datei_->bytes(0, kKopfLaenge), art_);
}

// Up to `anzahl` bytes from `ab` on; valid until the next call.
QByteArrayView Memoleser::sicht(qint64 ab, qint64 anzahl) {
    anzahl = std::clamp<qint64>(datei_->groesse() - ab, 0, anzahl);
    if (ab < fensterAb_ || ab + anzahl > fensterAb_ + fenster_.size()) {
        fenster_ = datei_->bytes(ab, std::max(anzahl, kFenster));
        fensterAb_ = ab;
    }
    return QByteArrayView(fenster_)
        .sliced(ab - fensterAb_)
        .first(std::min<qint64>(anzahl, fenster_.size() - (ab - fensterAb_)));
}

QByteArrayView Memoleser::bisEndmarke(qint64 ab) {
    const qint64 grenze = art_ == Memoart::DbtDrei ? kHoechstensOhneEnde : kHoechstensFremdform;
    for (qint64 anzahl = kVorgabeBlock;; anzahl *= 16) {
        const QByteArrayView bytes = sicht(ab, std::min(anzahl, grenze));
        const qsizetype ende = bytes.indexOf(kEndmarke);
        if (ende >= 0) return bytes.first(ende);
        if (anzahl >= grenze || bytes.size() < anzahl) return bytes;
    }
}

QByteArrayView Memoleser::mitLaenge(qint64 ab, qint64 laenge) {
    if (laenge < 0 || laenge > datei_->groesse() - ab) ++schaeden_;
    return sicht(ab, std::clamp<qint64>(laenge, 0, datei_->groesse()));
}

QByteArrayView Memoleser::roh(qint64 ab) {
    if (art_ == Memoart::DbtDrei) return bisEndmarke(ab);
    const QByteArrayView kopf = sicht(ab, 8);
    if (kopf.size() < 8) return {};
    if (art_ == Memoart::Fpt) {
        const bool text = qFromBigEndian<quint32>(kopf.data()) == 1;
        return text ? mitLaenge(ab + 8, qFromBigEndian<quint32>(kopf.data() + 4)) : QByteArrayView();
    }
    if (!kopf.startsWith(kVierMarke) || kopf[3] != 0) return bisEndmarke(ab);
    return mitLaenge(ab + 8, qint64(qFromLittleEndian<quint32>(kopf.data() + 4)) - 8);
}

std::optional<QByteArray> Memoleser::lesen(qint64 block) {
    if (!brauchbar() || block == 0) return std::nullopt;
    if (block < 0 || block > (datei_->groesse() - 1) / blockgroesse_) {
        ++schaeden_;
        return std::nullopt;
    }
    const QByteArrayView bytes = roh(block * blockgroesse_);
    if (bytes.size() > vorrat_) {
        ++schaeden_;
        return std::nullopt;
    }
    vorrat_ -= bytes.size();
    if (bytes.isEmpty()) return std::nullopt;
    return ohneWeicheUmbrueche(bytes);
}

}  // namespace dbase
