// Slots and rows of data pages.
#include "engine/jet/datenseite.h"

#include "engine/jet/bytes.h"

namespace jet {
namespace {

constexpr int kBesitzerAb = 4;
constexpr int kHoechsteZeilen = 256;  // a row pointer has one byte for the slot
constexpr int kHoechsteSpruenge = 8;

}  // namespace

std::vector<Slot> slotsLesen(const Format& format, const QByteArray& seite, quint32 nummer) {
    const Sicht sicht(seite, u"Datenseite", nummer);
    const int anzahl = sicht.u16(format.datenSlotzahl);
    const int grenze = format.datenKopf + 2 * anzahl;
    if (anzahl > kHoechsteZeilen || grenze > format.seite) sicht.kaputt(format.datenSlotzahl);
    std::vector<Slot> slots(static_cast<size_t>(anzahl));
    int ende = format.seite;
    for (int i = 0; i < anzahl; ++i) {
        const quint16 roh = sicht.u16(format.datenKopf + 2 * i);
        const int ab = roh & kSlotStelle;
        if (ab < grenze || ab > ende) sicht.kaputt(format.datenKopf + 2 * i);
        slots[size_t(i)] = {quint16(roh & (kSlotGeloescht | kSlotZeiger)), quint16(ab), quint16(ende - ab)};
        ende = ab;
    }
    return slots;
}

quint32 besitzerLesen(const QByteArray& seite) {
    return Sicht(seite, u"Datenseite", 0).u32(kBesitzerAb);
}

Zeilenbytes zeileHolen(const Seitendatei& datei, Zeilenort ort, bool folgen, QStringView struktur) {
    for (int sprung = 0; sprung <= kHoechsteSpruenge; ++sprung) {
        const QByteArray seite = datei.seite(ort.seite, kDatenseite, struktur);
        const std::vector<Slot> slots = slotsLesen(datei.format(), seite, ort.seite);
        if (ort.zeile >= slots.size()) beschaedigt(struktur, ort.seite, datei.format().datenSlotzahl);
        const Slot& slot = slots[ort.zeile];
        const QByteArrayView bytes(seite.constData() + slot.ab, slot.laenge);
        if (!folgen || !(slot.flags & kSlotZeiger)) return {seite, bytes, ort};
        ort = zeilenortVon(Sicht(bytes, struktur, ort.seite).u32(0));
    }
    beschaedigt(struktur, ort.seite);
}

}  // namespace jet
