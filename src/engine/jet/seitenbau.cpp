// Data pages laid out anew.
#include "engine/jet/seitenbau.h"

#include <algorithm>

#include "engine/jet/bytes.h"
#include "engine/jet/datenseite.h"

namespace jet {
namespace {

constexpr int kSlotBreite = 2;
constexpr size_t kMaxSlots = 255;
constexpr int kFreiStelle = 2;
constexpr int kBesitzerStelle = 4;

}  // namespace

Datenseitenbau::Datenseitenbau(const Format& format, quint32 besitzer)
    : format_(&format), kopf_(format.datenKopf, '\0'), frei_(format.seite - format.datenKopf) {
    u8Setzen(kopf_, 0, kDatenseite);
    u8Setzen(kopf_, 1, 1);
    u32Setzen(kopf_, kBesitzerStelle, besitzer);
}

Datenseitenbau::Datenseitenbau(const Format& format, const QByteArray& seite, quint32 nummer)
    : format_(&format), kopf_(seite.left(format.datenKopf)), frei_(format.seite - format.datenKopf) {
    for (const Slot& slot : slotsLesen(format, seite, nummer)) {
        zeilen_.push_back({slot.flags, seite.mid(slot.ab, slot.laenge)});
        frei_ -= kSlotBreite + slot.laenge;
    }
}

bool Datenseitenbau::passt(qsizetype laenge) const {
    return zeilen_.size() < kMaxSlots && laenge + kSlotBreite <= frei_;
}

bool Datenseitenbau::passtStatt(int slot, qsizetype laenge) const {
    return laenge <= frei_ + zeile(slot).size();
}

bool Datenseitenbau::leer() const {
    return std::all_of(zeilen_.begin(), zeilen_.end(), [](const Eintrag& e) { return e.bytes.isEmpty(); });
}

int Datenseitenbau::anfuegen(const QByteArray& bytes) {
    Q_ASSERT(passt(bytes.size()));
    zeilen_.push_back({0, bytes});
    frei_ -= kSlotBreite + int(bytes.size());
    return slots() - 1;
}

void Datenseitenbau::ersetzen(int slot, const QByteArray& bytes) {
    Q_ASSERT(passtStatt(slot, bytes.size()));
    Eintrag& eintrag = zeilen_[size_t(slot)];
    frei_ += int(eintrag.bytes.size() - bytes.size());
    eintrag.bytes = bytes;
}

void Datenseitenbau::loeschen(int slot) {
    ersetzen(slot, {});
    zeilen_[size_t(slot)].flags = kSlotGeloescht | kSlotZeiger;
}

QByteArray Datenseitenbau::bytes() const {
    QByteArray seite(format_->seite, '\0');
    bytesSetzen(seite, 0, kopf_);
    u16Setzen(seite, kFreiStelle, quint16(frei_));
    u16Setzen(seite, format_->datenSlotzahl, quint16(zeilen_.size()));
    int ab = format_->seite;
    int slot = format_->datenKopf;
    for (const Eintrag& eintrag : zeilen_) {
        ab -= int(eintrag.bytes.size());
        bytesSetzen(seite, ab, eintrag.bytes);
        u16Setzen(seite, slot, quint16(ab | eintrag.flags));
        slot += kSlotBreite;
    }
    return seite;
}

}  // namespace jet
